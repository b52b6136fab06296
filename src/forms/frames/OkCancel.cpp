#include "forms/frames/OkCancel.h"

#include "forms/frames/FormBuilder.h"
#include "forms/frames/FormDialog.h"

OkCancel OkCancel::Add(FormBuilder &form, FormDialog *dialog, const Names &names)
{
    form.BeginButtons();
    const OkCancel row{form.DefaultButton(names.ok, names.okCaption),
                       form.Button(names.cancel, QStringLiteral("&Cancel"))};
    form.EndButtons();
    QObject::connect(row.cancel, &QPushButton::clicked, dialog, &FormDialog::reject);
    return row;
}

OkCancel OkCancel::Add(FormBuilder &form, FormDialog *dialog)
{
    return Add(form, dialog, Names{});
}
