#pragma once

#include <QList>

/// The courses that the course reports last ran on, kept in `course.dat` beside what the program writes:
/// one line, each reference followed by ",".
namespace CourseSubset
{
/// Empty where there is no such file; what is no number is passed over.
QList<int> Load();
/// A failure to write it is passed by: it is a convenience.
void Save(const QList<int> &courseRefs);
} // namespace CourseSubset
