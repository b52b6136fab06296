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

    void reject() override;

protected:
    /// False keeps the form open; record forms ask AskToSave here.
    virtual bool MayLeave() { return true; }
};
