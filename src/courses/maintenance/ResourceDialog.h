#pragma once

#include "controls/ComboModel.h"
#include "courses/maintenance/ResourceODBC.h"
#include "database/statements/Rights.h"
#include "forms/frames/ItemDialog.h"

class MoneyField;
class QLineEdit;
class QPlainTextEdit;
class TypedCombo;

/// A room or a piece of equipment, and who owns it: what the dialogs of venues and facilities share. On
/// success Item() has the name and the reference.
class ResourceDialog : public ItemDialog
{
    Q_OBJECT

public:
    /// Loads a row to change instead of adding one; without the right to change it can only be looked at.
    void EditItem(int key);
    RefLabel Item() const;

protected:
    struct Wording {
        QString form;
        QString title;
        QString nameField;
        QString word; ///< "venue"
        Right right;
        Right rateRight; ///< to change the rate of a row that is there
    };
    ResourceDialog(const Wording &wording, QWidget *parent);

private:
    virtual ReadRow<Resource> Read(int key) = 0;
    virtual int Add(const Resource &resource) = 0;
    virtual int Update(int key, const Resource &resource) = 0;
    int Store() override;
    void LeaveFields() override;
    void TakeOrganisation(const QString &typed);

    Wording m_wording;
    ComboModel m_organisations;
    QLineEdit *m_name;
    QLineEdit *m_refName;
    QPlainTextEdit *m_notes;
    TypedCombo *m_organList;
    MoneyField *m_rate;
};
