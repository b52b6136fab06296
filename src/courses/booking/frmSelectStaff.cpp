#include "courses/booking/frmSelectStaff.h"

#include "contacts/roles/RoleODBC.h"
#include "courses/booking/UsedResourcesODBC.h"

#include <algorithm>

frmSelectStaff::frmSelectStaff(const SelectTarget &target, RoleTypeRef roleTypeRef, QWidget *parent)
    : SelectDialog(QStringLiteral("frmSelectStaff"), QStringLiteral("Select Staff"), target, parent)
{
    ADO_Contact_FillRoleTypeList(m_roles, true);
    m_roles.ChooseData(roleTypeRef.number);
    FormBuilder form(this);
    ComboBox *role = form.Combo(QStringLiteral("RoleList"), QStringLiteral("Ro&le:"), m_roles);
    BuildLists(form,
               {QStringLiteral("StaffAvail"), QStringLiteral("&Available Staff for Role Type:"),
                QStringLiteral("StaffUsed"), QStringLiteral("(s) to employe:"), QStringLiteral("AddTBtn"),
                QStringLiteral("RemTBtn"), QStringLiteral("ClearTBtn")},
               Holders::Of::Staff);
    m_toEmploy = form.Label(QStringLiteral("Label3"));
    connect(role, &QComboBox::activated, this, [this] {
        KeepChosen();
        ShowRole();
    });
    ShowRole();
}

void frmSelectStaff::KeepChosen()
{
    std::vector<ListItem> chosen;
    chosen.reserve(static_cast<size_t>(m_used.Count()));
    for (int row = 0; row < m_used.Count(); ++row)
        chosen.push_back(m_used.At(row));
    m_others[m_role] = std::move(chosen);
}

void frmSelectStaff::ShowRole()
{
    m_role = RoleTypeRef(m_roles.CurrentData());
    m_toEmploy->setText(m_roles.CurrentText() % u"(s) to employe:");
    ADO_Course_FillStaffList(m_available, m_role);
    m_used.Clear();
    for (const ListItem &item : m_others[m_role])
        m_available.MoveKeys({item.key}, m_used);
    m_others.erase(m_role);
    m_available.SelectFirst();
    ShowHolders();
}

QString frmSelectStaff::HeldInTree(EventRef eventRef, int contactRef) const
{
    for (int at = 0; at < m_roles.Count(); ++at) {
        const RoleTypeRef role(m_roles.At(at).data);
        const auto chosen = m_others.find(role);
        const auto isHim = [contactRef](const ListItem &item) { return KeyNumber(item.key) == contactRef; };
        const bool isChosen = chosen != m_others.end() && std::ranges::any_of(chosen->second, isHim);
        const ResourceTree::Node node{ResourceTree::Kind::Staff, eventRef, contactRef, role};
        if (role != m_role && (isChosen || m_tree.Find(ResourceTree::Key(node))))
            return m_roles.At(at).text;
    }
    return {};
}

int frmSelectStaff::Chosen() const
{
    int chosen = m_used.Count();
    for (const auto &[role, items] : m_others)
        chosen += static_cast<int>(items.size());
    return chosen;
}

void frmSelectStaff::AddToTree()
{
    KeepChosen();
    for (auto &[role, items] : m_others) {
        ListModel staff;
        staff.Fill(std::move(items));
        ResourceTree::AddStaffToChosen(m_tree, role, m_roles.At(m_roles.FindData(role.number)).text, staff);
    }
}
