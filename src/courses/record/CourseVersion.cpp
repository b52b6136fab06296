#include "courses/record/CourseVersion.h"

#include "courses/booking/BookingODBC.h"
#include "courses/events/AttendanceODBC.h"
#include "courses/lists/CourseFolderODBC.h"
#include "courses/maintenance/CourseSections.h"
#include "courses/record/ResourceVersion.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/RecordLists.h"
#include "database/values/GlobalCode.h"

namespace
{
using Column = MergedColumn<CourseRecord>;

const QString courseExists = QStringLiteral("Course already exists in database.");
const QString characteristic = QStringLiteral("Characteristic");
const QString folder = QStringLiteral("Folder");
const QString updateCourse = QStringLiteral("Update Course");
const QString rootLevel = QStringLiteral("!0");

/// A course as stored, with what a save writes with the row.
struct StoredCourse {
    ListModel characteristics;
    TreeModel folders;
    CourseResources resources;
    bool isGone = false;
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
    stored.isGone = file.IsMissing();
    if (!file)
        return {};
    ListModel others;
    if (!Course_ShowCharacteristics(file->characteristics, others, stored.characteristics))
        return {};
    ADO_Course_ShowFolders(stored.folders, true, true);
    ADO_Course_ShowCourseRelations(courseRef, stored.folders);
    // Others note who attended without a step of all bookings.
    InOneStep(attendanceStep, [&] { return ReadCourseResources(courseRef, stored.resources); });
    FieldValues values =
        Course_Values(file->course, {stored.characteristics, stored.folders, stored.resources});
    ResourceVersion::AddFields(values, stored.resources);
    return values;
}

MergedSave SaveOfCourse(const RecordLists &beside, const CourseLists &lists, const StoredCourse &stored)
{
    MergedSave save = SaveOf(Fields(), beside, bookingStep, QStringLiteral("course"));
    save.caption = [of = save.caption, &lists, &stored](const QString &field) {
        return ResourceVersion::IsField(field)
                   ? ResourceVersion::Caption(field, lists.resources, stored.resources)
                   : of(field);
    };
    save.shown = [of = save.shown](const QString &field, const QString &value) {
        return ResourceVersion::IsField(field) ? ResourceVersion::Shown(value) : of(field, value);
    };
    return save;
}

int Write(const CourseRecord &course)
{
    return ADO_Course_UpdateCourse(SqlSafeText(course.title), SqlSafeText(course.description), course.fee,
                                   course.limit, course.courseRef, SqlSafeText(course.referenceID));
}
} // namespace

bool Course_ShowCharacteristics(const QStringList &offered, ListModel &available, ListModel &used)
{
    used.Clear();
    if (!Course_FillItems(CourseSection::Characteristics, available))
        return false;
    available.MoveKeys(offered, used);
    used.sort(0, Qt::AscendingOrder);
    available.SelectFirst();
    used.SelectFirst();
    return true;
}

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

int Course_Add(const CourseRecord &course)
{
    return TellDuplicate(ADO_Course_AddCourse(SqlSafeText(course.title), SqlSafeText(course.description),
                                              course.fee, course.limit, SqlSafeText(course.referenceID)),
                         courseExists, QStringLiteral("Add Course"));
}

int Course_Update(CourseRecord &course, const CourseLists &lists, FieldValues &base,
                  const std::function<bool()> &storeLists)
{
    StoredCourse stored;
    QStringList lostEvents;
    RecordLists beside;
    beside.Add(
        RecordLists::List{characteristic, lists.characteristics, stored.characteristics, lists.available});
    beside.Add(RecordLists::Ticks{folder, lists.folders, stored.folders});
    MergedSave save = SaveOfCourse(beside, lists, stored);
    save.read = [&] {
        return ResourceVersion::Folded(ReadValues(course.courseRef, stored), lists.resources);
    };
    save.write = [&](const FieldValues &values) {
        if (stored.isGone)
            return 0;
        beside.Take(values);
        lostEvents += ResourceVersion::Take(values, lists.resources, stored.resources);
        CourseRecord merged = course;
        PutValues(Fields(), values, merged);
        const int key = Write(merged);
        if (key > 0 && !storeLists())
            throw StatementGivenUp{}; // which undoes it
        return key;
    };
    FieldValues values = Course_Values(course, lists);
    ResourceVersion::AddFields(values, lists.resources);
    FieldValues seen = base;
    if (!seen.isEmpty())
        ResourceVersion::AddReadFields(seen, lists.resources);
    seen = ResourceVersion::Folded(seen, lists.resources);
    const int key = SaveMerged("Course_Update", save, seen, values);
    if (stored.isGone) {
        Dialogs::MsgBox(QStringLiteral("Course has been deleted."), QStringLiteral("Courses"),
                        Dialogs::Buttons::Ok, Dialogs::Icon::Information);
        return key;
    }
    if (key > 0) {
        PutValues(Fields(), values, course);
        base = AsStored(Course_Values(course, lists));
        TellLeftOut(lostEvents, updateCourse);
    }
    return TellDuplicate(key, courseExists, updateCourse);
}
