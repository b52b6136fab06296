#include "contacts/ContactForm.h"
#include "contacts/manager/QuickFilter.h"
#include "contacts/manager/frmQuickFilter.h"
#include "contacts/record/ContactModule.h"
#include "support/TestTable.h"

class TestQuickFilter : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m.reset(); }
    void AnyOfTheseContains_data();
    void AnyOfTheseContains();
    void OpenFromTheList();
    void TooMany();

private:
    std::unique_ptr<ContactFixture> m;
};

void TestQuickFilter::init()
{
    m = std::make_unique<ContactFixture>();
    ContactRecord anna = Person("Anna", "Bell");
    anna.telDay = "01904 100-123";
    anna.email = "a.bell@college.org";
    anna.postcode = "YO1 6JH";
    Contact_Add(anna);
    ContactRecord ben = Person("Ben", u"Stra\u00dfer"_qs);
    ben.telEve = "020 1234";
    ben.postcode = "SW1A 1AA";
    Contact_Add(ben);
    ContactRecord zoe = Person("Zoe", "Adams");
    zoe.telDay = "555";
    zoe.telEve = "0777";
    Contact_Add(zoe);
}

void TestQuickFilter::AnyOfTheseContains_data()
{
    const TestTable<QString, QString> row{"entry", "found"};
    row("nothing", " ", "");
    row("everybody, in order", "e", "Adams Bell Straßer");
    row("name", "nna", "Bell");
    row("as it is spoken", "anna be", "Bell");
    row("as it is listed", "bell, a", "Bell");
    row("in every alphabet", u"STRASSE"_qs, "Straßer");
    row("number", "100-12", "Bell");
    row("number, run together", "01904100123", "Bell");
    row("number, split elsewhere", "0190 4100", "Bell");
    row("the number in the evening", "0777", "Adams");
    row("several people", "1", "Bell Straßer");
    row("e-mail", "@College", "Bell");
    row("postcode", "yo1 6", "Bell");
    row("postcode, run together", "sw1a1aa", "Straßer");
    row("not across fields", "123a", "");
    row("not across people", "annaadams", "");
    row("blanks count in a name", "an na", "");
    row("only signs", "--", "");
    row("nobody", "xyz", "");
}

void TestQuickFilter::AnyOfTheseContains()
{
    QuickFilter filter;
    QVERIFY(filter.Read());
    ListModel found;
    QFETCH(QString, entry);
    const int count = filter.Find(entry, 10, found);
    QStringList surnames;
    for (const QString &text : Texts(found))
        surnames.append(text.section(u',', 0, 0));
    QTEST(surnames.join(u' '), "found");
    QCOMPARE(count, found.Count());
}

void TestQuickFilter::OpenFromTheList()
{
    frmQuickFilter form;
    form.show();
    auto *box = Find<QLineEdit>(form, "FilterBox");
    QVERIFY(!Find<QPushButton>(form, "ViewBtn")->isEnabled());
    QTest::keyClicks(box, "01904");
    QCOMPARE(List(form, "FoundList").At(0).subItems,
             QStringList({"01904 100-123", "a.bell@college.org", "YO1 6JH"}));
    m->driver.Expect("frmAddContact", [](QDialog &record) {
        QCOMPARE(record.windowTitle(), "Bell, Anna (RECORD 1 OF 1)");
        Press(record, "EditBtn");
        TypeInto(record, "Surname", "Bell-Moss");
        Press(record, "OKBtn");
        Press(record, "ExitBtn");
    });
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(Texts(List(form, "FoundList")), QStringList("Bell-Moss, Anna"));
    QTest::keyClicks(box, "x");
    QVERIFY(List(form, "FoundList").IsEmpty() && !Find<QPushButton>(form, "ViewBtn")->isEnabled());
    QCOMPARE(Find<QLabel>(*box, "FieldNote")->text(), "no match");
}

void TestQuickFilter::TooMany()
{
    for (int i = 0; i < 5; ++i)
        Sql("INSERT INTO Contacts (Cust_Surname, Cust_Forename) VALUES ('Twin','Tom')");
    QuickFilter filter;
    filter.Read();
    ListModel found;
    QCOMPARE(filter.Find("twin", 2, found), 5);
    QCOMPARE(found.Count(), 2);
}

QTEST_MAIN(TestQuickFilter)
#include "test_quick_filter.moc"
