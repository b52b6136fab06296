#pragma once

#include "forms/fields/ModifiedMark.h"

#include <QDialog>

/// The frame of a dialog: its name, title and remembered size, and one way out. Escape, the window's close
/// button and the form's own exit button all ask MayLeave.
class FormDialog : public QDialog
{
    Q_OBJECT

public:
    FormDialog(const QString &name, const QString &title, QWidget *parent = nullptr);

    /// Shows the form, modal, until it is closed. What it left in gDialogResult, the one place of an answer:
    /// a record's key, or 1, and 0 for none. It is 0 again afterwards.
    int Run();
    void reject() override;

    /// Opens a title bar's height further down and to the right of the middle of its opener, as a record
    /// beside another does. Counted, because window managers tell late where they have put a window.
    void StepAside() { ++m_stepsAside; }
    int StepsAside() const { return m_stepsAside; }

protected:
    /// False keeps the form open; record forms ask AskToSave here.
    virtual bool MayLeave() { return true; }
    void showEvent(QShowEvent *event) override;

private:
    int m_stepsAside = 0;
};
