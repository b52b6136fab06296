#include "courses/record/CourseModule.h"

#include "core/session/Progress.h"
#include "courses/booking/BookingModule.h"
#include "courses/record/ResourceVersion.h"
#include "database/values/GlobalCode.h"

namespace
{
RecordSaved AddCourse(const CourseRecord &course, const CourseLists &lists, FieldValues &base,
                      const Progress &progress)
{
    const RecordSaved saved = SaveWhole(
        "Course_Save", progress, [&] { return Course_Add(course); },
        [&](int key) { return ADO_Course_UpdateCourseRelations(CourseRef(key), lists.folders); });
    if (saved.isWhole)
        base = AsStored(Course_Values(course, lists));
    return saved;
}

RecordSaved UpdateCourse(CourseRecord &course, const CourseLists &lists, FieldValues &base,
                         Progress &progress)
{
    if (!ResourceVersion::LeaveOutDeleted(lists.resources, QStringLiteral("Update Course")))
        return {-1, false};
    std::vector<BookingClash> clashes;
    const int key = Course_Update(course, lists, base, [&] {
        return ADO_Course_UpdateConcessions(course.courseRef, lists.characteristics) &&
               ADO_Course_UpdateCourseRelations(course.courseRef, lists.folders) &&
               SaveResourceTree(course.courseRef, lists.resources.tree, clashes, progress);
    });
    if (key < 1 && progress.IsCancelled())
        return {};
    for (const BookingClash &clash : clashes)
        TellClash(clash, QStringLiteral("Event Booking"));
    return {key, key > 0};
}
} // namespace

RecordSaved Course_Save(CourseRecord &course, const CourseLists &lists, FieldValues &base, Progress &progress)
{
    return course.courseRef ? UpdateCourse(course, lists, base, progress)
                            : AddCourse(course, lists, base, progress);
}

int Course_Rename(const QString &title, CourseRef courseRef)
{
    return TellDuplicate(ADO_Course_RenameCourse(SqlSafeText(title), courseRef),
                         QStringLiteral("Course with this name already."), QStringLiteral("Rename Course"));
}
