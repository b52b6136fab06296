#pragma once

#include "database/statements/ReadRow.h"

#include <QString>

class TreeModel;

/// Data functions of the attributes that a site defines for its records, and of their values; tables
/// `CustomAttributes`, `CustomAttributeValues` and `AppliedAttributes`. Texts come already safe for SQL.
///
/// In a tree an attribute is a top-level node keyed "!" and reference, and its values stand below it, keyed
/// "?" value "!" attribute, each with a tick.

enum class AttribType { Single = 1, Multi = 2 };

/// What kind of record an attribute applies to, and is applied to.
namespace AttribSection
{
constexpr int contacts = 1;
}

struct CustomAttrib {
    QString name;
    AttribType type = AttribType::Multi;
    int appliesTo = AttribSection::contacts;
};

/// The pictures of the two kinds of attributes in a tree, by which a click on a value knows its rule.
QString AttribImage(AttribType type);

/// Fills the tree with the section's attributes and their values, unticked. What was folded stays folded, and
/// the selected node selected. False on an error.
bool ADO_CustomAttrib_Show(TreeModel &tree, int section);
/// Replaces what is applied to a record by the ticked values of the tree. False on an error: the record may
/// have fewer values now than the tree shows.
bool ADO_CustomAttrib_Store(const TreeModel &tree, int recordRef, int section);
/// Ticks what is applied to a record; what the tree has no node for is passed over. False on an error.
bool ADO_CustomAttrib_Get(TreeModel &tree, int recordRef, int section);
/// Reads one attribute.
ReadRow<CustomAttrib> ADO_CustomAttrib_ShowAttrib(int key);

/// The new AttributeRef; 0 where an attribute of any section has that name, -1 on an error.
int ADO_CustomAttrib_AddAttrib(const QString &name, AttribType type, int appliesTo);
/// `key`, 0 where another attribute has that name (nothing is written then), -1 on an error. Records that
/// hold several values of what becomes single select keep them.
int ADO_CustomAttrib_UpdateAttrib(int key, const QString &name, AttribType type, int appliesTo);
/// The new AttributeValueRef; 0 where the attribute has that value, -1 on an error.
int ADO_CustomAttrib_AddAttribVal(const QString &value, int attributeRef);
/// `key`, 0 where another value of the attribute reads the same (nothing is written then), -1 on an error.
int ADO_CustomAttrib_UpdateAttribVal(int key, const QString &value, int attributeRef);
/// Deletes an attribute with its values, and takes them from every record. False on an error: what was
/// deleted before it stays deleted, and the delete can be repeated.
bool ADO_CustomAttrib_DelAttrib(int key);
/// Deletes a value and takes it from every record. False on an error, as above.
bool ADO_CustomAttrib_DelAttribVal(int key);
