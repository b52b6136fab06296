#pragma once

#include <QList>

/// The courses that the course reports last ran on, kept in `course.dat` in the directory that the program
/// writes to: one line, with each reference followed by ",".
namespace CourseSubset
{
/// Empty if there is no such file; anything that is not a number is skipped.
QList<int> Load();
/// A failure to write it is ignored, since it is only a convenience.
void Save(const QList<int> &courseRefs);
} // namespace CourseSubset
