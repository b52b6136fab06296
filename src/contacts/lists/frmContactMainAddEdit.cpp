#include "contacts/lists/frmContactMainAddEdit.h"

#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/lists/ContactFields.h"
#include "database/statements/Security.h"
#include "database/statements/System.h"
#include "enrolment/EnrolmentModule.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"
#include "forms/progress/ProgressBox.h"

namespace
{
constexpr double wholeFee = 100;
} // namespace

frmContactMainAddEdit::frmContactMainAddEdit(ContactSection section, QWidget *parent)
    : ItemDialog(QStringLiteral("frmContactMainAddEdit"), QStringLiteral("Link"), parent)
    , m_section(section)
{
    FormBuilder form(this);
    AddNotice(form);
    m_catName = form.Text(QStringLiteral("CatName"), QStringLiteral("Description:"));
    Required().Add(form.Label(), m_catName);
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
    AddButtons(form);
}

void frmContactMainAddEdit::SetCaptions(const QString &title, const QString &fieldCaption)
{
    setWindowTitle(title);
    findChild<CaptionLabel *>(QStringLiteral("CatName_Label"))->setText(fieldCaption);
}

void frmContactMainAddEdit::EditItem(int key)
{
    BeginEditing(key);
    const ReadRow<RefLabel> item = Contact_ViewItem(m_section, key);
    if (item) {
        ContactFields::Show(m_catName, item->name);
        ContactFields::Show(m_refName, item->reference);
    }
    const bool isWhole = m_section != ContactSection::Characteristics || ReadFigures(key);
    EndReading(item && isWhole, m_section == ContactSection::Characteristics
                                    ? QStringLiteral("characteristic")
                                    : QStringLiteral("entry"));
}

/// False where a figure could not be read: a discount that is not known must not be stored as none.
bool frmContactMainAddEdit::ReadFigures(int key)
{
    const ReadRow<double> percentage = ADO_Contact_GetConcessionPercent(ConcessionRef(key));
    const ReadRow<double> amount = ADO_Contact_GetConcesionDiscount(ConcessionRef(key));
    if (percentage)
        m_percentage->SetValue(*percentage);
    if (amount)
        m_hardDiscount->SetValue(*amount);
    m_loadedPercentage = m_percentage->Value();
    m_loadedAmount = m_hardDiscount->Value();
    const bool locked = !UserMay(ContactSectionOf(m_section).right, Level::Full);
    LockFields(m_percentage, locked);
    LockFields(m_hardDiscount, locked);
    return percentage && amount;
}

RefLabel frmContactMainAddEdit::Item() const
{
    return {m_refName->text(), m_catName->text()};
}

void frmContactMainAddEdit::LeaveFields()
{
    for (MoneyField *figure : {m_percentage, m_hardDiscount}) {
        if (figure)
            figure->Leave();
    }
}

int frmContactMainAddEdit::Store()
{
    if (m_section == ContactSection::Characteristics)
        return StoreCharacteristic();
    const RefLabel item = Item();
    return Key() > 0 ? Contact_UpdateItem(m_section, Key(), item.name, item.reference)
                     : Contact_AddItem(m_section, item.name, item.reference);
}

int frmContactMainAddEdit::StoreCharacteristic()
{
    const RefLabel item = Item();
    const double percentage = m_percentage->Value();
    const double amount = m_hardDiscount->Value();
    if (Key() == 0)
        return Concession_Add(item.name, percentage, amount, item.reference);
    const int key = Concession_Update(ConcessionRef(Key()), item.name, percentage, amount, item.reference);
    if (key > 0 && (percentage != m_loadedPercentage || amount != m_loadedAmount)) {
        ProgressBox::Run(this, QStringLiteral("Concession Update"), [&](Progress &progress) {
            Course_ChangePercentage(item.name, percentage, amount, progress);
        });
    }
    return key;
}
