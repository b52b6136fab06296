#include "courses/CourseModule.h"

#include "database/GlobalCode.h"

int Course_Add(const CourseRecord &course)
{
    return TellDuplicate(ADO_Course_AddCourse(SqlSafeText(course.title), SqlSafeText(course.description),
                                              course.fee, course.limit, SqlSafeText(course.referenceID)),
                         QStringLiteral("Course already exists in database."), QStringLiteral("Add Course"));
}

int Course_Update(const CourseRecord &course)
{
    return TellDuplicate(
        ADO_Course_UpdateCourse(SqlSafeText(course.title), SqlSafeText(course.description), course.fee,
                                course.limit, course.courseRef, SqlSafeText(course.referenceID)),
        QStringLiteral("Course already exists in database."), QStringLiteral("Update Course"));
}

RecordSaved Course_Save(const CourseRecord &course, const ListModel &characteristics,
                        const TreeModel &folders)
{
    const bool isNew = course.courseRef == 0;
    return SaveWhole(
        "Course_Save", Progress(), [&] { return isNew ? Course_Add(course) : Course_Update(course); },
        [&](int courseRef) {
            return (isNew || ADO_Course_UpdateConcessions(courseRef, characteristics)) &&
                   ADO_Course_UpdateCourseRelations(courseRef, folders);
        });
}

int Course_Rename(const QString &title, int courseRef)
{
    return TellDuplicate(ADO_Course_RenameCourse(SqlSafeText(title), courseRef),
                         QStringLiteral("Course with this name already."), QStringLiteral("Rename Course"));
}
