#pragma once

#include "courses/record/ResourceTreeODBC.h"
#include "database/statements/RecordMerge.h"

/// The tree of a course's events as a part of its record: what another workstation booked, noted or deleted
/// meanwhile is joined when the course is saved, so that saving the whole tree does not undo it.
namespace ResourceVersion
{
/// Adds a field for each event and for each item: of the tree, or of what it held when it was read.
void AddFields(FieldValues &values, const CourseResources &resources);
void AddReadFields(FieldValues &values, const CourseResources &resources);
/// Whether the tree differs from what was read.
bool IsChanged(const CourseResources &resources);
/// The fields with those of an event that `mine` has no more made one: whether it stays is decided about as a
/// whole, with all that is on it.
FieldValues Folded(const FieldValues &values, const CourseResources &mine);
/// Makes the tree what the merged fields say; what it lacks is taken from what is stored. Returns the names
/// of the events that were deleted elsewhere.
QStringList Take(const FieldValues &values, CourseResources &mine, const CourseResources &stored);

bool IsField(const QString &field);
/// A field's name, and its value, as the user reads them; a null value means that it is missing.
QString Caption(const QString &field, const CourseResources &mine, const CourseResources &stored);
QString Shown(const QString &value);

/// Leaves out the items whose person, facility, venue or role was deleted, and tells the user their names.
/// False on an error.
bool LeaveOutDeleted(CourseResources &resources, const QString &title);
} // namespace ResourceVersion
