#include "attributes/CustomAttribModule.h"

#include "controls/TreeModel.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/values/GlobalCode.h"

#include <array>

namespace
{
const QString attribExists = QStringLiteral("Attribute already exists in database.");
const QString valueExists = QStringLiteral("Attribute Value already exists for this Attribute.");
const QString values = QStringLiteral("CustomAttributeValues");
const QString valueKey = QStringLiteral("AttributeValueRef");

int LivingAttrib(AttributeRef attributeRef, const QString &title)
{
    return LivingKey(QStringLiteral("CustomAttributes"), QStringLiteral("AttributeRef"), attributeRef.number,
                     QStringLiteral("attribute"), title);
}
} // namespace

std::span<const AttribSectionInfo> AttribSections()
{
    static const std::array<AttribSectionInfo, 1> sections{
        {{AttribSection::Contacts, QStringLiteral("Contacts")}}};
    return sections;
}

int CustomAttrib_AddAttrib(const CustomAttrib &attrib)
{
    return TellDuplicate(ADO_CustomAttrib_AddAttrib(SqlSafeText(attrib.name), attrib.type, attrib.appliesTo),
                         attribExists, QStringLiteral("Add Attribute"));
}

int CustomAttrib_UpdateAttrib(AttributeRef attributeRef, const CustomAttrib &attrib)
{
    const QString title = QStringLiteral("Update Attribute");
    const int living = LivingAttrib(attributeRef, title);
    if (living < 1)
        return living;
    return TellDuplicate(
        ADO_CustomAttrib_UpdateAttrib(attributeRef, SqlSafeText(attrib.name), attrib.type, attrib.appliesTo),
        attribExists, title);
}

int CustomAttrib_AddAttribVal(const QString &value, AttributeRef attributeRef)
{
    const QString title = QStringLiteral("Add Attribute Value");
    const int living = LivingAttrib(attributeRef, title);
    return living < 1 ? living
                      : TellDuplicate(ADO_CustomAttrib_AddAttribVal(SqlSafeText(value), attributeRef),
                                      valueExists, title);
}

int CustomAttrib_UpdateAttribVal(AttributeValueRef valueRef, const QString &value, AttributeRef attributeRef)
{
    const QString title = QStringLiteral("Update Attribute Value");
    const int living = LivingKey(values, valueKey, valueRef.number, QStringLiteral("value"), title);
    return living < 1
               ? living
               : TellDuplicate(ADO_CustomAttrib_UpdateAttribVal(valueRef, SqlSafeText(value), attributeRef),
                               valueExists, title);
}

bool CustomAttrib_LeaveOutDeleted(TreeModel &tree)
{
    QSet<int> ticked;
    for (const TreeNode *node : tree.Nodes()) {
        if (node->tick == TreeTick::On)
            ticked.insert(KeyNumber(node->key));
    }
    const std::optional<QSet<int>> living = ADO_LivingKeys(values, valueKey, ticked);
    if (!living)
        return false;
    QStringList names;
    for (const TreeNode *node : tree.Nodes()) {
        if (node->tick != TreeTick::On || living->contains(KeyNumber(node->key)))
            continue;
        names.append(node->parent->text % u": " % node->text);
        tree.Remove(QString(node->key));
    }
    TellLeftOut(names, QStringLiteral("Custom Attributes"));
    return true;
}

bool CustomAttrib_Delete(const QString &key)
{
    const int number = KeyNumber(key);
    return key.startsWith(u'!') ? ADO_CustomAttrib_DelAttrib(AttributeRef(number))
                                : ADO_CustomAttrib_DelAttribVal(AttributeValueRef(number));
}

void CustomAttrib_Toggle(TreeModel &tree, TreeNode *node)
{
    if (node->tick == TreeTick::None)
        return;
    if (node->tick != TreeTick::Off) {
        tree.SetTick(node, TreeTick::Off);
        return;
    }
    if (node->parent->image == AttribImage(AttribType::Single)) {
        for (const auto &sibling : node->parent->children) {
            if (sibling->tick != TreeTick::Off)
                tree.SetTick(sibling.get(), TreeTick::Off);
        }
    }
    tree.SetTick(node, TreeTick::On);
}
