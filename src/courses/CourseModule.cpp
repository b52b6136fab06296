#include "courses/CourseModule.h"

#include "database/GlobalCode.h"
#include "platform/Dialogs.h"

namespace
{
int ToldIfTaken(int result, const QString &title, const QString &text)
{
    if (result == 0)
        Dialogs::MsgBox(text, title, Dialogs::Buttons::Ok, Dialogs::Icon::Information);
    return result;
}
} // namespace

int Course_Add(const CourseRecord &course)
{
    return ToldIfTaken(ADO_Course_AddCourse(SqlSafeText(course.title), SqlSafeText(course.description),
                                            course.fee, course.limit, SqlSafeText(course.referenceID)),
                       QStringLiteral("Add Course"), QStringLiteral("Course already exists in database."));
}

int Course_Update(const CourseRecord &course)
{
    return ToldIfTaken(ADO_Course_UpdateCourse(SqlSafeText(course.title), SqlSafeText(course.description),
                                               course.fee, course.limit, course.courseRef,
                                               SqlSafeText(course.referenceID)),
                       QStringLiteral("Update Course"), QStringLiteral("Course already exists in database."));
}

int Course_Rename(const QString &title, int courseRef)
{
    return ToldIfTaken(ADO_Course_RenameCourse(SqlSafeText(title), courseRef),
                       QStringLiteral("Rename Course"), QStringLiteral("Course with this name already."));
}
