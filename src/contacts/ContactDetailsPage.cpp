#include "contacts/ContactDetailsPage.h"

#include "contacts/ContactBusinessPage.h"
#include "contacts/ContactFields.h"
#include "contacts/frmAddContact.h"
#include "core/Session.h"
#include "database/DecodeDateFunc.h"
#include "database/System.h"
#include "forms/FieldLock.h"
#include "forms/FormBuilder.h"
#include "platform/Clock.h"

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

    ContactFields::TakeTyped(m_desList, ContactSection::Titles);
    ContactFields::TakeTyped(m_ethnicList, ContactSection::EthnicTypes);
    ContactFields::TakeTyped(m_cityList, ContactSection::Cities);
    ContactFields::TakeTyped(m_countyList, ContactSection::Counties);
    ContactFields::TakeTyped(m_countryList, ContactSection::Countries);
    m_contactList->SetEnterHandler([this] { AddEmergencyContact(); });
    connect(&m_titles, &ComboModel::CurrentChanged, this, &ContactDetailsPage::GenderFromTitle);
}

QGroupBox *ContactDetailsPage::BuildPerson(FormBuilder &form)
{
    QGroupBox *group = form.BeginGroup(QStringLiteral("Person"));
    m_desList = form.Typed(QStringLiteral("DesList"), QStringLiteral("Title:"), m_titles);
    m_forename = form.Text(QStringLiteral("Forname"), QStringLiteral("Forename:"));
    m_required.Add(form.Label(QStringLiteral("Label_1")), m_forename);
    m_surname = form.Text(QStringLiteral("Surname"), QStringLiteral("Surname:"));
    m_required.Add(form.Label(QStringLiteral("Label_2")), m_surname);
    m_dob = form.Date(QStringLiteral("Dob"), QStringLiteral("Date of birth:"));
    form.Beside();
    ComboBox *sexList = form.Combo(QStringLiteral("SexList"), QStringLiteral("Gender:"), m_genders);
    m_ethnicList = form.Typed(QStringLiteral("EthnicList"), QStringLiteral("Ethnicity:"), m_ethnicTypes);
    m_contactList =
        form.Typed(QStringLiteral("ContactList"), QStringLiteral("Emergency Contact:"), m_emergencyContacts);
    form.EndGroup();
    m_personal << m_desList << m_forename << m_surname << m_dob << sexList << m_ethnicList << m_contactList;
    return group;
}

QGroupBox *ContactDetailsPage::BuildAddress(FormBuilder &form)
{
    QGroupBox *group = form.BeginGroup(QStringLiteral("Address"));
    ContactFields::AddressLines(form, QStringLiteral("Addr"), false, m_addr);
    m_cityList = form.Typed(QStringLiteral("CityList"), QStringLiteral("Town/City:"), m_cities);
    m_countyList = form.Typed(QStringLiteral("CountyList"), QStringLiteral("State/County:"), m_counties);
    m_postcode = form.Text(QStringLiteral("Postcode"), QStringLiteral("ZIP/Postcode:"));
    m_countryList = form.Typed(QStringLiteral("CountryList"), QStringLiteral("Country:"), m_countries);
    form.EndGroup();
    m_personal << m_addr[0] << m_addr[1] << m_addr[2] << m_addr[3] << m_cityList << m_countyList << m_postcode
               << m_countryList;
    return group;
}

QGroupBox *ContactDetailsPage::BuildReferences(FormBuilder &form)
{
    QGroupBox *group = form.BeginGroup(QStringLiteral("References"));
    m_refId[0] = form.Text(QStringLiteral("RefID_0"), QStringLiteral("Reference ID:"));
    bool beside = false;
    for (int i = 1; i <= 4; ++i) {
        const QString caption = AltRefCaption(i - 1);
        const QString usual = u"Alt Ref ID " % QString::number(i) % u':';
        if (beside && !caption.isEmpty())
            form.Beside();
        m_refId[i] = form.Text(u"RefID_" % QString::number(i), caption.isEmpty() ? usual : caption);
        m_refId[i]->setHidden(caption.isEmpty());
        form.Label()->setHidden(caption.isEmpty());
        beside = !caption.isEmpty() && !beside;
    }
    form.EndGroup();
    m_personal << m_refId[0] << m_refId[1] << m_refId[2] << m_refId[3] << m_refId[4];
    return group;
}

QGroupBox *ContactDetailsPage::BuildReach(FormBuilder &form)
{
    QGroupBox *group = form.BeginGroup(QStringLiteral("Telephone and internet"));
    m_telDay = form.Text(QStringLiteral("Telday"), QStringLiteral("Telephone:"));
    form.Beside();
    m_telExt = form.Text(QStringLiteral("TelExt"), QStringLiteral("Ext:"));
    m_telEve = form.Text(QStringLiteral("Televe"), QStringLiteral("Tel (Eves):"));
    form.Beside();
    m_fax = form.Text(QStringLiteral("Fax"), QStringLiteral("Fax:"));
    for (QLineEdit *number : {m_telDay, m_telEve})
        ContactFields::FitChars(number, 15);
    m_email = form.Text(QStringLiteral("email"), QStringLiteral("E-mail:"));
    ContactFields::MailButton(form, QStringLiteral("EBtn"), m_email);
    m_url = form.Text(QStringLiteral("URL"), QStringLiteral("Website:"));
    ContactFields::WebButton(form, QStringLiteral("GoBtn"), m_url);
    form.EndGroup();
    m_personal << m_telDay << m_telExt << m_telEve << m_fax << m_email << m_url;
    return group;
}

void ContactDetailsPage::FillLists()
{
    const QScopedValueRollback<bool> loading(m_loading, true);
    Contact_FillList(ContactSection::Titles, m_titles, true);
    Contact_FillList(ContactSection::EthnicTypes, m_ethnicTypes, true);
    Contact_FillList(ContactSection::Cities, m_cities, true);
    Contact_FillList(ContactSection::Counties, m_counties, true);
    Contact_FillList(ContactSection::Countries, m_countries, true);
    FillEmergencyContacts(QStringLiteral(" [ Press ENTER to add a new Contact ] "));
    m_business->FillLists();
}

void ContactDetailsPage::Load(const ContactRecord &record)
{
    const QScopedValueRollback<bool> loading(m_loading, true);
    ContactFields::Show(m_forename, record.forename);
    ContactFields::Show(m_surname, record.surname);
    const QString addr[4] = {record.addr1, record.addr2, record.addr3, record.addr4};
    for (int i = 0; i < 4; ++i)
        ContactFields::Show(m_addr[i], addr[i]);
    ContactFields::Show(m_postcode, record.postcode);
    ContactFields::Show(m_telEve, record.telEve);
    ContactFields::Show(m_telDay, record.telDay);
    ContactFields::Show(m_telExt, record.telExt);
    ContactFields::Show(m_fax, record.fax);
    ContactFields::Show(m_email, record.email);
    ContactFields::Show(m_url, record.url);
    ContactFields::Show(m_refId[0], record.referenceId);
    for (int i = 0; i < 4; ++i)
        ContactFields::Show(m_refId[i + 1], record.altRef[static_cast<size_t>(i)]);
    // A number that is no date must not leave the birthday of the person shown before.
    const QDate dob = IntToDate(record.dob);
    m_dob->setDate(dob.isValid() ? dob : Clock::Today());

    m_genders.ChooseData(record.sex);
    m_titles.ChooseData(record.designation);
    m_counties.ChooseData(record.county);
    m_cities.ChooseData(record.city);
    m_countries.ChooseData(record.country);
    m_ethnicTypes.ChooseData(record.ethnicGroup);
    m_emergencyContacts.ChooseData(record.contactContactRef);
    m_business->Load(record);
}

void ContactDetailsPage::Store(ContactRecord &record) const
{
    for (TypedCombo *list : {m_desList, m_ethnicList, m_contactList, m_cityList, m_countyList, m_countryList})
        list->Leave();
    record.designation = qMax(1, m_titles.CurrentData());
    record.forename = m_forename->text();
    record.surname = m_surname->text();
    record.addr1 = m_addr[0]->text();
    record.addr2 = m_addr[1]->text();
    record.addr3 = m_addr[2]->text();
    record.addr4 = m_addr[3]->text();
    record.dob = DateToInt(m_dob->date());
    record.county = qMax(1, m_counties.CurrentData());
    record.postcode = m_postcode->text();
    record.city = qMax(1, m_cities.CurrentData());
    record.country = qMax(1, m_countries.CurrentData());
    record.telEve = m_telEve->text();
    record.telDay = m_telDay->text();
    record.telExt = m_telExt->text();
    record.fax = m_fax->text();
    record.email = m_email->text();
    record.url = m_url->text();
    record.ethnicGroup = qMax(1, m_ethnicTypes.CurrentData());
    record.sex = m_genders.CurrentData();
    record.contactContactRef = qMax(1, m_emergencyContacts.CurrentData());
    record.referenceId = m_refId[0]->text();
    for (int i = 0; i < 4; ++i)
        record.altRef[static_cast<size_t>(i)] = m_refId[i + 1]->text();
    m_business->Store(record);
}

void ContactDetailsPage::Clear()
{
    for (QWidget *field : m_personal) {
        if (auto *text = qobject_cast<QLineEdit *>(field))
            text->clear();
    }
    const QScopedValueRollback<bool> loading(m_loading, true);
    for (ComboModel *list :
         {&m_titles, &m_genders, &m_ethnicTypes, &m_emergencyContacts, &m_cities, &m_counties, &m_countries})
        list->SetCurrent(0);
    m_dob->setDate(Clock::Today());
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

QString ContactDetailsPage::Name() const
{
    return m_surname->text() % u", " % m_forename->text();
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

void ContactDetailsPage::FillEmergencyContacts(const QString &newContactRow)
{
    Contact_FillList(ContactSection::Contacts, m_emergencyContacts, true);
    m_emergencyContacts.Add(newContactRow, 0);
}

void ContactDetailsPage::AddEmergencyContact()
{
    if (m_emergencyContacts.Current() < 0 || m_emergencyContacts.CurrentData() != 0)
        return;
    const int added = frmAddContact::AddRecord(this);
    FillEmergencyContacts(QStringLiteral(" [ New Contact ] "));
    if (added > 0)
        m_emergencyContacts.ChooseData(added);
}
