#include "contacts/manager/frmSearchContact.h"

#include "attributes/CustomAttribODBC.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/manager/ContactSearchPage.h"
#include "contacts/manager/ContactSelection.h"
#include "contacts/manager/PeopleRun.h"
#include "contacts/record/frmAddContact.h"
#include "core/session/Session.h"
#include "forms/frames/FormBuilder.h"
#include "platform/desktop/Dialogs.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QProgressBar>

namespace
{
/// Not used, must have, must not have, and around again.
TreeTick Following(TreeTick tick)
{
    switch (tick) {
    case TreeTick::Off:
        return TreeTick::On;
    case TreeTick::On:
        return TreeTick::Not;
    default:
        return TreeTick::Off;
    }
}
} // namespace

frmSearchContact::frmSearchContact(ListModel &target, QWidget *parent)
    : FormDialog(QStringLiteral("frmSearchContact"), QStringLiteral("Search for Contact(s)"), parent)
    , m_target(target)
{
    gDialogResult = 0;
    m_found.SetColumns({QStringLiteral("Contact"), QStringLiteral("Address"), QStringLiteral("City"),
                        QStringLiteral("Postcode")});
    ADO_Contact_ShowChar(m_characteristics);
    ADO_CustomAttrib_Show(m_attributes, AttribSection::Contacts);
    {
        FormBuilder form(this);
        BuildCriteria(form);
        BuildResult(form);
        BuildButtons(form);
    }
    ShowRunning(false);
    EnableResult();
    resize(fontMetrics().averageCharWidth() * 150, fontMetrics().lineSpacing() * 46);
    m_details->First()->setFocus();
}

void frmSearchContact::BuildCriteria(FormBuilder &form)
{
    m_tabs = form.Tabs(QStringLiteral("SSActiveTabs1"));
    m_tabs->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    m_details = new ContactSearchPage;
    m_details->setObjectName(QStringLiteral("DetailsFrame"));
    m_tabs->addTab(m_details, QStringLiteral("Contact Details"));
    BuildTree(FormBuilder::AddTab(m_tabs, QStringLiteral("CharFrame"), QStringLiteral("Characteristics")),
              QStringLiteral("SearchCharList"), QStringLiteral("People who have (tick) or have not (cross):"),
              QStringLiteral("There are no characteristics."), m_characteristics);
    BuildTree(FormBuilder::AddTab(m_tabs, QStringLiteral("AttribFrame"), QStringLiteral("Custom Attributes")),
              QStringLiteral("AttribList"), QStringLiteral("People who have (tick) or have not (cross):"),
              QStringLiteral("There are no custom attributes."), m_attributes);

    m_logic = form.BeginGroup(QStringLiteral("Logic"), QStringLiteral("LogicFrame"));
    m_and = form.Option(QStringLiteral("Opt_AndOr_0"), QStringLiteral("AND"));
    form.Beside();
    m_or = form.Option(QStringLiteral("Opt_AndOr_1"), QStringLiteral("OR"));
    for (QRadioButton *option : {m_and, m_or})
        option->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    form.Beside();
    QLabel *meaning = form.Line(QStringLiteral("LogicMeaning"), QString());
    form.EndGroup();
    connect(m_and, &QRadioButton::toggled, meaning, [meaning](bool all) {
        meaning->setText(all ? QStringLiteral("Everything that is asked for must be so.")
                             : QStringLiteral("One of the details must be so, and one of what is ticked in "
                                              "each of the lists."));
    });
    m_and->setChecked(true);
}

void frmSearchContact::BuildTree(QWidget *page, const QString &name, const QString &caption,
                                 const QString &emptyText, TreeModel &tree)
{
    FormBuilder form(page);
    TreeView *view = form.Tree(name, caption, tree);
    view->SetEmptyText(emptyText);
    connect(view, &TreeView::TickAsked, this,
            [&tree](TreeNode *node) { tree.SetTick(node, Following(node->tick)); });
}

void frmSearchContact::BuildResult(FormBuilder &form)
{
    m_result = form.List(QStringLiteral("ContactInfo"), QStringLiteral("Contacts found:"), m_found,
                         ListView::Choice::Multi);
    m_result->SetEmptyText(QStringLiteral("Nobody found yet."));
    m_result->SetColumnChars({40, 40, 28, 12});
    connect(m_result, &ListView::Opened, this, [this] {
        if (!m_running)
            ViewContacts();
    });
}

/// How far the search has got; it is between the buttons, where it takes no height from the list.
QWidget *frmSearchContact::BuildProgress()
{
    auto *progress = new QWidget(this);
    m_animation = new QProgressBar(progress);
    m_animation->setObjectName(QStringLiteral("Animation1"));
    m_animation->setRange(0, 0);
    m_animation->setTextVisible(false);
    // The toolkit's own least width would widen the form at each search.
    m_animation->setMinimumWidth(fontMetrics().averageCharWidth() * 5);
    m_looked = new QLabel(progress);
    m_looked->setObjectName(QStringLiteral("Looked"));
    m_looked->setAlignment(Qt::AlignCenter);
    auto *row = new QHBoxLayout(progress);
    row->setContentsMargins({});
    row->addWidget(m_animation, 1);
    row->addWidget(m_looked, 1);
    return progress;
}

void frmSearchContact::BuildButtons(FormBuilder &form)
{
    form.BeginButtons(FormBuilder::Align::Start);
    m_findBtn = form.DefaultButton(QStringLiteral("FindBtn"), QStringLiteral("&Search Now"));
    m_stopBtn = form.Button(QStringLiteral("StopBtn"), QStringLiteral("S&top"));
    m_clearBtn = form.Button(QStringLiteral("ClearBtn"), QStringLiteral("&Clear"));
    form.Gap(BuildProgress());
    m_viewBtn = form.Button(QStringLiteral("ViewBtn"), QStringLiteral("&View Contact(s)"));
    m_selectBtn = form.Button(QStringLiteral("SelectBtn"), QStringLiteral("Select"));
    m_selectBtn->setToolTip(QStringLiteral("Hand all contacts found over to the selection and close"));
    m_exitBtn = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
    connect(m_findBtn, &QPushButton::clicked, this, &frmSearchContact::Find);
    connect(m_stopBtn, &QPushButton::clicked, this, [] { gStop = true; });
    connect(m_clearBtn, &QPushButton::clicked, this, &frmSearchContact::Clear);
    connect(m_viewBtn, &QPushButton::clicked, this, &frmSearchContact::ViewContacts);
    connect(m_selectBtn, &QPushButton::clicked, this, &frmSearchContact::HandOver);
    connect(m_exitBtn, &QPushButton::clicked, this, &QDialog::reject);
}

ContactSearchCriteria frmSearchContact::Criteria() const
{
    ContactSearchCriteria criteria;
    m_details->Store(criteria);
    criteria.any = m_or->isChecked();
    criteria.characteristics = SearchTicksOf(m_characteristics);
    criteria.attributes = SearchTicksOf(m_attributes);
    return criteria;
}

void frmSearchContact::ShowLooked(int looked)
{
    m_looked->setText(looked == 1 ? QStringLiteral("1 contact looked at")
                                  : QString(QLocale().toString(looked) % u" contacts looked at"));
}

void frmSearchContact::ShowRunning(bool running)
{
    m_running = running;
    for (int page = 0; page < m_tabs->count(); ++page)
        m_tabs->widget(page)->setEnabled(!running);
    for (QWidget *widget : QWidgetList{m_logic, m_findBtn, m_clearBtn, m_exitBtn})
        widget->setEnabled(!running);
    m_stopBtn->setEnabled(running);
    m_animation->setVisible(running);
}

void frmSearchContact::EnableResult()
{
    m_viewBtn->setEnabled(!m_found.IsEmpty());
    m_selectBtn->setEnabled(!m_found.IsEmpty());
}

void frmSearchContact::Find()
{
    LeaveMoneyField(this);
    m_viewBtn->setEnabled(false);
    m_selectBtn->setEnabled(false);
    ShowRunning(true);
    m_stopBtn->setFocus();
    gStop = false;
    ADO_Contact_Search(Criteria(), m_found, [this](int looked) { ShowLooked(looked); });
    ShowRunning(false);
    setWindowTitle(u"Search Result: " % QString::number(m_found.Count()) % u" items found");
    m_result->KeepOrder();
    EnableResult();
    if (m_found.IsEmpty()) {
        m_findBtn->setFocus();
        return;
    }
    m_found.SelectFirst();
    m_result->ShowRow(0);
    m_result->setFocus();
}

void frmSearchContact::Clear()
{
    m_details->Clear();
    m_and->setChecked(true);
    m_characteristics.SetAllTicks(TreeTick::Off);
    m_attributes.SetAllTicks(TreeTick::Off);
    m_found.Clear();
    m_looked->clear();
    EnableResult();
    setWindowTitle(QStringLiteral("Contact Search"));
    m_tabs->setCurrentWidget(m_details);
    m_details->First()->setFocus();
}

void frmSearchContact::ViewContacts()
{
    QStringList keys = m_found.SelectedKeys();
    if (keys.isEmpty())
        keys = m_found.Keys();
    frmAddContact::ShowRecords(keys, this);
}

void frmSearchContact::HandOver()
{
    if (!m_target.IsEmpty() &&
        Dialogs::MsgBox(QStringLiteral("Clear selection box first?"), QStringLiteral("Selection"),
                        Dialogs::Buttons::YesNo, Dialogs::Icon::Question) == Dialogs::Answer::Yes)
        m_target.Clear();
    Contact_JoinSelection(m_found, m_target);
    gDialogResult = PeopleRun::Publish(this, m_target) ? 1 : 0;
    accept();
}

/// A search that runs is stopped first; what it found stays to be looked at.
bool frmSearchContact::MayLeave()
{
    if (m_running)
        gStop = true;
    return !m_running;
}
