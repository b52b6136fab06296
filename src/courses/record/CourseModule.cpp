#include "courses/record/CourseModule.h"

#include "database/values/GlobalCode.h"

RecordSaved Course_Save(CourseRecord &course, const CourseLists &lists, FieldValues &base)
{
    const bool isNew = !course.courseRef;
    const auto storeLists = [&](int key) {
        const CourseRef courseRef(key);
        return (isNew || ADO_Course_UpdateConcessions(courseRef, lists.characteristics)) &&
               ADO_Course_UpdateCourseRelations(courseRef, lists.folders);
    };
    FieldValues before = base;
    const RecordSaved saved = SaveWhole(
        "Course_Save", Progress(),
        [&] { return isNew ? Course_Add(course) : Course_Update(course, lists, base); }, storeLists);
    base = SeenAfter(
        saved, std::move(before), [&] { return AsStored(Course_Values(course, lists)); },
        [&] { return Course_StoredValues(CourseRef(saved.key)); });
    return saved;
}

int Course_Rename(const QString &title, CourseRef courseRef)
{
    return TellDuplicate(ADO_Course_RenameCourse(SqlSafeText(title), courseRef),
                         QStringLiteral("Course with this name already."), QStringLiteral("Rename Course"));
}
