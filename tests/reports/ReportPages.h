#pragma once

#include "reports/writer/HTMLscript.h"
#include "support/TestDatabase.h"

#include <QFile>
#include <QRegularExpression>

/// What a reader sees of the report: a line for each heading and rule ("--"), and for each row of a table its
/// cells joined by "|".
inline QStringList ReportLines()
{
    QFile file(HTML_OutputPath());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression tag(QStringLiteral("<(?!a |/a|br>|BR>)[^>]*>"));
    QStringList lines;
    QStringList cells;
    bool inRow = false;
    bool inBody = false;
    for (QString line : QString::fromLatin1(file.readAll()).split(u'\n')) {
        inBody = inBody || line.startsWith(u"<body");
        if (line == u"<TR>") {
            inRow = true;
            cells.clear();
        } else if (line == u"</TR>") {
            inRow = false;
            lines.append(cells.join(u'|'));
        } else if (line == u"<HR>") {
            lines.append(QStringLiteral("--"));
        } else if (inBody && line != u"<br>") {
            const QString text = line.remove(tag).replace(QStringLiteral("&nbsp;"), QStringLiteral("_"));
            // A cell may be empty between its tags; a line of tags alone is no cell.
            if (inRow && !text.isEmpty())
                cells.append(text);
            else if (!text.isEmpty())
                lines.append(text);
        }
    }
    return lines;
}

/// Two people of all sorts beside the empty one: Ann Lee, who has everything, and Bob Ray, who has
/// a characteristic and a group and nothing else.
inline void FillReportPeople()
{
    const auto insert = [](const char *sql) { TestDatabase::Run({QString::fromUtf8(sql)}); };
    insert("INSERT INTO System (Ref, SystemValue) VALUES (2,'£')");
    insert("INSERT INTO System (Ref, SystemValue) VALUES (4,'NI Number')");
    insert("INSERT INTO System (Ref, SystemValue) VALUES (10,'Luncheon of the whole week')");
    insert("INSERT INTO Designation (Designation_ID, Title, ReferenceID) VALUES (2,'Dr','')");
    insert("INSERT INTO City (City_ID, City, ReferenceID) VALUES (2,'Leeds','')");
    insert("INSERT INTO County (County_ID, County, ReferenceID) VALUES (2,'Yorkshire','')");
    insert("INSERT INTO Country (Country_ID, Country, ReferenceID) VALUES (2,'England','')");
    insert("INSERT INTO EthnicGroup (Ethnic_ID, Type, ReferenceID) VALUES (2,'Other','')");
    insert(
        "INSERT INTO Organisations (OrganRef, OrganName, ReferenceID, Addr1, City, County, Country, TelDay, "
        "TelOut, Fax, Email, URL, Postcode, Notes) VALUES (2,'Steel & Co','S1','1 Mill St',2,2,2,'01','02',"
        "'03','s@c.uk','c.uk','LS2','Big')");
    insert(
        "INSERT INTO Contacts (ContactRef, Cust_Forename, Cust_Surname, Cust_Addr1, Cust_Addr3, Cust_City, "
        "Cust_County, Cust_Country, Cust_Postcode, Cust_TelDay, Cust_TelEve, Cust_Fax, Cust_Email, "
        "Cust_URL, Cust_Designation, Cust_Ethnicgroup, Cust_DOB, Cust_Sex, Cust_Notes, OrganRef, "
        "ContactContactRef, JobTitle, ReferenceID, AltRef1, AltRef2) VALUES (2,'Ann','Lee','5 High St',"
        "'Otley',2,2,2,'LS1','11','12','13','a@b.uk','b.uk',2,2,19800229,1,'Likes tea',2,3,'Welder','A7',"
        "'unnamed','QQ1')");
    insert("INSERT INTO Contacts (ContactRef, Cust_Forename, Cust_Surname, Cust_City, Cust_County, "
           "Cust_Country, Cust_Designation, Cust_Ethnicgroup, Cust_DOB, Cust_Sex, OrganRef, "
           "ContactContactRef, Cust_TelDay) VALUES (3,'Bob','Ray',1,1,1,1,1,0,NULL,1,1,NULL)");
    insert("INSERT INTO Concessions (ConcessionRef, ReferenceID, Name, Percentage, HardDiscount) VALUES "
           "(1,'','Student',25,0)");
    insert("INSERT INTO Concessions (ConcessionRef, ReferenceID, Name, Percentage, HardDiscount) VALUES "
           "(2,'','Member',NULL,1030.5)");
    insert("INSERT INTO ContactConcession (ContactRef, ConcessionRef) VALUES (2,1)");
    insert("INSERT INTO ContactConcession (ContactRef, ConcessionRef) VALUES (2,2)");
    insert("INSERT INTO ContactConcession (ContactRef, ConcessionRef) VALUES (3,1)");
    insert("INSERT INTO LinkNames (LinkRef, LinkName, ReferenceID) VALUES (1,'Family','')");
    insert("INSERT INTO LinkNames (LinkRef, LinkName, ReferenceID) VALUES (2,'Choir','')");
    insert("INSERT INTO GroupNames (GroupRef, Name, ReferenceID, LinkRef) VALUES (1,'Lees','',1)");
    insert("INSERT INTO Groups (ContactRef, LinkRef, GroupRef) VALUES (2,1,1)");
    insert("INSERT INTO Groups (ContactRef, LinkRef, GroupRef) VALUES (2,2,1)");
    insert("INSERT INTO Groups (ContactRef, LinkRef, GroupRef) VALUES (3,1,1)");
    insert("INSERT INTO Courses (CourseRef, Title, Fee) VALUES (1,'Welding',1200)");
    insert("INSERT INTO CourseEvents (CourseRef, EventNo, EDate) VALUES (1,2,20260228)");
    insert("INSERT INTO CourseEvents (CourseRef, EventNo, EDate) VALUES (1,1,20260201)");
    insert("INSERT INTO StudentsEnrolled (CourseRef, ContactRef, BasicFee, Discount, AmountPaid, Vouchers, "
           "ChequePaid, ConcessionType, TaxName, TaxRate) VALUES (1,2,1200,100/3.0,100,50.5,0,'Student',"
           "'Value Added Tax of all',20)");
    insert("INSERT INTO RoleTypes (RoleTypeRef, Name, ReferenceID) VALUES (1,'Tutor','')");
    insert("INSERT INTO RoleTypes (RoleTypeRef, Name, ReferenceID) VALUES (2,'Helper','')");
    insert("INSERT INTO ContactRoles (ContactRef, RoleTypeRef) VALUES (2,1)");
    insert("INSERT INTO ContactRoles (ContactRef, RoleTypeRef) VALUES (2,2)");
    insert("INSERT INTO CourseStaff (CourseRef, ContactRef, RoleTypeRef) VALUES (1,2,1)");
}
