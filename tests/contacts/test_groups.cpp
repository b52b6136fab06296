#include "contacts/People.h"
#include "contacts/groups/GroupModule.h"
#include "contacts/groups/GroupODBC.h"
#include "contacts/lists/VocabularyModule.h"
#include "contacts/record/ContactModule.h"
#include "controls/ComboModel.h"
#include "core/session/Progress.h"
#include "support/StatementLog.h"

#include <QTest>

namespace
{
const QString exists = QStringLiteral("Group name already exists in database.");

int AddType(const QString &name)
{
    return Contact_AddItem(ContactSection::GroupTypes, name, {});
}

QString Numbers(std::initializer_list<int> numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts.append(QString::number(number));
    return texts.join(u'|');
}

QStringList Stored()
{
    return TestDatabase::Rows("SELECT ContactRef, LinkRef, GroupRef FROM Groups ORDER BY GroupRef, LinkRef, "
                              "ContactRef");
}

void Put(int contactRef, int linkRef, int groupRef)
{
    Sql(u"INSERT INTO Groups (ContactRef, LinkRef, GroupRef) VALUES (" %
        Numbers({contactRef, linkRef, groupRef}).replace('|', ',') % u')');
}

int Update(int groupRef, ListModel &members)
{
    Progress progress;
    SeenMembers unknown;
    return Group_Update(GroupRef(groupRef), members, unknown, progress);
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

class TestGroups final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m.reset(); }
    void NamesAndMembers();
    void NamesOverAllTypes();
    void TypedName();
    void AddMembers();
    void DeletedMeanwhile();
    void StoppedKeepsTheMembersOfBefore();
    void FailureKeepsTheMembersUpToThere();
    void Relations();
    void DeletedTypeHidesMembershipsOfOtherTypes();

private:
    ListItem Member(int contactRef, int linkRef) const;

    std::unique_ptr<LogicFixture> m;
    int m_family = 0;
    int m_team = 0;
    int m_bells = 0; ///< a family
    int m_anna = 0;
    int m_ben = 0;
};

void TestGroups::init()
{
    m = std::make_unique<LogicFixture>();
    m_family = AddType("Family");
    m_team = AddType("Team");
    m_bells = GroupName_Add("Bells", "", LinkRef(m_family));
    m_anna = Contact_Add(Person("Anna", "Bell"));
    m_ben = Contact_Add(Person("Ben", "Young"));
}

/// A row as the list of members has it.
ListItem TestGroups::Member(int contactRef, int linkRef) const
{
    return {u'?' % QString::number(contactRef) % u'!' % QString::number(linkRef),
            contactRef == m_anna ? "Bell, Anna" : "Young, Ben",
            {linkRef == m_family ? "Family" : "Team"}};
}

/// One person under two types is two members, and a rewrite keeps both.
void TestGroups::NamesAndMembers()
{
    ListModel members;
    members.Fill({Member(m_anna, m_family), Member(m_ben, m_family), Member(m_anna, m_team)});
    const QStringList all{Numbers({m_anna, m_family, m_bells}), Numbers({m_ben, m_family, m_bells}),
                          Numbers({m_anna, m_team, m_bells})};
    QCOMPARE(Update(m_bells, members), m_bells);
    QCOMPARE(Stored(), all);

    // Read back, members are in bold until they are written again.
    ListModel again;
    QVERIFY(ADO_Contact_ShowGroup(GroupRef(m_bells), again));
    QCOMPARE(again.Count(), 3);
    QCOMPARE(again.At(again.Find(Member(m_anna, m_team).key)).subItems, QStringList("Team"));
    QVERIFY(again.At(0).bold && again.At(2).bold);
    QCOMPARE(Update(m_bells, again), m_bells);
    QVERIFY(!again.At(0).bold && !again.At(2).bold);
    QCOMPARE(Stored(), all);
    again.RemoveKey(Member(m_anna, m_family).key);
    QCOMPARE(Update(m_bells, again), m_bells);
    QCOMPARE(Stored(), all.mid(1));

    // No group, nothing written.
    QCOMPARE(Update(0, again), 0);
    QCOMPARE(Stored(), all.mid(1));
}

void TestGroups::NamesOverAllTypes()
{
    m->dialogs.Expect("Add Group Name", exists);
    QCOMPARE(GroupName_Add("BELLS", "", LinkRef(m_team)), 0);
    const int second = GroupName_Add("Bells", "2", LinkRef(m_team));
    QVERIFY(second > m_bells);
    m->dialogs.Expect("Update Group Name", exists);
    QCOMPARE(GroupName_Update(GroupRef(second), "Bells", "", LinkRef(m_team)), 0);
    StatementLog log;
    QCOMPARE(GroupName_Update(GroupRef(second), "Ringer's", "R", LinkRef(m_family)), second);
    // The type stands between apostrophes, as a number does nowhere else.
    QCOMPARE(log.Statements().last(),
             QString(u"UPDATE GroupNames SET Name = 'Ringer''s', ReferenceID = 'R', LinkRef = '" %
                     QString::number(m_family) % u"' WHERE GroupRef = " % QString::number(second)));
    gShowIDs = 1;
    ComboModel names;
    ADO_Contact_FillGroupNames(LinkRef(m_family), names);
    QCOMPARE(names.Count(), 2);
    QCOMPARE(names.Current(), -1);
    QCOMPARE(names.At(1).text, u"[R] Ringer's"_qs);
    for (const QString &name : {QString(255, 'x'), u"100% [of] _them_"_qs, u"\"%1\" \\ ''"_qs}) {
        const int key = GroupName_Add(name, "", LinkRef(m_team));
        ADO_Contact_FillGroupNames(LinkRef(m_team), names);
        QCOMPARE(names.At(names.FindData(key)).text, name);
    }
}

void TestGroups::TypedName()
{
    GroupName_Add("Blue", "", LinkRef(m_team));
    ComboModel names;
    ADO_Contact_FillGroupNames(LinkRef(m_family), names);
    for (const auto &[typed, chosen, count, told] :
         {std::tuple("Ringers", "Ringers", 2, false),
          {"[R1] Tenors", "Tenors", 3, false},
          // Under another reference, which is not shown, and under another type.
          {"bells", "Bells", 3, true},
          {"Blue", "Bells", 3, true}}) {
        if (told)
            m->dialogs.Expect("Add Group Name", exists);
        GroupName_TakeTyped(LinkRef(m_family), names, typed);
        QCOMPARE(names.CurrentText(), QString(chosen));
        QCOMPARE(names.Count(), count);
    }
    m->dialogs.Expect("Grouping Members", "No group type selected.");
    GroupName_TakeTyped(LinkRef(0), names, "Nowhere");
    QCOMPARE(Rows("GroupNames WHERE Name = 'Nowhere'"), 0);
}

void TestGroups::AddMembers()
{
    ComboModel types;
    types.Fill({{"Family", 3}});
    ComboModel groups;
    groups.Fill({{"Bells", 8}});
    ListModel people;
    ListModel members;
    members.Fill({{"?5!3", "Bell, Anna", {"Family"}}, {"?6!4", "Bell, Ben", {"Team"}}});
    const auto refuses = [&](const QString &told) {
        m->dialogs.Expect("Grouping Members", told);
        return !Group_AddMembers(types, groups, people, members);
    };
    QVERIFY(refuses("No group type selected."));
    types.SetCurrent(0);
    QVERIFY(refuses("No group name selected."));
    groups.SetCurrent(0);
    QVERIFY(refuses("No group members selected."));
    people.Fill({{"?5", "Bell, Anna"}, {"?6", "Bell, Ben"}});
    QVERIFY(Group_AddMembers(types, groups, people, members));
    QCOMPARE(Keys(members), QStringList({"?5!3", "?6!4", "?6!3"}));
}

void TestGroups::DeletedMeanwhile()
{
    const QString leftOut = "Another user has deleted these meanwhile, and they are left out:\n    ";
    ListModel members;
    members.Fill({Member(m_anna, m_family), Member(m_ben, m_family), Member(m_ben, m_team)});
    QVERIFY(Contact_DeleteItem(ContactSection::Contacts, m_anna));
    QVERIFY(Contact_DeleteItem(ContactSection::GroupTypes, m_team));
    m->dialogs.Expect("Groupings", leftOut + "Bell, Anna");
    m->dialogs.Expect("Groupings", leftOut + "Team");
    QCOMPARE(Update(m_bells, members), m_bells);
    QCOMPARE(Stored(), QStringList(Numbers({m_ben, m_family, m_bells})));

    const auto gone = [this](const QString &title, const QString &what) {
        m->dialogs.Expect(title, u"Another user has deleted this " % what %
                                     u" meanwhile. Nothing was stored for it.");
    };
    gone("Groupings", "group");
    QVERIFY(Contact_DeleteItem(ContactSection::Groups, m_bells));
    QCOMPARE(Update(m_bells, members), 0);
    gone("Add Group Name", "group type");
    QCOMPARE(GroupName_Add("New", "", LinkRef(m_team)), 0);
    gone("Update Group Name", "group");
    QCOMPARE(GroupName_Update(GroupRef(m_bells), "New", "", LinkRef(m_family)), 0);
    gone("Update Item", "item");
    QCOMPARE(Contact_UpdateItem(ContactSection::GroupTypes, m_team, "New", ""), 0);
    QCOMPARE(Rows("GroupNames") + Rows("Groups"), 0);
}

/// Another workstation sees the members of before or the new ones, and never some of them.
void TestGroups::StoppedKeepsTheMembersOfBefore()
{
    Connection other;
    QVERIFY(other.Open(m->database.ConnectionText()));
    const auto seen = [&other] { return other.OpenRecordset("SELECT ContactRef FROM Groups")->RowCount(); };
    Put(m_anna, m_family, m_bells);
    ListModel members;
    for (int i = 0; i < 30; ++i)
        members.Add(Member(Contact_Add(Person("Member", QString::number(i))), m_family));
    for (const bool stops : {true, false}) {
        Progress *running = nullptr;
        Progress progress(
            [&](int done, int maximum) {
                QCOMPARE(maximum, 30);
                QCOMPARE(seen(), 1);
                QTest::qSleep(done % 10 == 9 ? 100 : 0); // past the quarter of a second of long loops
                if (stops && done == 29)
                    running->Cancel();
            },
            0);
        running = &progress;
        members.SetBold(0, true);
        SeenMembers unknown;
        QCOMPARE(Group_Update(GroupRef(m_bells), members, unknown, progress), stops ? -1 : m_bells);
        QCOMPARE(seen(), stops ? 1 : 30);
        QCOMPARE(members.At(0).bold, stops);
    }
}

/// A statement that fails for good: the group has the members before it, and a retry by hand stores all.
void TestGroups::FailureKeepsTheMembersUpToThere()
{
    Put(m_ben, m_team, m_bells);
    Sql("CREATE UNIQUE INDEX OnceOnly ON Groups (ContactRef)");
    ListModel members;
    members.Fill({Member(m_anna, m_family), Member(m_anna, m_team), Member(m_ben, m_family)});
    m->dialogs.Expect(FailureTitle(), engineFailure);
    QCOMPARE(Update(m_bells, members), -1);
    QCOMPARE(Stored(), QStringList(Numbers({m_anna, m_family, m_bells})));
    Sql("DROP INDEX OnceOnly");
    QCOMPARE(Update(m_bells, members), m_bells);
    QCOMPARE(Stored().size(), 3);
}

void TestGroups::Relations()
{
    const int zoe = Contact_Add(Person("Zoe", "Adams"));
    const int choir = GroupName_Add("Aria", "", LinkRef(m_team));
    for (const int who : {m_anna, m_ben, zoe})
        Put(who, m_family, m_bells);
    Put(m_anna, m_team, m_bells);
    Put(m_anna, m_team, choir);
    Put(zoe, m_family, choir);
    TreeModel tree;
    ADO_Contact_ShowGroup_Tree(ContactRef(m_anna), tree);
    // The person comes first under each group, then who is in it under the same type.
    QCOMPARE(Lines(tree),
             QStringList({"Type: Team", " Group: Aria", "  Bell, Anna",                                    //
                          "Type: Family", " Group: Bells", "  Bell, Anna", "  Adams, Zoe", "  Young, Ben", //
                          "Type: Team", " Group: Bells", "  Bell, Anna"}));
    ADO_Contact_ShowGroup_Tree(ContactRef(4711), tree);
    QVERIFY(tree.IsEmpty());
}

/// A type takes its groups along and every membership under it; one of another type in such a group stays,
/// and shows nowhere any more.
void TestGroups::DeletedTypeHidesMembershipsOfOtherTypes()
{
    const int blue = GroupName_Add("Blue", "", LinkRef(m_team));
    const int red = GroupName_Add("Red", "", LinkRef(m_team));
    for (const auto &[type, group] :
         {std::pair(m_family, m_bells), {m_team, m_bells}, {m_family, blue}, {m_team, blue}, {m_team, red}})
        Put(m_anna, type, group);
    StatementLog log;
    QVERIFY(Contact_DeleteItem(ContactSection::Groups, red));
    QVERIFY(Contact_DeleteItem(ContactSection::GroupTypes, m_family));
    const QString group = QString::number(red);
    const QString type = QString::number(m_family);
    QCOMPARE(log.Statements(), QStringList({"DELETE FROM Groups WHERE GroupRef = " + group,
                                            "DELETE FROM GroupNames WHERE GroupRef = " + group,
                                            "DELETE FROM Groups WHERE LinkRef = " + type,
                                            "DELETE FROM GroupNames WHERE LinkRef = " + type,
                                            "DELETE FROM LinkNames WHERE LinkRef = " + type}));
    QCOMPARE(Stored(), QStringList({Numbers({m_anna, m_team, m_bells}), Numbers({m_anna, m_team, blue})}));
    TreeModel tree;
    ADO_Contact_ShowGroup_Tree(ContactRef(m_anna), tree);
    QCOMPARE(Lines(tree), QStringList({"Type: Team", " Group: Blue", "  Bell, Anna"}));
}

QTEST_GUILESS_MAIN(TestGroups)
#include "test_groups.moc"
