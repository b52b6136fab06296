#include "contacts/record/ContactDetailsPage.h"

#include "contacts/lists/ContactFields.h"
#include "contacts/record/ContactBusinessPage.h"
#include "contacts/record/frmAddContact.h"
#include "core/session/Session.h"
#include "database/statements/System.h"
#include "database/values/DecodeDateFunc.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"
#include "platform/desktop/Clock.h"

#include <QScopedValueRollback>

namespace
{
constexpr int female = 1;
constexpr int male = 2;

QString AltRefCaption(int index)
{
    const QString label = SystemValue(SystemRef::AltRefLabel + index);
    return label.isEmpty() ? QString() : QString(label % u':');
}
} // namespace

ContactDetailsPage::ContactDetailsPage(QWidget *parent)
    : QWidget(parent)
{
    m_genders.Fill({{QStringLiteral("Not Specified"), 0},
                    {QStringLiteral("Female"), female},
                    {QStringLiteral("Male"), male}});
    {
        FormBuilder form(this);
        form.BeginColumns();
        ContactFields::AlignCaptions({BuildPerson(form), BuildAddress(form), BuildReferences(form)});
        form.NextColumn();
        QGroupBox *reach = BuildReach(form);
        m_business = new ContactBusinessPage(this);
        form.Place(m_business, QStringLiteral("Business"), QString(), true);
        form.EndColumns();
        ContactFields::AlignCaptions({reach, m_business->Group()});
    }
    setTabOrder(findChild<QWidget *>(QStringLiteral("GoBtn")), m_business->First());

    m_contactList->SetEnterHandler([this] { AddEmergencyContact(); });
    connect(&m_titles, &ComboModel::CurrentChanged, this, &ContactDetailsPage::GenderFromTitle);
}

QLineEdit *ContactDetailsPage::Text(QLineEdit *field, QString ContactRecord::*column)
{
    m_texts.emplace_back(field, column);
    m_personal << field;
    return field;
}

TypedCombo *ContactDetailsPage::AddChoice(TypedCombo *field, int ContactRecord::*column,
                                          ContactSection section)
{
    m_choices.push_back({field, column, section});
    m_personal << field;
    // People are added by a record of their own.
    if (section != ContactSection::Contacts)
        ContactFields::TakeTyped(field, section);
    return field;
}

QGroupBox *ContactDetailsPage::BuildPerson(FormBuilder &form)
{
    QGroupBox *group = form.BeginGroup(QStringLiteral("Person"));
    AddChoice(form.Typed(QStringLiteral("DesList"), QStringLiteral("&Title:"), m_titles),
              &ContactRecord::designation, ContactSection::Titles);
    m_forename =
        Text(form.Text(QStringLiteral("Forname"), QStringLiteral("&Forename:")), &ContactRecord::forename);
    m_required.Add(form.Label(QStringLiteral("Label_1")), m_forename);
    m_surname =
        Text(form.Text(QStringLiteral("Surname"), QStringLiteral("&Surname:")), &ContactRecord::surname);
    m_required.Add(form.Label(QStringLiteral("Label_2")), m_surname);
    m_dob = form.Date(QStringLiteral("Dob"), QStringLiteral("Date of &birth:"));
    m_dob->TakeShortYearsAsPast();
    form.Beside();
    ComboBox *sexList = form.Combo(QStringLiteral("SexList"), QStringLiteral("&Gender:"), m_genders);
    AddChoice(form.Typed(QStringLiteral("EthnicList"), QStringLiteral("Et&hnicity:"), m_ethnicTypes),
              &ContactRecord::ethnicGroup, ContactSection::EthnicTypes);
    m_contactList = AddChoice(
        form.Typed(QStringLiteral("ContactList"), QStringLiteral("E&mergency Contact:"), m_emergencyContacts),
        &ContactRecord::contactContactRef, ContactSection::Contacts);
    form.EndGroup();
    m_personal << m_dob << sexList;
    return group;
}

QGroupBox *ContactDetailsPage::BuildAddress(FormBuilder &form)
{
    QGroupBox *group = form.BeginGroup(QStringLiteral("Address"));
    QLineEdit *lines[4];
    ContactFields::AddressLines(form, QStringLiteral("Addr"), false, lines);
    Text(lines[0], &ContactRecord::addr1);
    Text(lines[1], &ContactRecord::addr2);
    Text(lines[2], &ContactRecord::addr3);
    Text(lines[3], &ContactRecord::addr4);
    AddChoice(form.Typed(QStringLiteral("CityList"), QStringLiteral("To&wn/City:"), m_cities),
              &ContactRecord::city, ContactSection::Cities);
    AddChoice(form.Typed(QStringLiteral("CountyList"), QStringLiteral("State/County:"), m_counties),
              &ContactRecord::county, ContactSection::Counties);
    Text(form.Text(QStringLiteral("Postcode"), QStringLiteral("&ZIP/Postcode:")), &ContactRecord::postcode);
    form.Beside();
    AddChoice(form.Typed(QStringLiteral("CountryList"), QStringLiteral("Countr&y:"), m_countries),
              &ContactRecord::country, ContactSection::Countries);
    form.EndGroup();
    return group;
}

QGroupBox *ContactDetailsPage::BuildReferences(FormBuilder &form)
{
    QGroupBox *group = form.BeginGroup(QStringLiteral("References"));
    Text(form.Text(QStringLiteral("RefID_0"), QStringLiteral("Reference &ID:")), &ContactRecord::referenceId);
    bool beside = false;
    for (int i = 0; i < 4; ++i) {
        const QString number = QString::number(i + 1);
        const QString caption = AltRefCaption(i);
        const QString usual = u"Alt Ref ID " % number % u':';
        if (beside && !caption.isEmpty())
            form.Beside();
        QLineEdit *field = form.Text(u"RefID_" % number, caption.isEmpty() ? usual : caption);
        field->setHidden(caption.isEmpty());
        form.Label()->setHidden(caption.isEmpty());
        m_personal << field;
        m_altRef[static_cast<size_t>(i)] = field;
        beside = !caption.isEmpty() && !beside;
    }
    form.EndGroup();
    return group;
}

QGroupBox *ContactDetailsPage::BuildReach(FormBuilder &form)
{
    QGroupBox *group = form.BeginGroup(QStringLiteral("Telephone and internet"));
    QLineEdit *day =
        Text(form.Text(QStringLiteral("Telday"), QStringLiteral("Te&lephone:")), &ContactRecord::telDay);
    form.Beside();
    Text(form.Text(QStringLiteral("TelExt"), QStringLiteral("Ext:")), &ContactRecord::telExt);
    QLineEdit *evening =
        Text(form.Text(QStringLiteral("Televe"), QStringLiteral("Tel (Eves):")), &ContactRecord::telEve);
    form.Beside();
    Text(form.Text(QStringLiteral("Fax"), QStringLiteral("Fax:")), &ContactRecord::fax);
    for (QLineEdit *number : {day, evening})
        ContactFields::FitChars(number, 15);
    m_email = Text(form.Text(QStringLiteral("email"), QStringLiteral("E-mail:")), &ContactRecord::email);
    ContactFields::MailButton(form, QStringLiteral("EBtn"), m_email);
    QLineEdit *url = Text(form.Text(QStringLiteral("URL"), QStringLiteral("Website:")), &ContactRecord::url);
    ContactFields::WebButton(form, QStringLiteral("GoBtn"), url);
    form.EndGroup();
    return group;
}

void ContactDetailsPage::FillLists()
{
    const QScopedValueRollback<bool> loading(m_loading, true);
    for (const Choice &choice : m_choices) {
        if (choice.section != ContactSection::Contacts)
            Contact_FillList(choice.section, choice.field->Model(), true);
    }
    m_newContactRow = QStringLiteral(" [ Press ENTER to add a new Contact ] ");
    FillEmergencyContacts();
    m_business->FillLists();
}

void ContactDetailsPage::Load(const ContactRecord &record)
{
    const QScopedValueRollback<bool> loading(m_loading, true);
    for (const auto &[field, column] : m_texts)
        ContactFields::Show(field, record.*column);
    for (size_t i = 0; i < record.altRef.size(); ++i)
        ContactFields::Show(m_altRef[i], record.altRef[i]);
    for (const Choice &choice : m_choices)
        ContactFields::ChooseStored(choice.section, choice.field->Model(), record.*choice.column);
    KeepNewContactRow();
    m_genders.ChooseData(record.sex);
    // A number that is no date must not leave the birthday of the person shown before.
    if (const QDate dob = IntToDate(record.dob); dob.isValid())
        m_dob->SetDay(dob);
    else
        m_dob->SetUnknown(Clock::Today());
    m_business->Load(record);
}

void ContactDetailsPage::Store(ContactRecord &record)
{
    for (const Choice &choice : m_choices)
        record.*choice.column = ContactFields::ChosenToStore(choice.section, choice.field);
    KeepNewContactRow();
    for (const auto &[field, column] : m_texts)
        record.*column = field->text();
    for (size_t i = 0; i < record.altRef.size(); ++i)
        record.altRef[i] = m_altRef[i]->text();
    record.sex = m_genders.CurrentData();
    record.dob = m_dob->IsUnknown() ? 0 : DateToInt(m_dob->Day());
    m_business->Store(record);
}

void ContactDetailsPage::Clear()
{
    const QScopedValueRollback<bool> loading(m_loading, true);
    for (const auto &[field, column] : m_texts)
        field->clear();
    for (QLineEdit *field : m_altRef)
        field->clear();
    for (const Choice &choice : m_choices)
        choice.field->Model().SetCurrent(0);
    m_genders.SetCurrent(0);
    m_dob->SetUnknown(Clock::Today());
    m_business->Clear();
}

void ContactDetailsPage::SetLocked(bool locked)
{
    for (QWidget *field : m_personal)
        LockFields(field, locked);
    m_business->SetLocked(locked);
}

void ContactDetailsPage::ShowPlaceholder(const QString &text)
{
    Clear();
    m_forename->setText(text);
}

void ContactDetailsPage::MarkForename(const QString &text)
{
    m_required.Mark(findChild<CaptionLabel *>(QStringLiteral("Label_1")), text.trimmed().isEmpty());
}

QString ContactDetailsPage::Name() const
{
    // One who is gone has a placeholder alone.
    if (m_surname->text().isEmpty())
        return m_forename->text();
    return m_surname->text() % u", " % m_forename->text();
}

int ContactDetailsPage::OrganRef() const
{
    return m_business->OrganRef();
}

void ContactDetailsPage::GenderFromTitle()
{
    if (m_loading)
        return;
    const QString title = SplitRefLabel(m_titles.CurrentText()).name;
    if (title == u"Mr")
        m_genders.ChooseData(male);
    else if (title == u"Miss" || title == u"Mrs" || title == u"Ms")
        m_genders.ChooseData(female);
}

void ContactDetailsPage::FillEmergencyContacts()
{
    Contact_FillList(ContactSection::Contacts, m_emergencyContacts, true);
    KeepNewContactRow();
}

void ContactDetailsPage::KeepNewContactRow()
{
    if (m_emergencyContacts.FindData(0) < 0)
        m_emergencyContacts.Add(m_newContactRow, 0);
    m_newContactRow = QStringLiteral(" [ New Contact ] ");
}

void ContactDetailsPage::AddEmergencyContact()
{
    if (m_emergencyContacts.Current() < 0 || m_emergencyContacts.CurrentData() != 0)
        return;
    const int added = frmAddContact::AddRecord(this);
    FillEmergencyContacts();
    if (added > 0)
        m_emergencyContacts.ChooseData(added);
}
