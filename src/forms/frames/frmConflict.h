#pragma once

#include "forms/frames/FormDialog.h"
#include "platform/desktop/Dialogs.h"

class FieldChanges;
class QPlainTextEdit;
class QTreeView;

/// The fields of a record that were changed on the screen, by another workstation, or by both: for each, the
/// user decides which version is kept. The left and right keys choose a side for the current field, the space
/// bar changes to the other one.
class frmConflict final : public FormDialog
{
    Q_OBJECT

public:
    frmConflict(const QString &what, const QList<Dialogs::FieldChange> &changes, QWidget *parent = nullptr);

    /// Shows the form; false if the user left it, and `changes` are then unchanged.
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
