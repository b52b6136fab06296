#include "courses/maintenance/ResourceDialog.h"

#include "contacts/lists/ContactFields.h"
#include "database/statements/Security.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"
#include "organisations/record/frmAddOrg.h"

ResourceDialog::ResourceDialog(const Wording &wording, QWidget *parent)
    : ItemDialog(wording.form, wording.title, parent)
    , m_wording(wording)
{
    FormBuilder form(this);
    AddNotice(form);
    m_refName = form.Text(QStringLiteral("RefName"), QStringLiteral("&Reference ID:"));
    m_name = form.Text(wording.nameField, QStringLiteral("&Name:"));
    Required().Add(form.Label(), m_name);
    ContactFields::FitChars(m_name, 40);
    m_notes = form.Notes(QStringLiteral("Description"), QStringLiteral("N&otes:"));
    m_organList = form.Typed(QStringLiteral("OrganList"), QStringLiteral("Or&ganisation:"), m_organisations);
    m_rate = form.Money(QStringLiteral("Rate"), QStringLiteral("&Charge Rate"));
    AddButtons(form);

    Contact_FillList(ContactSection::Organisations, m_organisations, true);
    m_organisations.SetCurrent(0);
    m_rate->SetValue(0);
    m_organList->AllowTyping(UserMay(Right::Organisations, Level::Add));
    m_organList->SetNewTextHandler([this](const QString &typed) { TakeOrganisation(typed); },
                                   ContactSectionOf(ContactSection::Organisations).word);
    EndReading(true, {});
    // The title is longer than any row, and is to be read to its end.
    constexpr int titleButtons = 20;
    const int title =
        fontMetrics().horizontalAdvance(wording.title) + titleButtons * fontMetrics().averageCharWidth();
    resize(sizeHint().expandedTo({title, 0}));
}

void ResourceDialog::EditItem(int key)
{
    BeginEditing(key);
    const ReadRow<Resource> resource = Read(key);
    if (resource) {
        ContactFields::Show(m_name, resource->name);
        ContactFields::Show(m_refName, resource->referenceID);
        m_notes->setPlainText(resource->notes);
        m_rate->SetValue(resource->chargeRate);
        m_organisations.ChooseData(resource->organRef.number);
    }
    const bool mayEdit = UserMay(m_wording.right, Level::Edit);
    for (QWidget *field : {static_cast<QWidget *>(m_name), static_cast<QWidget *>(m_refName),
                           static_cast<QWidget *>(m_notes), static_cast<QWidget *>(m_organList)})
        LockFields(field, !mayEdit);
    LockFields(m_rate, !mayEdit || !UserMay(m_wording.rateRight, Level::Full));
    EndReading(static_cast<bool>(resource), m_wording.word);
    if (!mayEdit)
        LockStoring();
}

RefLabel ResourceDialog::Item() const
{
    return {m_refName->text(), m_name->text()};
}

void ResourceDialog::LeaveFields()
{
    m_organList->Leave();
    m_rate->Leave();
}

void ResourceDialog::TakeOrganisation(const QString &typed)
{
    int added = 0;
    const auto add = [&added](const RefLabel &item) {
        return added = Contact_AddItem(ContactSection::Organisations, item.name, item.reference);
    };
    Contact_TakeTyped(m_organisations, typed, add,
                      [this] { Contact_FillList(ContactSection::Organisations, m_organisations, true); });
    if (added < 1)
        return;
    const Dialogs::Answer answer = Dialogs::MsgBox(
        u"Would you like to fill in the information for this new Organisation '" % SplitRefLabel(typed).name %
            u"'?",
        QStringLiteral("Organisation Information"), Dialogs::Buttons::YesNo, Dialogs::Icon::Question);
    if (answer != Dialogs::Answer::Yes)
        return;
    frmAddOrg::EditRecords({u'?' % QString::number(added)}, true, this);
    // It may have another name by now.
    Contact_FillList(ContactSection::Organisations, m_organisations, true);
    m_organisations.ChooseData(added);
}

int ResourceDialog::Store()
{
    const int organRef = ContactFields::ChosenToStore(ContactSection::Organisations, m_organList);
    const Resource resource{m_name->text(), m_notes->toPlainText(), m_rate->Value(), OrganRef(organRef),
                            m_refName->text()};
    return Key() > 0 ? Update(Key(), resource) : Add(resource);
}
