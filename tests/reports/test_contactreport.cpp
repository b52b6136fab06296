#include "controls/ListModel.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/System.h"
#include "reports/ReportPages.h"
#include "reports/contacts/ConcessionReport.h"
#include "reports/contacts/ContactReport.h"
#include "reports/contacts/OrgReport.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"
#include "support/TestDatabase.h"
#include "support/TestTable.h"

#include <QDir>
#include <QTest>

namespace
{
Progress onward;
const QString failureTitle =
    QStringLiteral("A number of errors have been detected, please seek technical support.");

ContactFlags Flags(std::initializer_list<int> set)
{
    ContactFlags flags{};
    for (const int flag : set)
        flags[static_cast<size_t>(flag)] = 1;
    return flags;
}

template <typename AllFlags>
AllFlags Everything()
{
    AllFlags flags;
    flags.fill(1);
    return flags;
}

ContactReport Report(const ContactFlags &flags, ContactOrdering ordering = ContactOrdering::None)
{
    ContactReport report;
    report.flags = flags;
    report.ordering = ordering;
    return report;
}
} // namespace

Q_DECLARE_METATYPE(ContactOrdering)

class test_contactreport final : public QObject
{
    Q_OBJECT

private slots:

    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        FillReportPeople();
        LoadSystemValues();
        gDocDir = m_database->Directory();
        gHeaderFile.clear();
        HTMLBorder = 0;
    }
    void cleanup() { m_database.reset(); }

    void everything_of_a_person_line_by_line()
    {
        const ReportResult result = Contact_Rep_HTML(Report(Everything<ContactFlags>()), onward);
        QVERIFY(result.written);
        QCOMPARE(result.held, 2);
        const QStringList expected = {
            "Contact Details",
            "--",
            "Lee, Ann",
            "_|Reference ID:|A7",
            "_|NI Number:|QQ1",
            "_|Gender:|Female",
            "_|Date of Birth:|29/02/1980",
            "_|Address:|5 High St<BR>Otley",
            "_|City:|Leeds",
            "_|County:|Yorkshire",
            "_|Postcode:|LS1",
            "_|Country:|England",
            "_|Tel (Daytime):|11",
            "_|Tel (Evenings):|12",
            "_|Fax:|13",
            "_|Email:|<a href=\"mailto:a@b.uk\">a@b.uk</a>",
            "_|Website:|<a href=\"http://b.uk\">b.uk</a>",
            "_|Ethnic:|Other",
            "_|Emergency Contact:|Bob Ray",
            "_|Notes:|Likes tea",
            "_|Characteristics:",
            "_|_|Member",
            "_|_|Student",
            "_|Groups:",
            "_|_|Lees",
            "_|Courses Attended:",
            "_|_|Welding (01/02/2026 - 28/02/2026)",
            "_|Course Fee:|£1,200.00",
            "_|Discount %:|33.33% (Student)",
            "_|Value Added Tax...|£160.01 (20%)",
            "_|Amount Due:|£960.05",
            "_|Amount Paid in Cash:|£100.00",
            "_|Amount Paid by Luncheon of the whol:|£50.50",
            "_|Amount Owing:|£809.55",
            "_|Total Amount Owing:|£809.55",
            "_|Courses Staffed:",
            "_|_|Welding (01/02/2026)",
            "_|_|Welding (28/02/2026)",
            "_|Position:|Welder",
            "_|Organisation:|Steel & Co",
            "_|Reference ID|S1",
            "_|Address:|1 Mill St",
            "_|City:|Leeds",
            "_|State/County:|Yorkshire",
            "_|Zip/Postcode:|LS2",
            "_|Country:|England",
            "_|Telephone:|01",
            "_|Tel (Out of Hours):|02",
            "_|Fax:|03",
            "_|Email:|<a href=\"mailto:s@c.uk\">s@c.uk</a>",
            "_|Website:|<a href=\"http://c.uk\">c.uk</a>",
            "_|Notes:|Big",
            // What is empty has no row; the gender always has.
            "--",
            "Ray, Bob",
            "_|Gender:|Not Known",
            "_|Characteristics:",
            "_|_|Student",
            "_|Groups:",
            "_|_|Lees",
        };
        QCOMPARE(ReportLines(), expected);
    }

    void everything_of_a_person_in_a_table()
    {
        const ReportResult result = Contact_Rep_Tabular_HTML(Report(Everything<ContactFlags>()), onward);
        QCOMPARE(result.held, 2);
        const QStringList lines = ReportLines();
        QCOMPARE(lines.size(), 4);
        QCOMPARE(
            lines[1],
            QStringLiteral("Name|Reference ID|NI Number|Gender|DoB|Address|City|State/County|ZIP/Postcode|"
                           "Country|Telephone|Fax|Email|Website|Ethnicity|Emergency<BR>Contact|"
                           "Contact<BR>Telephone|Notes|Characteristics|Groups|Courses<br>Attended|Role|"
                           "on Courses|Start Date|Position|Organisation|Org. Ref ID|Address|City|County|"
                           "ZIP/Postcode|Country|Telephone|Out-of-Hours<BR>Telephone|Fax|Email|Website|"
                           "Notes"));
        QCOMPARE(lines[2],
                 QStringLiteral(
                     "Lee, Ann|A7|QQ1|Female|29/02/1980|5 High St<BR>Otley|Leeds|Yorkshire|LS1|England|"
                     "11<br>12|13|<a href=\"mailto:a@b.uk\">a@b.uk</a>|<a href=\"http://b.uk\">b.uk</a>|"
                     "Other|Bob Ray|_|Likes tea|Member<br>Student|Lees|"
                     "Welding (01/02/2026 - 28/02/2026)|Tutor|Welding|01/02/2026|Welder|Steel & Co|S1|"
                     "1 Mill St|Leeds|Yorkshire|LS2|England|01|02|03|"
                     "<a href=\"mailto:s@c.uk\">s@c.uk</a>|<a href=\"http://c.uk\">c.uk</a>|Big"));
        // An empty cell is a blank, so that no column moves.
        QCOMPARE(lines[3], "Ray, Bob|_|_|Not Known" % QStringLiteral("|_").repeated(14) % "|Student|Lees" %
                               QStringLiteral("|_").repeated(18));
    }

    void layout_statements_data()
    {
        using namespace ContactItem;
        const TestTable<ContactFlags, ContactOrdering, QString> row{"flags", "ordering", "sql"};
        const auto none = ContactOrdering::None;
        const QString start = QStringLiteral(
            "SELECT Contacts.ContactRef, Designation.Title, Contacts.Cust_Forename, Contacts.Cust_Surname");
        const QString base = QStringLiteral(
            "Contacts INNER JOIN Designation ON Contacts.Cust_Designation = Designation.Designation_ID");
        row("nothing", {}, none, "SELECT * FROM Contacts");
        row("what has no column", Flags({Notes, Characteristics, CoursesAttended, Groups, CoursesStaffed}),
            none, start % u" FROM " % base);
        row("named references alone", Flags({References}), none,
            start % u", Contacts.ReferenceID, Contacts.AltRef2 FROM " % base);
        row("two joins, two brackets", Flags({Country, City}), none,
            start % u", City.City, Country.Country FROM ((" % base %
                u") INNER JOIN City ON Contacts.Cust_City = City.City_ID) INNER JOIN Country ON "
                u"Contacts.Cust_Country = Country.Country_ID");
        row("the organisation is joined once", Flags({OrgNotes, OrgCity, Organisation}), none,
            start %
                u", Organisations.OrganName, City2.City AS OrgCity, Organisations.Notes AS OrgNotes FROM ((" %
                base %
                u") INNER JOIN Organisations ON Contacts.OrganRef = Organisations.OrganRef) INNER JOIN City "
                u"As "
                u"City2 ON Organisations.City = City2.City_ID");
        row("late flags keep their order", Flags({Emergency, Ethnic, Position}), none,
            start %
                u", Contacts.JobTitle, EthnicGroup.Type, Contacts_1.Cust_Forename AS Contact_Fname, "
                u"Contacts_1.Cust_Surname AS Contact_Sname, Contacts_1.Cust_TelDay AS ContactTel FROM ((" %
                base %
                u") INNER JOIN EthnicGroup ON Contacts.Cust_Ethnicgroup = EthnicGroup.Ethnic_ID) INNER JOIN "
                u"Contacts AS Contacts_1 ON Contacts.ContactContactRef = Contacts_1.ContactRef ");
        row("by characteristic", Flags({Gender}), ContactOrdering::Characteristic,
            u"SELECT Concessions.Name AS CharName," % start.mid(7) % u", Contacts.Cust_Sex FROM ((" % base %
                u") INNER JOIN ContactConcession ON Contacts.ContactRef = ContactConcession.ContactRef) "
                u"INNER "
                u"JOIN Concessions ON ContactConcession.ConcessionRef = Concessions.ConcessionRef");
        row("by group", Flags({Gender}), ContactOrdering::GroupThenGroupType,
            u"SELECT LinkNames.LinkName, GroupNames.Name AS GroupName," % start.mid(7) %
                u", Contacts.Cust_Sex FROM (((" % base %
                u") INNER JOIN Groups ON Contacts.ContactRef = Groups.ContactRef) INNER JOIN LinkNames ON "
                u"Groups.LinkRef = LinkNames.LinkRef) INNER JOIN GroupNames ON Groups.GroupRef = "
                u"GroupNames.GroupRef");
    }

    void layout_statements()
    {
        QFETCH(ContactFlags, flags);
        QFETCH(ContactOrdering, ordering);
        QTEST(BuildLayoutSqlString(flags, ordering), "sql");
    }

    void conditions_data()
    {
        const TestTable<bool, bool, QString, QString, QString> row{"staff", "selected", "inRef", "where",
                                                                   "title"};
        row("everybody", false, false, "3", "", "Contact Details");
        row("selected", false, true, "3,2", "WHERE Contacts.ContactRef = 3 OR Contacts.ContactRef = 2",
            "Selected Contact Details");
        row("nobody selected", false, true, "", "WHERE Contacts.ContactRef = 1", "Selected Contact Details");
        row("staff, each once", true, false, "", "WHERE Contacts.ContactRef = 2", "Staff Details");
        row("selected staff", true, true, "3,2", "WHERE Contacts.ContactRef = 2", "Selected Staff Details");
        row("no staff selected", true, true, "3", "WHERE Contacts.ContactRef = 1", "Selected Staff Details");
    }

    void conditions()
    {
        QFETCH(bool, staff);
        QFETCH(bool, selected);
        QFETCH(QString, inRef);
        for (const QString &contactRef : inRef.split(u',', Qt::SkipEmptyParts))
            TestDatabase::Run({u"INSERT INTO Ref (ContactRef) VALUES (" % contactRef % u')'});
        ContactReport report;
        report.staffOnly = staff;
        report.selectedOnly = selected;
        QTEST((staff ? BuildStaffWhereString(report) : BuildWhereString(report)).value_or("failed"), "where");
        QTEST(BuildTitleString(report), "title");
    }

    void names()
    {
        const std::pair<QString, QString> expected[] = {{"Lee, Ann", "Ray, Bob"},
                                                        {"Lee, Ann (Dr)", "Ray, Bob"},
                                                        {"Ann Lee", "Bob Ray"},
                                                        {"Dr Ann Lee", " Bob Ray"}};
        ContactReport report = Report(Flags({ContactItem::Position}));
        for (const auto &[ann, bob] : expected) {
            QVERIFY(Contact_Rep_HTML(report, onward).written);
            QCOMPARE(ReportLines().value(2), ann);
            QCOMPARE(ReportLines().value(5), bob);
            ++report.nameOpt;
        }
    }

    void orderings_data()
    {
        const TestTable<ContactOrdering, QStringList> row{"ordering", "lines"};
        row("characteristic", ContactOrdering::Characteristic,
            {"Contact Details, ordered by Characteristic", "Characteristic|Name|Position",
             "Member|Lee, Ann|Welder", "Student|Lee, Ann|Welder", "_|Ray, Bob|_"});
        row("type, then group", ContactOrdering::GroupTypeThenGroup,
            {"Contact Details, ordered by Group Type then Group", "Group Type|Group|Name|Position",
             "Choir|Lees|Lee, Ann|Welder", "Family|Lees|Lee, Ann|Welder", "_|_|Ray, Bob|_"});
        // The rows of one group are not parted by type: the type is told where it changes.
        row("group, then type", ContactOrdering::GroupThenGroupType,
            {"Contact Details, Ordered by Group then Group Type", "Group|Group Type|Name|Position",
             "Lees|*|Lee, Ann|Welder", "_|*|Lee, Ann|Welder", "_|*|Ray, Bob|_"});
    }
    void orderings()
    {
        QFETCH(ContactOrdering, ordering);
        QFETCH(QStringList, lines);
        const ReportResult result =
            Contact_Rep_Tabular_HTML(Report(Flags({ContactItem::Position}), ordering), onward);
        QVERIFY(result.written);
        QCOMPARE(result.held, 2);
        QStringList seen = ReportLines();
        if (ordering == ContactOrdering::GroupThenGroupType) {
            // Which of Ann's two types comes first is the engine's to say.
            for (qsizetype i = 2; i < seen.size(); ++i) {
                QStringList cells = seen[i].split(u'|');
                QVERIFY(cells[1] == u"Family" || cells[1] == u"Choir" || cells[1] == u"_");
                cells[1] = QStringLiteral("*");
                seen[i] = cells.join(u'|');
            }
        }
        QCOMPARE(seen, lines);
    }

    void nothing_ticked_leaves_the_names()
    {
        for (const auto ordering :
             {ContactOrdering::None, ContactOrdering::Characteristic, ContactOrdering::GroupTypeThenGroup}) {
            ContactReport report = Report({}, ordering);
            report.nameOpt = 3;
            QCOMPARE(Contact_Rep_Tabular_HTML(report, onward).held, 2);
            // The bare table has no titles of people.
            QVERIFY(ReportLines().last().endsWith(u" Bob Ray"));
        }
    }

    void an_empty_selection_leaves_head_and_foot()
    {
        ContactReport report = Report(Everything<ContactFlags>());
        report.selectedOnly = true;
        const ReportResult result = Contact_Rep_HTML(report, onward);
        QVERIFY(result.written);
        QCOMPARE(result.held, 0);
        QCOMPARE(ReportLines(), QStringList{QStringLiteral("Selected Contact Details")});
        QFile file(HTML_OutputPath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().endsWith("</p>\n</body>\n</html>\n"));
    }

    void organisations_in_both_layouts()
    {
        QCOMPARE(Org_Report_HTML(Everything<OrgFlags>(), onward).held, 1);
        const QStringList lines = {"Organisations",
                                   "--",
                                   "Steel & Co",
                                   "_|Reference ID|S1",
                                   "_|Address:|1 Mill St",
                                   "_|City:|Leeds",
                                   "_|State/County:|Yorkshire",
                                   "_|Zip/Postcode:|LS2",
                                   "_|Country:|England",
                                   "_|Telephone:|01",
                                   "_|Tel (Out of Hours):|02",
                                   "_|Fax:|03",
                                   "_|Email:|<a href=\"mailto:s@c.uk\">s@c.uk</a>",
                                   "_|Website:|<a href=\"http://c.uk\">c.uk</a>",
                                   "_|Contacts",
                                   "_|Dr Ann Lee|Welder"};
        QCOMPARE(ReportLines(), lines);
        QCOMPARE(Org_Report_Tabular_HTML(Everything<OrgFlags>(), onward).held, 1);
        const QStringList table = ReportLines();
        QCOMPARE(table.value(1),
                 QStringLiteral("Organisation|Reference ID|Address|City|State/County|ZIP/Postcode|Country|"
                                "Telephone|Out-of-Hours<BR>Telephone|Fax|Email|Website|Contacts"));
        QVERIFY(table.value(2).startsWith(u"Steel & Co|S1|1 Mill St|Leeds|Yorkshire|LS2|England|01|02|03|"));
        QVERIFY(table.value(2).endsWith(u"|Dr Ann Lee, Welder"));
    }

    void organisation_statements()
    {
        const QString start = QStringLiteral("SELECT Organisations.OrganRef, Organisations.OrganName");
        const std::pair<std::vector<int>, QString> expected[] = {
            {{}, QStringLiteral("SELECT * FROM Organisations")},
            {{OrgItem::Contacts}, start + " FROM Organisations"},
            {{OrgItem::County, OrgItem::City},
             start +
                 ", City.City, County.County FROM ( Organisations INNER JOIN City ON Organisations.City = "
                 "City.City_ID) INNER JOIN County ON Organisations.County = County.County_ID"},
            // A lone table is in no bracket.
            {{OrgItem::Country},
             start + ", Country.Country FROM  Organisations INNER JOIN Country ON Organisations.Country = "
                     "Country.Country_ID"}};
        for (const auto &[ticked, sql] : expected) {
            OrgFlags flags{};
            for (const int flag : ticked)
                flags[static_cast<size_t>(flag)] = 1;
            QCOMPARE(BuildOrgSqlString(flags), sql);
            QVERIFY(Org_Report_HTML(flags, onward).written);
        }
    }

    void characteristics()
    {
        QCOMPARE(Concession_Rep_HTML(onward).held, 2);
        const QStringList lines = {"Characteristics & Discounts", "Name|Discount<br>%|Discount<br>Value",
                                   "Member|0.00%|£1,030.50", "Student|25.00%|£0.00"};
        QCOMPARE(ReportLines(), lines);
        TestDatabase::Run({QStringLiteral("DELETE FROM Concessions")});
        QVERIFY(Concession_Rep_HTML(onward).written);
        QCOMPARE(ReportLines(), QStringList{lines.first()});
    }

    void ticks_are_kept_between_sessions()
    {
        gContactData.fill(0);
        gContactData[ContactItem::OrgReference] = 1;
        gContactData[ContactItem::Gender] = 1;
        ListModel list;
        FillChoiceList(list);
        QCOMPARE(list.Count(), 33);
        QCOMPARE(list.CheckedRows(), (std::vector<int>{1, 21}));
        list.SetChecked(1, false);
        list.SetChecked(18, true);
        QCOMPARE(SetUpChoiceParameters(list),
                 Flags({ContactItem::OrgReference, ContactItem::CoursesStaffed}));
        QCOMPARE(gContactData[ContactItem::CoursesStaffed], 1);
        QCOMPARE(gContactData[ContactItem::Gender], 0);

        gOrgData.fill(0);
        gOrgData[OrgItem::Reference] = 1;
        FillOrgChoiceList(list);
        QCOMPARE(list.CheckedRows(), std::vector<int>{0});
        list.SetChecked(11, true);
        QCOMPARE(SetUpOrgParameters(list)[OrgItem::Contacts], 1);
        QCOMPARE(gOrgData[OrgItem::Contacts], 1);
    }

    void twenty_thousand_selected()
    {
        TestDatabase::Run({QStringLiteral("INSERT INTO Ref (ContactRef) VALUES (2)")});
        for (int doubled = 0; doubled < 15; ++doubled)
            TestDatabase::Run({QStringLiteral("INSERT INTO Ref (ContactRef) SELECT ContactRef FROM Ref")});
        ContactReport report = Report(Flags({ContactItem::City}));
        report.selectedOnly = true;
        const ReportResult result = Contact_Rep_HTML(report, onward);
        QVERIFY(result.written);
        QCOMPARE(result.held, 1);
    }

    void a_stopped_report_leaves_the_last_one()
    {
        QVERIFY(Concession_Rep_HTML(onward).written);
        const QStringList before = ReportLines();
        QStringList looks;
        const auto stops = [&looks](const auto &report) {
            Progress *run = nullptr;
            Progress progress(
                [&](int done, int records) {
                    looks.append(QString::number(done) + '/' + QString::number(records));
                    if (done == 2)
                        run->Cancel();
                },
                0);
            run = &progress;
            return !report(progress).written;
        };
        const ContactReport report = Report(Everything<ContactFlags>());
        QVERIFY(stops([&](Progress &run) { return Contact_Rep_HTML(report, run); }));
        QVERIFY(stops([&](Progress &run) { return Contact_Rep_Tabular_HTML(report, run); }));
        QVERIFY(stops([](Progress &run) { return Org_Report_Tabular_HTML(Everything<OrgFlags>(), run); }));
        QVERIFY(stops([](Progress &run) { return Concession_Rep_HTML(run); }));
        QCOMPARE(ReportLines(), before);
        QCOMPARE(looks, (QStringList{"1/3", "2/3", "1/3", "2/3", "1/2", "2/2", "1/2", "2/2"}));
    }

    /// Another workstation deletes the second person while the first is written: on the file engine the
    /// report is of the moment when it began, on a server the person is there without the lists. Nobody
    /// waits.
    void a_person_deleted_meanwhile()
    {
        Connection other;
        QVERIFY(other.Open(m_database->ConnectionText()));
        bool deleted = false;
        Progress progress(
            [&](int, int) {
                if (deleted)
                    return;
                deleted = true;
                QVERIFY(other.Execute(QStringLiteral("UPDATE Contacts SET ContactContactRef = 1")));
                for (const char *table : {"ContactConcession", "Groups", "Contacts"})
                    QVERIFY(other.Execute(u"DELETE FROM " % QLatin1String(table) % u" WHERE ContactRef = 3"));
            },
            0);
        const ReportResult result = Contact_Rep_HTML(Report(Everything<ContactFlags>()), progress);
        QVERIFY(deleted && result.written);
        QCOMPARE(result.held, 2);
        const QStringList lines = ReportLines();
        QStringList person = {"Ray, Bob", "_|Gender:|Not Known"};
        if (!TestDatabase::IsOnServer())
            person += {"_|Characteristics:", "_|_|Student", "_|Groups:", "_|_|Lees"};
        QCOMPARE(lines.mid(lines.indexOf(person.first())), person);
        QCOMPARE(Contact_Rep_HTML(Report(Everything<ContactFlags>()), onward).held, 1);
    }

    void a_lost_selection_tells_of_nobody()
    {
        TestDatabase::Run({QStringLiteral("DROP TABLE Ref")});
        ScriptedDialogs user;
        int boxes = 0;
        Dialogs::Installed().msgBox = [&boxes](auto &&...) {
            ++boxes;
            return Dialogs::Answer::Cancel;
        };
        ContactReport report = Report(Everything<ContactFlags>());
        report.selectedOnly = true;
        QVERIFY(!Contact_Rep_HTML(report, onward).written);
        QVERIFY(!QFile::exists(HTML_OutputPath()));
        QCOMPARE(boxes, 1);
    }

    void a_folder_that_is_gone_is_told_before_the_work()
    {
        gDocDir += QStringLiteral("/gone");
        ScriptedDialogs user;
        user.Expect(QDir::toNativeSeparators(HTML_OutputPath()), failureTitle);
        const StatementLog log;
        QVERIFY(!Contact_Rep_HTML(Report(Everything<ContactFlags>()), onward).written);
        QCOMPARE(log.Statements(), QStringList());
    }

private:
    std::unique_ptr<TestDatabase> m_database;
};

QTEST_GUILESS_MAIN(test_contactreport)
#include "test_contactreport.moc"
