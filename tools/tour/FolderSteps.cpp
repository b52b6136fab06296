#include "tour/Keyboard.h"
#include "tour/TourPlan.h"

namespace
{
const QString manager = QStringLiteral("frmCourse");
const QString folder = QStringLiteral("frmCategory");
const QString tree = QStringLiteral("CourseList");
const QString course = QStringLiteral("Beginner's Bookkeeping");

QString FolderKey(const QString &label)
{
    return TextOf(u"SELECT HRef FROM CoursesHierarchy WHERE Label = '" % label % u'\'');
}

QString CourseKey(const QString &title)
{
    return TextOf(u"SELECT CourseRef FROM Courses WHERE Title = '" %
                  QString(title).replace(u'\'', QLatin1String("''")) % u'\'');
}

/// The folders that a course is linked into, by their names, in order.
QStringList FoldersOf(const QString &title)
{
    QStringList folders;
    for (const char *label : {"Autumn", "Business", "Evening"}) {
        const QString name = QString::fromLatin1(label);
        if (RowsOf(u"SELECT * FROM CoursesRelationships WHERE CourseRef = " % CourseKey(title) %
                   u" AND CourseHierarchyRef = " % FolderKey(name)) == 1)
            folders.append(name);
    }
    return folders;
}

void GoTo(Keyboard &keys, const QString &node)
{
    keys.Go(tree);
    keys.ToRow(node);
}

/// Goes to the course below a folder.
void GoToCourseIn(Keyboard &keys, const QString &name)
{
    GoTo(keys, name);
    keys.ToRowBelow(course);
}

void AddFolderIn(Keyboard &keys, const QString &parent, const QString &name)
{
    keys.On(manager, u"a folder in " % parent, [&keys, parent] {
        if (!parent.isEmpty())
            GoTo(keys, parent);
        keys.Press(QStringLiteral("AddCat"));
    });
    keys.On(folder, name, [&keys, name] {
        keys.Expect(keys.Focus() == u"CatName", u"the dialog starts at " % keys.Focus());
        keys.Write(name);
    });
    keys.See(folder, u"new folder " % name, [&keys] { keys.Press(QStringLiteral("AddBtn")); });
    keys.On(manager, name % u" made", [&keys, parent, name] {
        const QString above = TextOf(u"SELECT Parent FROM CoursesHierarchy WHERE Label = '" % name % u'\'');
        keys.Expect(above == (parent.isEmpty() ? QStringLiteral("0") : FolderKey(parent)),
                    name % u" is not in " % parent);
        keys.Press(QStringLiteral("ExpandBtn"));
    });
}

void ExpectFolders(Keyboard &keys, const QString &title, const QStringList &folders)
{
    keys.Expect(FoldersOf(title) == folders,
                title % u" is in " % FoldersOf(title).join(u", ") % u" and not in " % folders.join(u", "));
}
} // namespace

void AddFolders(Keyboard &keys)
{
    keys.Command(QStringLiteral("O"), 1, QStringLiteral("C"));
    AddFolderIn(keys, {}, QStringLiteral("Autumn"));
    AddFolderIn(keys, QStringLiteral("Autumn"), QStringLiteral("Business"));
    AddFolderIn(keys, QStringLiteral("Business"), QStringLiteral("Evening"));
    keys.See(manager, QStringLiteral("folders three deep"), [&keys] {
        keys.Expect(keys.Rows(tree).contains(QStringLiteral("    Evening")),
                    u"the tree reads\n  " % keys.Rows(tree).join(u"\n  "));
    });
}

void AddClipboard(Keyboard &keys)
{
    keys.On(manager, QStringLiteral("cut and paste"), [&keys] {
        GoTo(keys, course);
        keys.Tap(QStringLiteral("Ctrl+X"));
        GoTo(keys, QStringLiteral("Evening"));
        keys.Tap(QStringLiteral("Ctrl+V"));
        ExpectFolders(keys, course, {QStringLiteral("Evening")});
    });
    keys.See(manager, QStringLiteral("course cut and pasted"), [&keys] {
        keys.Expect(keys.Rows(tree).filter(course) == QStringList{u"      " % course},
                    u"the tree reads\n  " % keys.Rows(tree).join(u"\n  "));
        GoTo(keys, course);
        keys.Tap(QStringLiteral("Ctrl+C"));
        GoTo(keys, QStringLiteral("Autumn"));
        keys.Tap(QStringLiteral("Ctrl+V"));
        ExpectFolders(keys, course, {QStringLiteral("Autumn"), QStringLiteral("Evening")});
    });
    keys.See(manager, QStringLiteral("course copied and pasted"), [&keys] {
        keys.Expect(keys.Rows(tree).filter(course).size() == 2,
                    u"the tree reads\n  " % keys.Rows(tree).join(u"\n  "));
        GoTo(keys, QStringLiteral("Evening"));
        keys.Tap(QStringLiteral("Ctrl+X"));
        GoTo(keys, QStringLiteral("Autumn"));
        keys.Tap(QStringLiteral("Ctrl+V"));
    });
    keys.Box(QStringLiteral("Folder Copy"), QStringLiteral("Copy all Course Links as well?"),
             QStringLiteral("Yes"));
    keys.See(manager, QStringLiteral("folder cut and pasted"), [&keys] {
        keys.Expect(TextOf(QStringLiteral("SELECT Parent FROM CoursesHierarchy WHERE Label = 'Evening'")) ==
                        FolderKey(QStringLiteral("Autumn")),
                    QStringLiteral("the folder was not moved"));
        ExpectFolders(keys, course, {QStringLiteral("Autumn"), QStringLiteral("Evening")});
    });
}

void AddDuplicate(Keyboard &keys, TourPlan &plan)
{
    const QString copy = QStringLiteral("Bookkeeping in spring");
    keys.On(manager, QStringLiteral("duplicate options"), [&keys] {
        GoToCourseIn(keys, QStringLiteral("Evening"));
        keys.ChooseFromMenu(QStringLiteral("Duplicate Options"));
    });
    keys.On(QStringLiteral("frmDuplicateOpts"), QStringLiteral("all seven"), [&keys] {
        for (int option = 0; option < 7; ++option)
            keys.Tick(u"CopyChk_" % QString::number(option));
    });
    keys.See(QStringLiteral("frmDuplicateOpts"), QStringLiteral("duplicate options"),
             [&keys] { keys.Press(QStringLiteral("ExitBtn")); });
    keys.On(manager, QStringLiteral("paste duplicate"), [&keys] {
        keys.Tap(QStringLiteral("Ctrl+C"));
        GoTo(keys, QStringLiteral("Business"));
        keys.ChooseFromMenu(QStringLiteral("Paste Duplicate"));
    });
    keys.See(manager, QStringLiteral("duplicate pasted"), [&keys, &plan, copy] {
        keys.Tap(QStringLiteral("Ctrl+A"));
        keys.Write(copy);
        keys.Tap(QStringLiteral("Return"));
        keys.Expect(keys.Waited([copy] { return !CourseKey(copy).isEmpty(); }),
                    QStringLiteral("the duplicate was not renamed"));
        keys.Expect(RowsOf(u"SELECT * FROM StudentsEnrolled WHERE CourseRef = " % CourseKey(copy)) ==
                        static_cast<int>(plan.students.size()) - 1,
                    QStringLiteral("the duplicate has other students"));
        ExpectFolders(keys, copy,
                      {QStringLiteral("Autumn"), QStringLiteral("Business"), QStringLiteral("Evening")});
    });
    keys.See(manager, QStringLiteral("duplicate renamed"),
             [&keys] { keys.Press(QStringLiteral("ExitBtn")); });
}
