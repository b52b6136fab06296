#include "enrolment/EnrolmentVersion.h"

#include "database/statements/RecordLists.h"
#include "enrolment/EnrolmentODBC.h"

#include <optional>

namespace
{
const std::vector<MergedColumn<StudentRecord>> &Fields()
{
    static const std::vector<MergedColumn<StudentRecord>> columns{
        {"Concession Type", &StudentRecord::concession},
        {"Tax Type", &StudentRecord::taxName},
        {"Tax Rate in %", &StudentRecord::taxRate},
        {"Receipt No", &StudentRecord::receipt},
        {"Notes", &StudentRecord::notes},
    };
    return columns;
}
} // namespace

bool Course_MeetStudent(CourseRef courseRef, ContactRef contactRef, StudentRecord &shown, StudentRecord &left)
{
    const RecordLists none;
    MergedSave meeting = SaveOf(Fields(), none, CourseStep(courseRef), QStringLiteral("enrolment"));
    meeting.read = [&] {
        std::optional<StudentRecord> stored = ReadStudent(courseRef, contactRef);
        if (!stored)
            return FieldValues();
        // The box has line ends of its own.
        stored->notes.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        return ValuesOf(Fields(), *stored);
    };
    FieldValues base = ValuesOf(Fields(), shown);
    FieldValues values = ValuesOf(Fields(), left);
    if (SaveMerged("Course_MeetStudent", meeting, base, values) < 1)
        return false;
    if (base.isEmpty()) // who is removed is the payment's to tell
        return true;
    PutValues(Fields(), base, shown);
    PutValues(Fields(), values, left);
    return true;
}
