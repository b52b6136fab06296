#include "courses/record/CourseVersion.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "courses/lists/CourseFolderODBC.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/RecordLists.h"
#include "database/values/GlobalCode.h"

namespace
{
using Column = MergedColumn<CourseRecord>;

const QString courseExists = QStringLiteral("Course already exists in database.");
const QString characteristic = QStringLiteral("Characteristic");
const QString folder = QStringLiteral("Folder");
const QString rootLevel = QStringLiteral("!0");

/// A course as stored, with what a save writes with the row.
struct StoredCourse {
    ListModel characteristics;
    TreeModel folders;
};

const std::vector<Column> &Fields()
{
    static const std::vector<Column> columns{
        {"Course Name", &CourseRecord::title},
        {"Reference ID", &CourseRecord::referenceID},
        {"Description", &CourseRecord::description},
        {"Fee", &CourseRecord::fee},
        {"Course Enrollment Limit", &CourseRecord::limit},
    };
    return columns;
}

FieldValues ReadValues(CourseRef courseRef, StoredCourse &stored)
{
    const ReadRow<CourseFile> file = ADO_Course_ShowCourse(courseRef);
    if (!file)
        return {};
    stored.characteristics.Fill(file->characteristics);
    ADO_Course_ShowFolders(stored.folders, true, true);
    ADO_Course_ShowCourseRelations(courseRef, stored.folders);
    return Course_Values(file->course, {stored.characteristics, stored.folders});
}

int Write(const CourseRecord &course)
{
    return ADO_Course_UpdateCourse(SqlSafeText(course.title), SqlSafeText(course.description), course.fee,
                                   course.limit, course.courseRef, SqlSafeText(course.referenceID));
}
} // namespace

FieldValues Course_Values(const CourseRecord &course, const CourseLists &lists)
{
    FieldValues values = ValuesOf(Fields(), course);
    AddRows(values, characteristic, lists.characteristics, false);
    FieldValues folders;
    AddTicks(folders, folder, lists.folders, {});
    // A course in no folder is stored at root level.
    if (folders.isEmpty())
        folders[folder % rootLevel] = QStringLiteral("");
    values.insert(folders);
    return values;
}

FieldValues Course_StoredValues(CourseRef courseRef)
{
    StoredCourse stored;
    // One step, so that a read that fails ends all of it: folders that could not be read would look removed.
    return Reported("Course_StoredValues", FieldValues(), [&] {
        return InOneStep(QStringLiteral("Courses"), [&] { return ReadValues(courseRef, stored); });
    });
}

int Course_Add(const CourseRecord &course)
{
    return TellDuplicate(ADO_Course_AddCourse(SqlSafeText(course.title), SqlSafeText(course.description),
                                              course.fee, course.limit, SqlSafeText(course.referenceID)),
                         courseExists, QStringLiteral("Add Course"));
}

int Course_Update(CourseRecord &course, const CourseLists &lists, FieldValues &base)
{
    StoredCourse stored;
    RecordLists beside;
    beside.Add(RecordLists::List{characteristic, lists.characteristics, stored.characteristics});
    beside.Add(RecordLists::Ticks{folder, lists.folders, stored.folders});
    MergedSave save = SaveOf(Fields(), beside, QStringLiteral("Courses"), QStringLiteral("course"));
    save.read = [&] { return ReadValues(course.courseRef, stored); };
    save.write = [&](const FieldValues &values) {
        CourseRecord merged = course;
        PutValues(Fields(), values, merged);
        return Write(merged);
    };
    FieldValues values = Course_Values(course, lists);
    const int key = TellDuplicate(SaveMerged("Course_Update", save, base, values), courseExists,
                                  QStringLiteral("Update Course"));
    if (key > 0) {
        PutValues(Fields(), values, course);
        beside.Take(values);
    }
    return key;
}
