#pragma once

#include "contacts/lists/VocabularyModule.h"
#include "forms/frames/ItemDialog.h"

class MoneyField;
class QLineEdit;

/// One row of a vocabulary: name and reference, and for a characteristic the discount it earns. On success
/// Item() has the texts.
class frmContactMainAddEdit final : public ItemDialog
{
    Q_OBJECT

public:
    /// `section` is one of the sections up to the group types.
    explicit frmContactMainAddEdit(ContactSection section, QWidget *parent = nullptr);

    void SetCaptions(const QString &title, const QString &fieldCaption);
    /// Loads a row to change instead of adding one.
    void EditItem(int key);
    RefLabel Item() const;

private:
    void LeaveFields() override;
    int Store() override;
    bool ReadFigures(int key);
    int StoreCharacteristic();

    ContactSection m_section;
    double m_loadedPercentage = 0;
    double m_loadedAmount = 0;
    QLineEdit *m_catName;
    QLineEdit *m_refName;
    MoneyField *m_percentage = nullptr;
    MoneyField *m_hardDiscount = nullptr;
};
