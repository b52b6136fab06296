#include "core/session/Session.h"
#include "courses/FolderTreeText.h"
#include "courses/lists/CourseFolderODBC.h"
#include "courses/manager/frmCourse.h"
#include "courses/manager/frmDuplicateOpts.h"
#include "database/statements/Security.h"
#include "database/statements/System.h"
#include "enrolment/School.h"
#include "forms/lists/TreeView.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"
#include "support/TestTable.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using Dialogs::Answer;

namespace
{
TreeView *Tree(QWidget &manager)
{
    return Find<TreeView>(manager, "CourseList");
}

QString Shown(QWidget &manager)
{
    return Drawn(Tree(manager)->Model());
}

void Select(QWidget &manager, const QString &key)
{
    TreeModel &nodes = Tree(manager)->Model();
    nodes.Select(nodes.Find(key));
}

void Key(QWidget &manager, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    Tree(manager)->setFocus();
    QTest::keyClick(Tree(manager), key, modifiers);
}

/// Types into the node that is being edited, and ends it with a key.
void TypeName(QWidget &manager, const QString &name, Qt::Key end = Qt::Key_Return)
{
    const QPointer<QLineEdit> editor = Tree(manager)->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->setText(name);
    QTest::keyClick(editor, end);
    QTRY_VERIFY(!editor);
    QCoreApplication::processEvents();
}

/// The tools of the pop-up that are enabled, without "ID_".
QString Offered(QWidget &manager)
{
    auto *menu = Find<QMenu>(manager, "ID_Folder");
    emit menu->aboutToShow();
    QStringList tools;
    for (const QAction *tool : menu->actions()) {
        if (tool->isEnabled() && !tool->isSeparator())
            tools += tool->objectName().mid(3);
    }
    return tools.join(u' ');
}

void Choose(QWidget &manager, const QString &tool)
{
    emit Find<QMenu>(manager, "ID_Folder")->aboutToShow();
    auto *action = Find<QMenu>(manager, "ID_Folder")->findChild<QAction *>(tool);
    QVERIFY2(action && action->isEnabled(), qPrintable(tool));
    action->trigger();
}

QString Expanded(QWidget &manager)
{
    QStringList keys;
    for (const TreeNode *node : Tree(manager)->Model().Nodes())
        keys += node->expanded ? QStringList(node->key) : QStringList();
    return keys.join(u' ');
}

QByteArray Contents(const QString &file)
{
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : "no file";
}
} // namespace

class TestCourseManager final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        m_workingDirectory = std::make_unique<QTemporaryDir>();
        m_before = QDir::currentPath();
        QDir::setCurrent(m_workingDirectory->path());
        gUserRights = RightsBlank();
        gDupCourseOpt = 31;
        LoadSystemValues();
        const FolderRef arts(ADO_Course_AddFolder({}, "Arts", "All & sundry"));
        const FolderRef crafts(ADO_Course_AddFolder(arts, "R&D", {}));
        School::AddCourse("First", 0);
        ADO_Course_AddCourseRelations(School::AddCourse("Pottery", 0), crafts);
    }
    void cleanup()
    {
        QDir::setCurrent(m_before);
        m_database.reset();
    }

    /// Folders are made, named, filled and moved with keys alone.
    void WorksByKeys()
    {
        frmCourse manager;
        manager.show();
        QApplication::setActiveWindow(&manager);
        Choose(manager, "ID_NewRootFolder");
        TypeName(manager, "Sports");
        QCOMPARE(Shown(manager), "Arts!1 .R&D!2 ..Pottery?2!2 First?1 Sports!3");
        Key(manager, Qt::Key_F2);
        TypeName(manager, "Given up", Qt::Key_Escape);
        Key(manager, Qt::Key_F2);
        TypeName(manager, "  ");
        QCOMPARE(Find<QLabel>(manager, "StatBar")->text(), u"Sports (Root Folder)"_qs);
        Key(manager, Qt::Key_F2);
        TypeName(manager, "Games");
        QCOMPARE(Find<QLabel>(manager, "StatBar")->text(), u"Games (Root Folder)"_qs);

        Select(manager, "!2");
        Key(manager, Qt::Key_X, Qt::ControlModifier);
        Select(manager, "!3");
        ScriptedDialogs dialogs;
        dialogs.Expect("Folder Copy", "Copy all Course Links as well?", Answer::Yes);
        Key(manager, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(Shown(manager), "Arts!1 Games!3 .R&D!4 ..Pottery?2!4 First?1");
        QCOMPARE(Find<QLabel>(manager, "StatBar")->text(), u"R&D (Sub Folder)"_qs);

        // A name that is taken is told after the editor has closed, and the text is as before.
        Choose(manager, "ID_NewRootFolder");
        dialogs.Expect("Rename Folder",
                       "Folder with this name already exists in the database at this level.");
        TypeName(manager, "Arts");
        QCOMPARE(Find<QLabel>(manager, "StatBar")->text(), u"New Folder (Root Folder)"_qs);

        // A course at root level is pasted beside, where the menu does not offer it.
        Select(manager, "?2!4");
        Key(manager, Qt::Key_C, Qt::ControlModifier);
        Select(manager, "?1");
        Key(manager, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(Tree(manager)->Model().Selected()->key, "?2");
        Key(manager, Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(manager.focusWidget()->objectName(), "ID_Find");
        QTest::keyClicks(manager.focusWidget(), "pot");
        Select(manager, "!1");
        QTest::keyClick(manager.focusWidget(), Qt::Key_Return);
        QCOMPARE(Tree(manager)->Model().Selected()->key, "?2!4");
        Key(manager, Qt::Key_F); // the start of a name finds its node
        QCOMPARE(Tree(manager)->Model().Selected()->key, "?1");
        Select(manager, "!3");
        dialogs.Expect("Confirm Deletion", "Are you sure you want to remove 'Games' and all its contents?",
                       Answer::Yes);
        Key(manager, Qt::Key_Delete);
        QCOMPARE(Shown(manager), "Arts!1 First?1 New Folder!5 Pottery?2");
    }

    void AsksBeforeCoursesGoWithTheirFolder()
    {
        frmCourse manager;
        ScriptedDialogs dialogs;
        dialogs.Expect(
            "Confirm Deletion",
            "Are you sure you want to remove 'Arts' and all its contents?\n1 course is in no other "
            "folder and will be deleted.",
            Answer::No);
        Press(manager, "DelBtn");
        QCOMPARE(Shown(manager), "Arts!1 .R&D!2 ..Pottery?2!2 First?1");
    }

    void DuplicatesByTheOptions()
    {
        frmCourse manager;
        manager.show();
        ModalDriver driver;
        driver.Expect("frmDuplicateOpts", [](QDialog &form) {
            for (int bit = 0; bit < 7; ++bit) {
                auto *option = Find<QCheckBox>(form, u"CopyChk_" % QString::number(bit));
                QCOMPARE(option->isChecked(), bit < 5);
                option->setChecked(bit == 6 || bit == 0);
            }
            Press(form, "CanBtn");
        });
        Select(manager, "?2!2");
        Choose(manager, "ID_DuplicateOptions");
        QCOMPARE(gDupCourseOpt, 31);
        driver.Expect("frmDuplicateOpts", [](QDialog &form) {
            Find<QCheckBox>(form, "CopyChk_6")->setChecked(true);
            Find<QCheckBox>(form, "CopyChk_4")->setChecked(false);
            Press(form, "ExitBtn");
        });
        Choose(manager, "ID_DuplicateOptions");
        QCOMPARE(gDupCourseOpt, 64 + 15);

        Choose(manager, "ID_Copy");
        Select(manager, "!1");
        Choose(manager, "ID_PasteDuplicate");
        TypeName(manager, "Ceramics");
        QCOMPARE(Shown(manager), "Arts!1 .R&D!2 ..Pottery?2!2 .Ceramics?3!1 First?1");
        QCOMPARE(Find<QLabel>(manager, "StatBar")->text(), u"Ceramics (Course in Folder)"_qs);
    }

    void EditsFolders()
    {
        frmCourse manager;
        manager.show();
        QCOMPARE(Find<QPlainTextEdit>(manager, "Description")->toPlainText(), u"All & sundry"_qs);
        ModalDriver driver;
        driver.Expect("frmCategory", [](QDialog &form) {
            auto *places = Find<TreeView>(form, "CatList");
            QCOMPARE(Drawn(places->Model()), "Root Level!0 .Arts*!1 ..R&D!2");
            ScriptedDialogs dialogs;
            dialogs.Expect("Form not complete",
                           "The followings fields must be completed:\n    Name for this Folder\n");
            Press(form, "AddBtn");
            TypeInto(form, "CatName", "It's new");
            emit places->TickAsked(places->Model().Find("!0"));
            Press(form, "AddBtn");
        });
        Press(manager, "AddCat");
        QCOMPARE(Shown(manager), "Arts!1 .R&D!2 ..Pottery?2!2 .It's new!4 First?1 It's new!3");
        driver.Expect("frmCategory", [](QDialog &form) {
            QCOMPARE(Find<QPushButton>(form, "AddBtn")->text(), u"&Update"_qs);
            QCOMPARE(Drawn(Find<TreeView>(form, "CatList")->Model()),
                     "Root Level!0 .Arts*!1 ..R&D!2 ..It's new!4 .It's new!3");
            ScriptedDialogs dialogs;
            dialogs.Expect("Update Folder",
                           "Folder with this name already exists in the database at this level.");
            TypeInto(form, "CatName", "r&d");
            Press(form, "AddBtn");
            TypeInto(form, "CatName", "Drawing");
            TypeInto(form, "Description", "With pencils");
            Press(form, "AddBtn");
        });
        Select(manager, "!4");
        Press(manager, "EditBtn");
        QCOMPARE(Find<QLabel>(manager, "StatBar")->text(), u"Drawing (Sub Folder)"_qs);
        QCOMPARE(Find<QPlainTextEdit>(manager, "Description")->toPlainText(), u"With pencils"_qs);
        // A folder that is gone is told of, and no dialog opens.
        TestDatabase::Run({"DELETE FROM CoursesHierarchy WHERE HRef = 4"});
        ScriptedDialogs dialogs;
        dialogs.Expect("Courses", "Folder has been deleted.");
        Press(manager, "EditBtn");
    }

    /// One file goes from closing to opening, the other from view to view.
    void RemembersOpenFolders()
    {
        const QString own = m_database->Directory() % u"/coursetree.tmp";
        {
            frmCourse manager;
            QCOMPARE(Expanded(manager), QString());
            Press(manager, "ExpandBtn");
            QCOMPARE(Expanded(manager), u"!1 !2"_qs);
            Find<QCheckBox>(manager, "CheckView")->setChecked(true);
            QCOMPARE(Contents("coursetree.tmp"), QByteArray("!1\n!2\n"));
            QCOMPARE(Shown(manager), "First?1 Pottery?2");
            Press(manager, "RefBtn");
            Find<QCheckBox>(manager, "CheckView")->setChecked(false);
            QCOMPARE(Expanded(manager), u"!1 !2"_qs);
            Press(manager, "CollaspeBtn");
            Press(manager, "RefBtn");
            QCOMPARE(Contents("coursetree.tmp"), QByteArray());
            Tree(manager)->Model().SetExpanded(Tree(manager)->Model().Find("!1"), true);
            QCOMPARE(Contents(own), QByteArray("no file"));
        }
        QCOMPARE(Contents(own), QByteArray("!1\n"));
        frmCourse manager;
        QCOMPARE(Expanded(manager), u"!1"_qs);
    }

    void FollowsRights_data()
    {
        const QString all =
            "NewRootFolder NewFolder SubItem Cut Copy DuplicateOptions Edit DeleteLink Delete "
            "Rename Find Refresh";
        const TestTable<QChar, QString, QString> row{"level", "selected", "offered"};
        row("all, on a course", u'9', "?1", all);
        row("all, on a folder", u'9', "!2",
            "NewRootFolder NewFolder SubItem Cut Copy Edit Delete Rename Find Refresh");
        row("edit", u'3', "?1", QString(all).remove("Delete "));
        row("add", u'2', "?1", "SubItem Edit Find Refresh");
        row("view", u'1', "?1", "Edit Find Refresh");
        row("nothing", u'0', "?1", "Find Refresh");
    }
    void FollowsRights()
    {
        QFETCH(QChar, level);
        QFETCH(QString, selected);
        gUserRights[48] = level;
        frmCourse manager;
        Select(manager, selected);
        QTEST(Offered(manager), "offered");
        for (const QString &button : {u"AddBtn SubItem"_qs, u"EditBtn Edit"_qs, u"DelBtn Delete"_qs})
            QCOMPARE(Find<QPushButton>(manager, button.section(u' ', 0, 0))->isEnabled(),
                     Offered(manager).split(u' ').contains(button.section(u' ', 1)));
        // Who logs on next has other rights.
        gUserRights = RightsBlank();
        gUserRights[47] = u'3';
        manager.Form_Refresh();
        QVERIFY(Find<QPushButton>(manager, "AddCat")->isEnabled());
        QVERIFY(!Find<QPushButton>(manager, "RepBtn")->isEnabled());
    }

    void NamesTheFolderToPasteInto()
    {
        frmCourse manager;
        Select(manager, "?2!2");
        Choose(manager, "ID_Cut");
        Offered(manager);
        QCOMPARE(Find<QMenu>(manager, "ID_Folder")->findChild<QAction *>("ID_Paste")->text(),
                 u"Paste in R&&D\tCtrl+V"_qs);
        TestDatabase::Run(
            {"DELETE FROM Courses", "DELETE FROM CoursesHierarchy", "DELETE FROM CoursesRelationships"});
        Press(manager, "RefBtn");
        QCOMPARE(Offered(manager), u"NewRootFolder SubItem Find Refresh"_qs);
        QCOMPARE(Find<QLabel>(manager, "StatBar")->text(), QString());
    }

private:
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<QTemporaryDir> m_workingDirectory;
    QString m_before;
};

QTEST_MAIN(TestCourseManager)
#include "test_course_manager.moc"
