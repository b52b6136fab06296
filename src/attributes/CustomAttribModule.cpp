#include "attributes/CustomAttribModule.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "database/GlobalCode.h"

#include <array>

namespace
{
const QString attribExists = QStringLiteral("Attribute already exists in database.");
const QString valueExists = QStringLiteral("Attribute Value already exists for this Attribute.");

} // namespace

std::span<const AttribSectionInfo> AttribSections()
{
    static const std::array<AttribSectionInfo, 1> sections{
        {{AttribSection::contacts, QStringLiteral("Contacts")}}};
    return sections;
}

int CustomAttrib_AddAttrib(const CustomAttrib &attrib)
{
    return TellDuplicate(ADO_CustomAttrib_AddAttrib(SqlSafeText(attrib.name), attrib.type, attrib.appliesTo),
                         attribExists, QStringLiteral("Add Attribute"));
}

int CustomAttrib_UpdateAttrib(int key, const CustomAttrib &attrib)
{
    return TellDuplicate(
        ADO_CustomAttrib_UpdateAttrib(key, SqlSafeText(attrib.name), attrib.type, attrib.appliesTo),
        attribExists, QStringLiteral("Update Attribute"));
}

int CustomAttrib_AddAttribVal(const QString &value, int attributeRef)
{
    return TellDuplicate(ADO_CustomAttrib_AddAttribVal(SqlSafeText(value), attributeRef), valueExists,
                         QStringLiteral("Add Attribute Value"));
}

int CustomAttrib_UpdateAttribVal(int key, const QString &value, int attributeRef)
{
    return TellDuplicate(ADO_CustomAttrib_UpdateAttribVal(key, SqlSafeText(value), attributeRef), valueExists,
                         QStringLiteral("Update Attribute Value"));
}

bool CustomAttrib_Delete(const TreeNode &node)
{
    const int key = KeyNumber(node.key);
    return node.key.startsWith(u'!') ? ADO_CustomAttrib_DelAttrib(key) : ADO_CustomAttrib_DelAttribVal(key);
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
        for (const auto &sibling : node->parent->children)
            tree.SetTick(sibling.get(), TreeTick::Off);
    }
    tree.SetTick(node, TreeTick::On);
}
