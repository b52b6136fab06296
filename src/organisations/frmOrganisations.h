#pragma once

#include "controls/ListModel.h"
#include "forms/FormDialog.h"

class ListView;
class QPushButton;

/// The list of all organisations.
class frmOrganisations final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmOrganisations(QWidget *parent = nullptr);

private:
    void Refresh();
    void ApplyRights();
    void AddOrganisation();
    void EditOrganisations();
    void DeleteOrganisations();

    ListModel m_organisations;
    ListView *m_list;
    QPushButton *m_addBtn;
    QPushButton *m_editBtn;
    QPushButton *m_delBtn;
};
