#include "database/frmDBOptions.h"

#include "database/GlobalCode.h"
#include "database/Security.h"
#include "database/System.h"
#include "forms/FieldLock.h"
#include "forms/FormBuilder.h"
#include "platform/Dialogs.h"

#include <QFocusEvent>
#include <QTimer>

#include <algorithm>

namespace
{
constexpr int fullLevel = 9;
constexpr int rightCurrency = 95;
constexpr int rightTax = 96;
constexpr int rightRefLabels = 104;
constexpr int rightVouchers = 105;
constexpr int longestValue = 255;
constexpr double highestRate = 100;

void SaveIfChanged(int ref, const QString &text)
{
    if (text != SystemValue(ref))
        SetSystemValue(ref, text);
}
} // namespace

frmDBOptions::frmDBOptions(QWidget *parent)
    : FormDialog(QStringLiteral("frmDBOptions"), tr("Database Options"), parent)
{
    FormBuilder form(this);
    m_tabs = form.Tabs(QStringLiteral("OptionTabs"));
    m_tabs->setUsesScrollButtons(false);
    BuildGeneral();
    BuildContacts();
    BuildVouchers();
    form.BeginButtons();
    QPushButton *ok = form.DefaultButton(QStringLiteral("OKBtn"), tr("&OK"));
    m_cancel = form.Button(QStringLiteral("CancelBtn"), tr("&Cancel"));
    form.EndButtons();

    connect(ok, &QPushButton::clicked, this, &frmDBOptions::Save);
    connect(m_cancel, &QPushButton::clicked, this, &frmDBOptions::reject);
    ApplyRights();
}

void frmDBOptions::BuildGeneral()
{
    FormBuilder form(FormBuilder::AddTab(m_tabs, QStringLiteral("GeneralTab"), tr("General Options")));
    m_currency = form.Text(QStringLiteral("CSymbol"), tr("Currency Symbol:"), longestValue);
    m_currency->setText(SystemValue(SystemRef::CurrencySymbol));
    m_taxLabel = form.Text(QStringLiteral("TaxLabel"), tr("Tax Label:"), longestValue);
    m_taxLabel->setText(SystemValue(SystemRef::TaxName));
    m_taxRate = form.Money(QStringLiteral("TaxRate"), tr("Tax Rate in %:"));
    m_taxRate->setText(SystemValue(SystemRef::TaxRate));
    m_taxRate->SetLeaveHandler([this] { SettleTaxRate(); });
}

void frmDBOptions::BuildContacts()
{
    FormBuilder form(
        FormBuilder::AddTab(m_tabs, QStringLiteral("ContactTab"), tr("Contact Related Options")));
    form.Line({}, tr("Specify Label (Only defined Alt Ref's will be displayed):"));
    for (int i = 0; i < static_cast<int>(m_refLabels.size()); ++i) {
        QLineEdit *field = form.Text(u"RefID_" % QString::number(i),
                                     u"Alt Ref ID " % QString::number(i + 1) % u':', longestValue);
        field->setText(SystemValue(SystemRef::AltRefLabel + i));
        m_refLabels[static_cast<size_t>(i)] = field;
    }
}

void frmDBOptions::BuildVouchers()
{
    FormBuilder form(FormBuilder::AddTab(m_tabs, QStringLiteral("VoucherTab"), tr("Voucher Labels")));
    form.Line({}, tr("Specify Label (Only defined Vouchers will be displayed):"));
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
    const auto lockBelowFull = [](int right, QWidget *field) {
        if (UserRight(right) < fullLevel)
            LockFields(field, true);
    };
    lockBelowFull(rightCurrency, m_currency);
    lockBelowFull(rightTax, m_taxLabel);
    lockBelowFull(rightTax, m_taxRate);
    for (QLineEdit *field : m_refLabels)
        lockBelowFull(rightRefLabels, field);
    for (QLineEdit *field : m_vouchers)
        lockBelowFull(rightVouchers, field);
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
    m_tabs->setCurrentWidget(m_tabs->widget(m_tabs->count() - 1));
    voucher->setFocus();
    voucher->selectAll();
}

bool frmDBOptions::eventFilter(QObject *watched, QEvent *event)
{
    auto *voucher = qobject_cast<QLineEdit *>(watched);
    if (voucher && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        const bool leavesField = reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
        // Asked once the focus has settled: on the way to Cancel nothing needs to be put right.
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
    SaveIfChanged(SystemRef::CurrencySymbol, m_currency->text());
    // The rate travels with its label: a new rate alone is not stored, and users know to type the label anew.
    if (m_taxLabel->text() != SystemValue(SystemRef::TaxName)) {
        SetSystemValue(SystemRef::TaxName, m_taxLabel->text());
        SetSystemValue(SystemRef::TaxRate, m_taxRate->text());
    }
    for (int i = 0; i < static_cast<int>(m_refLabels.size()); ++i)
        SaveIfChanged(SystemRef::AltRefLabel + i, m_refLabels[static_cast<size_t>(i)]->text());
    for (int i = 0; i < static_cast<int>(m_vouchers.size()); ++i)
        SaveIfChanged(SystemRef::VoucherName + i, m_vouchers[static_cast<size_t>(i)]->text());
    accept();
}
