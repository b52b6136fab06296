#pragma once

#include "forms/frames/FormDialog.h"

/// What the program is, its version and its web site.
class frmAbout final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget *parent = nullptr);

private:
    QWidget *NewHeading();
};
