#include "contacts/ConcessionODBC.h"
#include "contacts/ContactForm.h"
#include "contacts/frmContact.h"
#include "contacts/frmSearchContact.h"
#include "contacts/frmSelectContacts.h"
#include "core/Session.h"
#include "platform/Connection.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>

namespace
{
constexpr auto shownInAll = "Nothing selected, All records shown\n\nNumber of records found = ";
} // namespace

class TestSearchForm final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m.reset(); }
    void SearchByTheFields();
    void Ages_data();
    void Ages();
    void TicksGoAround();
    void ClearsAll();
    void SortsAndStaysSorted();
    void LocksWhileItRuns();
    void HandsOver_data();
    void HandsOver();
    void ViewsWhatWasFound();
    void FromTheManagerAndThePicker();

private:
    void Search(frmSearchContact &form, const QString &summary)
    {
        m->dialogs.Expect({}, summary);
        Press(form, "FindBtn");
    }
    void SearchAll(frmSearchContact &form) { Search(form, QString::fromLatin1(shownInAll) % u'3'); }

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
    Choose(form, "SearchCityList", "York");
    TypeInto(form, "SearchSurname", "b");
    Search(form, "Searching on the following fields:\n\nSurname = \"b\"\nTown/City = \"York\"\n\n\n\nNumber "
                 "of records found = 1");
    QCOMPARE(Texts(List(form, "ContactInfo")), QStringList{"Bell, Anna"});
    QCOMPARE(List(form, "ContactInfo").At(0).subItems, QStringList({"1 Mill Lane", "York", "YO1"}));
    QCOMPARE(List(form, "ContactInfo").SelectedRows(), std::vector<int>{0});
    QCOMPARE(form.windowTitle(), "Search Result: 1 items found");
    QVERIFY(Find<QPushButton>(form, "SelectBtn")->isEnabled());

    // A click on its "=" asks for the opposite, and the next search starts over.
    auto *equals = Find<QToolButton>(form, "LblEquals_5");
    QTest::keyClick(equals, Qt::Key_Space);
    QCOMPARE(equals->text(), "<>");
    Find<QRadioButton>(form, "Opt_AndOr_1")->click();
    TypeInto(form, "SearchSurname", "zz");
    Search(form,
           "Searching on the following fields:\n\nSurname = \"zz\"\nTown/City <> \"York\"\n\n\n\nNumber "
           "of records found = 2");
    QCOMPARE(Texts(List(form, "ContactInfo")), QStringList({"Adams, Zoe", "Carter, Ben"}));
    TypeInto(form, "SearchSurname", "b");
    Find<QRadioButton>(form, "Opt_AndOr_0")->click();
    Search(form, "Searching on the following fields:\n\nSurname = \"b\"\nTown/City <> \"York\"\n\n\n\nNumber "
                 "of records found = 0");
    QCOMPARE(form.windowTitle(), "Search Result: 0 items found");
    QVERIFY(!Find<QPushButton>(form, "SelectBtn")->isEnabled());
}

/// On leaving the upper age the two change places if its text sorts first, so that 9 to 10 stands reversed.
void TestSearchForm::Ages_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("fromLeft");
    QTest::addColumn<QString>("toLeft");
    QTest::newRow("in order") << "20"
                              << "30"
                              << "20"
                              << "30";
    QTest::newRow("reversed") << "30"
                              << "20"
                              << "20"
                              << "30";
    QTest::newRow("by text") << "9"
                             << "10"
                             << "10"
                             << "9";
    QTest::newRow("no upper age") << "20"
                                  << ""
                                  << ""
                                  << "20";
    QTest::newRow("three digits") << "1x0000"
                                  << "2.5"
                                  << "100"
                                  << "25";
}

void TestSearchForm::Ages()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    frmSearchContact form(m_target);
    form.show();
    auto *ageTo = Find<QLineEdit>(form, "AgeTo");
    TypeInto(form, "AgeFrom", from);
    TypeInto(form, "AgeTo", to);
    QTest::keyClick(ageTo, Qt::Key_Return);
    QTEST(Find<QLineEdit>(form, "AgeFrom")->text(), "fromLeft");
    QTEST(ageTo->text(), "toLeft");
    QVERIFY(List(form, "ContactInfo").IsEmpty());
}

void TestSearchForm::TicksGoAround()
{
    const int student = Concession_Add("Student", 20, 0, "");
    ADO_Contact_AddContactConcession(m_anna, student);
    frmSearchContact form(m_target);
    form.show();
    Find<QTabWidget>(form, "SSActiveTabs1")->setCurrentIndex(1);
    auto *tree = Find<TreeView>(form, "SearchCharList");
    tree->Model().SelectFirst();
    const TreeNode *node = tree->Model().Selected();
    const QString start = "Searching on the following fields:\n\n AND Characteristic ";
    QTest::keyClick(tree, Qt::Key_Space);
    QCOMPARE(node->tick, TreeTick::On);
    Search(form, start % u"= Student\n\nNumber of records found = 1");
    QTest::keyClick(tree, Qt::Key_Space);
    QCOMPARE(node->tick, TreeTick::Not);
    Search(form, start % u"<> Student\n\nNumber of records found = 2");
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
    TreeModel &tree = Find<TreeView>(form, "SearchCharList")->Model();
    tree.SetTick(tree.Nodes().front(), TreeTick::Not);
    Press(form, "ClearBtn");
    QCOMPARE(form.windowTitle(), "Contact Search");
    // Which fields ask for the opposite is no part of what is cleared.
    QCOMPARE(Find<QToolButton>(form, "LblEquals_1")->text(), "<>");
    SearchAll(form);
    QCOMPARE(List(form, "ContactInfo").Count(), 3);
    Press(form, "ClearBtn");
    QVERIFY(List(form, "ContactInfo").IsEmpty() && !Find<QPushButton>(form, "ViewBtn")->isEnabled());
}

void TestSearchForm::SortsAndStaysSorted()
{
    frmSearchContact form(m_target);
    form.show();
    SearchAll(form);
    Find<ListView>(form, "ContactInfo")->sortByColumn(0, Qt::DescendingOrder);
    const QStringList descending{"Carter, Ben", "Bell, Anna", "Adams, Zoe"};
    QCOMPARE(Texts(List(form, "ContactInfo")), descending);
    SearchAll(form);
    QCOMPARE(Texts(List(form, "ContactInfo")), descending);
    QCOMPARE(List(form, "ContactInfo").SelectedRows(), std::vector<int>{0});
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
        Search(form, "Searching on the following fields:\n\n AND Characteristic <> Student\n\nNumber of "
                     "records found = 1");
        gConnection.ObserveStatements({});
        QVERIFY(seen && form.isVisible());
        QVERIFY(!Find<QProgressBar>(form, "Animation1")->isVisible());
        for (const char *name : {"ViewBtn", "SelectBtn", "FindBtn", "ClearBtn", "ExitBtn"})
            QVERIFY2(Find<QPushButton>(form, name)->isEnabled(), name);
    }
}

void TestSearchForm::HandsOver_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<bool>("clears");
    QTest::addColumn<QStringList>("after");
    const QStringList all{"Adams, Zoe", "Bell, Anna", "Carter, Ben"};
    QTest::newRow("to nobody, unasked") << QStringList{} << false << all;
    QTest::newRow("cleared first") << QStringList{"?4711"} << true << all;
    QTest::newRow("joined") << QStringList{"?4711"} << false << QStringList{"?4711"} + all;
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

/// Both open the search on their own selection.
void TestSearchForm::FromTheManagerAndThePicker()
{
    const auto select = [this](QDialog &search) {
        TypeInto(search, "SearchSurname", "Bell");
        m->dialogs.Expect({}, "Searching on the following fields:\n\nSurname = \"Bell\"\n\n\n\nNumber of "
                              "records found = 1");
        Press(search, "FindBtn");
        Press(search, "SelectBtn");
    };
    frmContact manager;
    manager.show();
    m->driver.Expect("frmSearchContact", select);
    Press(manager, "FindBtn");
    QCOMPARE(Texts(List(manager, "ContactInfo")), QStringList{"Bell, Anna"});
    frmSelectContacts picker;
    picker.Configure(frmSelectContacts::Mode::ReplaceList, m_target);
    picker.show();
    m->driver.Expect("frmSearchContact", select);
    Press(picker, "FindBtn");
    QCOMPARE(Texts(List(picker, "SelectedList")), QStringList{"Bell, Anna"});
    Press(picker, "ExitBtn");
    QCOMPARE(Texts(m_target), QStringList{"Bell, Anna"});
}

QTEST_MAIN(TestSearchForm)
#include "test_search_form.moc"
