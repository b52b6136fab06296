#include "courses/manager/DuplicateModule.h"

#include "courses/lists/CourseFolderODBC.h"
#include "courses/manager/DuplicateODBC.h"
#include "database/statements/WholeSave.h"
#include "database/values/GlobalCode.h"

namespace
{
QString CutTitle(const QString &title)
{
    constexpr int longestTitle = 50;
    return title.left(longestTitle);
}

int AddDuplicate(CourseRef source, const QString &name, QString &title)
{
    constexpr int lastTry = 65535;
    title = CutTitle(u"Copy of " % name);
    int copy = ADO_Course_DupeCourse(source, DoubledApostrophes(title));
    for (int counter = 2; copy == 0 && counter < lastTry; ++counter) {
        title = CutTitle(u"Copy of (" % QString::number(counter) % u") " % name);
        copy = ADO_Course_DupeCourse(source, DoubledApostrophes(title));
    }
    return copy;
}

bool CopyParts(CourseRef source, CourseRef target, int options)
{
    const auto wants = [options](DuplicateOption option) { return (options & option) != 0; };
    return (!wants(DupeCharacteristics) || ADO_Course_DupeChar(source, target)) &&
           (!wants(DupeEvents) || ADO_Course_DupeEvents(source, target, options)) &&
           (!wants(DupeStudents) || ADO_Course_DupeStudentsEnrolled(source, target)) &&
           (!wants(DupeStaff) || ADO_Course_DupeStaff(source, target)) &&
           (!wants(DupeFolders) || ADO_Course_DupeHierarchy(source, target)) &&
           (!wants(DupeFacilities) || ADO_Course_DupeFacilities(source, target)) &&
           (!wants(DupeVenues) || ADO_Course_DupeVenues(source, target));
}
} // namespace

CourseRef Course_Duplicate(CourseRef source, const QString &name, FolderRef target, int options,
                           QString &title)
{
    const RecordSaved saved = SaveWhole(
        "Course_Duplicate", Progress(), [&] { return AddDuplicate(source, name, title); },
        [&](int key) {
            const CourseRef copy(key);
            const bool areCopied = CopyParts(source, copy, options);
            // Whatever could not be copied, the duplicate has its place.
            return ADO_Course_AddCourseRelations(copy, target) != CourseLink::Failed && areCopied;
        });
    return CourseRef(std::max(saved.key, 0));
}
