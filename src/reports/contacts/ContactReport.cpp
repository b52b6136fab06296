#include "reports/contacts/ContactReport.h"

#include "database/statements/MiscODBC.h"
#include "database/values/DecodeDateFunc.h"
#include "reports/contacts/ContactHistory.h"
#include "reports/writer/HTMLscript.h"

namespace
{
void WriteList(const QString &label, const QStringList &names)
{
    if (names.isEmpty())
        return;
    WriteListLabel(label);
    for (const QString &name : names)
        WriteListRow(name);
}

void WriteCoursesAttended(ContactRef contactRef)
{
    const std::vector<ContactHistory::Attended> courses = ContactHistory::CoursesAttended(contactRef, true);
    if (courses.empty())
        return;
    WriteListLabel(QStringLiteral("Courses Attended:"));
    Money owing;
    for (const ContactHistory::Attended &course : courses) {
        WriteListRow(course.course);
        for (const ContactHistory::MoneyRow &money : course.money)
            HTML_LabelRow(money.label, money.value);
        owing += course.owing;
    }
    HTML_LabelRow(QStringLiteral("Total Amount Owing:"), MoneyText(owing));
}

void WriteCoursesStaffed(ContactRef contactRef)
{
    QStringList courses;
    for (const ContactHistory::Staffed &staffed : ContactHistory::CoursesStaffed(contactRef))
        courses.append(staffed.course % u" (" % IntToDateText(int(staffed.day)) % u')');
    WriteList(QStringLiteral("Courses Staffed:"), courses);
}

/// Writes everything about a person that a report with one item per line can contain.
void WritePerson(const ContactFields &fields, const Recordset::Row &row)
{
    const auto contactRef = static_cast<int>(row.Long(u"ContactRef"));
    HTML_Rule();
    WriteHeading(ContactName(fields.report.nameOpt, row));
    HTML_Table();
    WriteLabelRows(fields.personal, row);
    if (fields.Has(ContactItem::Notes)) {
        const QString notes = ContactHistory::Notes(ContactRef(contactRef));
        if (!notes.isEmpty())
            HTML_LabelRow(QStringLiteral("Notes:"), notes);
    }
    if (fields.Has(ContactItem::Characteristics))
        WriteList(QStringLiteral("Characteristics:"),
                  ContactHistory::Characteristics(ContactRef(contactRef)));
    if (fields.Has(ContactItem::Groups))
        WriteList(QStringLiteral("Groups:"), ContactHistory::Groups(ContactRef(contactRef)));
    if (fields.Has(ContactItem::CoursesAttended))
        WriteCoursesAttended(ContactRef(contactRef));
    if (fields.Has(ContactItem::CoursesStaffed))
        WriteCoursesStaffed(ContactRef(contactRef));
    WriteLabelRows(fields.work, row);
    HTML_TableEnd();
}
} // namespace

ContactFields::ContactFields(const ContactReport &asked, const Recordset &people)
    : report(asked)
    , personal(PersonalFields(asked.flags))
    , work(WorkFields(asked.flags))
{
    FindFields(personal, people);
    FindFields(work, people);
}

QString ContactName(int nameOpt, const Recordset::Row &row)
{
    const QString title = HTML_FieldText(row, u"Title");
    const QString forename = HTML_FieldText(row, u"Cust_Forename");
    const QString surname = HTML_FieldText(row, u"Cust_Surname");
    switch (nameOpt) {
    case 1:
        return surname % u", " % forename % (title.isEmpty() ? QString() : QString(u" (" % title % u')'));
    case 2:
        return forename % u' ' % surname;
    case 3:
        return title % u' ' % forename % u' ' % surname;
    default:
        return surname % u", " % forename;
    }
}

std::optional<Recordset> OpenContacts(const ContactReport &report)
{
    const std::optional<QString> where =
        report.staffOnly ? BuildStaffWhereString(report) : BuildWhereString(report);
    if (!where)
        return std::nullopt;
    return OpenRecordset(BuildLayoutSqlString(report.flags, report.ordering) % u' ' % *where %
                         OrderBy(report.ordering));
}

ReportResult Contact_Rep_HTML(const ContactReport &report, Progress &progress)
{
    return WriteReport("Contact_Rep_HTML", BuildTitleString(report), [&]() -> std::optional<int> {
        const std::optional<Recordset> people = OpenContacts(report);
        if (!people)
            return std::nullopt;
        const ContactFields fields(report, *people);
        return WriteRecords(*people, progress, [&fields](const Recordset::Row &row) {
            const bool counts = row.Long(u"ContactRef") != 1;
            if (counts)
                WritePerson(fields, row);
            return counts;
        });
    });
}
