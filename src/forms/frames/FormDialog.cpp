#include "forms/frames/FormDialog.h"

#include "core/session/Session.h"
#include "forms/frames/FormSize.h"

#include <utility>

FormDialog::FormDialog(const QString &name, const QString &title, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(name);
    setWindowTitle(title);
    FormSize::Remember(this);
}

int FormDialog::Run()
{
    gDialogResult = 0;
    exec();
    return std::exchange(gDialogResult, 0);
}

void FormDialog::reject()
{
    if (MayLeave())
        QDialog::reject();
}
