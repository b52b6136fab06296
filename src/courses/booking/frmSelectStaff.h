#pragma once

#include "controls/ComboModel.h"
#include "courses/booking/SelectDialog.h"

#include <map>

/// Chooses staff, role by role, for the events whose staff are selected in a tree.
class frmSelectStaff final : public SelectDialog
{
    Q_OBJECT

public:
    /// Opens on that role, or on the first one.
    explicit frmSelectStaff(const SelectTarget &target, RoleTypeRef roleTypeRef, QWidget *parent = nullptr);

protected:
    /// Nobody can be booked in two roles of one event.
    QString HeldInTree(EventRef eventRef, int contactRef) const override;
    int Chosen() const override;
    void AddToTree() override;

private:
    void ShowRole();
    void KeepChosen();

    ComboModel m_roles;
    RoleTypeRef m_role; ///< whose staff are shown
    /// What was chosen for the roles that are not shown.
    std::map<RoleTypeRef, std::vector<ListItem>> m_others;
    CaptionLabel *m_toEmploy = nullptr;
};
