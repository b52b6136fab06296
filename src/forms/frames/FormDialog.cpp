#include "forms/frames/FormDialog.h"

#include "forms/frames/FormSize.h"

FormDialog::FormDialog(const QString &name, const QString &title, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(name);
    setWindowTitle(title);
    FormSize::Remember(this);
}

void FormDialog::reject()
{
    if (MayLeave())
        QDialog::reject();
}
