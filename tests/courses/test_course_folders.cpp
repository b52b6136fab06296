#include "controls/ListModel.h"
#include "courses/FolderTreeText.h"
#include "courses/lists/CourseFolderODBC.h"
#include "courses/lists/TreeViewFunc.h"
#include "courses/manager/FolderModule.h"
#include "enrolment/School.h"
#include "support/ScriptedDialogs.h"
#include "support/SeenElsewhere.h"
#include "support/StatementLog.h"
#include "support/TestTable.h"

#include <QFile>
#include <QTest>

namespace
{
const QString taken = "Folder with this name already exists in the database at this level.";

FolderRef AddFolder(const QString &label, FolderRef parent = {}, const QString &description = {})
{
    return FolderRef(ADO_Course_AddFolder(parent, label, description));
}

/// Every folder as "parent/label", by its key.
QStringList Folders()
{
    return TestDatabase::Rows("SELECT Parent,Label FROM CoursesHierarchy ORDER BY HRef");
}

QString Links(FolderRef folderRef)
{
    return TestDatabase::Rows(u"SELECT CourseRef FROM CoursesRelationships WHERE CourseHierarchyRef = " %
                              SqlNumber(folderRef) % u" ORDER BY CourseRef")
        .join(u' ');
}

QStringList Titles()
{
    return TestDatabase::Rows("SELECT Title FROM Courses ORDER BY Title");
}
} // namespace

class TestCourseFolders final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_database = std::make_unique<TestDatabase>(); }
    void cleanup() { m_database.reset(); }

    /// An engine may give children before their parents, and hands may have moved folders into nothing or
    /// into each other: those are named, and their courses are still to be seen.
    void ListsFolders()
    {
        const FolderRef late = AddFolder("Late");
        const FolderRef child = AddFolder("Child", FolderRef(late.number + 3));
        AddFolder("Grandchild", child);
        AddFolder("Early");
        TreeModel tree;
        QCOMPARE(ADO_Course_ShowFolders(tree, false, false), QStringList());
        QCOMPARE(Drawn(tree), u"Early!4 .Child!2 ..Grandchild!3 Late!1"_qs);
        QCOMPARE(tree.Find("!2")->image, u"closed"_qs);
        QCOMPARE(tree.Find("!1")->image, u"rootclosed"_qs);

        const FolderRef lost = AddFolder("Lost", FolderRef(999));
        AddFolder("Inside", lost);
        const FolderRef one = AddFolder("One", FolderRef(lost.number + 3));
        QCOMPARE(AddFolder("Two", one).number, lost.number + 3);
        const CourseRef hidden = School::AddCourse("A", 0);
        const CourseRef shown = School::AddCourse("B", 0);
        for (const FolderRef folder : {lost, one}) {
            ADO_Course_AddCourseRelations(hidden, folder);
            ADO_Course_AddCourseRelations(shown, folder);
        }
        ADO_Course_AddCourseRelations(shown, late);
        QCOMPARE(ADO_Course_ShowFolders(tree, false, false), QStringList({"Inside", "Lost", "One", "Two"}));
        ADO_Course_FillCourseList(tree, false, false);
        QCOMPARE(Drawn(tree), u"Early!4 .Child!2 ..Grandchild!3 Late!1 .B?2!1 A?1!5"_qs);
        // Nor does a loop keep deletion and copying busy for ever.
        QVERIFY(ADO_Course_CopyFolder(one, late, false) > 0);
        QVERIFY(ADO_Course_DeleteFolder(one));
        QCOMPARE(TestDatabase::Rows("SELECT * FROM CoursesHierarchy WHERE Label = 'Two'").size(), 1);
    }

    void NamesAreTakenPerLevel()
    {
        const FolderRef arts = AddFolder("Arts");
        QCOMPARE(AddFolder("arts"), FolderRef());
        const FolderRef inner = AddFolder("Arts", arts);
        const FolderRef other = AddFolder("Other");
        ScriptedDialogs dialogs;
        dialogs.Expect("Rename Folder", taken);
        QCOMPARE(Course_RenameFolder("ARTS", other, {}), 0);
        dialogs.Expect("Update Folder", taken);
        QCOMPARE(Course_UpdateFolder({"Arts", {}, {}}, other), 0);
        QCOMPARE(Course_UpdateFolder({"It's `all`", "50%", arts}, inner), inner.number);
        QCOMPARE(ADO_Course_CheckFolder(inner)->label, u"It's ``all``"_qs);
        QCOMPARE(ADO_Course_CheckFolder(inner)->description, u"50%"_qs);

        TestDatabase::Run({u"DELETE FROM CoursesHierarchy WHERE HRef = " % SqlNumber(inner)});
        QVERIFY(ADO_Course_CheckFolder(inner).IsMissing());
        dialogs.Expect("Update Folder",
                       "Another user has deleted this folder meanwhile. Nothing was stored for it.");
        QCOMPARE(Course_UpdateFolder({"New", {}, arts}, inner), 0);
    }

    void NumbersNewFolders()
    {
        QStringList labels;
        for (int i = 0; i < 3; ++i) {
            QString label;
            QVERIFY(Course_NewFolder({}, label) > 0);
            labels += label;
        }
        QCOMPARE(labels, QStringList({"New Folder", "New Folder (2)", "New Folder (3)"}));
    }

    /// One dialog may add a name to several places; a place that is gone by now gets none.
    void AddsToTickedPlaces()
    {
        const FolderRef arts = AddFolder("Arts");
        const FolderRef gone = AddFolder("Gone");
        TreeModel tree;
        ADO_Course_ShowFolders(tree, false, false);
        TreeModel places;
        ADO_Course_ShowFolders(places, true, true);
        ScriptedDialogs dialogs;
        const auto add = [&](const QStringList &keys) {
            places.SetAllTicks(TreeTick::Off);
            for (const QString &key : keys)
                places.SetTick(places.Find(key), TreeTick::On);
            return Course_AddCat("It's", "50%", places, tree);
        };
        QVERIFY(add({}));
        dialogs.Expect("Add Folder", taken);
        QVERIFY(add({"!0", u'!' % SqlNumber(arts)}));
        dialogs.Expect("Add Folder", taken);
        QVERIFY(!add({"!0"}));
        TestDatabase::Run({u"DELETE FROM CoursesHierarchy WHERE HRef = " % SqlNumber(gone)});
        dialogs.Expect("Add Folder",
                       "Another user has deleted these meanwhile, and they are left out:\n    Gone");
        QVERIFY(!add({u'!' % SqlNumber(gone)}));
        QCOMPARE(Folders(), QStringList({"0|Arts", "0|It's", "1|It's"}));
        QCOMPARE(Drawn(tree), u"Arts!1 .It's!4 Gone!2 It's!3"_qs);
    }

    void NamesCopies_data()
    {
        const QString longName = QString(45, u'x') % u"12345";
        const TestTable<QString, bool, QStringList> row{"label", "beside", "names"};
        row("beside the original", "X", true, {"Copy of X", "Copy (2) of X", "Copy (3) of X"});
        row("elsewhere", "X", false, {"X", "Copy (0) of X", "Copy (1) of X"});
        row("a long name", longName, true,
            {u"Copy of " % QString(42, u'x'), u"Copy (2) of " % QString(38, u'x')});
        row("a long name elsewhere", longName, false, {longName, u"Copy (0) of " % QString(38, u'x')});
        row("quotes", "It's ``", true, {"Copy of It's ``"});
    }
    void NamesCopies()
    {
        QFETCH(QString, label);
        QFETCH(bool, beside);
        QFETCH(QStringList, names);
        const FolderRef source(ADO_Course_AddFolder({}, DoubledApostrophes(label), "It''s"));
        const FolderRef other = AddFolder("Other");
        for (const QString &name : names) {
            const FolderRef copy(ADO_Course_CopyFolder(source, beside ? FolderRef(0) : other, false));
            QCOMPARE(ADO_Course_CheckFolder(copy)->label, name);
            QCOMPARE(ADO_Course_CheckFolder(copy)->description, u"It's"_qs);
        }
    }

    /// A folder of two levels goes into its own descendant; then all of it goes.
    void CopiesAndDeletesDown()
    {
        const FolderRef top = AddFolder("Top");
        const FolderRef left = AddFolder("Left", top);
        AddFolder("Right", top);
        const FolderRef leaf = AddFolder("Leaf", left);
        const CourseRef course = School::AddCourse("Course", 0);
        const CourseRef other = School::AddCourse("Other", 0);
        ADO_Course_AddCourseRelations(course, leaf);
        ADO_Course_AddCourseRelations(other, top);
        ADO_Course_AddCourseRelations(other, {});
        const FolderRef copy(ADO_Course_CopyFolder(top, leaf, true));
        QCOMPARE(Folders().mid(4), QStringList({"4|Top", "5|Left", "5|Right", "6|Leaf"}));
        QCOMPARE(Links(copy), u"2"_qs);
        QCOMPARE(Links(FolderRef(8)), u"1"_qs);

        const StatementLog log;
        TreeModel tree;
        QVERIFY(Course_DeleteFolder(left, tree));
        const QStringList deletions = log.Statements().filter("DELETE FROM CoursesHierarchy");
        QCOMPARE(deletions.first(), "DELETE FROM CoursesHierarchy WHERE HRef = 8");
        QCOMPARE(deletions.last(), "DELETE FROM CoursesHierarchy WHERE HRef = 2");
        QCOMPARE(Folders(), QStringList({"0|Top", "1|Right"}));
        // What is in another folder stays; the other has only its row deleted.
        QCOMPARE(Titles(), QStringList("Other"));
    }

    /// Another workstation sees a folder moved and deleted at once, with the courses that go.
    void MovesAndDeletesInOnePiece()
    {
        const FolderRef source = AddFolder("Source");
        const FolderRef inner = AddFolder("Inner", source);
        const FolderRef target = AddFolder("Target");
        ADO_Course_AddCourseRelations(School::AddCourse("Course", 0), inner);
        FolderRef copy;
        QCOMPARE(SeenElsewhere(*m_database, "SELECT COUNT(*) FROM CoursesHierarchy",
                               [&] { copy = FolderRef(Course_PasteFolder(source, target, true, true)); }),
                 QSet<QString>{"3"});
        QCOMPARE(Folders(), QStringList({"0|Target", "3|Source", "4|Inner"}));
        QCOMPARE(Links(FolderRef(copy.number + 1)), u"1"_qs);
        TreeModel tree;
        QCOMPARE(SeenElsewhere(*m_database, "SELECT COUNT(*) FROM CoursesRelationships",
                               [&] { QVERIFY(Course_DeleteFolder(target, tree)); }),
                 QSet<QString>{"1"});
        QVERIFY(Titles().isEmpty());
    }

    void StopsAtAFailure()
    {
        const FolderRef source = AddFolder("Source");
        AddFolder("Inner", source);
        TestDatabase::Run({"ALTER TABLE CoursesRelationships RENAME TO Gone"});
        ScriptedDialogs dialogs;
        dialogs.ExpectFailure();
        dialogs.Expect("Folder Copy", "Folder copying terminated unexpectly.");
        QCOMPARE(Course_PasteFolder(source, {}, true, true), -1);
        QCOMPARE(Folders(), QStringList({"0|Source", "1|Inner", "0|Copy of Source"}));
        dialogs.Expect("Folder Copy", "Folder copying terminated unexpectly.");
        QCOMPARE(Course_PasteFolder(FolderRef(99), {}, false, false), -1);
    }

    void OpensFindsAndRemembers()
    {
        const QString file = m_database->Directory() % u"/tree.tmp";
        TreeModel tree;
        tree.Add({}, {"!1", "Arts"});
        tree.Add("!1", {"!2", "Crafts"});
        tree.Add("!2", {"?1!2", "Pottery"});
        tree.Add({}, {"?2", "Art of war"});
        const auto open = [&tree] {
            QStringList keys;
            for (const TreeNode *node : tree.Nodes())
                keys += node->expanded ? QStringList(node->key) : QStringList();
            return keys.join(u' ');
        };
        ExpandAllNodes(tree);
        QCOMPARE(open(), u"!1 !2"_qs);
        tree.SetExpanded(tree.Find("!1"), false);
        SaveExpandedNodes(tree, file);
        CollapseAllNodes(tree);
        QCOMPARE(open(), QString());
        RestoreExpandedNodes(tree, file);
        QCOMPARE(open(), u"!2"_qs);
        RestoreExpandedNodes(tree, file % u".missing");

        QVERIFY(FindNode(tree, "aRT"));
        QCOMPARE(tree.Selected()->key, "?2");
        QVERIFY(!FindNode(tree, "art"));
        QCOMPARE(tree.Selected()->key, "?2");
        tree.Select(nullptr);
        QVERIFY(FindNode(tree, "art"));
        QCOMPARE(tree.Selected()->key, "!1");
        QVERIFY(FindNode(tree, "raft"));
        QCOMPARE(tree.Selected()->key, "!2");
    }

private:
    std::unique_ptr<TestDatabase> m_database;
};

QTEST_GUILESS_MAIN(TestCourseFolders)
#include "test_course_folders.moc"
