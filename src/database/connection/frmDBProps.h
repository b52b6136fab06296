#pragma once

#include "controls/ListModel.h"
#include "forms/frames/FormDialog.h"

class QLineEdit;

/// Shows the open database: the user's own name for it, and its connection.
class frmDBProps final : public FormDialog
{
    Q_OBJECT

public:
    /// `name` is what the main window shows; without `nameCanChange` it cannot be edited.
    frmDBProps(const QString &name, bool nameCanChange, QWidget *parent = nullptr);

protected:
    bool MayLeave() override;

private:
    ListModel m_properties;
    QLineEdit *m_name;
    QString m_nameBefore;
};
