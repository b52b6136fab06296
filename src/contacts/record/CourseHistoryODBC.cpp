#include "contacts/record/CourseHistoryODBC.h"

#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"

std::vector<CourseHistoryEntry> ADO_Contact_CourseHistory(ContactRef contactRef)
{
    return Reported("ADO_Contact_CourseHistory", std::vector<CourseHistoryEntry>(), [&] {
        std::vector<CourseHistoryEntry> entries;
        const Recordset enrolments = OpenRecordset(
            u"SELECT StudentsEnrolled.*,Courses.Title FROM StudentsEnrolled INNER JOIN Courses ON "
            u"StudentsEnrolled.CourseRef = Courses.CourseRef WHERE StudentsEnrolled.ContactRef = " %
            SqlNumber(contactRef));
        for (const Recordset::Row row : enrolments)
            entries.push_back({row.Text(u"Title"), EnrolmentOf(row)});
        return entries;
    });
}
