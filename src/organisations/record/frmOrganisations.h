#pragma once

#include "controls/ListModel.h"
#include "forms/frames/FormDialog.h"
#include "forms/frames/ListButtons.h"

#include <optional>

class ListView;

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
    std::optional<ListButtons> m_buttons;
};
