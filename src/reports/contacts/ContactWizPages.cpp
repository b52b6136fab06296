#include "reports/contacts/ContactWizPages.h"

#include "forms/frames/FormBuilder.h"
#include "reports/writer/HTMLscript.h"

namespace
{
/// A box of options, with the first one set.
template <size_t count>
void Options(FormBuilder &form, const QString &title, const QString &name, const QStringList &captions,
             std::array<QRadioButton *, count> &options, int firstNumber = 0)
{
    form.BeginGroup(title);
    for (size_t i = 0; i < count; ++i)
        options[i] = form.Option(name % u'_' % QString::number(firstNumber + static_cast<int>(i)),
                                 captions.value(static_cast<qsizetype>(i)));
    form.EndGroup();
    options[0]->setChecked(true);
}

template <size_t count>
int Chosen(const std::array<QRadioButton *, count> &options)
{
    for (size_t i = 0; i < count; ++i) {
        if (options[i]->isChecked())
            return static_cast<int>(i);
    }
    return 0;
}

const QStringList layouts = {QStringLiteral("One item per &line"), QStringLiteral("&Tabular layout")};

/// The two buttons that tick all lines of a list or none.
void TickButtons(FormBuilder &form, ListModel &items)
{
    form.BeginButtons(FormBuilder::Align::Start);
    const auto button = [&](const QString &name, const QString &caption, bool checked) {
        QObject::connect(form.Button(name, caption), &QPushButton::clicked, &items, [&items, checked] {
            for (int row = 0; row < items.Count(); ++row)
                items.SetChecked(row, checked);
        });
    };
    button(QStringLiteral("AllBtn"), QStringLiteral("Select &ALL"), true);
    button(QStringLiteral("ClearBtn"), QStringLiteral("Cl&ear"), false);
    form.EndButtons();
}

void GiveRoom(ListView *list)
{
    list->setMinimumSize(list->fontMetrics().averageCharWidth() * 54, list->fontMetrics().height() * 14);
}
} // namespace

ContactWizWelcomePage::ContactWizWelcomePage(QWidget *page)
    : QObject(page)
{
    const char *names[] = {"Contact Details",
                           "Staff Details",
                           "Characteristics & Discounts",
                           "Organisations",
                           "Contacts by Characteristic",
                           "Contacts, ordered by Group Type then Group",
                           "Contacts, ordered by Group then Group Type"};
    std::vector<ListItem> reports;
    for (int report = Contacts; report <= ByGroup; ++report)
        reports.push_back({u'?' % QString::number(report), QString::fromLatin1(names[report - 1])});
    m_reports.Fill(std::move(reports));
    m_reports.SelectFirst();
    FormBuilder form(page);
    RepList = form.List(QStringLiteral("RepList"), QStringLiteral("&Select report:"), m_reports);
    HTMLopt = form.Check(QStringLiteral("HTMLopt"), QStringLiteral("Use &Table Border.."));
    HTMLopt->setChecked(HTMLBorder == 1);
    connect(RepList, &ListView::Opened, this, &ContactWizWelcomePage::Chosen);
    connect(m_reports.Selection(), &QItemSelectionModel::selectionChanged, this,
            &ContactWizWelcomePage::Changed);
}

void ContactWizWelcomePage::Enter()
{
    RepList->setFocus();
}

ContactWizWelcomePage::Report ContactWizWelcomePage::Selected() const
{
    const int row = m_reports.CurrentRow();
    return row < 0 ? Contacts : static_cast<Report>(KeyNumber(m_reports.At(row).key));
}

bool ContactWizWelcomePage::TableBorder() const
{
    return HTMLopt->isChecked();
}

ContactWizChoicePage::ContactWizChoicePage(QWidget *page)
    : QObject(page)
{
    FillChoiceList(m_items);
    FormBuilder form(page);
    form.BeginColumns();
    Basic = form.List(QStringLiteral("Basic"), QStringLiteral("&Include the following contact details:"),
                      m_items);
    GiveRoom(Basic);
    TickButtons(form, m_items);
    form.NextColumn();
    Options(form, QStringLiteral("Names"), QStringLiteral("nameOpt"),
            {QStringLiteral("Name&2, Name1"), QStringLiteral("Name2, Name1 (&Mr)"),
             QStringLiteral("Name&1 Name2"), QStringLiteral("M&r Name1 Name2")},
            nameOpt);
    Options(form, QStringLiteral("People"), QStringLiteral("ConOpt"),
            {QStringLiteral("All C&ontacts"), QStringLiteral("&Selected Contacts Only")}, ConOpt);
    Options(form, QStringLiteral("Layout"), QStringLiteral("LayOpt"), layouts, LayOpt);
    form.Stretch();
    form.EndColumns();
}

void ContactWizChoicePage::Enter(bool tabularOnly)
{
    if (tabularOnly && !m_tabularOnly)
        m_chosenLayout = ::Chosen(LayOpt);
    if (tabularOnly != m_tabularOnly)
        LayOpt[static_cast<size_t>(tabularOnly ? 1 : m_chosenLayout)]->setChecked(true);
    m_tabularOnly = tabularOnly;
    for (QRadioButton *option : LayOpt)
        option->setDisabled(tabularOnly);
    Basic->setFocus();
}

void ContactWizChoicePage::OfferSelected(bool offered, bool preferred)
{
    ConOpt[1]->setVisible(offered);
    ConOpt[offered && preferred ? 1 : 0]->setChecked(true);
}

ContactReport ContactWizChoicePage::Choices()
{
    ContactReport report;
    report.flags = SetUpChoiceParameters(m_items);
    report.nameOpt = ::Chosen(nameOpt);
    report.selectedOnly = ConOpt[1]->isChecked();
    return report;
}

bool ContactWizChoicePage::Tabular() const
{
    return LayOpt[1]->isChecked();
}

ContactWizOrgPage::ContactWizOrgPage(QWidget *page)
    : QObject(page)
{
    FillOrgChoiceList(m_items);
    FormBuilder form(page);
    form.BeginColumns();
    OrgDetails =
        form.List(QStringLiteral("OrgDetails"), QStringLiteral("&Include the following data:"), m_items);
    GiveRoom(OrgDetails);
    form.NextColumn();
    // The first pair of these names is on the page for people.
    Options(form, QStringLiteral("Layout"), QStringLiteral("LayOpt"), layouts, LayOpt, 2);
    form.Stretch();
    form.EndColumns();
}

void ContactWizOrgPage::Enter()
{
    OrgDetails->setFocus();
}

OrgFlags ContactWizOrgPage::Choices()
{
    return SetUpOrgParameters(m_items);
}

bool ContactWizOrgPage::Tabular() const
{
    return LayOpt[1]->isChecked();
}
