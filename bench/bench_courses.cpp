#include "Bench.h"
#include "EngineTwin.h"

#include "controls/TreeModel.h"
#include "courses/lists/CourseFolderODBC.h"
#include "courses/lists/TreeViewFunc.h"
#include "forms/lists/TreeView.h"
#include "support/TestDatabase.h"

#include <QApplication>

#include <algorithm>
#include <memory>

// The tree of a large provider: many courses, each in two folders, six levels deep.

namespace
{
constexpr int folders = 500;
constexpr int courses = 5'000;
constexpr int perFolder = 3; ///< folders in a folder, which makes six levels

struct Fixture {
    Fixture()
    {
        twin.Run("BEGIN");
        for (int folder = 0; folder < folders; ++folder)
            twin.Run("INSERT INTO CoursesHierarchy (Label,Parent,Description) VALUES ('Folder',?,'')",
                     {(folder + perFolder - 1) / perFolder});
        for (int course = 1; course <= courses; ++course) {
            twin.Run("INSERT INTO Courses (Title,Description,Fee,ReferenceID) VALUES ('Welding for '||"
                     "?,'Ten evenings',80,'')",
                     {course * 7919 % courses});
            for (const int folder : {course % folders + 1, (course * 31 + 7) % folders + 1})
                twin.Run("INSERT INTO CoursesRelationships VALUES (?,?)", {course, folder});
        }
        twin.Run("COMMIT");
        view.resize(400, 800);
        view.show();
    }

    /// Lists everything and shows it.
    void Fill()
    {
        ADO_Course_ShowFolders(tree, false, false);
        ADO_Course_FillCourseList(tree, false, false);
        QApplication::processEvents();
    }

    TestDatabase database;
    EngineTwin twin;
    TreeModel tree;
    TreeView view{tree};
};

const Bench::Registration filling("courses: fill a tree of 5,000 courses in 500 folders", [] {
    const auto fixture = std::make_shared<Fixture>();
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 2;
    benchmark.ours = [fixture] {
        const double taken = Bench::Milliseconds([&] { fixture->Fill(); });
        Bench::Require(fixture->tree.Count() == folders + 2 * courses,
                       QStringLiteral("the tree is not full"));
        return taken;
    };
    benchmark.twin = [fixture] {
        return Bench::Milliseconds([&] {
            EngineTwin &twin = fixture->twin;
            twin.Send(QStringLiteral("SELECT * FROM CoursesHierarchy WHERE Parent = 0 ORDER BY Label ASC"));
            twin.Send(QStringLiteral("SELECT * FROM CoursesHierarchy WHERE Parent > 0"));
            twin.Send(QStringLiteral("SELECT * FROM Courses ORDER BY Title ASC"));
            for (int course = 1; course <= courses; ++course)
                twin.Send(u"SELECT * FROM CoursesRelationships WHERE CourseRef = " % QString::number(course));
        });
    };
    return benchmark;
});

const Bench::Registration opening("courses: open all, find, open again, of 100 ms", [] {
    const auto fixture = std::make_shared<Fixture>();
    fixture->Fill();
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.ours = [fixture] {
        TreeModel &tree = fixture->tree;
        const QString file = fixture->database.Directory() % u"/tree.tmp";
        const auto shown = [](const std::function<void()> &work) {
            return Bench::Milliseconds([&] {
                work();
                QApplication::processEvents();
            });
        };
        const double opened = shown([&] { ExpandAllNodes(tree); });
        const double found = shown([&] {
            Bench::Require(!FindNode(tree, QStringLiteral("no such course")), QStringLiteral("found"));
        });
        SaveExpandedNodes(tree, file);
        CollapseAllNodes(tree);
        QApplication::processEvents();
        const double restored = shown([&] { RestoreExpandedNodes(tree, file); });
        Bench::Require(fixture->view.isExpanded(tree.IndexOf(tree.Find(QStringLiteral("!500")))),
                       QStringLiteral("the tree is not open"));
        return std::max({opened, found, restored});
    };
    benchmark.twin = [] { return 100.0; };
    return benchmark;
});
} // namespace
