#pragma once

#include "attributes/CustomAttribODBC.h"

#include <QStringList>

#include <span>

struct TreeNode;

/// The logic of custom attributes: texts come as typed, and the user is told when a name or value exists.

struct AttribSectionInfo {
    int code;
    QString caption;
};
/// Every kind of record that attributes can be defined for.
std::span<const AttribSectionInfo> AttribSections();

/// The new AttributeRef; 0, after telling the user, where the name is taken; -1 on an error.
int CustomAttrib_AddAttrib(const CustomAttrib &attrib);
/// `key`; 0 and -1 as above, 0 as well where the attribute was deleted.
int CustomAttrib_UpdateAttrib(int key, const CustomAttrib &attrib);
/// The new AttributeValueRef; 0, after telling the user, where the attribute has the value or was deleted; -1
/// on an error.
int CustomAttrib_AddAttribVal(const QString &value, int attributeRef);
/// `key`; 0 and -1 as above, 0 as well where the value was deleted.
int CustomAttrib_UpdateAttribVal(int key, const QString &value, int attributeRef);
/// Takes the ticked values out of the tree that were deleted, and tells the user. False on an error.
bool CustomAttrib_LeaveOutDeleted(TreeModel &tree);
/// Deletes what a node stands for: an attribute with its values, or one value. False on an error.
bool CustomAttrib_Delete(const QString &key);

/// What a click on a node's tick does to a record: a value's tick goes on or off, and of a single select
/// attribute no other value keeps its own. Attributes have no tick.
void CustomAttrib_Toggle(TreeModel &tree, TreeNode *node);
