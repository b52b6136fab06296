#include "contacts/manager/frmSelectContacts.h"

#include "contacts/manager/ContactSelection.h"
#include "contacts/manager/PeopleRun.h"
#include "contacts/manager/frmSearchContact.h"
#include "contacts/record/frmAddContact.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "database/values/GlobalCode.h"
#include "forms/fields/SearchBox.h"
#include "forms/frames/FormBuilder.h"
#include "platform/desktop/Dialogs.h"

#include <QLabel>
#include <QMenu>

namespace
{
using Mode = frmSelectContacts::Mode;

struct Words {
    QString taken;
    QString dropped;
};

/// What handing over does to those who were taken, and to those who were dropped.
Words WordsOf(Mode mode)
{
    switch (mode) {
    case Mode::EnrolOnCourse:
        return {QStringLiteral("enrolled"), QStringLiteral("taken off the course")};
    case Mode::Attendance:
        return {QStringLiteral("marked as attending"), QStringLiteral("marked as not attending")};
    case Mode::Candidates:
        return {QStringLiteral("entered as candidates"), QStringLiteral("taken off the assessment")};
    case Mode::OrganisationContacts:
        return {QStringLiteral("added to the organisation"), QStringLiteral("taken off the organisation")};
    case Mode::AddToTree:
        return {QStringLiteral("added to the events chosen"), {}};
    default:
        return {QStringLiteral("added to the list"), QStringLiteral("taken off the list")};
    }
}

QString WillBe(int people, const QString &what)
{
    const QString who =
        people == 1 ? QStringLiteral("1 person") : QString::number(people) % QStringLiteral(" people");
    return who % u" will be " % what;
}
} // namespace

frmSelectContacts::frmSelectContacts(QWidget *parent)
    : FormDialog(QStringLiteral("frmSelectContacts"), QStringLiteral("Select Contacts"), parent)
{
    gDialogResult = 0;
    m_available.SetColumns({QStringLiteral("Contact")});
    m_selected.SetColumns({QStringLiteral("Contact"), QStringLiteral("Address"), QStringLiteral("City"),
                           QStringLiteral("Postcode")});
    Contact_FillSubsetList(m_subsets);
    Build();
    BuildMenu();
    Connect();
    FillSubset();
    m_search->setFocus();
}

void frmSelectContacts::Configure(Mode mode, ListModel &target, PeopleStore store)
{
    m_mode = mode;
    m_target = &target;
    m_store = std::move(store);
    if (m_store.stored) {
        const QStringList stored = m_store.stored().value_or(QStringList());
        m_known = {stored.begin(), stored.end()};
    }
    if (m_mode == Mode::ReplaceList)
        Contact_JoinSelection(target, m_selected);
    else if (m_mode != Mode::AddToList)
        StartWith(target);
    Begin();
    if (m_mode == Mode::AddToList) {
        const QStringList keys = target.Keys();
        m_begun = {keys.begin(), keys.end()};
    }
}

/// Those who are there already, with their addresses.
void frmSelectContacts::StartWith(const ListModel &people)
{
    PeopleRun::Run(this, QStringLiteral("Selected Contacts"),
                   QStringLiteral("The rest are selected too, and shown by their names."),
                   [&](Progress &progress) {
                       if (m_store.start) {
                           m_store.start(people, m_selected, progress);
                       } else {
                           Contact_JoinNames(people, m_selected);
                           Contact_RefreshSelected(m_selected, progress);
                       }
                   });
}

void frmSelectContacts::Configure(Mode mode, TreeModel &target)
{
    m_mode = mode;
    m_tree = &target;
    Begin();
}

void frmSelectContacts::Begin()
{
    const QStringList keys = m_selected.Keys();
    m_begun = {keys.begin(), keys.end()};
    const auto tell = [this] {
        m_exitText->setText(WhatExitDoes());
        m_exit->setToolTip(m_exitText->text());
    };
    connect(&m_selected, &ListModel::Changed, this, tell);
    tell();
}

frmSelectContacts::Difference frmSelectContacts::Changed() const
{
    Difference difference;
    int kept = 0;
    for (const QString &key : m_selected.Keys())
        ++(m_begun.contains(key) ? kept : difference.taken);
    if (m_mode != Mode::AddToList)
        difference.dropped = static_cast<int>(m_begun.size()) - kept;
    return difference;
}

QString frmSelectContacts::WhatExitDoes() const
{
    const Difference difference = Changed();
    const Words words = WordsOf(m_mode);
    QStringList parts;
    if (difference.taken > 0)
        parts.append(WillBe(difference.taken, words.taken));
    if (difference.dropped > 0)
        parts.append(WillBe(difference.dropped, words.dropped));
    return parts.isEmpty() ? QStringLiteral("Exit changes nothing") : parts.join(QStringLiteral(", "));
}

bool frmSelectContacts::MayLeave()
{
    return Changed().IsNone() ||
           Dialogs::MsgBox(QStringLiteral("Leave without this?\n\n") % WhatExitDoes(), windowTitle(),
                           Dialogs::Buttons::YesNo, Dialogs::Icon::Question,
                           Dialogs::Answer::No) == Dialogs::Answer::Yes;
}

void frmSelectContacts::Build()
{
    FormBuilder form(this);
    m_search = form.Text(QStringLiteral("SearchBox"), QStringLiteral("&Type name or select from list:"));
    m_search->setClearButtonEnabled(true);
    form.Beside();
    form.Combo(QStringLiteral("ConcessionList"), QStringLiteral("&Sub-set by Characteristic:"), m_subsets);

    const FormBuilder::Pair pair =
        form.UsedAvailablePair({.available = QStringLiteral("ContactList"),
                                .availableCaption = QStringLiteral("Available Contacts"),
                                .used = QStringLiteral("SelectedList"),
                                .usedCaption = QStringLiteral("Selected Contacts:")},
                               m_available, m_selected);
    m_availableList = pair.available;
    m_selectedList = pair.used;
    m_menuList = pair.available;
    m_viewed = pair.available;
    m_moves = pair.moves;
    m_availableList->SetEmptyText(QStringLiteral("Nobody is in this list."));
    m_selectedList->SetEmptyText(QStringLiteral("Nobody is selected."));
    m_selectedList->SetColumnChars({22, 18, 12, 9});

    form.BeginButtons(FormBuilder::Align::Start);
    m_new = form.Button(QStringLiteral("AddBtn"), QStringLiteral("&New Contact"));
    m_view = form.Button(QStringLiteral("ViewBtn"), QStringLiteral("&View Contact"));
    m_find = form.Button(QStringLiteral("FindBtn"), QStringLiteral("&Find"));
    form.Gap();
    m_refresh = form.Button(QStringLiteral("RefBtn"), QStringLiteral("Refresh"));
    m_exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
    m_exitText = form.Line(QStringLiteral("ExitText"), {});
    m_exitText->setAlignment(Qt::AlignRight);
    resize(fontMetrics().averageCharWidth() * 150, fontMetrics().lineSpacing() * 32);
}

void frmSelectContacts::BuildMenu()
{
    m_menu = new QMenu(this);
    m_menu->setObjectName(QStringLiteral("Menu"));
    const auto add = [this](const QString &name, const QString &caption) {
        QAction *action = m_menu->addAction(caption);
        action->setObjectName(name);
        return action;
    };
    QAction *newContact = add(QStringLiteral("ID_New"), QStringLiteral("&New Contact\tCtrl+N"));
    newContact->setEnabled(UserMay(Right::Contacts, Level::Add));
    connect(newContact, &QAction::triggered, this, &frmSelectContacts::AddContact);
    m_menu->addSeparator();
    connect(add(QStringLiteral("ID_Add"), QStringLiteral("&Add")), &QAction::triggered, m_moves,
            &UsedAvailable::Add);
    connect(add(QStringLiteral("ID_Remove"), QStringLiteral("Re&move")), &QAction::triggered, m_moves,
            &UsedAvailable::Remove);
    connect(add(QStringLiteral("ID_SelectAll"), QStringLiteral("&Select All")), &QAction::triggered, this,
            [this] { m_menuList->Model().SelectAll(); });
    m_menu->addSeparator();
    connect(add(QStringLiteral("ID_Refresh"), QStringLiteral("&Refresh\tF5")), &QAction::triggered, this,
            &frmSelectContacts::Refresh);
}

void frmSelectContacts::Connect()
{
    BindSearchBox(m_search, m_availableList, [this] {
        m_moves->Add();
        m_search->selectAll();
    });
    connect(&m_subsets, &ComboModel::CurrentChanged, this, [this](int row) {
        if (row >= 0 && m_subsets.CurrentData() != m_shownSubset)
            FillSubset();
    });
    m_moves->SetActions({.add = [this] { PeopleRun::SelectChosen(this, m_available, m_selected); },
                         .remove = [this] { m_selected.Take(m_selected.SelectedRows()); },
                         .clear = [this] { m_selected.Clear(); }});
    connect(m_new, &QPushButton::clicked, this, &frmSelectContacts::AddContact);
    connect(m_view, &QPushButton::clicked, this, &frmSelectContacts::ViewContacts);
    connect(m_find, &QPushButton::clicked, this, &frmSelectContacts::Search);
    connect(m_refresh, &QPushButton::clicked, this, &frmSelectContacts::Refresh);
    connect(m_exit, &QPushButton::clicked, this, &frmSelectContacts::HandOver);
    for (ListView *list : {m_availableList, m_selectedList}) {
        list->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(list, &ListView::customContextMenuRequested, this,
                [this, list](const QPoint &position) { ShowMenu(list, position); });
        connect(list->Model().Selection(), &QItemSelectionModel::selectionChanged, this,
                [this, list] { OnSelection(list); });
    }
    m_new->setEnabled(UserMay(Right::Contacts, Level::Add));
    OnSelection(m_availableList);
}

void frmSelectContacts::OnSelection(ListView *list)
{
    const auto isChosen = [](ListView *of) { return of->Model().Selection()->hasSelection(); };
    if (isChosen(list))
        m_viewed = list;
    else if (!isChosen(m_viewed))
        m_viewed = m_viewed == m_availableList ? m_selectedList : m_availableList;
    m_view->setEnabled(isChosen(m_viewed));
}

void frmSelectContacts::ShowMenu(ListView *list, const QPoint &position)
{
    m_menuList = list;
    const auto action = [this](const QString &name) { return m_menu->findChild<QAction *>(name); };
    action(QStringLiteral("ID_Add"))->setEnabled(m_available.Selection()->hasSelection());
    action(QStringLiteral("ID_Remove"))->setEnabled(m_selected.Selection()->hasSelection());
    action(QStringLiteral("ID_SelectAll"))->setEnabled(!list->Model().IsEmpty());
    m_menu->popup(list->viewport()->mapToGlobal(position));
}

void frmSelectContacts::FillSubset()
{
    m_shownSubset = m_subsets.CurrentData();
    PeopleRun::FillSubset(this, ConcessionRef(m_shownSubset), m_available);
}

void frmSelectContacts::Refresh()
{
    Contact_FillSubsetList(m_subsets);
    FillSubset();
    PeopleRun::Refresh(this, m_selected);
}

void frmSelectContacts::AddContact()
{
    const ContactRef contactRef(frmAddContact::AddRecord(this));
    if (!contactRef)
        return;
    Refresh();
    const int row = m_available.Find(u'?' % SqlNumber(contactRef));
    if (row < 0)
        return;
    m_available.SelectOnly(row);
    m_availableList->ShowRow(row);
}

void frmSelectContacts::ViewContacts()
{
    const QStringList keys = m_viewed->Model().SelectedKeys();
    frmAddContact::ShowRecords(keys, this);
    Refresh();
}

void frmSelectContacts::Search()
{
    frmSearchContact(m_selected, this).Run();
}

void frmSelectContacts::HandOver()
{
    if (!Contact_DropDeleted(m_selected, windowTitle()) || !FollowStored() || !Deliver())
        return;
    gDialogResult = 1;
    accept();
}

bool frmSelectContacts::Deliver()
{
    switch (m_mode) {
    case Mode::AddToList:
        Contact_JoinNames(m_selected, *m_target);
        return true;
    case Mode::ReplaceList:
        Contact_ReplaceSelection(m_selected, *m_target);
        return true;
    case Mode::AddToTree:
        Contact_JoinTree(m_selected, *m_tree);
        return true;
    default:
        return m_store.take(this, m_selected, m_known);
    }
}

bool frmSelectContacts::FollowStored()
{
    if (!m_store.stored)
        return true;
    const std::optional<QStringList> stored = m_store.stored();
    return stored && Contact_FollowStored(*stored, m_known, m_selected, windowTitle());
}
