#pragma once

#include <QString>

class FormBuilder;
class FormDialog;
class QPushButton;

/// The last row of a dialog: the button that Enter presses, and the one that leaves the form, as Escape does.
struct OkCancel {
    QPushButton *ok;
    QPushButton *cancel;

    struct Names {
        QString ok = QStringLiteral("OKBtn");
        QString cancel = QStringLiteral("CancelBtn");
        QString okCaption = QStringLiteral("&OK");
    };
    static OkCancel Add(FormBuilder &form, FormDialog *dialog, const Names &names);
    static OkCancel Add(FormBuilder &form, FormDialog *dialog);
};
