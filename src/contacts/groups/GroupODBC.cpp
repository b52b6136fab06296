#include "contacts/groups/GroupODBC.h"

#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "platform/connection/Connection.h"

namespace
{
QString SameGroup(const QString &name, const QString &referenceId)
{
    return u"SELECT GroupRef FROM GroupNames WHERE Name = '" % name % u"' AND ReferenceID = '" % referenceId %
           u"'";
}

QString PersonName(const Recordset::Row &row)
{
    return row.Text(u"Cust_Surname") % u", " % row.Text(u"Cust_Forename");
}

/// The leaves of one person's membership: the person first, then who else is in the group under that type.
void AddMembers(TreeModel &tree, const QString &groupKey, const QString &number, const Recordset::Row &own)
{
    const auto addLeaf = [&](const Recordset::Row &person) {
        TreeNode leaf;
        leaf.key = u'?' % person.Text(u"ContactRef") % u'!' % number;
        leaf.text = PersonName(person);
        leaf.image = QStringLiteral("user");
        tree.Add(groupKey, std::move(leaf));
    };
    addLeaf(own);
    const Recordset members = OpenRecordset(
        u"SELECT Contacts.ContactRef, Contacts.Cust_Surname, Contacts.Cust_Forename FROM Contacts INNER JOIN "
        u"Groups ON Contacts.ContactRef = Groups.ContactRef WHERE Groups.GroupRef = " %
        own.Text(u"GroupRef") % u" AND Groups.LinkRef = " % own.Text(u"LinkRef") %
        u" ORDER BY Contacts.Cust_Surname, Contacts.Cust_Forename;");
    for (const Recordset::Row member : members) {
        // The person's own key exists already.
        addLeaf(member);
    }
}

/// What another workstation did to the members since they were seen is done to `list`.
void JoinMembers(const ListModel &now, ListModel &list, SeenMembers &seen)
{
    seen.joined.clear();
    seen.left.clear();
    if (!seen.keys)
        return;
    std::vector<int> gone;
    for (int row = 0; row < list.Count(); ++row) {
        const ListItem &member = list.At(row);
        if (!seen.keys->contains(member.key) || now.Contains(member.key))
            continue;
        gone.push_back(row);
        seen.left.append(member.text);
    }
    list.Take(gone);
    for (int row = 0; row < now.Count(); ++row) {
        const ListItem &member = now.At(row);
        if (seen.keys->contains(member.key) || list.Contains(member.key))
            continue;
        list.Add(member);
        seen.joined.append(member.text);
    }
}
} // namespace

void SeenMembers::See(const ListModel &members)
{
    keys.emplace();
    for (int row = 0; row < members.Count(); ++row)
        keys->insert(members.At(row).key);
}

int MemberLink(const QString &key)
{
    return key.section(u'!', 1).toInt();
}

int ADO_Contact_AddGroupName(const QString &name, const QString &referenceId, LinkRef linkRef)
{
    const QString sameGroup = SameGroup(name, referenceId);
    return AddRow("ADO_Contact_AddGroupName", sameGroup,
                  u"INSERT INTO GroupNames (Name, ReferenceID, LinkRef) VALUES ('" % name % u"','" %
                      referenceId % u"'," % SqlNumber(linkRef) % u')',
                  sameGroup, u"GroupRef");
}

int ADO_Contact_UpdateGroupName(GroupRef groupRef, const QString &name, const QString &referenceId,
                                LinkRef linkRef)
{
    // The type stands between apostrophes here alone; the database takes it as the number that it is.
    return UpdateRow("ADO_Contact_UpdateGroupName",
                     SameGroup(name, referenceId) % u" AND GroupRef <> " % SqlNumber(groupRef),
                     u"UPDATE GroupNames SET Name = '" % name % u"', ReferenceID = '" % referenceId %
                         u"', LinkRef = '" % SqlNumber(linkRef) % u"' WHERE GroupRef = " %
                         SqlNumber(groupRef),
                     groupRef.number);
}

ReadRow<GroupName> ADO_Contact_ShowGroupName(GroupRef groupRef)
{
    return ReadOne<GroupName>("ADO_Contact_ShowGroupName",
                              u"SELECT * FROM GroupNames WHERE GroupRef = " % SqlNumber(groupRef),
                              [](const Recordset::Row &row) {
                                  return GroupName{row.Text(u"Name"), row.Text(u"ReferenceID"),
                                                   LinkRef(static_cast<int>(row.Long(u"LinkRef")))};
                              });
}

void ADO_Contact_FillGroupNames(LinkRef linkRef, ComboModel &list)
{
    Reported("ADO_Contact_FillGroupNames", [&] {
        list.Clear();
        const Recordset groups = OpenRecordset(u"SELECT * FROM GroupNames WHERE LinkRef = " %
                                               SqlNumber(linkRef) % u" ORDER BY Name ASC");
        std::vector<ComboItem> items;
        for (const Recordset::Row row : groups)
            items.push_back({FormatRefLabel(row.Text(u"ReferenceID"), row.Text(u"Name")),
                             static_cast<int>(row.Long(u"GroupRef"))});
        list.Fill(std::move(items));
    });
}

bool ADO_Contact_ShowGroup(GroupRef groupRef, ListModel &list)
{
    return Reported("ADO_Contact_ShowGroup", false, [&] {
        list.Clear();
        const Recordset members = OpenRecordset(
            u"SELECT Contacts.Cust_Forename, Contacts.Cust_Surname, Contacts.ContactRef, LinkNames.* FROM "
            u"(Groups INNER JOIN LinkNames ON Groups.LinkRef = LinkNames.LinkRef) INNER JOIN Contacts ON "
            u"Groups.ContactRef = Contacts.ContactRef WHERE GroupRef = " %
            SqlNumber(groupRef));
        std::vector<ListItem> items;
        for (const Recordset::Row row : members) {
            ListItem item{u'?' % row.Text(u"ContactRef") % u'!' % row.Text(u"LinkRef"),
                          PersonName(row),
                          {row.Text(u"LinkName")}};
            item.bold = true;
            items.push_back(std::move(item));
        }
        list.Fill(std::move(items));
        return true;
    });
}

bool ADO_Contact_UpdateGroup(GroupRef groupRef, ListModel &list, SeenMembers &seen, Progress &progress)
{
    int stored = 0;
    const bool done = Reported("ADO_Contact_UpdateGroup", false, [&] {
        // No row ends on its own: the members are written in one piece, with nobody between reading and
        // writing.
        WriteGroup group(gConnection);
        ListModel now;
        InOneStep(QStringLiteral("Groups"), [&] { return ADO_Contact_ShowGroup(groupRef, now); });
        JoinMembers(now, list, seen);
        progress.Begin(list.Count());
        Execute(u"DELETE FROM Groups WHERE GroupRef = " % SqlNumber(groupRef));
        while (stored < list.Count() && !progress.IsCancelled()) {
            const QString &key = list.At(stored).key;
            Execute(u"INSERT INTO Groups (ContactRef, LinkRef, GroupRef) VALUES (" %
                    SqlNumber(KeyNumber(key)) % u',' % SqlNumber(MemberLink(key)) % u',' %
                    SqlNumber(groupRef) % u')');
            progress.SetValue(++stored);
        }
        if (stored == list.Count()) {
            EndRows(group);
            return true;
        }
        group.Undo();
        stored = 0;
        return false;
    });
    for (int row = 0; row < stored; ++row)
        list.SetBold(row, false);
    if (done)
        seen.See(list);
    return done;
}

void ADO_Contact_ShowGroup_Tree(ContactRef contactRef, TreeModel &tree)
{
    Reported("ADO_Contact_ShowGroup_Tree", [&] {
        tree.Clear();
        const Recordset memberships = OpenRecordset(
            u"SELECT Contacts.ContactRef, Contacts.Cust_Forename, Contacts.Cust_Surname, GroupNames.Name, "
            u"LinkNames.LinkName, GroupNames.GroupRef, LinkNames.LinkRef FROM ((Contacts INNER JOIN Groups "
            u"ON Contacts.ContactRef = Groups.ContactRef) INNER JOIN GroupNames ON Groups.GroupRef = "
            u"GroupNames.GroupRef) INNER JOIN LinkNames ON Groups.LinkRef = LinkNames.LinkRef WHERE "
            u"Groups.ContactRef = " %
            SqlNumber(contactRef) % u" ORDER BY GroupNames.Name, LinkNames.LinkName;");
        int count = 0;
        for (const Recordset::Row row : memberships) {
            // A type or a group that comes again has nodes of its own.
            const QString number = QString::number(++count);
            TreeNode type;
            type.key = u'T' % number;
            type.text = u"Type: " % row.Text(u"LinkName");
            type.image = QStringLiteral("tag");
            type.expanded = true;
            tree.Add(QString(), std::move(type));
            TreeNode group;
            group.key = u'G' % number;
            group.text = u"Group: " % row.Text(u"Name");
            group.image = QStringLiteral("system-users");
            group.expanded = true;
            tree.Add(u'T' % number, std::move(group));
            AddMembers(tree, u'G' % number, number, row);
        }
    });
}

bool ADO_Contact_DeleteLink(LinkRef linkRef)
{
    return RunWithKey("ADO_Contact_DeleteLink",
                      {u"DELETE FROM Groups WHERE LinkRef = ", u"DELETE FROM GroupNames WHERE LinkRef = ",
                       u"DELETE FROM LinkNames WHERE LinkRef = "},
                      linkRef.number);
}

bool ADO_Contact_DeleteGroup(GroupRef groupRef)
{
    return RunWithKey("ADO_Contact_DeleteGroup",
                      {u"DELETE FROM Groups WHERE GroupRef = ", u"DELETE FROM GroupNames WHERE GroupRef = "},
                      groupRef.number);
}
