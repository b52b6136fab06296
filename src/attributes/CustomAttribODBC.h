#pragma once

#include "database/statements/ReadRow.h"
#include "database/values/Keys.h"

#include <QString>

class TreeModel;

/// Data functions of the attributes that a site defines for its records, and of their values; tables
/// `CustomAttributes`, `CustomAttributeValues` and `AppliedAttributes`. Texts are passed already safe for
/// SQL.
///
/// In a tree an attribute is a top-level node with the key "!" and its reference. Its values are below it,
/// with the key "?" value "!" attribute, each with a tick.

enum class AttribType { Single = 1, Multi = 2 };

/// The kinds of records that attributes apply to.
enum class AttribSection { Contacts = 1 };

struct CustomAttrib {
    QString name;
    AttribType type = AttribType::Multi;
    AttribSection appliesTo = AttribSection::Contacts;
};

/// The picture of a kind of attribute in a tree; a click on a value tells by it which rule to follow.
QString AttribImage(AttribType type);

/// Fills the tree with the section's attributes and their values, unticked. Collapsed nodes stay collapsed,
/// and the selected node stays selected. False on an error.
bool ADO_CustomAttrib_Show(TreeModel &tree, AttribSection section);
/// Replaces what is applied to a record by the ticked values of the tree. False on an error: the record may
/// then have fewer values than the tree shows.
bool ADO_CustomAttrib_Store(const TreeModel &tree, int recordRef, AttribSection section);
/// Ticks what is applied to a record; values without a node in the tree are skipped. False on an error.
bool ADO_CustomAttrib_Get(TreeModel &tree, int recordRef, AttribSection section);
/// Reads one attribute.
ReadRow<CustomAttrib> ADO_CustomAttrib_ShowAttrib(AttributeRef attributeRef);

/// Returns the new AttributeRef; 0 if an attribute of any section has that name, -1 on an error.
int ADO_CustomAttrib_AddAttrib(const QString &name, AttribType type, AttribSection appliesTo);
/// Returns `attributeRef`, 0 if another attribute has that name (nothing is written then), -1 on an error. If
/// the attribute becomes single select, records with several of its values keep them.
int ADO_CustomAttrib_UpdateAttrib(AttributeRef attributeRef, const QString &name, AttribType type,
                                  AttribSection appliesTo);
/// Returns the new AttributeValueRef; 0 if the attribute has that value, -1 on an error.
int ADO_CustomAttrib_AddAttribVal(const QString &value, AttributeRef attributeRef);
/// Returns `valueRef`, 0 if the attribute has the same text as another value (nothing is written then), -1 on
/// an error.
int ADO_CustomAttrib_UpdateAttribVal(AttributeValueRef valueRef, const QString &value,
                                     AttributeRef attributeRef);
/// Deletes an attribute with its values, and removes them from every record. False on an error: what was
/// deleted before it stays deleted, and the deletion can be repeated.
bool ADO_CustomAttrib_DelAttrib(AttributeRef attributeRef);
/// Deletes a value and removes it from every record. False on an error, as above.
bool ADO_CustomAttrib_DelAttribVal(AttributeValueRef valueRef);
