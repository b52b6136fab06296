#include "database/connection/frmDBOptions.h"

#include "database/statements/Security.h"
#include "database/statements/System.h"
#include "database/values/GlobalCode.h"
#include "forms/fields/FieldFocus.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OkCancel.h"
#include "platform/desktop/Dialogs.h"

#include <QFocusEvent>
#include <QTimer>

#include <algorithm>

namespace
{
constexpr int longestValue = 255;
constexpr double highestRate = 100;

void TakeIfChanged(std::vector<NumberedValue> &changed, int ref, const QString &text)
{
    if (text != SystemValue(ref))
        changed.push_back({ref, text});
}
} // namespace

frmDBOptions::frmDBOptions(QWidget *parent)
    : FormDialog(QStringLiteral("frmDBOptions"), QStringLiteral("Database Options"), parent)
{
    FormBuilder form(this);
    m_tabs = form.Tabs(QStringLiteral("OptionTabs"));
    m_tabs->setUsesScrollButtons(false);
    BuildGeneral();
    BuildContacts();
    BuildVouchers();
    const OkCancel buttons = OkCancel::Add(form, this);
    m_cancel = buttons.cancel;

    connect(buttons.ok, &QPushButton::clicked, this, &frmDBOptions::Save);
    ApplyRights();
}

void frmDBOptions::BuildGeneral()
{
    FormBuilder form(
        FormBuilder::AddTab(m_tabs, QStringLiteral("GeneralTab"), QStringLiteral("General Options")));
    m_currency = form.Text(QStringLiteral("CSymbol"), QStringLiteral("Currency Symbol:"), longestValue);
    m_currency->setText(SystemValue(SystemRef::CurrencySymbol));
    m_taxLabel = form.Text(QStringLiteral("TaxLabel"), QStringLiteral("Tax Label:"), longestValue);
    m_taxLabel->setText(SystemValue(SystemRef::TaxName));
    m_taxRate = form.Money(QStringLiteral("TaxRate"), QStringLiteral("Tax Rate in %:"));
    m_taxRate->setText(SystemValue(SystemRef::TaxRate));
    m_taxRate->SetLeaveHandler([this] { SettleTaxRate(); });
}

void frmDBOptions::BuildContacts()
{
    FormBuilder form(
        FormBuilder::AddTab(m_tabs, QStringLiteral("ContactTab"), QStringLiteral("Contact Related Options")));
    form.Line({}, QStringLiteral("Specify Label (Only defined Alt Ref's will be displayed):"));
    for (int i = 0; i < static_cast<int>(m_refLabels.size()); ++i) {
        QLineEdit *field = form.Text(u"RefID_" % QString::number(i),
                                     u"Alt Ref ID " % QString::number(i + 1) % u':', longestValue);
        field->setText(SystemValue(SystemRef::AltRefLabel + i));
        m_refLabels[static_cast<size_t>(i)] = field;
    }
}

void frmDBOptions::BuildVouchers()
{
    FormBuilder form(
        FormBuilder::AddTab(m_tabs, QStringLiteral("VoucherTab"), QStringLiteral("Voucher Labels")));
    form.Line({}, QStringLiteral("Specify Label (Only defined Vouchers will be displayed):"));
    for (int i = 0; i < static_cast<int>(m_vouchers.size()); ++i) {
        QLineEdit *field = form.Text(u"VoucherLabel_" % QString::number(i),
                                     u"Voucher " % QString::number(i + 1) % u':', longestValue);
        field->setText(SystemValue(SystemRef::VoucherName + i));
        field->installEventFilter(this);
        m_vouchers[static_cast<size_t>(i)] = field;
    }
}

void frmDBOptions::ApplyRights()
{
    const auto lockBelowFull = [](Right right, QWidget *field) {
        if (!UserMay(right, Level::Full))
            LockFields(field, true);
    };
    lockBelowFull(Right::CurrencySymbol, m_currency);
    lockBelowFull(Right::Tax, m_taxLabel);
    lockBelowFull(Right::Tax, m_taxRate);
    for (QLineEdit *field : m_refLabels)
        lockBelowFull(Right::ReferenceLabels, field);
    for (QLineEdit *field : m_vouchers)
        lockBelowFull(Right::VoucherNames, field);
}

void frmDBOptions::SettleTaxRate()
{
    if (m_taxRate->isReadOnly())
        return;
    m_taxRate->SetValue(std::clamp(CurrencyValue(m_taxRate->text()), 0.0, highestRate));
}

bool frmDBOptions::VoucherIsUnique(QLineEdit *voucher)
{
    const QString name = voucher->text();
    return name.isEmpty() || std::none_of(m_vouchers.begin(), m_vouchers.end(), [&](const QLineEdit *other) {
               return other != voucher && other->text() == name;
           });
}

void frmDBOptions::LeaveVoucher(QLineEdit *voucher)
{
    if (VoucherIsUnique(voucher))
        return;
    Dialogs::MsgBox(QStringLiteral("Vouchers must have unique names!"), QStringLiteral("Voucher Names"),
                    Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation);
    FocusField(voucher);
}

bool frmDBOptions::eventFilter(QObject *watched, QEvent *event)
{
    auto *voucher = qobject_cast<QLineEdit *>(watched);
    if (voucher && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        const bool leavesField = reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
        // Checked once the focus has settled: on the way to Cancel nothing needs to be corrected.
        if (leavesField)
            QTimer::singleShot(0, voucher, [this, voucher] {
                if (isVisible() && focusWidget() != m_cancel && focusWidget() != voucher)
                    LeaveVoucher(voucher);
            });
    }
    return FormDialog::eventFilter(watched, event);
}

void frmDBOptions::Save()
{
    SettleTaxRate();
    // Enter presses the button without leaving the field.
    const auto left = std::find(m_vouchers.begin(), m_vouchers.end(), focusWidget());
    if (left != m_vouchers.end() && !VoucherIsUnique(*left)) {
        LeaveVoucher(*left);
        return;
    }
    if (const auto changed = Changed(); !changed.empty() && !SetSystemValues(changed)) {
        TellNotStored(changed, windowTitle());
        return;
    }
    accept();
}

std::vector<NumberedValue> frmDBOptions::Changed() const
{
    std::vector<NumberedValue> changed;
    TakeIfChanged(changed, SystemRef::CurrencySymbol, m_currency->text());
    // The rate is stored with its label: a new rate alone is not stored, and users know to retype the label.
    if (m_taxLabel->text() != SystemValue(SystemRef::TaxName)) {
        changed.push_back({SystemRef::TaxName, m_taxLabel->text()});
        changed.push_back({SystemRef::TaxRate, m_taxRate->text()});
    }
    for (int i = 0; i < static_cast<int>(m_refLabels.size()); ++i)
        TakeIfChanged(changed, SystemRef::AltRefLabel + i, m_refLabels[static_cast<size_t>(i)]->text());
    for (int i = 0; i < static_cast<int>(m_vouchers.size()); ++i)
        TakeIfChanged(changed, SystemRef::VoucherName + i, m_vouchers[static_cast<size_t>(i)]->text());
    return changed;
}
