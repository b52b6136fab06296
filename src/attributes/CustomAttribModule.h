#pragma once

#include "attributes/CustomAttribODBC.h"
#include "database/values/Keys.h"

#include <QStringList>

#include <span>

struct TreeNode;

/// The logic of custom attributes: texts are passed as typed, and the user is told if a name or value already
/// exists.

struct AttribSectionInfo {
    AttribSection code;
    QString caption;
};
/// Every kind of record that attributes can be defined for.
std::span<const AttribSectionInfo> AttribSections();

/// Returns the new AttributeRef; 0, after telling the user, if the name is taken; -1 on an error.
int CustomAttrib_AddAttrib(const CustomAttrib &attrib);
/// Returns `attributeRef`; 0 and -1 as above, and also 0 if the attribute was deleted.
int CustomAttrib_UpdateAttrib(AttributeRef attributeRef, const CustomAttrib &attrib);
/// Returns the new AttributeValueRef; 0, after telling the user, if the attribute has the value or was
/// deleted; -1 on an error.
int CustomAttrib_AddAttribVal(const QString &value, AttributeRef attributeRef);
/// Returns `valueRef`; 0 and -1 as above, and also 0 if the value was deleted.
int CustomAttrib_UpdateAttribVal(AttributeValueRef valueRef, const QString &value, AttributeRef attributeRef);
/// Removes ticked values that were deleted from the tree, and tells the user. False on an error.
bool CustomAttrib_LeaveOutDeleted(TreeModel &tree);
/// Deletes the attribute of a node with its values, or the one value of a node. False on an error.
bool CustomAttrib_Delete(const QString &key);

/// What a click on a node's tick does: a value's tick goes on or off, and the other values of a single select
/// attribute lose theirs. Attributes have no tick.
void CustomAttrib_Toggle(TreeModel &tree, TreeNode *node);
