#include "courses/record/CourseRecordODBC.h"

#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "platform/connection/Connection.h"

namespace
{
QString CourseRow(CourseRef courseRef)
{
    return u"SELECT * FROM Courses WHERE CourseRef = " % SqlNumber(courseRef);
}
} // namespace

bool ADO_Course_CheckCourse(CourseRef courseRef)
{
    return Reported("ADO_Course_CheckCourse", false, [&] { return HasRow(CourseRow(courseRef)); });
}

int ADO_Course_AddCourse(const QString &title, const QString &description, double fee, int limit,
                         const QString &referenceID)
{
    return AddRow(
        "ADO_Course_AddCourse",
        u"SELECT * FROM Courses WHERE Title = '" % title % u"' AND ReferenceID ='" % referenceID % u"'",
        u"INSERT INTO Courses (Title, Description,Fee,Limit,ReferenceID) VALUES ('" % title % u"','" %
            description % u"'," % SqlNumber(fee) % u',' % SqlNumber(limit) % u",'" % referenceID % u"')",
        u"SELECT * FROM Courses WHERE Title = '" % title % u"' AND ReferenceID = '" % referenceID % u"'",
        u"CourseRef");
}

int ADO_Course_UpdateCourse(const QString &title, const QString &description, double fee, int limit,
                            CourseRef courseRef, const QString &referenceID)
{
    return UpdateRow("ADO_Course_UpdateCourse",
                     u"SELECT * FROM Courses WHERE Title = '" % title % u"' AND CourseRef <> " %
                         SqlNumber(courseRef) % u" AND ReferenceID = '" % referenceID % u"'",
                     u"UPDATE Courses SET Title = '" % title % u"', Description = '" % description %
                         u"', Fee = " % SqlNumber(fee) % u", Limit = " % SqlNumber(limit) %
                         u", ReferenceID = '" % referenceID % u"' WHERE CourseRef = " % SqlNumber(courseRef),
                     courseRef.number);
}

int ADO_Course_RenameCourse(const QString &title, CourseRef courseRef)
{
    return UpdateRow("ADO_Course_RenameCourse",
                     u"SELECT * FROM Courses WHERE Title = '" % title % u"' AND CourseRef <> " %
                         SqlNumber(courseRef),
                     u"UPDATE Courses SET Title = '" % title % u"' WHERE CourseRef = " % SqlNumber(courseRef),
                     courseRef.number);
}

bool ADO_Course_DeleteCourse(CourseRef courseRef)
{
    return Reported("ADO_Course_DeleteCourse", false, [&] {
        WriteGroup group(gConnection);
        for (const QStringView table :
             {u"CourseExams", u"StudentExams", u"StaffEmployed", u"FacilitiesEmployed", u"VenuesEmployed",
              u"AttendanceRecord", u"StudentsEnrolled", u"CourseVenues", u"CourseFacilities", u"CourseStaff",
              u"CourseEvents", u"CoursesRelationships", u"CourseChar", u"Courses"})
            Execute(u"DELETE FROM " % table % u" WHERE CourseRef = " % SqlNumber(courseRef));
        EndRows(group);
        return true;
    });
}

bool ADO_Course_UpdateConcessions(CourseRef courseRef, const ListModel &characteristics)
{
    return Reported("ADO_Course_UpdateConcessions", false, [&] {
        WriteGroup group(gConnection);
        Execute(u"DELETE FROM CourseChar WHERE CourseRef = " % SqlNumber(courseRef));
        for (int row = 0; row < characteristics.Count(); ++row)
            Execute(u"INSERT INTO CourseChar (CourseRef,ConcessionRef) VALUES (" % SqlNumber(courseRef) %
                    u',' % SqlNumber(KeyNumber(characteristics.At(row).key)) % u')');
        EndRows(group);
        return true;
    });
}

ReadRow<CourseFile> ADO_Course_ShowCourse(CourseRef courseRef)
{
    return ReadOne<CourseFile>(
        "ADO_Course_ShowCourse", CourseRow(courseRef), [courseRef](const Recordset::Row &row) {
            CourseFile file{{courseRef, row.Text(u"Title"), row.Text(u"ReferenceID"),
                             row.Text(u"Description"), row.Double(u"Fee"),
                             static_cast<int>(row.Long(u"Limit"))},
                            {}};
            const Recordset used =
                OpenRecordset(u"SELECT * FROM CourseChar WHERE CourseRef = " % SqlNumber(courseRef));
            for (const auto &characteristic : used)
                file.characteristics.append(u'!' % characteristic.Text(u"ConcessionRef"));
            return file;
        });
}

std::optional<QString> ADO_Course_Description(CourseRef courseRef)
{
    using Description = std::optional<QString>;
    return Reported("ADO_Course_CheckCourse", Description(QString()), [&] {
        const Recordset course = OpenRecordset(CourseRow(courseRef));
        return course.IsEmpty() ? Description() : Description(course.First().Text(u"Description"));
    });
}
