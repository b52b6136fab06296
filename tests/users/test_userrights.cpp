#include "controls/TreeModel.h"
#include "users/UserRights.h"

#include <QTest>

class TestUserRights final : public QObject
{
    Q_OBJECT

private slots:
    void Loading()
    {
        const QList<std::pair<QString, QString>> texts{
            {"", QString(256, u'9')},
            {"0123", "0123" + QString(252, u'9')}, // the rest stays
            {QString(300, u'2'), QString(256, u'2')},
            {"3x' 9\u0663", "300090" + QString(250, u'9')},
        };
        for (const auto &[loaded, text] : texts) {
            UserRights rights;
            rights.Load(loaded);
            QCOMPARE(rights.Text(), text);
        }
    }

    void TreeShowsLevels()
    {
        const std::tuple<QString, char16_t, QString> levels[] = {
            {"?5", u'0', "Right  []"},
            {"?5", u'1', "Right  [View/Select Only]"},
            {"?5", u'2', "Right  [Add Only]"},
            {"?5", u'3', "Right  [Add and Edit Only]"},
            {"?5", u'9', "Right  [Full Access]"},
            {"?5", u'7', "Right  []"},
            {"#5", u'9', "Right  [Yes]"},
            {"#5", u'0', "Right  [No]"},
            {"#5", u'3', "Right  [No]"},
            {"!5", u'1', "Right"},
        };
        for (const auto &[key, digit, text] : levels) {
            TreeModel tree;
            tree.Add({}, {.key = key, .text = "Right"});
            UserRights rights;
            RefreshRightTexts(tree, rights);
            rights.Set(5, digit);
            RefreshRightTexts(tree, rights);
            QCOMPARE(tree.Find(key)->text, text);
        }
    }

    void TreeOfTheMap()
    {
        const std::vector<SecurityMapEntry> map{
            {RightKind::YesNo, "#9", "Before any group", 9},
            {RightKind::Heading, "!a", "A"},
            {RightKind::Level, "?1", "One", 1},
            {RightKind::Heading, "!b", "B"},
            {RightKind::YesNo, "#2", "Two", 2},
        };
        TreeModel tree;
        for (int times = 0; times < 2; ++times)
            FillRightsTree(tree, map, UserRights());
        QStringList shown;
        for (const TreeNode *node : tree.Nodes())
            shown.append(node->parent->key % u'/' % node->text);
        QCOMPARE(shown, QStringList({"/Before any group  [Yes]", "/A", "!a/One  [Full Access]", "/B",
                                     "!b/Two  [Yes]"}));
        QCOMPARE(tree.Selected(), tree.Find("#9"));
        QVERIFY(tree.Find("!b")->expanded);
    }
};

QTEST_GUILESS_MAIN(TestUserRights)
#include "test_userrights.moc"
