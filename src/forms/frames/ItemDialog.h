#pragma once

#include "forms/fields/RequiredMarks.h"
#include "forms/frames/FormDialog.h"

class FormBuilder;
class QLabel;
class QPushButton;

/// The dialog of one row of a list: a few fields above "Add" and "Exit". It adds a row, or changes the one
/// that it was opened for. On success gDialogResult has the row's key.
class ItemDialog : public FormDialog
{
    Q_OBJECT

protected:
    ItemDialog(const QString &name, const QString &title, QWidget *parent);

    /// Makes the notice above the fields, which is hidden while it is empty.
    void AddNotice(FormBuilder &form);
    void Notify(const QString &text);
    /// Makes the buttons below the fields; from now on a change in a field sets the modified flag.
    void AddButtons(FormBuilder &form, const QString &exitName = QStringLiteral("CanBtn"));
    ModifiedMark &Modified() { return *m_modified; }

    /// Notes that the row of `key` is being read; it cannot be stored until EndReading.
    void BeginEditing(int key);
    /// Ends the reading. If the row was not `found`, the notice says so about `what` ("group"), and the row
    /// cannot be stored.
    void EndReading(bool found, const QString &what);
    /// Shows a row to someone who may not change it.
    void LockStoring();
    int Key() const { return m_key; } ///< of the row to change; 0 when adding one
    RequiredMarks &Required() { return m_required; }

    bool MayLeave() override;

private:
    /// Takes over what is still being typed, since Enter saves while a field has the focus.
    virtual void LeaveFields() {}
    /// Stores the fields, which are complete. Returns the key; the form stays open if it is below 1, of which
    /// the user has been told.
    virtual int Store() = 0;
    void Save();

    int m_key = 0;
    RequiredMarks m_required;
    QLabel *m_notice = nullptr;
    QPushButton *m_addBtn = nullptr;
    ModifiedMark *m_modified = nullptr;
};
