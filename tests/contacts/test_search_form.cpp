#include "contacts/ContactForm.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ConcessionODBC.h"
#include "contacts/manager/frmContact.h"
#include "contacts/manager/frmSearchContact.h"
#include "core/session/Session.h"
#include "database/values/DecodeDateFunc.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Clock.h"
#include "support/Keyboard.h"
#include "support/TestTable.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>

class TestSearchForm final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m.reset(); }
    void SearchByTheFields();
    void Ages_data();
    void Ages();
    void NineToTenFindsNobody();
    void TicksGoAround();
    void ClearsAll();
    void LocksWhileItRuns();
    void HandsOver_data();
    void HandsOver();
    void ViewsWhatWasFound();
    void FromTheManager();

private:
    /// Searches, with the box and the title that tell how many were found.
    void Search(frmSearchContact &form, const QString &summary, int found)
    {
        const QString count = QString::number(found);
        m->dialogs.Expect({}, summary % u"\nNumber of records found = " % count);
        Press(form, "FindBtn");
        QCOMPARE(form.windowTitle(), u"Search Result: " % count % u" items found");
    }
    void SearchFor(frmSearchContact &form, const QString &fields, int found)
    {
        Search(form, u"Searching on the following fields:\n\n" % fields, found);
    }
    void SearchAll(frmSearchContact &form) { Search(form, "Nothing selected, All records shown\n", 3); }

    std::unique_ptr<ContactFixture> m;
    ListModel m_target;
    int m_anna = 0;
};

void TestSearchForm::init()
{
    m = std::make_unique<ContactFixture>();
    m_target.Clear();
    ContactRecord anna = Person("Anna", "Bell");
    anna.city = Contact_AddItem(ContactSection::Cities, "York", "");
    anna.postcode = "YO1";
    m_anna = Contact_Add(anna);
    Contact_Add(Person("Zoe", "Adams"));
    Contact_Add(Person("Ben", "Carter"));
}

void TestSearchForm::SearchByTheFields()
{
    frmSearchContact form(m_target);
    form.show();
    QCOMPARE(form.windowTitle(), "Search for Contact(s)");
    for (const char *name : {"ViewBtn", "SelectBtn", "StopBtn"})
        QVERIFY(!Find<QPushButton>(form, name)->isEnabled());
    ListModel &found = List(form, "ContactInfo");
    Choose(form, "SearchCityList", "York");
    TypeInto(form, "SearchSurname", "b");
    SearchFor(form, "Surname = \"b\"\nTown/City = \"York\"\n\n\n", 1);
    QCOMPARE(found.At(0).text, "Bell, Anna");
    QCOMPARE(found.At(0).subItems, QStringList({"1 Mill Lane", "York", "YO1"}));
    QCOMPARE(found.SelectedRows(), std::vector<int>{0});
    QVERIFY(Find<QPushButton>(form, "SelectBtn")->isEnabled());

    // A click on its "=" asks for the opposite, and the next search starts over.
    auto *equals = Find<QToolButton>(form, "LblEquals_5");
    QTest::keyClick(equals, Qt::Key_Space);
    QCOMPARE(equals->text(), "<>");
    SearchFor(form, "Surname = \"b\"\nTown/City <> \"York\"\n\n\n", 0);
    QVERIFY(!Find<QPushButton>(form, "SelectBtn")->isEnabled());
    Find<QRadioButton>(form, "Opt_AndOr_1")->click();
    TypeInto(form, "SearchSurname", "zz");
    SearchFor(form, "Surname = \"zz\"\nTown/City <> \"York\"\n\n\n", 2);

    // The order that was asked for stays.
    Find<ListView>(form, "ContactInfo")->sortByColumn(0, Qt::DescendingOrder);
    SearchFor(form, "Surname = \"zz\"\nTown/City <> \"York\"\n\n\n", 2);
    QCOMPARE(Texts(found), QStringList({"Carter, Ben", "Adams, Zoe"}));
    QCOMPARE(found.SelectedRows(), std::vector<int>{0});
}

/// On leaving the upper age the two change places if its text sorts first, so that 9 to 10 is reversed.
void TestSearchForm::Ages_data()
{
    const TestTable<QString, QString, QString, QString> row{"from", "to", "fromLeft", "toLeft"};
    row("in order", "20", "30", "20", "30");
    row("reversed", "30", "20", "20", "30");
    row("by text", "9", "10", "10", "9");
    row("no upper age", "20", "", "", "20");
    row("three digits", "1x0000", "2.5", "100", "25");
}

void TestSearchForm::Ages()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    frmSearchContact form(m_target);
    form.show();
    auto *ageTo = Find<QLineEdit>(form, "AgeTo");
    TypeInto(form, "AgeFrom", from);
    Enter(form, "AgeTo", to);
    QTEST(Find<QLineEdit>(form, "AgeFrom")->text(), "fromLeft");
    QTEST(ageTo->text(), "toLeft");
    QVERIFY(List(form, "ContactInfo").IsEmpty());
}

/// Staff who ask for nine to ten find nobody, not even a child of nine: they have to type 09.
void TestSearchForm::NineToTenFindsNobody()
{
    ContactRecord child = Person("Tim", "Young");
    child.dob = DateToInt(Clock::Today().addYears(-9));
    Contact_Add(child);
    for (const auto &[from, asked, found] : {std::tuple("9", "10 - 9", 0), std::tuple("09", "09 - 10", 1)}) {
        frmSearchContact form(m_target);
        form.show();
        TypeInto(form, "AgeFrom", from);
        Enter(form, "AgeTo", "10");
        SearchFor(form, u"Aged Between = " % QLatin1String(asked) % u"\n\n\n", found);
    }
}

void TestSearchForm::TicksGoAround()
{
    const int student = Concession_Add("Student", 20, 0, "");
    ADO_Contact_AddContactConcession(ContactRef(m_anna), ConcessionRef(student));
    frmSearchContact form(m_target);
    const Keyboard keys(form);
    keys.TabTo("SearchCityList");
    keys.Press(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(Find<QTabWidget>(form, "SSActiveTabs1")->currentIndex(), 1);
    auto *tree = Find<TreeView>(form, "SearchCharList");
    tree->Model().SelectFirst();
    const TreeNode *node = tree->Model().Selected();
    for (const auto &[tick, op, found] :
         {std::tuple(TreeTick::On, "=", 1), std::tuple(TreeTick::Not, "<>", 2)}) {
        QTest::keyClick(tree, Qt::Key_Space);
        QCOMPARE(node->tick, tick);
        SearchFor(form, u" AND Characteristic " % QLatin1String(op) % u" Student\n", found);
    }
    QTest::keyClick(tree, Qt::Key_Space);
    QCOMPARE(node->tick, TreeTick::Off);
    SearchAll(form);
}

void TestSearchForm::ClearsAll()
{
    Concession_Add("Student", 20, 0, "");
    frmSearchContact form(m_target);
    form.show();
    TypeInto(form, "SearchSurname", "x");
    TypeInto(form, "AgeTo", "30");
    Choose(form, "SearchCityList", "York");
    Choose(form, "SearchSexList", "Female");
    Find<QRadioButton>(form, "Opt_AndOr_1")->click();
    Find<QToolButton>(form, "LblEquals_1")->click();
    Find<TreeView>(form, "SearchCharList")->Model().SetAllTicks(TreeTick::Not);
    Press(form, "ClearBtn");
    QCOMPARE(form.windowTitle(), "Contact Search");
    // Which fields ask for the opposite is no part of what is cleared.
    QCOMPARE(Find<QToolButton>(form, "LblEquals_1")->text(), "<>");
    SearchAll(form);
    Press(form, "ClearBtn");
    QVERIFY(List(form, "ContactInfo").IsEmpty() && !Find<QPushButton>(form, "ViewBtn")->isEnabled());
}

/// While it searches there is nothing to press but Stop; Escape does the same and leaves the form open.
void TestSearchForm::LocksWhileItRuns()
{
    Concession_Add("Student", 20, 0, "");
    frmSearchContact form(m_target);
    form.show();
    TreeModel &tree = Find<TreeView>(form, "SearchCharList")->Model();
    tree.SetTick(tree.Nodes().front(), TreeTick::Not);
    for (const bool byEscape : {false, true}) {
        bool seen = false;
        gConnection.ObserveStatements([&](const QString &sql) {
            if (seen || !sql.startsWith("SELECT * FROM ContactConcession WHERE ContactRef = 3 "))
                return;
            seen = true;
            for (const char *name : {"ViewBtn", "SelectBtn", "FindBtn", "ClearBtn", "ExitBtn"})
                QVERIFY2(!Find<QPushButton>(form, name)->isEnabled(), name);
            QVERIFY(!Find<QLineEdit>(form, "SearchSurname")->isEnabled());
            QVERIFY(Find<QProgressBar>(form, "Animation1")->isVisible());
            if (byEscape)
                QTest::keyClick(&form, Qt::Key_Escape);
            else
                Press(form, "StopBtn");
        });
        // The row that was looked at is the last.
        SearchFor(form, " AND Characteristic <> Student\n", 1);
        gConnection.ObserveStatements({});
        QVERIFY(seen && form.isVisible());
        QVERIFY(!Find<QProgressBar>(form, "Animation1")->isVisible());
        for (const char *name : {"ViewBtn", "SelectBtn", "FindBtn", "ClearBtn", "ExitBtn"})
            QVERIFY2(Find<QPushButton>(form, name)->isEnabled(), name);
    }
}

void TestSearchForm::HandsOver_data()
{
    const TestTable<QStringList, bool, QStringList> row{"before", "clears", "after"};
    const QStringList all{"Adams, Zoe", "Bell, Anna", "Carter, Ben"};
    row("to nobody, unasked", {}, false, all);
    row("cleared first", {"?4711"}, true, all);
    row("joined", {"?4711"}, false, QStringList("?4711") + all);
}

void TestSearchForm::HandsOver()
{
    QFETCH(QStringList, before);
    QFETCH(bool, clears);
    for (const QString &key : before)
        m_target.Add({key, key});
    frmSearchContact form(m_target);
    form.show();
    SearchAll(form);
    if (!before.isEmpty())
        m->dialogs.Expect("Selection", "Clear selection box first?",
                          clears ? Dialogs::Answer::Yes : Dialogs::Answer::No);
    Press(form, "SelectBtn");
    QVERIFY(!form.isVisible());
    QTEST(Texts(m_target), "after");
    QCOMPARE(m_target.At(m_target.Find(u'?' % SqlNumber(m_anna))).subItems,
             QStringList({"1 Mill Lane", "York", "YO1"}));
    QCOMPARE(Rows("Ref"), m_target.Count());
}

void TestSearchForm::ViewsWhatWasFound()
{
    frmSearchContact form(m_target);
    form.show();
    SearchAll(form);
    const auto view = [&](const QString &caption) {
        m->driver.Expect("frmAddContact", [caption](QDialog &record) {
            QCOMPARE(record.windowTitle(), caption);
            Press(record, "ExitBtn");
        });
        Press(form, "ViewBtn");
    };
    List(form, "ContactInfo").SelectOnly(1);
    view("Bell, Anna (RECORD 1 OF 1)");
    List(form, "ContactInfo").ClearSelection();
    view("Adams, Zoe (RECORD 1 OF 3)");
}

void TestSearchForm::FromTheManager()
{
    frmContact manager;
    manager.show();
    m->driver.Expect("frmSearchContact", [this](QDialog &search) {
        TypeInto(search, "SearchSurname", "Bell");
        SearchFor(static_cast<frmSearchContact &>(search), "Surname = \"Bell\"\n\n\n", 1);
        Press(search, "SelectBtn");
    });
    Press(manager, "FindBtn");
    QCOMPARE(Texts(List(manager, "ContactInfo")), QStringList{"Bell, Anna"});
}

QTEST_MAIN(TestSearchForm)
#include "test_search_form.moc"
