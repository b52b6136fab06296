#pragma once

#include "database/statements/System.h"
#include "forms/frames/FormDialog.h"

#include <array>
#include <vector>

class MoneyField;
class QLineEdit;
class QPushButton;
class QTabWidget;

/// The settings that belong to the database, not to the workstation.
class frmDBOptions final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmDBOptions(QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void BuildGeneral();
    void BuildContacts();
    void BuildVouchers();
    void ApplyRights();
    void SettleTaxRate();
    bool VoucherIsUnique(QLineEdit *voucher);
    void LeaveVoucher(QLineEdit *voucher);
    void Save();
    /// What is to be stored, in the order of the tabs.
    std::vector<NumberedValue> Changed() const;

    QTabWidget *m_tabs = nullptr;
    QLineEdit *m_currency = nullptr;
    QLineEdit *m_taxLabel = nullptr;
    MoneyField *m_taxRate = nullptr;
    std::array<QLineEdit *, 4> m_refLabels{};
    std::array<QLineEdit *, 5> m_vouchers{};
    QPushButton *m_cancel = nullptr;
};
