#include "contacts/record/ContactBusinessPage.h"

#include "contacts/lists/ContactFields.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OtherScreens.h"

#include <QLayout>
#include <QSignalBlocker>

ContactBusinessPage::ContactBusinessPage(QWidget *parent)
    : QWidget(parent)
{
    FormBuilder form(this);
    layout()->setContentsMargins({});
    m_group = form.BeginGroup(QStringLiteral("Business"));
    m_organList = form.Typed(QStringLiteral("OrganList"), QStringLiteral("&Organisation:"), m_organisations);
    m_jobTitle = form.Text(QStringLiteral("JobTitle"), QStringLiteral("Position:"));
    ContactFields::FitChars(m_jobTitle, 20);
    form.Beside();
    m_editOrgBtn = form.Button(QStringLiteral("EditOrgBtn"), QStringLiteral("&Edit Organisation"));
    BuildAddress(form);
    form.EndGroup();

    ContactFields::TakeTyped(m_organList, ContactSection::Organisations);
    connect(&m_organisations, &ComboModel::CurrentChanged, this, &ContactBusinessPage::ShowChosen);
    connect(m_editOrgBtn, &QPushButton::clicked, this, &ContactBusinessPage::EditOrganisation);
}

QLineEdit *ContactBusinessPage::Text(QLineEdit *field, QString ContactOrganisation::*column)
{
    m_texts.emplace_back(field, column);
    return field;
}

void ContactBusinessPage::BuildAddress(FormBuilder &form)
{
    QLineEdit *lines[4];
    ContactFields::AddressLines(form, QStringLiteral("Org_Addr"), true, lines);
    Text(lines[0], &ContactOrganisation::addr1);
    Text(lines[1], &ContactOrganisation::addr2);
    Text(lines[2], &ContactOrganisation::addr3);
    Text(lines[3], &ContactOrganisation::addr4);
    Text(form.ReadOnly(QStringLiteral("Org_City"), QStringLiteral("Town/City:")), &ContactOrganisation::city);
    form.Beside();
    Text(form.ReadOnly(QStringLiteral("Org_PostCode"), QStringLiteral("ZIP/Postcode:")),
         &ContactOrganisation::postcode);
    Text(form.ReadOnly(QStringLiteral("Org_County"), QStringLiteral("State/County:")),
         &ContactOrganisation::county);
    form.Beside();
    Text(form.ReadOnly(QStringLiteral("Org_Country"), QStringLiteral("Country:")),
         &ContactOrganisation::country);
    QLineEdit *day = Text(form.ReadOnly(QStringLiteral("Org_Tel"), QStringLiteral("Telephone:")),
                          &ContactOrganisation::telDay);
    form.Beside();
    QLineEdit *out = Text(form.ReadOnly(QStringLiteral("Org_Telout"), QStringLiteral("Out of hours:")),
                          &ContactOrganisation::telOut);
    for (QLineEdit *number : {day, out})
        ContactFields::FitChars(number, 15);
    Text(form.ReadOnly(QStringLiteral("Org_Fax"), QStringLiteral("Fax:")), &ContactOrganisation::fax);
    QLineEdit *email = Text(form.ReadOnly(QStringLiteral("Org_Email"), QStringLiteral("E-mail:")),
                            &ContactOrganisation::email);
    ContactFields::MailButton(form, QStringLiteral("Org_EBtn"), email);
    QLineEdit *url =
        Text(form.ReadOnly(QStringLiteral("Org_URL"), QStringLiteral("Website:")), &ContactOrganisation::url);
    ContactFields::WebButton(form, QStringLiteral("Org_GoBtn"), url);
}

void ContactBusinessPage::FillLists()
{
    Contact_FillList(ContactSection::Organisations, m_organisations, true);
}

void ContactBusinessPage::Load(const ContactRecord &record)
{
    ContactFields::ChooseStored(ContactSection::Organisations, m_organisations, record.organRef);
    ContactFields::Show(m_jobTitle, record.jobTitle);
}

void ContactBusinessPage::Store(ContactRecord &record) const
{
    record.organRef = ContactFields::ChosenToStore(ContactSection::Organisations, m_organList);
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
    m_locked = locked;
    EnableEdit();
}

void ContactBusinessPage::EnableEdit()
{
    m_editOrgBtn->setEnabled(!m_locked && UserMay(Right::Organisations, Level::Edit) &&
                             m_organisations.CurrentData() > 1);
}

void ContactBusinessPage::EditOrganisation()
{
    // Its mnemonic takes no focus away from a field that was just emptied.
    m_organList->Leave();
    const int organRef = m_organisations.CurrentData();
    if (organRef <= 1)
        return;
    OtherScreens::Installed().organisations({u'?' % QString::number(organRef)}, this);
    // The same organisation under another name is no change of the person.
    std::vector<QSignalBlocker> quiet;
    quiet.emplace_back(m_organList);
    quiet.emplace_back(m_organList->lineEdit());
    for (const auto &[field, column] : m_texts)
        quiet.emplace_back(field);
    FillLists();
    m_organisations.ChooseData(organRef);
}

int ContactBusinessPage::OrganRef() const
{
    return qMax(1, m_organisations.CurrentData());
}

QWidget *ContactBusinessPage::First() const
{
    return m_organList;
}

void ContactBusinessPage::ShowChosen()
{
    const int organRef = m_organisations.CurrentData();
    ContactOrganisation shown;
    if (organRef > 1) {
        if (const auto read = ADO_Organisation_ShowContactOrganisation(::OrganRef(organRef)))
            shown = *read;
    }
    ShowOrganisation(shown);
    EnableEdit();
}

void ContactBusinessPage::ShowOrganisation(const ContactOrganisation &organisation)
{
    for (const auto &[field, column] : m_texts)
        ContactFields::Show(field, organisation.*column);
}
