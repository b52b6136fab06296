#include "reports/contacts/OrgReport.h"

#include "database/statements/MiscODBC.h"
#include "database/statements/Sentinel.h"
#include "database/values/GlobalCode.h"
#include "reports/contacts/ContactReportSql.h"
#include "reports/contacts/ReportFields.h"
#include "reports/writer/HTMLscript.h"

namespace
{
Recordset OpenPeople(qint64 organRef)
{
    return OpenRecordset(
        u"SELECT Designation.Title, Contacts.Cust_Forename, Contacts.Cust_Surname, Contacts.JobTitle FROM "
        u"Contacts INNER JOIN Designation ON Contacts.Cust_Designation = Designation.Designation_ID WHERE "
        u"Contacts.OrganRef = " %
        SqlNumber(organRef) % u" ORDER BY Contacts.Cust_Surname, Contacts.Cust_Forename;");
}

QString PersonText(const Recordset::Row &row)
{
    const QString title = row.Text(u"Title");
    return (title.isEmpty() ? QString() : QString(title % u' ')) % row.Text(u"Cust_Forename") % u' ' %
           row.Text(u"Cust_Surname");
}

void WritePeople(qint64 organRef)
{
    const Recordset people = OpenPeople(organRef);
    if (people.IsEmpty())
        return;
    WriteListLabel(QStringLiteral("Contacts"));
    for (const auto &row : people) {
        HTML_RowStart();
        HTML_Cell(0, Html::bold, 0, 0, 0, 100, QStringLiteral("&nbsp;"));
        HTML_Cell(0, Html::bare, 0, 0, 0, 200, PersonText(row));
        HTML_Cell(0, Html::bare, 0, 0, 0, 200, row.Text(u"JobTitle"));
        HTML_RowEnd();
    }
}

QString PeopleText(qint64 organRef)
{
    QStringList people;
    for (const auto &row : OpenPeople(organRef)) {
        const QString job = row.Text(u"JobTitle");
        people.append(PersonText(row) % (job.isEmpty() ? QString() : QString(u", " % job)));
    }
    return people.join(QStringLiteral("<br>"));
}

Recordset OpenOrganisations(const OrgFlags &flags)
{
    return OpenRecordset(BuildOrgSqlString(flags) % u" ORDER BY Organisations.OrganName ASC;");
}

std::optional<int> WriteOrganisations(const Recordset &organisations, Progress &progress,
                                      const std::function<void(const Recordset::Row &, qint64)> &write)
{
    return WriteRecords(organisations, progress, [&write](const Recordset::Row &row) {
        const qint64 organRef = row.Long(u"OrganRef");
        if (IsSentinel(organRef))
            return false;
        write(row, organRef);
        return true;
    });
}
} // namespace

ReportResult Org_Report_HTML(const OrgFlags &flags, Progress &progress)
{
    return WriteReport("Org_Report_HTML", QStringLiteral("Organisations"), [&] {
        HTML_Rule();
        const Recordset organisations = OpenOrganisations(flags);
        std::vector<ReportField> fields = OrgFields(flags);
        FindFields(fields, organisations);
        return WriteOrganisations(organisations, progress, [&](const Recordset::Row &row, qint64 organRef) {
            WriteHeading(HTML_FieldText(row, u"OrganName"));
            HTML_Table();
            WriteLabelRows(fields, row);
            if (flags[OrgItem::Contacts] != 0)
                WritePeople(organRef);
            HTML_TableEnd();
        });
    });
}

ReportResult Org_Report_Tabular_HTML(const OrgFlags &flags, Progress &progress)
{
    return WriteReport("Org_Report_Tabular_HTML", QStringLiteral("Organisations"), [&] {
        const Recordset organisations = OpenOrganisations(flags);
        std::vector<ReportField> fields = OrgFields(flags);
        FindFields(fields, organisations);
        const bool withPeople = flags[OrgItem::Contacts] != 0;
        HTML_Table();
        HTML_RowStart();
        WriteTitleCell(QStringLiteral("Organisation"), 200);
        WriteTitleCells(fields);
        if (withPeople)
            WriteTitleCell(QStringLiteral("Contacts"), 300);
        HTML_RowEnd();
        const auto held =
            WriteOrganisations(organisations, progress, [&](const Recordset::Row &row, qint64 organRef) {
                HTML_RowStart();
                WriteValueCell(HTML_FieldText(row, u"OrganName"), 200);
                WriteValueCells(fields, row);
                if (withPeople)
                    WriteValueCell(PeopleText(organRef), 300);
                HTML_RowEnd();
            });
        HTML_TableEnd();
        return held;
    });
}
