#include "contacts/People.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/record/CourseHistoryText.h"
#include "controls/TreeModel.h"
#include "core/session/Progress.h"
#include "database/statements/System.h"
#include "database/values/GlobalCode.h"

#include <QTest>

namespace
{
const QString exists = "Concession already exists in database.";

bool Has(int contactRef, int concessionRef)
{
    return Rows(u"ContactConcession WHERE ContactRef = " % SqlNumber(contactRef) % u" AND ConcessionRef = " %
                SqlNumber(concessionRef)) == 1;
}
} // namespace

class TestConcessions final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<LogicFixture>(); }
    void cleanup() { m.reset(); }
    void NamesAndFigures();
    void HoldersInTheOrderOfTheGiving();
    void OneFailureDoesNotEndTheList();
    void RemovingThePreviousEmptiesThePersonOfThatNumber();
    void DeletedMeanwhile();
    void CourseHistory();

private:
    std::unique_ptr<LogicFixture> m;
};

void TestConcessions::NamesAndFigures()
{
    const int student = Concession_Add("Student's", 17.5, 1234.56, "S");
    QCOMPARE(*ADO_Contact_GetConcessionPercent(ConcessionRef(student)), 17.5);
    QCOMPARE(*ADO_Contact_GetConcesionDiscount(ConcessionRef(student)), 1234.56);
    QCOMPARE(Concession_Update(ConcessionRef(student), "Student", 20, 0, "S"), student);
    QCOMPARE(*ADO_Contact_GetConcessionPercent(ConcessionRef(student)), 20.0);
    QCOMPARE(*ADO_Contact_GetConcesionDiscount(ConcessionRef(student)), 0.0);
    QVERIFY(ADO_Contact_GetConcessionPercent(ConcessionRef(4711)).IsMissing());

    m->dialogs.Expect("Add Concession", exists);
    QCOMPARE(Concession_Add("student", 50, 0, "S"), 0);
    const int other = Concession_Add("Student", 30, 0, "");
    QVERIFY(other > student);
    m->dialogs.Expect("Update Concession", exists);
    QCOMPARE(Concession_Update(ConcessionRef(other), "Student", 40, 0, "S"), 0);
    QCOMPARE(*ADO_Contact_GetConcessionPercent(ConcessionRef(other)), 30.0);

    TreeModel tree;
    ADO_Contact_ShowChar(tree);
    QCOMPARE(tree.Count(), 2);
    QVERIFY(tree.Find(u'!' % SqlNumber(student))->tick == TreeTick::Off);
}

/// The order is that in which the characteristic was given; somebody who is gone does not show.
void TestConcessions::HoldersInTheOrderOfTheGiving()
{
    const int student = Concession_Add("Student", 20, 0, "");
    const int zoe = Contact_Add(Person("Zoe", "Young"));
    const int anna = Contact_Add(Person("Anna", "Bell"));
    for (const int who : {zoe, anna, 4711, zoe})
        ADO_Contact_AddContactConcession(ContactRef(who), ConcessionRef(student));
    ListModel list;
    Progress progress;
    ADO_Contact_Fill_Concession(ConcessionRef(student), list, progress);
    QCOMPARE(Texts(list), QStringList({"Young, Zoe", "Bell, Anna"}));
    QCOMPARE(Keys(list), QStringList({u'?' % SqlNumber(zoe), u'?' % SqlNumber(anna)}));
}

void TestConcessions::OneFailureDoesNotEndTheList()
{
    const int student = Concession_Add("Student", 20, 0, "");
    ListModel list;
    list.Fill({{"?501", "a"}, {"?502", "b"}, {"?503", "c"}});
    // The second person comes while the table is away.
    Progress progress(
        [](int done, int) {
            if (done == 1)
                Sql("ALTER TABLE ContactConcession RENAME TO Away");
            else if (done == 2)
                Sql("ALTER TABLE Away RENAME TO ContactConcession");
        },
        0);
    m->dialogs.Expect(FailureTitle(), engineFailure);
    QVERIFY(!ADO_Contact_AddConcessionList(ConcessionRef(student), list, progress));
    QVERIFY(Has(501, student) && Has(503, student));
    QCOMPARE(Rows("ContactConcession"), 2);
}

/// Yes takes everything from the person whose number is that of the characteristic, and nothing from those
/// who had it.
void TestConcessions::RemovingThePreviousEmptiesThePersonOfThatNumber()
{
    const int student = Concession_Add("Student", 20, 0, "");
    const int other = Concession_Add("Other", 0, 0, "");
    const int numberedLikeIt = student;
    ADO_Contact_AddContactConcession(ContactRef(numberedLikeIt), ConcessionRef(other));
    ListModel list;
    list.Fill({{"?501", "a"}, {"!502", "b"}});
    for (const auto answer : {Dialogs::Answer::None, Dialogs::Answer::No, Dialogs::Answer::Yes}) {
        // At first nobody has it, so that nothing is asked.
        if (answer != Dialogs::Answer::None)
            m->dialogs.Expect("Contact Update", "Remove all previous contacts added to this type?", answer);
        Progress progress;
        QVERIFY(ADO_Contact_AddConcessionList(ConcessionRef(student), list, progress));
        QCOMPARE(progress.Value(), 2);
        QVERIFY(Has(501, student) && Has(502, student));
        QCOMPARE(Has(numberedLikeIt, other), answer != Dialogs::Answer::Yes);
        list.Fill({{"?502", "b"}, {"?503", "c"}});
    }
}

void TestConcessions::DeletedMeanwhile()
{
    const int student = Concession_Add("Student", 20, 0, "");
    const int member = Concession_Add("Member", 5, 0, "");
    ListModel used;
    used.Fill({{u'?' % SqlNumber(student), "Student"}, {u'!' % SqlNumber(member), "Member"}});
    ADO_Contact_AddContactConcession(ContactRef(7), ConcessionRef(student));
    Sql(u"INSERT INTO OrganChars (OrganRef,ConcessionRef) VALUES (7," % SqlNumber(student) % u')');
    QVERIFY(ADO_Contact_DeleteConcession(ConcessionRef(student)));
    QCOMPARE(Rows("OrganChars") + Rows("ContactConcession"), 0);
    m->dialogs.Expect("Characteristics",
                      "Another user has deleted these meanwhile, and they are left out:\n    Student");
    QVERIFY(Concession_LeaveOutDeleted(used) && Concession_Store(ContactRef(7), used));
    QCOMPARE(Rows("ContactConcession"), 1);
    m->dialogs.Expect("Update Concession",
                      "Another user has deleted this characteristic meanwhile. Nothing was stored for it.");
    QCOMPARE(Concession_Update(ConcessionRef(student), "Student", 40, 0, ""), 0);
}

void TestConcessions::CourseHistory()
{
    SetSystemValue(SystemRef::CurrencySymbol, QString::fromUtf8("\u00a3"));
    SetSystemValue(SystemRef::VoucherName, "Luncheon");
    QCOMPARE(Contact_CourseHistoryText(ContactRef(7)), u"Not enrolled on any course."_qs);
    Sql("INSERT INTO Courses (Title, Fee) VALUES ('Welding', 200)");
    Sql("INSERT INTO Courses (Title, Fee) VALUES ('Free talk', 0)");
    const int welding = TestDatabase::Value("SELECT CourseRef FROM Courses WHERE Title = 'Welding'").toInt();
    Sql(u"INSERT INTO StudentsEnrolled (CourseRef,ContactRef,BasicFee,Discount,AmountPaid,ConcessionType,"
        u"Vouchers,Vouchers3,TaxName,TaxRate) VALUES (" %
        SqlNumber(welding) % u",7,1200.5,33.333333,100,'Student',20,5,'VAT',17.5)");
    Sql(u"INSERT INTO StudentsEnrolled (CourseRef,ContactRef) VALUES (" % SqlNumber(welding + 1) % u",7)");
    Sql("INSERT INTO StudentsEnrolled (CourseRef,ContactRef) VALUES (4711,7)");

    const QString text = Contact_CourseHistoryText(ContactRef(7));
    QStringList lines;
    for (const QString &line : text.split('\n', Qt::SkipEmptyParts))
        lines.append(line.simplified());
    const QString rule(56, '-');
    // 1,200.50 less 33.33 % is 800.37; 17.5 % of that is 140.06; 125.00 are paid.
    QCOMPARE(lines,
             QStringList({"Welding", u8"Course Fee: £1,200.50", u8"Discount 33.33% (Student): -£400.13",
                          u8"VAT 17.5%: £140.06", u8"Amount Due: £940.43", u8"Amount Paid in Cash: £100.00",
                          u8"Amount Paid by Luncheon: £20.00", u8"Amount Paid by Voucher 3: £5.00", rule,
                          u8"Amount Owing: £815.43", "Free talk", u8"Course Fee: £0.00", rule,
                          u8"Amount Owing: £0.00", u8"Total Amount Owing: £815.43"}));
    QStringList widths;
    for (const QString &line : text.split('\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(' '))
            widths.append(QString::number(line.size()));
    }
    widths.removeDuplicates();
    QCOMPARE(widths.size(), 1);
}

QTEST_GUILESS_MAIN(TestConcessions)
#include "test_concessions.moc"
