#pragma once

#include "controls/ListModel.h"
#include "forms/frames/FormDialog.h"

class QPushButton;

/// Says which organisations issue awards.
class frmAwardBoard final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmAwardBoard(QWidget *parent = nullptr);

protected:
    bool MayLeave() override;

private:
    bool Update();

    ListModel m_organisations;
    QPushButton *m_updateBtn;
    ModifiedMark *m_modified;
};
