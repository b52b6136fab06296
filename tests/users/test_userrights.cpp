#include "controls/TreeModel.h"
#include "users/UserRights.h"

#include <QTest>

class TestUserRights final : public QObject
{
    Q_OBJECT

private slots:
    void AdministratorBoxNotesAndRestores();
    void Loading_data();
    void Loading();
    void TreeShowsLevels_data();
    void TreeShowsLevels();
    void TreeOfTheMap();
};

void TestUserRights::AdministratorBoxNotesAndRestores()
{
    UserRights rights;
    QVERIFY(rights.IsFull());
    rights.Set(200, RightLevel::view);
    rights.Set(0, RightLevel::none);
    const QString before = rights.Text();

    rights.SetAdministrator(true);
    rights.SetAdministrator(true);
    QCOMPARE(rights.Text(), QString(256, u'9'));
    rights.SetAdministrator(false);
    QCOMPARE(rights.Text(), before);
    QCOMPARE(rights.Digit(200), u'1');

    rights.Set(256, RightLevel::none);
    rights.Set(-1, RightLevel::none);
    QCOMPARE(rights.Text(), before);
}

void TestUserRights::Loading_data()
{
    QTest::addColumn<QString>("loaded");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << "" << QString(256, u'9');
    QTest::newRow("short: the rest stays") << "0123"
                                           << "0123" + QString(252, u'9');
    QTest::newRow("as a new user is stored") << QString(255, u'9') << QString(256, u'9');
    QTest::newRow("too long") << QString(300, u'2') << QString(256, u'2');
    QTest::newRow("no digits") << "3x' 9\u0663"
                               << "300090" + QString(250, u'9');
}

void TestUserRights::Loading()
{
    QFETCH(const QString, loaded);
    UserRights rights;
    rights.Load(loaded);
    QTEST(rights.Text(), "text");
}

void TestUserRights::TreeShowsLevels_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("digit");
    QTest::addColumn<QString>("text");
    QTest::newRow("level 0") << "?5"
                             << "0"
                             << "Right  []";
    QTest::newRow("level 1") << "?5"
                             << "1"
                             << "Right  [View/Select Only]";
    QTest::newRow("level 2") << "?5"
                             << "2"
                             << "Right  [Add Only]";
    QTest::newRow("level 3") << "?5"
                             << "3"
                             << "Right  [Add and Edit Only]";
    QTest::newRow("level 9") << "?5"
                             << "9"
                             << "Right  [Full Access]";
    QTest::newRow("level unknown") << "?5"
                                   << "7"
                                   << "Right  []";
    QTest::newRow("yes") << "#5"
                         << "9"
                         << "Right  [Yes]";
    QTest::newRow("no") << "#5"
                        << "0"
                        << "Right  [No]";
    QTest::newRow("no by another digit") << "#5"
                                         << "3"
                                         << "Right  [No]";
    QTest::newRow("heading") << "!5"
                             << "1"
                             << "Right";
}

void TestUserRights::TreeShowsLevels()
{
    QFETCH(const QString, key);
    QFETCH(const QString, digit);
    TreeModel tree;
    tree.Add({}, {.key = key, .text = QStringLiteral("Right")});
    UserRights rights;
    RefreshRightTexts(tree, rights);
    rights.Set(5, digit.front());
    RefreshRightTexts(tree, rights);
    RefreshRightTexts(tree, rights);
    QTEST(tree.Find(key)->text, "text");
}

void TestUserRights::TreeOfTheMap()
{
    const std::vector<SecurityMapEntry> map{
        {RightKind::YesNo, u"#9"_qs, u"Before any group"_qs, 9},
        {RightKind::Heading, u"!a"_qs, u"A"_qs},
        {RightKind::Level, u"?1"_qs, u"One"_qs, 1},
        {RightKind::Heading, u"!b"_qs, u"B"_qs},
        {RightKind::YesNo, u"#2"_qs, u"Two"_qs, 2},
    };
    TreeModel tree;
    for (int times = 0; times < 2; ++times)
        FillRightsTree(tree, map, UserRights());
    QStringList shown;
    for (const TreeNode *node : tree.Nodes())
        shown.append((node->parent->key.isEmpty() ? QString() : node->parent->key % u'/') % node->text);
    QCOMPARE(shown, QStringList({u"Before any group  [Yes]"_qs, u"A"_qs, u"!a/One  [Full Access]"_qs, u"B"_qs,
                                 u"!b/Two  [Yes]"_qs}));
    QCOMPARE(tree.Selected()->key, u"#9"_qs);
    QVERIFY(tree.Find(u"!b"_qs)->expanded);
}

QTEST_GUILESS_MAIN(TestUserRights)
#include "test_userrights.moc"
