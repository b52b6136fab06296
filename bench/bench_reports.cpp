#include "Bench.h"

#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/System.h"
#include "reports/contacts/ContactReport.h"
#include "reports/writer/HTMLscript.h"
#include "reports/writer/ReportPdf.h"
#include "support/TestDatabase.h"

#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>

#include <sqlite3.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

namespace
{
constexpr int people = 5'000;

/// 5,000 people, each with every field filled, two characteristics, a group and two courses; one in fifty
/// teaches.
std::unique_ptr<TestDatabase> School()
{
    auto database = std::make_unique<TestDatabase>();
    TestDatabase::Run({QStringLiteral("BEGIN")});
    const auto run = [](const QString &sql) { TestDatabase::Run({sql}); };
    run("INSERT INTO System (Ref, SystemValue) VALUES (2,'£')");
    run("INSERT INTO RoleTypes (RoleTypeRef, Name) VALUES (1,'Tutor')");
    run("INSERT INTO LinkNames (LinkRef, LinkName) VALUES (1,'Family')");
    for (int i = 1; i <= 50; ++i) {
        const QString n = QString::number(i);
        const QString n1 = QString::number(i + 1);
        run("INSERT INTO City (City_ID, City) VALUES (" + n1 + ",'City" + n + "')");
        run("INSERT INTO County (County_ID, County) VALUES (" + n1 + ",'County" + n + "')");
        run("INSERT INTO Concessions (Name, Percentage, HardDiscount) VALUES ('Characteristic" + n +
            "',10,0)");
        run("INSERT INTO GroupNames (Name, LinkRef) VALUES ('Group" + n + "',1)");
        run("INSERT INTO Courses (CourseRef, Title, Fee) VALUES (" + n + ",'Course " + n + "',100)");
        run("INSERT INTO Organisations (OrganRef, OrganName, ReferenceID, Addr1, City, County, Country, "
            "TelDay, "
            "TelOut, Fax, Email, URL, Postcode, Notes) VALUES (" +
            n1 + ",'Organisation" + n + "','O" + n +
            "','1 Mill Street',2,2,1,'01','02','03','a@b.c','b.c','LS2','Notes')");
        for (int day = 1; day <= 5; ++day)
            run("INSERT INTO CourseEvents (CourseRef, EventNo, EDate) VALUES (" + n + "," +
                QString::number(day) + "," + QString::number(20260200 + day) + ")");
    }
    for (int i = 2; i < people + 2; ++i) {
        const QString n = QString::number(i);
        const auto of50 = [i](int step) { return QString::number((i * step) % 50 + 1); };
        run("INSERT INTO Contacts (ContactRef, Cust_Forename, Cust_Surname, Cust_Addr1, Cust_Addr2, "
            "Cust_City, "
            "Cust_County, Cust_Country, Cust_Postcode, Cust_TelDay, Cust_TelEve, Cust_Fax, Cust_Email, "
            "Cust_URL, Cust_Designation, Cust_Ethnicgroup, Cust_DOB, Cust_Sex, Cust_Notes, OrganRef, "
            "ContactContactRef, JobTitle, ReferenceID) VALUES (" +
            n + ",'Forename" + n + "','Surname" + n + "','5 High Street','Otley'," + of50(1) + "," + of50(3) +
            ",1,'LS1','11','12','13','a@b.uk','b.uk',1,1,19800229,1,'Some notes'," + of50(7) +
            ",2,'Welder','A" + n + "')");
        for (const int step : {1, 7}) {
            run("INSERT INTO ContactConcession (ContactRef, ConcessionRef) VALUES (" + n + "," + of50(step) +
                ")");
            run("INSERT INTO StudentsEnrolled (CourseRef, ContactRef, BasicFee, Discount, AmountPaid, "
                "ConcessionType, TaxName, TaxRate) VALUES (" +
                of50(step) + "," + n + ",100,10,25,'Characteristic1','VAT',20)");
        }
        run("INSERT INTO Groups (ContactRef, LinkRef, GroupRef) VALUES (" + n + ",1," + of50(1) + ")");
        if (i % 50 == 0)
            run("INSERT INTO CourseStaff (CourseRef, ContactRef, RoleTypeRef) VALUES (" + of50(1) + "," + n +
                ",1)");
    }
    TestDatabase::Run({QStringLiteral("COMMIT")});
    LoadSystemValues();
    gDocDir = database->Directory();
    gHeaderFile.clear();
    return database;
}

ContactReport Everything()
{
    ContactReport report;
    report.flags.fill(1);
    return report;
}

/// A query that is prepared once; every value of every row is read.
class Query final
{
public:
    Query(sqlite3 *handle, const char *sql)
    {
        Bench::Require(sqlite3_prepare_v3(handle, sql, -1, SQLITE_PREPARE_PERSISTENT, &m_statement,
                                          nullptr) == SQLITE_OK,
                       sqlite3_errmsg(handle));
    }
    ~Query() { sqlite3_finalize(m_statement); }
    Query(const Query &) = delete;
    Query &operator=(const Query &) = delete;

    template <typename OnRow>
    void Run(std::initializer_list<qint64> values, OnRow &&onRow)
    {
        int at = 0;
        for (const qint64 value : values)
            sqlite3_bind_int64(m_statement, ++at, value);
        while (sqlite3_step(m_statement) == SQLITE_ROW) {
            for (int column = 0; column < sqlite3_column_count(m_statement); ++column)
                m_read += sqlite3_column_bytes(m_statement, column);
            onRow(*this);
        }
        sqlite3_reset(m_statement);
    }
    qint64 Key(int column) const { return sqlite3_column_int64(m_statement, column); }

private:
    sqlite3_stmt *m_statement = nullptr;
    qint64 m_read = 0;
};

/// The report's queries by hand, and its finished bytes written out: an equal share for each person.
double ByHand(bool tabular, const QByteArray &report)
{
    return Bench::Milliseconds([&] {
        sqlite3 *handle = nullptr;
        Bench::Require(sqlite3_open(gDBQFilename.toUtf8().constData(), &handle) == SQLITE_OK,
                       "the twin cannot open");
        {
            const QString sql =
                BuildLayoutSqlString(Everything().flags) + " " + OrderBy(ContactOrdering::None);
            Query contacts(handle, sql.toUtf8().constData());
            Query notes(handle, "SELECT * FROM Contacts WHERE ContactRef = ?");
            Query concessions(handle, "SELECT ConcessionRef FROM ContactConcession WHERE ContactRef = ?");
            Query names(
                handle,
                "SELECT Name FROM Concessions WHERE ConcessionRef = ? OR ConcessionRef = ? ORDER BY Name");
            Query groups(handle, "SELECT DISTINCT GroupNames.Name FROM Groups INNER JOIN GroupNames ON "
                                 "Groups.GroupRef = GroupNames.GroupRef WHERE Groups.ContactRef = ? ORDER BY "
                                 "GroupNames.Name");
            Query courses(handle, "SELECT StudentsEnrolled.*,Courses.Title FROM StudentsEnrolled INNER JOIN "
                                  "Courses ON StudentsEnrolled.CourseRef = Courses.CourseRef WHERE "
                                  "StudentsEnrolled.ContactRef = ?");
            Query days(handle, "SELECT EDate from CourseEvents WHERE CourseRef = ?");
            const QByteArray staffedSql =
                QByteArray("SELECT DISTINCT ") + (tabular ? "RoleTypes.Name, " : "") +
                "Courses.Title, CourseEvents.EDate FROM RoleTypes, ((Contacts INNER JOIN CourseStaff ON "
                "Contacts.ContactRef = CourseStaff.ContactRef) INNER JOIN Courses ON CourseStaff.CourseRef = "
                "Courses.CourseRef) INNER JOIN CourseEvents ON Courses.CourseRef = CourseEvents.CourseRef "
                "WHERE Contacts.ContactRef = ? AND CourseStaff.RoleTypeRef = RoleTypes.RoleTypeRef ORDER BY "
                "CourseEvents.EDate";
            Query staffed(handle, staffedSql.constData());
            const auto nothing = [](const Query &) {};

            const QByteArray file = QString(gDocDir + "/twin.htm").toUtf8();
            const QByteArray newFile = file + ".new";
            std::FILE *output = std::fopen(newFile.constData(), "wb");
            Bench::Require(output != nullptr, "the twin cannot write");
            qint64 written = 0;
            int row = 0;
            contacts.Run({}, [&](const Query &contact) {
                const qint64 key = contact.Key(0);
                notes.Run({key}, nothing);
                qint64 first = 0;
                qint64 second = 0;
                concessions.Run({key}, [&](const Query &concession) {
                    first = second;
                    second = concession.Key(0);
                });
                names.Run({first, second}, nothing);
                groups.Run({key}, nothing);
                courses.Run({key}, [&](const Query &course) { days.Run({course.Key(0)}, nothing); });
                staffed.Run({key}, nothing);
                ++row;
                const qint64 upTo = report.size() * row / (people + 1);
                std::fwrite(report.constData() + written, 1, static_cast<size_t>(upTo - written), output);
                written = upTo;
            });
            std::fflush(output);
            fsync(fileno(output));
            std::fclose(output);
            std::rename(newFile.constData(), file.constData());
            Bench::Require(written == report.size(), "the twin lost people");
        }
        sqlite3_close(handle);
    });
}

Bench::Case ReportCase(bool tabular)
{
    const std::shared_ptr<TestDatabase> database = School();
    const auto write = [tabular, database] {
        return Bench::Milliseconds([tabular] {
            Progress onward;
            const ReportResult result = tabular ? Contact_Rep_Tabular_HTML(Everything(), onward)
                                                : Contact_Rep_HTML(Everything(), onward);
            Bench::Require(result.written && result.held == people, "the report lost people");
        });
    };
    write();
    QFile file(HTML_OutputPath());
    Bench::Require(file.open(QIODevice::ReadOnly), "there is no report");
    const QByteArray report = file.readAll();
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 2;
    benchmark.ours = write;
    benchmark.twin = [tabular, report] { return ByHand(tabular, report); };
    return benchmark;
}

/// What such a report of people usually has.
ContactReport Usual()
{
    ContactReport report;
    for (const ContactItem::Flag item :
         {ContactItem::References, ContactItem::DateOfBirth, ContactItem::Address, ContactItem::City,
          ContactItem::Postcode, ContactItem::Telephone, ContactItem::Email})
        report.flags[static_cast<size_t>(item)] = 1;
    return report;
}

/// The texts of the last report, a line of them for each row.
std::vector<QStringList> TextsOfReport()
{
    QFile file(HTML_OutputPath());
    Bench::Require(file.open(QIODevice::ReadOnly), "there is no report");
    static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
    const QString report = QString::fromLatin1(file.readAll());
    std::vector<QStringList> rows;
    for (const QString &row : report.mid(report.indexOf(u"<body")).split(QStringLiteral("<TR>\n")))
        rows.push_back(QString(row).remove(tag).split(u'\n', Qt::SkipEmptyParts));
    return rows;
}

/// Each text drawn where it comes, one page after another.
double DrawnByHand(const std::vector<QStringList> &rows)
{
    return Bench::Milliseconds([&] {
        constexpr int rowsOnPage = 40;
        constexpr int rowHeight = 250;
        constexpr int columnWidth = 1200;
        QPdfWriter writer(gDocDir + "/twin.pdf");
        QPainter painter(&writer);
        painter.setFont(QFont(QStringLiteral("Verdana"), 8));
        int onPage = 0;
        for (const QStringList &row : rows) {
            if (++onPage > rowsOnPage) {
                writer.newPage();
                onPage = 1;
            }
            int left = 0;
            for (const QString &text : row)
                painter.drawText(std::exchange(left, left + columnWidth), onPage * rowHeight, text);
        }
        Bench::Require(painter.end(), "the twin cannot print");
    });
}

Bench::Case PdfCase(bool tabular)
{
    const std::shared_ptr<TestDatabase> database = School();
    Progress onward;
    const ReportResult report =
        tabular ? Contact_Rep_Tabular_HTML(Usual(), onward) : Contact_Rep_HTML(Usual(), onward);
    Bench::Require(report.written && report.held == people, "the report lost people");
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 2;
    benchmark.ours = [database] {
        return Bench::Milliseconds([] {
            Progress toTheEnd;
            QString fault;
            Bench::Require(SaveReportAsPdf(HTML_OutputPath(), gDocDir + "/report.pdf", toTheEnd, fault),
                           fault);
        });
    };
    benchmark.twin = [rows = TextsOfReport()] { return DrawnByHand(rows); };
    return benchmark;
}

const Bench::Registration lines("report: 5,000 people, one item per line", [] { return ReportCase(false); });
const Bench::Registration table("report: 5,000 people, tabular", [] { return ReportCase(true); });
const Bench::Registration pdfOfLines("report: PDF of 5,000 people, line by line",
                                     [] { return PdfCase(false); });
const Bench::Registration pdfOfTable("report: PDF of 5,000 people, tabular", [] { return PdfCase(true); });
} // namespace
