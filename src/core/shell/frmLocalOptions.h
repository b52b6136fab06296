#pragma once

#include "forms/frames/FormDialog.h"

class ColourPanel;
class QCheckBox;

/// The options of this workstation. They are written to the settings file when the program ends.
class frmLocalOptions final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmLocalOptions(QWidget *parent = nullptr);

private:
    void Save();

    ColourPanel *m_warnColour;
    QCheckBox *m_showIDs;
};
