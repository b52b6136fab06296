#include "organisations/record/OrganisationDetailsPage.h"

#include "contacts/lists/ContactFields.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"

OrganisationDetailsPage::OrganisationDetailsPage(QWidget *parent)
    : QWidget(parent)
{
    FormBuilder form(this);
    form.BeginColumns();
    QGroupBox *name = BuildName(form);
    ContactFields::AlignCaptions({name, BuildAddress(form)});
    form.NextColumn();
    BuildReach(form);
    form.EndColumns();
}

QLineEdit *OrganisationDetailsPage::Text(QLineEdit *field, QString OrganisationRecord::*column)
{
    m_texts.emplace_back(field, column);
    return field;
}

void OrganisationDetailsPage::AddChoice(TypedCombo *field, int OrganisationRecord::*column,
                                        ContactSection section)
{
    ContactFields::TakeTyped(field, section);
    m_choices.push_back({field, column, section});
}

QGroupBox *OrganisationDetailsPage::BuildName(FormBuilder &form)
{
    QGroupBox *group = form.BeginGroup(QStringLiteral("Organisation"));
    m_name = Text(form.Text(QStringLiteral("OrgName"), QStringLiteral("Name:")), &OrganisationRecord::name);
    ContactFields::FitChars(m_name, 30);
    m_required.Add(form.Label(QStringLiteral("Label_0")), m_name);
    Text(form.Text(QStringLiteral("RefName"), QStringLiteral("Reference ID:")),
         &OrganisationRecord::referenceId);
    m_board =
        form.Check(QStringLiteral("AwardBoardChk"), QStringLiteral("Organisation is also an award board"));
    form.EndGroup();
    return group;
}

QGroupBox *OrganisationDetailsPage::BuildAddress(FormBuilder &form)
{
    QGroupBox *group = form.BeginGroup(QStringLiteral("Address"));
    QLineEdit *lines[4];
    ContactFields::AddressLines(form, QStringLiteral("Addr"), false, lines);
    Text(lines[0], &OrganisationRecord::addr1);
    Text(lines[1], &OrganisationRecord::addr2);
    Text(lines[2], &OrganisationRecord::addr3);
    Text(lines[3], &OrganisationRecord::addr4);
    TypedCombo *city = form.Typed(QStringLiteral("CityList"), QStringLiteral("Town/City:"), m_cities);
    TypedCombo *county =
        form.Typed(QStringLiteral("CountyList"), QStringLiteral("State/County:"), m_counties);
    Text(form.Text(QStringLiteral("Postcode"), QStringLiteral("ZIP/Postcode:")),
         &OrganisationRecord::postcode);
    TypedCombo *country = form.Typed(QStringLiteral("CountryList"), QStringLiteral("Country:"), m_countries);
    form.EndGroup();
    AddChoice(city, &OrganisationRecord::city, ContactSection::Cities);
    AddChoice(county, &OrganisationRecord::county, ContactSection::Counties);
    AddChoice(country, &OrganisationRecord::country, ContactSection::Countries);
    return group;
}

QGroupBox *OrganisationDetailsPage::BuildReach(FormBuilder &form)
{
    QGroupBox *group = form.BeginGroup(QStringLiteral("Telephone and internet"));
    Text(form.Text(QStringLiteral("Telday"), QStringLiteral("Telephone:")), &OrganisationRecord::telDay);
    Text(form.Text(QStringLiteral("Telout"), QStringLiteral("Out of hours:")), &OrganisationRecord::telOut);
    Text(form.Text(QStringLiteral("Fax"), QStringLiteral("Fax:")), &OrganisationRecord::fax);
    QLineEdit *email =
        Text(form.Text(QStringLiteral("email"), QStringLiteral("E-mail:")), &OrganisationRecord::email);
    ContactFields::MailButton(form, QStringLiteral("EBtn"), email);
    QLineEdit *url =
        Text(form.Text(QStringLiteral("URL"), QStringLiteral("Website:")), &OrganisationRecord::url);
    ContactFields::WebButton(form, QStringLiteral("GoBtn"), url);
    form.EndGroup();
    return group;
}

void OrganisationDetailsPage::FillLists()
{
    for (const Choice &choice : m_choices)
        Contact_FillList(choice.section, choice.field->Model(), true);
}

void OrganisationDetailsPage::Load(const OrganisationRecord &record)
{
    for (const auto &[field, column] : m_texts)
        ContactFields::Show(field, record.*column);
    for (const Choice &choice : m_choices)
        ContactFields::ChooseStored(choice.section, choice.field->Model(), record.*choice.column);
    m_board->setChecked(record.board);
}

void OrganisationDetailsPage::Store(OrganisationRecord &record) const
{
    for (const Choice &choice : m_choices)
        record.*choice.column = ContactFields::ChosenToStore(choice.section, choice.field);
    for (const auto &[field, column] : m_texts)
        record.*column = field->text();
    record.board = m_board->isChecked();
}

void OrganisationDetailsPage::Clear()
{
    Load({});
    for (const Choice &choice : m_choices)
        choice.field->Model().SetCurrent(0);
}

void OrganisationDetailsPage::SetLocked(bool locked)
{
    LockFields(this, locked);
}

void OrganisationDetailsPage::ShowPlaceholder(const QString &text)
{
    Clear();
    m_name->setText(text);
}

QString OrganisationDetailsPage::Name() const
{
    return m_name->text();
}
