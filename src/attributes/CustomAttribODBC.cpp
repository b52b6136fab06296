#include "attributes/CustomAttribODBC.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "platform/connection/Connection.h"

#include <QSet>

namespace
{
QString Stored(AttribType type)
{
    return SqlNumber(static_cast<int>(type));
}

QString Stored(AttribSection section)
{
    return SqlNumber(static_cast<int>(section));
}

QString SameName(const QString &name)
{
    return u"SELECT AttributeRef FROM CustomAttributes WHERE AttributeName = '" % name % u"'";
}

QString SameValue(const QString &value, AttributeRef attributeRef)
{
    return u"SELECT AttributeValueRef FROM CustomAttributeValues WHERE AttributeValue = '" % value %
           u"' AND AttributeRef = " % SqlNumber(attributeRef);
}

QString ValueKey(const Recordset::Row &row)
{
    return u'?' % row.Text(u"AttributeValueRef") % u'!' % row.Text(u"AttributeRef");
}

void AddAttributes(TreeModel &tree, AttribSection section)
{
    const Recordset attributes = OpenRecordset(u"SELECT * FROM CustomAttributes WHERE AppliesTo = " %
                                               Stored(section) % u" ORDER BY AttributeName ASC");
    for (const Recordset::Row row : attributes) {
        const auto type = static_cast<AttribType>(row.Long(u"AttributeType"));
        tree.Add({}, {u'!' % row.Text(u"AttributeRef"), row.Text(u"AttributeName"), AttribImage(type)});
    }
}

void AddValues(TreeModel &tree)
{
    const Recordset values =
        OpenRecordset(QStringLiteral("SELECT * FROM CustomAttributeValues ORDER BY AttributeValue ASC"));
    for (const Recordset::Row row : values) {
        TreeNode node{ValueKey(row), row.Text(u"AttributeValue")};
        node.tick = TreeTick::Off;
        tree.Add(u'!' % row.Text(u"AttributeRef"), std::move(node));
    }
}
} // namespace

QString AttribImage(AttribType type)
{
    return type == AttribType::Single ? QStringLiteral("tag") : QStringLiteral("view-pim-tasks");
}

bool ADO_CustomAttrib_Show(TreeModel &tree, AttribSection section)
{
    return Reported("ADO_CustomAttrib_Show", false, [&] {
        QSet<QString> folded;
        for (const TreeNode *node : tree.Nodes()) {
            if (!node->children.empty() && !node->expanded)
                folded.insert(node->key);
        }
        const QString selected = tree.Selected() ? tree.Selected()->key : QString();
        tree.Clear();
        AddAttributes(tree, section);
        AddValues(tree);
        for (TreeNode *node : tree.Nodes())
            tree.SetExpanded(node, !node->children.empty() && !folded.contains(node->key));
        tree.Select(tree.Find(selected));
        return true;
    });
}

bool ADO_CustomAttrib_Store(const TreeModel &tree, int recordRef, AttribSection section)
{
    return Reported("ADO_CustomAttrib_Store", false, [&] {
        // One transaction: a crash after the delete would lose what the record had.
        WriteGroup group(gConnection);
        Execute(u"DELETE FROM AppliedAttributes WHERE AppliesToRef = " % SqlNumber(recordRef) %
                u" AND RefSection = " % Stored(section));
        for (const TreeNode *node : tree.Nodes()) {
            if (node->tick == TreeTick::On)
                Execute(u"INSERT INTO AppliedAttributes "
                        u"(AttributeRef,AttributeValueRef,AppliesToRef,RefSection) VALUES (" %
                        SqlNumber(KeyNumber(node->parent->key)) % u',' % SqlNumber(KeyNumber(node->key)) %
                        u',' % SqlNumber(recordRef) % u',' % Stored(section) % u')');
        }
        EndRows(group);
        return true;
    });
}

bool ADO_CustomAttrib_Get(TreeModel &tree, int recordRef, AttribSection section)
{
    return Reported("ADO_CustomAttrib_Get", false, [&] {
        const Recordset applied =
            OpenRecordset(u"SELECT AttributeValueRef, AttributeRef FROM AppliedAttributes WHERE "
                          u"AppliesToRef = " %
                          SqlNumber(recordRef) % u" AND RefSection = " % Stored(section));
        for (const Recordset::Row row : applied) {
            if (TreeNode *node = tree.Find(ValueKey(row)))
                tree.SetTick(node, TreeTick::On);
        }
        return true;
    });
}

ReadRow<CustomAttrib> ADO_CustomAttrib_ShowAttrib(AttributeRef attributeRef)
{
    return ReadOne<CustomAttrib>("ADO_CustomAttrib_ShowAttrib",
                                 u"SELECT * FROM CustomAttributes WHERE AttributeRef = " %
                                     SqlNumber(attributeRef),
                                 [](const Recordset::Row &row) {
                                     return CustomAttrib{row.Text(u"AttributeName"),
                                                         static_cast<AttribType>(row.Long(u"AttributeType")),
                                                         static_cast<AttribSection>(row.Long(u"AppliesTo"))};
                                 });
}

int ADO_CustomAttrib_AddAttrib(const QString &name, AttribType type, AttribSection appliesTo)
{
    const QString sameName = SameName(name);
    return AddRow("ADO_CustomAttrib_AddAttrib", sameName,
                  u"INSERT INTO CustomAttributes (AttributeName, AttributeType, AppliesTo) VALUES ('" % name %
                      u"'," % Stored(type) % u',' % Stored(appliesTo) % u')',
                  sameName, u"AttributeRef");
}

int ADO_CustomAttrib_UpdateAttrib(AttributeRef attributeRef, const QString &name, AttribType type,
                                  AttribSection appliesTo)
{
    return UpdateRow(
        "ADO_CustomAttrib_UpdateAttrib", SameName(name) % u" AND AttributeRef <> " % SqlNumber(attributeRef),
        u"UPDATE CustomAttributes SET AttributeName='" % name % u"', AttributeType = " % Stored(type) %
            u", AppliesTo = " % Stored(appliesTo) % u" WHERE AttributeRef = " % SqlNumber(attributeRef),
        attributeRef.number);
}

int ADO_CustomAttrib_AddAttribVal(const QString &value, AttributeRef attributeRef)
{
    const QString sameValue = SameValue(value, attributeRef);
    return AddRow("ADO_CustomAttrib_AddAttribVal", sameValue,
                  u"INSERT INTO CustomAttributeValues (AttributeValue,AttributeRef) VALUES ('" % value %
                      u"'," % SqlNumber(attributeRef) % u')',
                  sameValue, u"AttributeValueRef");
}

int ADO_CustomAttrib_UpdateAttribVal(AttributeValueRef valueRef, const QString &value,
                                     AttributeRef attributeRef)
{
    return UpdateRow("ADO_CustomAttrib_UpdateAttribVal",
                     SameValue(value, attributeRef) % u" AND AttributeValueRef <> " % SqlNumber(valueRef),
                     u"UPDATE CustomAttributeValues SET AttributeValue = '" % value %
                         u"' WHERE AttributeValueRef = " % SqlNumber(valueRef),
                     valueRef.number);
}

bool ADO_CustomAttrib_DelAttrib(AttributeRef attributeRef)
{
    return RunWithKey("ADO_CustomAttrib_DelAttrib",
                      {u"DELETE FROM AppliedAttributes WHERE AttributeRef = ",
                       u"DELETE FROM CustomAttributeValues WHERE AttributeRef = ",
                       u"DELETE FROM CustomAttributes WHERE AttributeRef = "},
                      attributeRef.number);
}

bool ADO_CustomAttrib_DelAttribVal(AttributeValueRef valueRef)
{
    return RunWithKey("ADO_CustomAttrib_DelAttribVal",
                      {u"DELETE FROM AppliedAttributes WHERE AttributeValueRef = ",
                       u"DELETE FROM CustomAttributeValues WHERE AttributeValueRef = "},
                      valueRef.number);
}
