#pragma once

#include "forms/fields/RequiredMarks.h"
#include "forms/frames/FormDialog.h"

class FormBuilder;
class QLabel;
class QPushButton;

/// The dialog of one row of a list: a few fields above "Add" and "Exit". It adds a row, or changes the one
/// that it was opened on. On success gDialogResult has the row's key.
class ItemDialog : public FormDialog
{
    Q_OBJECT

protected:
    ItemDialog(const QString &name, const QString &title, QWidget *parent);

    /// Makes the line above the fields, which is hidden while it is empty.
    void AddNotice(FormBuilder &form);
    void Notify(const QString &text);
    /// Makes the buttons below the fields; what changes in those from now on is to be saved.
    void AddButtons(FormBuilder &form);

    /// The row of `key` is being read, and cannot be stored meanwhile.
    void BeginEditing(int key);
    /// The row is read. Where it was not `found` the notice tells so of `what` ("group"), and it cannot be
    /// stored.
    void EndReading(bool found, const QString &what);
    int Key() const { return m_key; } ///< of the row to change; 0 to add one
    RequiredMarks &Required() { return m_required; }

    bool MayLeave() override;

private:
    /// Takes what is still being typed: Enter saves while a field has the focus.
    virtual void LeaveFields() {}
    /// Stores the fields, which are complete. The key; below 1, once the user was told, the form stays open.
    virtual int Store() = 0;
    void Save();

    int m_key = 0;
    RequiredMarks m_required;
    QLabel *m_notice = nullptr;
    QPushButton *m_addBtn = nullptr;
    ModifiedMark *m_modified = nullptr;
};
