#include "courses/FolderTreeText.h"
#include "courses/lists/CourseFolderODBC.h"
#include "courses/manager/CourseTree.h"
#include "courses/record/CourseRecordODBC.h"
#include "enrolment/School.h"
#include "support/ScriptedDialogs.h"
#include "support/TestTable.h"

#include <QTest>

using Dialogs::Answer;
using Pending = CourseClipboard::Pending;

namespace
{
const QString courseDeleted = "Course has been deleted.";
const QString folderDeleted = "Folder has been deleted.";

FolderRef AddFolder(const QString &label, FolderRef parent = {})
{
    return FolderRef(ADO_Course_AddFolder(parent, label, {}));
}

CourseRef AddCourse(const QString &title, const std::vector<FolderRef> &folders)
{
    const CourseRef course = School::AddCourse(title, 0);
    for (const FolderRef folder : folders)
        ADO_Course_AddCourseRelations(course, folder);
    return course;
}

/// The links of a course as the numbers of its folders.
QString Links(CourseRef courseRef)
{
    return TestDatabase::Rows(u"SELECT CourseHierarchyRef FROM CoursesRelationships WHERE CourseRef = " %
                              SqlNumber(courseRef) % u" ORDER BY CourseHierarchyRef")
        .join(u' ');
}
} // namespace

class TestCourseTree final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        m_dialogs = std::make_unique<ScriptedDialogs>();
        m_tree = std::make_unique<CourseTree>([](bool) {});
        m_arts = AddFolder("Arts");
        m_crafts = AddFolder("Crafts", m_arts);
        m_sports = AddFolder("Sports");
        AddCourse("First", {{}});
        m_pottery = AddCourse("Pottery", {m_crafts, m_sports});
        m_judo = AddCourse("Judo", {m_sports});
        m_yoga = AddCourse("Yoga", {{}});
        m_tree->Fill();
        QCOMPARE(Shown(), "Arts!1 .Crafts!2 ..Pottery?2!2 Sports!3 .Judo?3!3 .Pottery?2!3 First?1 Yoga?4");
    }
    void cleanup()
    {
        m_tree.reset();
        m_dialogs.reset();
        m_database.reset();
    }

    /// What is offered with a node selected, as the digits of paste, on root, duplicate, and the caption.
    void OffersToPaste_data()
    {
        const TestTable<QString, QString, QString> row{"clipboard", "selected", "offer"};
        const QStringList nodes{"", "!1", "!2", "?2!2", "?4"};
        const QStringList nothing{"000 Paste", "000 Paste", "000 Paste", "000 Paste", "000 Paste"};
        const QStringList moved{"000 Paste", "110 Paste in Arts", "110 Paste in Crafts",
                                "110 Paste in Crafts", "010 Paste"};
        const QStringList copied{"000 Paste", "111 Paste in Arts", "111 Paste in Crafts",
                                 "111 Paste in Crafts", "011 Paste"};
        const auto rows = [&](const QString &clipboard, const QStringList &offers) {
            for (qsizetype i = 0; i < nodes.size(); ++i)
                row(qPrintable(QString(clipboard % u" on " % nodes[i])), clipboard, nodes[i], offers[i]);
        };
        rows({}, nothing);
        rows("cut !3", moved);
        rows("copy !3", moved);
        rows("cut ?3!3", moved);
        rows("cut ?4", moved);
        rows("copy ?3!3", copied);
        rows("copy ?4", copied);
    }
    void OffersToPaste()
    {
        QFETCH(QString, clipboard);
        QFETCH(QString, selected);
        if (!clipboard.isEmpty())
            Take(clipboard.startsWith(u"cut") ? Pending::Cut : Pending::Copy, clipboard.section(u' ', 1));
        Select(selected);
        const CourseClipboard::Offer offer = m_tree->Clipboard().At(m_tree->Nodes().Selected());
        QString digits;
        for (const bool is : {offer.paste, offer.pasteRoot, offer.pasteDuplicate})
            digits += is ? u'1' : u'0';
        QTEST(QString(digits % u' ' % offer.pasteCaption), "offer");
    }

    /// A course is linked once more by a copy, and moved by a cut.
    void PastesCourses_data()
    {
        const TestTable<QString, QString, QString, QString> row{"taken", "onto", "links", "selected"};
        row("copy into a folder", "copy ?3!3", "!1", "1 3", "?3!1");
        row("copy beside a course", "copy ?3!3", "?2!2", "2 3", "?3!2");
        row("copy onto a course at root level", "copy ?3!3", "?4", "0 3", "?3");
        row("cut into a folder", "cut ?3!3", "!2", "2", "?3!2");
        row("cut from root level", "cut ?4", "!1", "1", "?4!1");
        row("cut onto root level", "cut ?3!3", "root", "0", "?3");
    }
    void PastesCourses()
    {
        QFETCH(QString, taken);
        QFETCH(QString, onto);
        const QString key = taken.section(u' ', 1);
        const bool isCut = taken.startsWith(u"cut");
        Take(isCut ? Pending::Cut : Pending::Copy, key);
        if (onto == u"root")
            m_tree->PasteOnRoot();
        else {
            Select(onto);
            m_tree->Paste();
        }
        QTEST(m_tree->Nodes().Selected()->key, "selected");
        QTEST(Links(CourseRef(key.mid(1, 1).toInt())), "links");
        QCOMPARE(m_tree->Nodes().Find(key) == nullptr, isCut);
        QCOMPARE(m_tree->Clipboard().State(), Pending::Nothing);
        const QString shown = Shown();
        m_tree->Fill();
        QCOMPARE(m_tree->Nodes().Count(), static_cast<int>(shown.count(u' ')) + 1);
    }

    void KeepsTheClipboardWhereTheCourseIs()
    {
        Take(Pending::Cut, "?3!3");
        Select("!3");
        m_dialogs->Expect("Courses", "Course already exists at this level");
        m_tree->Paste();
        Select("!1");
        m_tree->Paste();
        QCOMPARE(Links(m_judo), u"1"_qs);
    }

    /// The links of a folder go along if the user says so; a folder without nodes below is not asked about.
    void PastesFolders()
    {
        Take(Pending::Copy, "!3");
        Select("!1");
        m_dialogs->Expect("Folder Copy", "Copy all Course Links as well?", Answer::No);
        m_tree->Paste();
        QCOMPARE(m_tree->Nodes().Selected()->key, "!4");
        QVERIFY(m_tree->Nodes().Selected()->children.empty() && m_tree->Nodes().Find("!1")->expanded);
        Take(Pending::Cut, "!4");
        m_tree->PasteOnRoot();
        QCOMPARE(m_tree->Nodes().Selected()->text, u"Copy (0) of Sports"_qs);
        // What is cut without its links leaves its courses at root level.
        Take(Pending::Cut, "!3");
        Select("!1");
        m_dialogs->Expect("Folder Copy", "Copy all Course Links as well?", Answer::No);
        m_tree->Paste();
        QCOMPARE(Links(m_judo), u"0"_qs);
        QVERIFY(m_tree->Nodes().Find("?3"));
        // Into its own descendant, the copy goes with the original.
        Take(Pending::Cut, "!1");
        Select("!2");
        m_dialogs->Expect("Folder Copy", "Copy all Course Links as well?", Answer::Yes);
        m_tree->Paste();
        QCOMPARE(Shown(), "Copy (0) of Sports!5 First?1 Judo?3 Pottery?2 Yoga?4");
    }

    void RenamesAllNodesOfACourse()
    {
        m_tree->Rename("?2!3", QString(101, u'x'));
        const QString longest(100, u'x');
        QCOMPARE(m_tree->Nodes().Find("?2!2")->text, longest);
        QCOMPARE(m_tree->Nodes().Find("?2!3")->text, longest);
        m_dialogs->Expect("Rename Course", "Course with this name already.");
        m_tree->Rename("?2!3", "yoga");
        QCOMPARE(m_tree->Nodes().Find("?2!3")->text, longest);
        // The first course keeps its text until the tree is listed again.
        m_tree->Rename("?1", "Primus");
        QCOMPARE(m_tree->Nodes().Find("?1")->text, u"First"_qs);
        m_tree->Fill();
        QCOMPARE(m_tree->Nodes().Find("?1")->text, u"Primus"_qs);

        m_tree->Rename("!2", "Sports");
        QCOMPARE(m_tree->Nodes().Find("!2")->text, u"Sports"_qs);
        m_dialogs->Expect("Rename Folder",
                          "Folder with this name already exists in the database at this level.");
        m_tree->Rename("!1", "Sports");
        QCOMPARE(m_tree->Nodes().Find("!1")->text, u"Arts"_qs);
        m_tree->Rename("!99", "Nothing");
    }

    void DeletesLinks()
    {
        Select("?2!2");
        m_tree->DeleteLink();
        QCOMPARE(Links(m_pottery), u"3"_qs);
        QCOMPARE(m_tree->Nodes().Selected()->key, "?2!3");
        m_tree->DeleteLink();
        QCOMPARE(Links(m_pottery), u"0"_qs);
        QCOMPARE(m_tree->Nodes().Selected()->key, "?2");
        m_tree->DeleteLink();
        QCOMPARE(Shown(), "Arts!1 .Crafts!2 Sports!3 .Judo?3!3 First?1 Yoga?4 Pottery?2");
    }

    void DeletesWhatIsInNoOtherFolder()
    {
        QCOMPARE(m_tree->CoursesOnlyIn(m_tree->Nodes().Find("!3")), 1);
        Select("!3");
        m_tree->DeleteSelected();
        QCOMPARE(Shown(), "Arts!1 .Crafts!2 ..Pottery?2!2 First?1 Yoga?4");
        QVERIFY(!ADO_Course_CheckCourse(m_judo) && ADO_Course_CheckCourse(m_pottery));
        QCOMPARE(m_tree->Nodes().Selected()->key, "?1");
    }

    void MakesFoldersWhereTheNodeIs_data()
    {
        const TestTable<QString, QString> row{"selected", "parent"};
        row("a folder", "!2", "!2");
        row("a course in a folder", "?2!2", "!2");
        row("a course at root level", "?4", "");
    }
    void MakesFoldersWhereTheNodeIs()
    {
        QFETCH(QString, selected);
        Select(selected);
        QTEST(m_tree->NewFolder(false)->parent->key, "parent");
        Select(selected);
        QCOMPARE(m_tree->NewFolder(true)->parent->key, QString());
        QCOMPARE(m_tree->Nodes().Selected()->image, u"rootclosed"_qs);
    }

    /// What another workstation deleted is told, and nothing is written for it.
    void NoticesWhatWasDeletedElsewhere()
    {
        TestDatabase::Run(
            {"DELETE FROM CoursesHierarchy WHERE HRef = 2", "DELETE FROM Courses WHERE CourseRef = 3"});
        const QStringList before = TestDatabase::Rows("SELECT * FROM CoursesRelationships");
        Take(Pending::Copy, "!2");
        QCOMPARE(m_tree->Clipboard().State(), Pending::Nothing);
        Take(Pending::Copy, "?4");
        Select("?2!2");
        m_dialogs->Expect("Courses", folderDeleted);
        m_tree->Paste();
        QVERIFY(!m_tree->Nodes().Find("?2!2"));
        QCOMPARE(m_tree->Clipboard().State(), Pending::Copy);
        TestDatabase::Run({"DELETE FROM Courses WHERE CourseRef = 4"});
        Select("!1");
        m_dialogs->Expect("Courses", courseDeleted);
        QVERIFY(!m_tree->PasteDuplicate());
        QCOMPARE(m_tree->Clipboard().State(), Pending::Nothing);
        QCOMPARE(TestDatabase::Rows("SELECT * FROM CoursesRelationships"), before);

        m_dialogs->Expect("Courses", courseDeleted);
        Select("?3!3");
        QCOMPARE(m_tree->ReadSelected().status, u"Pottery (Course in Folder)"_qs);
        TestDatabase::Run({"DELETE FROM CoursesHierarchy"});
        m_dialogs->Expect("Courses", folderDeleted);
        m_dialogs->Expect("Courses", folderDeleted);
        Select("!1");
        QCOMPARE(m_tree->ReadSelected().status, u"First (Course)"_qs);
        QCOMPARE(Shown(), "First?1");
        // A database that cannot be asked is no reason to call anything deleted.
        TestDatabase::Run({"ALTER TABLE Courses RENAME TO Gone"});
        m_dialogs->ExpectFailure();
        QCOMPARE(m_tree->ReadSelected().status, u"First (Course)"_qs);
        TestDatabase::Run({"ALTER TABLE Gone RENAME TO Courses", "DELETE FROM Courses"});
        m_dialogs->Expect("Courses", courseDeleted);
        QCOMPARE(m_tree->ReadSelected().status, QString());
    }

    void TellsOnceOfFoldersThatAreLost()
    {
        TestDatabase::Run({"UPDATE CoursesHierarchy SET Parent = 99 WHERE HRef = 3"});
        m_dialogs->Expect("Courses",
                          "These folders cannot be shown, since the folder that they are in is missing. "
                          "Courses that are in no other folder are listed at root level.\n    Sports");
        m_tree->Fill();
        m_tree->Fill();
        QCOMPARE(Shown(), "Arts!1 .Crafts!2 ..Pottery?2!2 First?1 Judo?3!3 Yoga?4");
        // From there it can be moved like any other.
        Take(Pending::Cut, "?3!3");
        m_tree->PasteOnRoot();
        QCOMPARE(Links(m_judo), u"0"_qs);
    }

    void WorksInTheSimpleList()
    {
        m_tree->SetSimpleList(true);
        m_tree->Fill();
        QCOMPARE(Shown(), "First?1 Judo?3 Pottery?2 Yoga?4");
        Select("?3");
        m_tree->DeleteLink();
        Take(Pending::Cut, "?3");
        m_tree->PasteOnRoot();
        QCOMPARE(Links(m_judo), u"0 3"_qs);
        m_tree->ShowCourse(AddCourse("New", {m_arts, m_crafts}), "New");
        QCOMPARE(Shown(), "First?1 Judo?3 Pottery?2 Yoga?4 New?5");
        // The course stays selected in the other view.
        m_tree->SetSimpleList(false);
        m_tree->Fill();
        QCOMPARE(m_tree->Nodes().Selected()->key, "?5!2");
    }

private:
    QString Shown() const { return Drawn(m_tree->Nodes()); }
    void Select(const QString &key) { m_tree->Nodes().Select(m_tree->Nodes().Find(key)); }
    void Take(Pending pending, const QString &key)
    {
        Select(key);
        m_tree->Take(pending);
    }

    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
    std::unique_ptr<CourseTree> m_tree;
    FolderRef m_arts, m_crafts, m_sports;
    CourseRef m_pottery, m_judo, m_yoga;
};

QTEST_GUILESS_MAIN(TestCourseTree)
#include "test_course_tree.moc"
