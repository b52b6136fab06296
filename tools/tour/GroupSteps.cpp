#include "tour/Keyboard.h"
#include "tour/TourPlan.h"

namespace
{
const QString manager = QStringLiteral("frmContact");
const QString record = QStringLiteral("frmAddContact");
const QString people = QStringLiteral("ContactList2");
const QString linkInfo = QStringLiteral("LinkInfo");

void OpenContactManager(Keyboard &keys)
{
    keys.Command(QStringLiteral("C"), 0, QStringLiteral("C"));
}

/// In the record of the first of the three: picks the others and adds all of them to the group.
void AddMembers(Keyboard &keys, TourPlan &plan, const QString &type)
{
    keys.On(record, u"group type " % type, [&keys, type] {
        keys.Press(QStringLiteral("EditBtn"));
        keys.OpenTab(QStringLiteral("Groups"));
        keys.Choose(QStringLiteral("LinkList"), type);
        keys.Choose(QStringLiteral("GroupNameList"), QStringLiteral("Hill Street"));
        keys.Press(QStringLiteral("SelectBtn"));
    });
    keys.On(QStringLiteral("frmSelectContacts"), QStringLiteral("two more"), [&keys, &plan] {
        keys.Expect(keys.Focus() == u"SearchBox", u"the picker starts at " % keys.Focus());
        for (const QString &member : plan.members.mid(1)) {
            keys.Write(member);
            keys.Tap(QStringLiteral("Return"));
        }
        keys.Expect(keys.Rows(QStringLiteral("SelectedList")).size() == 2,
                    QStringLiteral("the two are not selected"));
    });
    keys.See(QStringLiteral("frmSelectContacts"), u"members for " % type,
             [&keys] { keys.Press(QStringLiteral("ExitBtn")); });
    keys.On(record, u"members under " % type, [&keys, &plan, type] {
        keys.Expect(keys.Rows(QStringLiteral("GroupList")).size() == 3,
                    QStringLiteral("the three are not about to be added"));
        keys.Press(QStringLiteral("MakeLinkBtn"));
        for (const QString &member : plan.members)
            keys.ExpectRow(linkInfo, member % u" | " % type);
    });
    keys.See(record, u"group under " % type, [&keys] { keys.Press(QStringLiteral("OKBtn")); });
    keys.On(record, u"group of " % type % u" stored", [&keys, &plan, type] {
        const QStringList tree = keys.Rows(QStringLiteral("GroupTree"));
        const auto from = tree.indexOf(u"Type: " % type);
        keys.Expect(from >= 0 && tree.mid(from + 1, 2) == QStringList{QStringLiteral("  Group: Hill Street"),
                                                                      u"    " % plan.members.at(0)},
                    u"the relations read\n  " % tree.join(u"\n  "));
        for (const QString &member : plan.members)
            keys.Expect(tree.contains(u"    " % member), member % u" is not among the relations");
    });
}
} // namespace

void AddGroup(Keyboard &keys, TourPlan &plan)
{
    OpenContactManager(keys);
    keys.On(manager, QStringLiteral("three people"), [&keys, &plan] {
        plan.members = keys.Rows(people).mid(4, 3);
        keys.Press(QStringLiteral("ClearCBtn"));
        keys.Expect(keys.Rows(QStringLiteral("ContactInfo")).isEmpty(),
                    QStringLiteral("the selection was not cleared"));
        keys.Go(people);
        keys.ToRow(plan.members.at(0));
        keys.AddRow(plan.members.at(1));
        keys.AddRow(plan.members.at(2));
        keys.Press(QStringLiteral("AddCBtn"));
        keys.Expect(keys.Rows(QStringLiteral("ContactInfo")).size() == 3,
                    QStringLiteral("the three are not selected"));
    });
    keys.See(manager, QStringLiteral("three people selected"),
             [&keys] { keys.Press(QStringLiteral("ViewBtn")); });
    keys.See(record, QStringLiteral("first of three"), [&keys, &plan] {
        keys.Expect(keys.Title() == plan.members.at(0) % u" (RECORD 1 OF 3)",
                    u"the record is titled " % keys.Title());
    });
    AddMembers(keys, plan, QStringLiteral("Family"));
}

void AddSecondGroupType(Keyboard &keys, TourPlan &plan)
{
    keys.Command(QStringLiteral("C"), 0, QStringLiteral("M"));
    keys.On(QStringLiteral("frmContactMain"), QStringLiteral("the group again"), [&keys] {
        keys.ToRow(QStringLiteral("Groups"));
        keys.Go(QStringLiteral("MainList"));
        keys.ToRow(QStringLiteral("Hill Street"));
        keys.Tap(QStringLiteral("Return"));
    });
    keys.On(QStringLiteral("frmGroupName"), QStringLiteral("its second type"), [&keys] {
        keys.Choose(QStringLiteral("LinkList"), QStringLiteral("Car sharing"));
        keys.Press(QStringLiteral("AddBtn"));
    });
    keys.On(QStringLiteral("frmContactMain"), QStringLiteral("leave the lists"),
            [&keys] { keys.Tap(QStringLiteral("Escape")); });
    OpenContactManager(keys);
    keys.On(manager, QStringLiteral("the three again"), [&keys] { keys.Press(QStringLiteral("ViewBtn")); });
    AddMembers(keys, plan, QStringLiteral("Car sharing"));
    keys.On(record, QStringLiteral("both types"), [&keys, &plan] {
        keys.Expect(keys.Rows(linkInfo).size() == 6,
                    u"the group holds " % QString::number(keys.Rows(linkInfo).size()) % u" rows");
        keys.Expect(keys.Rows(QStringLiteral("GroupTree")).size() == 10,
                    QStringLiteral("the relations are not those of two types"));
        keys.Press(QStringLiteral("NextBtn"));
        keys.Expect(keys.Title() == plan.members.at(1) % u" (RECORD 2 OF 3)",
                    u"the next record is titled " % keys.Title());
    });
    keys.See(record, QStringLiteral("relations of the next member"),
             [&keys] { keys.Tap(QStringLiteral("Escape")); });
}
