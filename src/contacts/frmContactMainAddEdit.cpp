#include "contacts/frmContactMainAddEdit.h"

#include "contacts/ConcessionODBC.h"
#include "contacts/ContactFields.h"
#include "core/Session.h"
#include "database/Security.h"
#include "database/System.h"
#include "enrolment/EnrolmentModule.h"
#include "forms/FieldLock.h"
#include "forms/FormBuilder.h"
#include "forms/ProgressBox.h"

namespace
{
constexpr double wholeFee = 100;
constexpr int fullAccess = 9;
} // namespace

frmContactMainAddEdit::frmContactMainAddEdit(ContactSection section, QWidget *parent)
    : FormDialog(QStringLiteral("frmContactMainAddEdit"), QStringLiteral("Link"), parent)
    , m_section(section)
{
    FormBuilder form(this);
    m_catName = form.Text(QStringLiteral("CatName"), QStringLiteral("Description:"));
    m_required.Add(form.Label(), m_catName);
    ContactFields::FitChars(m_catName, 30);
    m_refName = form.Text(QStringLiteral("RefName"), QStringLiteral("Reference ID:"));
    if (m_section == ContactSection::Characteristics) {
        m_percentage = form.Money(QStringLiteral("Percentage"), QStringLiteral("Discount %"));
        m_hardDiscount = form.Money(QStringLiteral("HardDiscount"),
                                    u"Discount Amount " % SystemValue(SystemRef::CurrencySymbol));
        m_percentage->SetValue(0);
        m_hardDiscount->SetValue(0);
        m_percentage->SetLeaveHandler([this] {
            m_percentage->Normalise();
            if (m_percentage->Value() > wholeFee)
                m_percentage->SetValue(0);
        });
    }
    form.BeginButtons();
    m_addBtn = form.DefaultButton(QStringLiteral("AddBtn"), QStringLiteral("&Add"));
    QPushButton *exit = form.Button(QStringLiteral("CanBtn"), QStringLiteral("E&xit"));
    form.EndButtons();

    m_modified = new ModifiedMark(m_addBtn, this);
    m_modified->Watch(this);
    connect(m_addBtn, &QPushButton::clicked, this, &frmContactMainAddEdit::Save);
    connect(exit, &QPushButton::clicked, this, &frmContactMainAddEdit::reject);
}

void frmContactMainAddEdit::SetCaptions(const QString &title, const QString &fieldCaption)
{
    setWindowTitle(title);
    findChild<CaptionLabel *>(QStringLiteral("CatName_Label"))->setText(fieldCaption);
}

void frmContactMainAddEdit::EditItem(int key)
{
    m_key = key;
    m_addBtn->setText(QStringLiteral("&Update"));
    const RefLabel item = Contact_ViewItem(m_section, key);
    m_catName->setText(item.name);
    m_refName->setText(item.reference);
    if (m_section == ContactSection::Characteristics) {
        m_percentage->SetValue(ADO_Contact_GetConcessionPercent(key));
        m_hardDiscount->SetValue(ADO_Contact_GetConcesionDiscount(key));
        m_loadedPercentage = m_percentage->Value();
        m_loadedAmount = m_hardDiscount->Value();
        const bool locked = UserRight(ContactSectionOf(m_section).right) < fullAccess;
        LockFields(m_percentage, locked);
        LockFields(m_hardDiscount, locked);
    }
    m_modified->Clear();
}

RefLabel frmContactMainAddEdit::Item() const
{
    return {m_refName->text(), m_catName->text()};
}

bool frmContactMainAddEdit::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); });
}

void frmContactMainAddEdit::Save()
{
    if (!m_required.Complete())
        return;
    const int key = m_section == ContactSection::Characteristics ? SaveCharacteristic() : SaveItem();
    if (key < 1)
        return;
    m_modified->Clear();
    gDialogResult = key;
    accept();
}

int frmContactMainAddEdit::SaveItem()
{
    const RefLabel item = Item();
    return m_key > 0 ? Contact_UpdateItem(m_section, m_key, item.name, item.reference)
                     : Contact_AddItem(m_section, item.name, item.reference);
}

int frmContactMainAddEdit::SaveCharacteristic()
{
    // Enter saves while the field still has the focus.
    m_percentage->Leave();
    m_hardDiscount->Leave();
    const RefLabel item = Item();
    const double percentage = m_percentage->Value();
    const double amount = m_hardDiscount->Value();
    if (m_key == 0)
        return Concession_Add(item.name, percentage, amount, item.reference);
    const int key = Concession_Update(m_key, item.name, percentage, amount, item.reference);
    if (key > 0 && (percentage != m_loadedPercentage || amount != m_loadedAmount))
        ProgressBox::Run(this, QStringLiteral("Concession Update"), [&](Progress &progress) {
            Course_ChangePercentage(item.name, percentage, amount, progress);
        });
    return key;
}
