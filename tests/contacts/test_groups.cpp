#include "contacts/ContactModule.h"
#include "contacts/GroupModule.h"
#include "contacts/GroupODBC.h"
#include "contacts/People.h"
#include "controls/ComboModel.h"
#include "controls/TreeModel.h"
#include "core/Session.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"

#include <QTest>

namespace
{
const QString exists = QStringLiteral("Group name already exists in database.");

int AddType(const QString &name)
{
    return Contact_AddItem(ContactSection::GroupTypes, name, {});
}

QString MemberKey(int contactRef, int linkRef)
{
    return u'?' % QString::number(contactRef) % u'!' % QString::number(linkRef);
}

QString Member(int contactRef, int linkRef, int groupRef)
{
    return QString::number(contactRef) % u'|' % QString::number(linkRef) % u'|' % QString::number(groupRef);
}

QStringList Stored()
{
    return TestDatabase::Rows(QStringLiteral(
        "SELECT ContactRef, LinkRef, GroupRef FROM Groups ORDER BY GroupRef, ContactRef, LinkRef"));
}

/// The tree as one text a node, a blank before it for each level.
QStringList Lines(const TreeModel &tree)
{
    QStringList lines;
    for (const TreeNode *node : tree.Nodes()) {
        QString indent;
        for (const TreeNode *at = node->parent; at->parent; at = at->parent)
            indent += u' ';
        lines.append(indent % node->text);
    }
    return lines;
}
} // namespace

class TestGroups : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void NameAndMembers();
    void NamesAndReferences();
    void UpdatePutsTheTypeBetweenApostrophes();
    void TypedName_data();
    void TypedName();
    void AddMembers_data();
    void AddMembers();
    void SameContactUnderTwoTypes();
    void WriteThatFailsHalfWay();
    void Relations();
    void Deletes();

private:
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
};

void TestGroups::init()
{
    m_database = std::make_unique<TestDatabase>();
    m_dialogs = std::make_unique<ScriptedDialogs>();
    gShowIDs = 0;
}

void TestGroups::cleanup()
{
    gShowIDs = 0;
    m_dialogs.reset();
    m_database.reset();
}

void TestGroups::NameAndMembers()
{
    const int family = AddType("Family");
    const int bells = GroupName_Add("The Bell's", "B", family);
    QVERIFY(bells > 0);
    const int anna = Contact_Add(Person("Anna", "Bell"));
    const int ben = Contact_Add(Person("Ben", "Bell"));

    ComboModel types;
    Contact_FillList(ContactSection::GroupTypes, types, true);
    types.ChooseData(family);
    ComboModel names;
    ADO_Contact_FillGroupNames(family, names);
    QCOMPARE(names.Count(), 1);
    QCOMPARE(names.At(0).text, QStringLiteral("The Bell's"));
    QCOMPARE(names.Current(), -1);
    names.ChooseData(bells);
    ListModel people;
    people.Fill({{u'?' % SqlNumber(anna), "Bell, Anna"}, {u'?' % SqlNumber(ben), "Bell, Ben"}});
    ListModel members;
    QVERIFY(Group_AddMembers(types, names, people, members));
    QVERIFY(!members.At(0).bold);
    QVERIFY(Group_Update(bells, members));
    QCOMPARE(Stored(), QStringList({Member(anna, family, bells), Member(ben, family, bells)}));

    // Read back, members stand in bold until they are written again.
    ListModel again;
    QVERIFY(ADO_Contact_ShowGroup(bells, again));
    QCOMPARE(Keys(again), Keys(members));
    QCOMPARE(Texts(again), QStringList({"Bell, Anna", "Bell, Ben"}));
    QCOMPARE(again.At(1).subItems, QStringList("Family"));
    QVERIFY(again.At(0).bold && again.At(1).bold);
    again.Remove(0);
    QVERIFY(Group_Update(bells, again));
    QVERIFY(!again.At(0).bold);
    QCOMPARE(Stored(), QStringList(Member(ben, family, bells)));
}

void TestGroups::NamesAndReferences()
{
    const int family = AddType("Family");
    const int team = AddType("Team");
    const int first = GroupName_Add("Blue", "", family);
    // The name counts over all types.
    m_dialogs->Expect("Add Group Name", exists);
    QCOMPARE(GroupName_Add("Blue", "", team), 0);
    const int second = GroupName_Add("Blue", "2", team);
    QVERIFY(second > first);
    m_dialogs->Expect("Update Group Name", exists);
    QCOMPARE(GroupName_Update(second, "Blue", "", team), 0);
    QCOMPARE(GroupName_Update(second, "Blue", "2", family), second);
    gShowIDs = 1;
    ComboModel names;
    ADO_Contact_FillGroupNames(family, names);
    QCOMPARE(names.Count(), 2);
    QVERIFY(names.FindText("[2] Blue") >= 0);
    ADO_Contact_FillGroupNames(team, names);
    QCOMPARE(names.Count(), 0);
}

void TestGroups::UpdatePutsTheTypeBetweenApostrophes()
{
    const int family = AddType("Family");
    const int team = AddType("Team");
    const int bells = GroupName_Add("Bells", "", family);
    StatementLog log;
    QCOMPARE(GroupName_Update(bells, "Ringers", "R", team), bells);
    QCOMPARE(log.Statements().last(),
             QString(u"UPDATE GroupNames SET Name = 'Ringers', ReferenceID = 'R', LinkRef = '" %
                     QString::number(team) % u"' WHERE GroupRef = " % QString::number(bells)));
    QCOMPARE(Rows(u"GroupNames WHERE LinkRef = " % QString::number(team)), 1);
}

void TestGroups::TypedName_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<bool>("exists");
    QTest::newRow("new") << "Ringers"
                         << "Ringers" << false;
    QTest::newRow("with a reference") << "[R1] Ringers"
                                      << "Ringers" << false;
    QTest::newRow("same name, other reference shown") << "bells"
                                                      << "Bells" << true;
    QTest::newRow("under another type") << "Blue"
                                        << "Bells" << true;
}

void TestGroups::TypedName()
{
    QFETCH(QString, typed);
    QFETCH(QString, chosen);
    QFETCH(bool, exists);
    const int family = AddType("Family");
    const int bells = GroupName_Add("Bells", "", family);
    GroupName_Add("Blue", "", AddType("Team"));
    ComboModel names;
    ADO_Contact_FillGroupNames(family, names);
    names.ChooseData(bells);
    if (exists)
        m_dialogs->Expect("Add Group Name", ::exists);
    GroupName_TakeTyped(family, names, typed);
    QCOMPARE(names.CurrentText(), chosen);
    QCOMPARE(Rows(u"GroupNames WHERE LinkRef = " % QString::number(family)), exists ? 1 : 2);

    m_dialogs->Expect("Grouping Members", "No group type selected.");
    GroupName_TakeTyped(0, names, "Nowhere");
    QCOMPARE(Rows("GroupNames WHERE Name = 'Nowhere'"), 0);
}

void TestGroups::AddMembers_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("group");
    QTest::addColumn<bool>("somebody");
    QTest::addColumn<QString>("told");
    QTest::newRow("no type") << -1 << -1 << false << "No group type selected.";
    QTest::newRow("no group") << 0 << -1 << false << "No group name selected.";
    QTest::newRow("nobody") << 0 << 0 << false << "No group members selected.";
    QTest::newRow("all there") << 0 << 0 << true << QString();
}

void TestGroups::AddMembers()
{
    QFETCH(int, type);
    QFETCH(int, group);
    QFETCH(bool, somebody);
    QFETCH(QString, told);
    ComboModel types;
    types.Fill({{"Family", 3}});
    types.SetCurrent(type);
    ComboModel groups;
    groups.Fill({{"Bells", 8}});
    groups.SetCurrent(group);
    ListModel people;
    if (somebody)
        people.Fill({{"?5", "Bell, Anna"}, {"?6", "Bell, Ben"}});
    ListModel members;
    members.Fill({{"?5!3", "Bell, Anna", {"Family"}}, {"?6!4", "Bell, Ben", {"Team"}}});
    if (!told.isEmpty())
        m_dialogs->Expect("Grouping Members", told);
    QCOMPARE(Group_AddMembers(types, groups, people, members), told.isEmpty());
    QCOMPARE(Keys(members), somebody ? QStringList({"?5!3", "?6!4", "?6!3"}) : QStringList({"?5!3", "?6!4"}));
}

void TestGroups::SameContactUnderTwoTypes()
{
    const int family = AddType("Family");
    const int team = AddType("Team");
    const int bells = GroupName_Add("Bells", "", family);
    const int anna = Contact_Add(Person("Anna", "Bell"));
    ListModel members;
    members.Fill({{MemberKey(anna, family), "Bell, Anna"}, {MemberKey(anna, team), "Bell, Anna"}});
    for (int rewrite = 0; rewrite < 2; ++rewrite) {
        QVERIFY(Group_Update(bells, members));
        QCOMPARE(Stored(), QStringList({Member(anna, family, bells), Member(anna, team, bells)}));
        QVERIFY(ADO_Contact_ShowGroup(bells, members));
    }
}

void TestGroups::WriteThatFailsHalfWay()
{
    const int family = AddType("Family");
    const int bells = GroupName_Add("Bells", "", family);
    ListModel members;
    members.Fill({{MemberKey(5, family), "a"}, {"?6!no_such_thing", "b"}, {MemberKey(7, family), "c"}});
    gConnection.OpenRecordset("SELECT no_such_thing FROM Groups");
    m_dialogs->Expect(gConnection.Errors().first().source,
                      "A number of errors have been detected, please seek technical support.");
    QVERIFY(!Group_Update(bells, members));
    QCOMPARE(Stored(), QStringList(Member(5, family, bells)));
}

void TestGroups::Relations()
{
    const int family = AddType("Family");
    const int team = AddType("Team");
    const int anna = Contact_Add(Person("Anna", "Bell"));
    const int ben = Contact_Add(Person("Ben", "Young"));
    const int zoe = Contact_Add(Person("Zoe", "Adams"));
    const int bells = GroupName_Add("Bells", "", family);
    const int choir = GroupName_Add("Aria", "", team);
    for (const auto &[who, type, group] : {std::tuple(anna, family, bells),
                                           {ben, family, bells},
                                           {zoe, family, bells},
                                           {anna, team, bells},
                                           {anna, team, choir},
                                           {zoe, family, choir}}) {
        Sql(u"INSERT INTO Groups (ContactRef, LinkRef, GroupRef) VALUES (" % QString::number(who) % u',' %
            QString::number(type) % u',' % QString::number(group) % u')');
    }
    TreeModel tree;
    ADO_Contact_ShowGroup_Tree(anna, tree);
    // The person comes first under each group, then who is in it under the same type.
    QCOMPARE(Lines(tree),
             QStringList({"Type: Team", " Group: Aria", "  Bell, Anna",                                    //
                          "Type: Family", " Group: Bells", "  Bell, Anna", "  Adams, Zoe", "  Young, Ben", //
                          "Type: Team", " Group: Bells", "  Bell, Anna"}));
    QStringList leaves;
    for (const TreeNode *node : tree.Nodes()) {
        if (node->children.empty())
            leaves.append(QString::number(KeyNumber(node->key)));
        else
            QVERIFY2(node->expanded && !node->key.startsWith('?'), qPrintable(node->text));
    }
    QStringList expected;
    for (const int who : {anna, anna, zoe, ben, anna})
        expected.append(QString::number(who));
    QCOMPARE(leaves, expected);

    ADO_Contact_ShowGroup_Tree(4711, tree);
    QVERIFY(tree.IsEmpty());
}

void TestGroups::Deletes()
{
    const int family = AddType("Family");
    const int team = AddType("Team");
    const int bells = GroupName_Add("Bells", "", family);
    const int blue = GroupName_Add("Blue", "", team);
    const int red = GroupName_Add("Red", "", team);
    for (const auto &[type, group] :
         {std::pair(family, bells), {team, bells}, {family, blue}, {team, blue}, {team, red}}) {
        Sql(u"INSERT INTO Groups (ContactRef, LinkRef, GroupRef) VALUES (5," % QString::number(type) % u',' %
            QString::number(group) % u')');
    }
    StatementLog log;
    QVERIFY(Contact_DeleteItem(ContactSection::Groups, red));
    // A type takes its own groups and every membership under it along. A membership of another type in one
    // of those groups stays, and shows nowhere any more.
    QVERIFY(Contact_DeleteItem(ContactSection::GroupTypes, family));
    const QString key = QString::number(family);
    QCOMPARE(log.Statements(), QStringList({"DELETE FROM Groups WHERE GroupRef = " + QString::number(red),
                                            "DELETE FROM GroupNames WHERE GroupRef = " + QString::number(red),
                                            "DELETE FROM Groups WHERE LinkRef = " + key,
                                            "DELETE FROM GroupNames WHERE LinkRef = " + key,
                                            "DELETE FROM LinkNames WHERE LinkRef = " + key}));
    QCOMPARE(Stored(), QStringList({Member(5, team, bells), Member(5, team, blue)}));
    QCOMPARE(Rows("GroupNames"), 1);
    TreeModel tree;
    ADO_Contact_ShowGroup_Tree(5, tree);
    QVERIFY(tree.IsEmpty());
}

QTEST_GUILESS_MAIN(TestGroups)
#include "test_groups.moc"
