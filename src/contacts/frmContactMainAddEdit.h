#pragma once

#include "contacts/ContactModule.h"
#include "forms/FormDialog.h"
#include "forms/RequiredMarks.h"

class MoneyField;
class QLineEdit;
class QPushButton;

/// One row of a vocabulary: name and reference, and for a characteristic the discount it earns. On success
/// gDialogResult has the row's key, and Item() the texts.
class frmContactMainAddEdit final : public FormDialog
{
    Q_OBJECT

public:
    /// `section` is one of the sections up to the group types.
    explicit frmContactMainAddEdit(ContactSection section, QWidget *parent = nullptr);

    void SetCaptions(const QString &title, const QString &fieldCaption);
    /// Loads a row to change instead of adding one.
    void EditItem(int key);
    RefLabel Item() const;

protected:
    bool MayLeave() override;

private:
    void Save();
    int SaveItem();
    int SaveCharacteristic();

    ContactSection m_section;
    int m_key = 0; ///< the row to change; 0 to add one
    double m_loadedPercentage = 0;
    double m_loadedAmount = 0;
    RequiredMarks m_required;
    QLineEdit *m_catName;
    QLineEdit *m_refName;
    MoneyField *m_percentage = nullptr;
    MoneyField *m_hardDiscount = nullptr;
    QPushButton *m_addBtn;
    ModifiedMark *m_modified;
};
