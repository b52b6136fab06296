#pragma once

#include "forms/frames/FormDialog.h"
#include "platform/desktop/Dialogs.h"

class FieldChanges;
class QPlainTextEdit;
class QTreeView;

/// The fields of a record that were changed on the screen, by another workstation, or by both: which of the
/// two is kept of each. Left and right choose the side of the current field, the space bar the other one.
class frmConflict final : public FormDialog
{
    Q_OBJECT

public:
    frmConflict(const QString &what, const QList<Dialogs::FieldChange> &changes, QWidget *parent = nullptr);

    /// Shows the form; false where it was left, and `changes` stay as they were.
    static bool Settle(const QString &what, QList<Dialogs::FieldChange> &changes);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QTreeView *BuildList();
    void ShowCurrent();

    FieldChanges *m_changes;
    QTreeView *m_list;
    QPlainTextEdit *m_yours;
    QPlainTextEdit *m_theirs;
};
