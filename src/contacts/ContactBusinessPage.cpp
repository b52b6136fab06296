#include "contacts/ContactBusinessPage.h"

#include "contacts/ContactFields.h"
#include "forms/FieldLock.h"
#include "forms/FormBuilder.h"

#include <QLayout>

ContactBusinessPage::ContactBusinessPage(QWidget *parent)
    : QWidget(parent)
{
    FormBuilder form(this);
    layout()->setContentsMargins({});
    m_group = form.BeginGroup(QStringLiteral("Business"));
    m_organList = form.Typed(QStringLiteral("OrganList"), QStringLiteral("Organisation:"), m_organisations);
    m_jobTitle = form.Text(QStringLiteral("JobTitle"), QStringLiteral("Position:"));
    ContactFields::FitChars(m_jobTitle, 20);
    // The organisation's own screen does not stand yet.
    form.Beside();
    form.Button(QStringLiteral("EditOrgBtn"), QStringLiteral("&Edit Organisation"))->setEnabled(false);
    BuildAddress(form);
    form.EndGroup();

    ContactFields::TakeTyped(m_organList, ContactSection::Organisations);
    connect(&m_organisations, &ComboModel::CurrentChanged, this, &ContactBusinessPage::ShowChosen);
}

void ContactBusinessPage::BuildAddress(FormBuilder &form)
{
    ContactFields::AddressLines(form, QStringLiteral("Org_Addr"), true, m_addr);
    m_city = form.ReadOnly(QStringLiteral("Org_City"), QStringLiteral("Town/City:"));
    form.Beside();
    m_postcode = form.ReadOnly(QStringLiteral("Org_PostCode"), QStringLiteral("ZIP/Postcode:"));
    m_county = form.ReadOnly(QStringLiteral("Org_County"), QStringLiteral("State/County:"));
    form.Beside();
    m_country = form.ReadOnly(QStringLiteral("Org_Country"), QStringLiteral("Country:"));
    m_tel = form.ReadOnly(QStringLiteral("Org_Tel"), QStringLiteral("Telephone:"));
    form.Beside();
    m_telOut = form.ReadOnly(QStringLiteral("Org_Telout"), QStringLiteral("Out of hours:"));
    for (QLineEdit *number : {m_tel, m_telOut})
        ContactFields::FitChars(number, 15);
    m_fax = form.ReadOnly(QStringLiteral("Org_Fax"), QStringLiteral("Fax:"));
    m_email = form.ReadOnly(QStringLiteral("Org_Email"), QStringLiteral("E-mail:"));
    ContactFields::MailButton(form, QStringLiteral("Org_EBtn"), m_email);
    m_url = form.ReadOnly(QStringLiteral("Org_URL"), QStringLiteral("Website:"));
    ContactFields::WebButton(form, QStringLiteral("Org_GoBtn"), m_url);
}

void ContactBusinessPage::FillLists()
{
    Contact_FillList(ContactSection::Organisations, m_organisations, true);
}

void ContactBusinessPage::Load(const ContactRecord &record)
{
    m_organisations.ChooseData(record.organRef);
    ContactFields::Show(m_jobTitle, record.jobTitle);
}

void ContactBusinessPage::Store(ContactRecord &record) const
{
    m_organList->Leave();
    record.organRef = qMax(1, m_organisations.CurrentData());
    record.jobTitle = m_jobTitle->text();
}

void ContactBusinessPage::Clear()
{
    m_organisations.SetCurrent(0);
    m_jobTitle->clear();
}

void ContactBusinessPage::SetLocked(bool locked)
{
    LockFields(m_organList, locked);
    LockFields(m_jobTitle, locked);
}

QWidget *ContactBusinessPage::First() const
{
    return m_organList;
}

void ContactBusinessPage::ShowChosen()
{
    const int organRef = m_organisations.CurrentData();
    if (organRef > 1)
        ADO_Organisation_ShowContactOrganisation(*this, organRef);
    else
        ShowOrganisation({});
}

void ContactBusinessPage::ShowOrganisation(const ContactOrganisation &organisation)
{
    const QString lines[4] = {organisation.addr1, organisation.addr2, organisation.addr3, organisation.addr4};
    for (int i = 0; i < 4; ++i)
        ContactFields::Show(m_addr[i], lines[i]);
    ContactFields::Show(m_postcode, organisation.postcode);
    ContactFields::Show(m_city, organisation.city);
    ContactFields::Show(m_county, organisation.county);
    ContactFields::Show(m_country, organisation.country);
    ContactFields::Show(m_tel, organisation.telDay);
    ContactFields::Show(m_telOut, organisation.telOut);
    ContactFields::Show(m_fax, organisation.fax);
    ContactFields::Show(m_email, organisation.email);
    ContactFields::Show(m_url, organisation.url);
}
