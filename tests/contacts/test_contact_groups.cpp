#include "contacts/ContactForm.h"
#include "contacts/groups/GroupModule.h"
#include "contacts/groups/frmGroupName.h"
#include "contacts/record/ContactModule.h"
#include "core/session/Progress.h"
#include "support/Keyboard.h"
#include "support/RightsTable.h"
#include "support/StatementLog.h"

#include <QTest>
#include <QThread>

namespace
{
QString Question(const QString &group)
{
    return u"Okay to update relationships for group '" % group % u"' ?";
}

QString Members(int groupRef)
{
    return u"Groups WHERE GroupRef = " % QString::number(groupRef);
}
} // namespace

class TestContactGroups final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m.reset(); }
    void GroupOfTwoTypesAndThreePeopleByKeys();
    void RemovesMembers();
    void OpenContactStandsFirst();
    void AsksBeforeAnotherGroup();
    void TypeWithoutGroupsLeavesTheMembersInView();
    void UnstoredMembersStayOnTheScreen();
    void GroupDeletedMeanwhile();
    void MembersChangedMeanwhile();
    void OpensPeople();
    void EmptiedGroupTypeMarksTheForename();
    void Rights();
    void GroupDialog();

private:
    std::unique_ptr<frmAddContact> Editing() const { return EditingOn("Groups", {Key(m_anna), Key(m_ben)}); }
    /// Anna in her record, with Bells chosen, and put among its members.
    std::unique_ptr<frmAddContact> EditingWithNewMember() const;

    std::unique_ptr<ContactFixture> m;
    int m_anna = 0;
    int m_ben = 0;
    int m_family = 0;
    int m_bells = 0;
    int m_youngs = 0;
};

void TestContactGroups::init()
{
    m = std::make_unique<ContactFixture>();
    m_anna = Contact_Add(Person("Anna", "Bell"));
    m_ben = Contact_Add(Person("Ben", "Young"));
    m_family = Contact_AddItem(ContactSection::GroupTypes, "Family", "");
    m_bells = GroupName_Add("Bells", "", LinkRef(m_family));
    m_youngs = GroupName_Add("Youngs", "", LinkRef(m_family));
    Contact_AddItem(ContactSection::GroupTypes, "Team", "");
}

std::unique_ptr<frmAddContact> TestContactGroups::EditingWithNewMember() const
{
    auto form = Editing();
    Choose(*form, "GroupNameList", "Bells");
    Press(*form, "MakeLinkBtn");
    return form;
}

/// Without a mouse: a new type and a new group with two people, the group moved to another type, and a third
/// person added under that.
void TestContactGroups::GroupOfTwoTypesAndThreePeopleByKeys()
{
    Contact_Add(Person("Carl", "Moor"));
    const auto addTo = [&](int contactRef, const QString &type, const QString &group, const QString &who) {
        frmAddContact form;
        form.OpenRecords({Key(contactRef)});
        const Keyboard keys(form);
        keys.Alt(Qt::Key_E);
        for (int tab = 0; tab < 4; ++tab)
            keys.Press(Qt::Key_Tab, Qt::ControlModifier);
        for (const auto &[list, text] : {std::pair("LinkList", type), {"GroupNameList", group}}) {
            keys.TabTo(list);
            keys.Press(Qt::Key_A, Qt::ControlModifier);
            keys.Type(text);
            keys.Press(Qt::Key_Tab);
        }
        m->driver.Expect("frmSelectContacts", [who](QDialog &dialog) {
            const Keyboard picker(dialog);
            picker.TypeAt("SearchBox", who);
            picker.Press(Qt::Key_Return);
            picker.Alt(Qt::Key_X);
        });
        for (const char *button : {"SelectBtn", "MakeLinkBtn"}) {
            keys.TabTo(button);
            keys.Press(Qt::Key_Space);
        }
        keys.Alt(Qt::Key_U);
        keys.Press(Qt::Key_Escape);
    };
    addTo(m_anna, "Choir", "Altos", "young");
    frmGroupName dialog;
    dialog.EditItem(TestDatabase::Value("SELECT GroupRef FROM GroupNames WHERE Name = 'Altos'").toInt());
    const Keyboard inner(dialog);
    inner.TabTo("LinkList");
    inner.Press(Qt::Key_A, Qt::ControlModifier);
    inner.Type("Team");
    inner.Alt(Qt::Key_U);
    QVERIFY(!dialog.isVisible());
    addTo(m_ben, "Team", "Altos", "moor");
    QCOMPARE(TestDatabase::Rows("SELECT LinkNames.LinkName, Contacts.Cust_Surname FROM (Groups INNER JOIN "
                                "LinkNames ON Groups.LinkRef = LinkNames.LinkRef) INNER JOIN Contacts ON "
                                "Groups.ContactRef = Contacts.ContactRef ORDER BY LinkName, Cust_Surname"),
             QStringList({"Choir|Bell", "Choir|Young", "Team|Moor", "Team|Young"}));
}

void TestContactGroups::RemovesMembers()
{
    const auto form = EditingWithNewMember();
    Press(*form, "MakeLinkBtn");
    QCOMPARE(Texts(List(*form, "LinkInfo")), QStringList("Bell, Anna"));
    QCOMPARE(Rows("Groups"), 0);
    Press(*form, "OKBtn");
    QCOMPARE(Rows(Members(m_bells)), 1);
    Press(*form, "EditBtn");
    List(*form, "LinkInfo").SelectOnly(0);
    Press(*form, "RemBtn");
    Press(*form, "OKBtn");
    QCOMPARE(Rows("Groups"), 0);
    // Nothing changed since: the save leaves the group alone.
    StatementLog log;
    Press(*form, "EditBtn");
    Press(*form, "OKBtn");
    QVERIFY(log.Statements().filter("DELETE FROM Groups").isEmpty());
}

void TestContactGroups::OpenContactStandsFirst()
{
    const auto form = Editing();
    ListModel &people = List(*form, "GroupList");
    people.Add({Key(m_ben), "Young, Ben"});
    people.SelectAll();
    Press(*form, "RemGBtn");
    QCOMPARE(Keys(people), QStringList(Key(m_anna)));
    TypeInto(*form, "Surname", "Smith");
    Press(*form, "OKBtn");
    Press(*form, "EditBtn");
    Press(*form, "ClearGBtn");
    QCOMPARE(Texts(people), QStringList("Smith, Anna"));
    // The next person takes the place: the group stays, without what was not stored. A new one starts empty.
    Choose(*form, "GroupNameList", "Bells");
    Press(*form, "MakeLinkBtn");
    m->dialogs.Expect("Record Changed", "Okay to update record?", Dialogs::Answer::No);
    Press(*form, "NextBtn");
    QCOMPARE(Texts(people), QStringList("Young, Ben"));
    QCOMPARE(Chosen(*form, "GroupNameList"), u"Bells"_qs);
    QVERIFY(List(*form, "LinkInfo").IsEmpty());
    Press(*form, "NewBtn");
    QCOMPARE(Chosen(*form, "GroupNameList"), QString());
    QVERIFY(people.IsEmpty());
    TypeName(*form, "Carl", "Moor");
    Press(*form, "OKBtn");
    QCOMPARE(Texts(people), QStringList("Moor, Carl"));
    QCOMPARE(Rows("Groups"), 0);
}

/// Asked once: neither the next group nor the save comes back to it. No loses the additions.
void TestContactGroups::AsksBeforeAnotherGroup()
{
    for (const auto &[list, choice] : {std::pair("GroupNameList", "Youngs"), {"LinkList", "Team"}}) {
        for (const auto &[answer, stored] : {std::pair(Dialogs::Answer::No, 0), {Dialogs::Answer::Yes, 1}}) {
            Sql("DELETE FROM Groups");
            const auto form = EditingWithNewMember();
            m->dialogs.Expect("Groupings", Question("Bells"), answer);
            Choose(*form, list, choice);
            QCOMPARE(Rows(Members(m_bells)), stored);
            Choose(*form, "LinkList", "Family");
            Choose(*form, "GroupNameList", "Bells");
            QCOMPARE(List(*form, "LinkInfo").Count(), stored);
            Press(*form, "OKBtn");
            QCOMPARE(Rows("Groups"), stored);
        }
    }
}

/// They belong to no group any more: neither can more be added, nor does a save write them.
void TestContactGroups::TypeWithoutGroupsLeavesTheMembersInView()
{
    const auto form = EditingWithNewMember();
    m->dialogs.Expect("Groupings", Question("Bells"), Dialogs::Answer::No);
    Choose(*form, "LinkList", "Team");
    QCOMPARE(Chosen(*form, "GroupNameList"), QString());
    QCOMPARE(List(*form, "LinkInfo").Count(), 1);
    m->dialogs.Expect("Grouping Members", "No group name selected.");
    Press(*form, "MakeLinkBtn");
    Press(*form, "OKBtn");
    QCOMPARE(Rows("Groups"), 0);
    Press(*form, "EditBtn");
    Choose(*form, "LinkList", "Family");
    QVERIFY(List(*form, "LinkInfo").IsEmpty());
}

/// Stopped by the user, or a statement failed: the group can be saved again.
void TestContactGroups::UnstoredMembersStayOnTheScreen()
{
    const auto form = Editing();
    List(*form, "GroupList").Add({Key(m_ben), "Young, Ben"});
    Choose(*form, "GroupNameList", "Bells");
    Press(*form, "MakeLinkBtn");
    Sql("ALTER TABLE Groups RENAME TO Away");
    m->dialogs.Expect(FailureTitle(), engineFailure);
    Press(*form, "OKBtn");
    Sql("ALTER TABLE Away RENAME TO Groups");
    QCOMPARE(Caption(*form, "EditBtn"), u"&View"_qs);

    Dialogs::Installed().serveEvents = [] { QApplication::processEvents(); };
    gConnection.ObserveStatements([](const QString &sql) { QThread::msleep(sql.startsWith('I') ? 400 : 0); });
    m->driver.Expect("ProgressBox", [](QDialog &box) { Press(box, "CancelBtn"); });
    m->dialogs.Expect("Update Contact", "Stopped. Nothing on this screen was stored.");
    Press(*form, "OKBtn");
    gConnection.ObserveStatements({});
    QCOMPARE(Rows("Groups"), 0);
    QCOMPARE(Caption(*form, "EditBtn"), u"&View"_qs);
    Press(*form, "OKBtn");
    QCOMPARE(Rows(Members(m_bells)), 2);
}

/// Told when it is chosen, and when its members are to be stored; the rest of the person is stored.
void TestContactGroups::GroupDeletedMeanwhile()
{
    const QString told = "Another user has deleted this group meanwhile. Nothing was stored for it.";
    const auto form = EditingWithNewMember();
    Contact_DeleteItem(ContactSection::Groups, m_bells);
    TypeInto(*form, "Surname", "Smith");
    m->dialogs.Expect("Groupings", told);
    Press(*form, "OKBtn");
    QCOMPARE(Stored(m_anna).surname, u"Smith"_qs);
    QCOMPARE(Rows("Groups"), 0);
    const ComboModel &names = Find<ComboBox>(*form, "GroupNameList")->Model();
    QCOMPARE(names.Count(), 1);
    Contact_DeleteItem(ContactSection::Groups, m_youngs);
    Press(*form, "EditBtn");
    m->dialogs.Expect("Groupings", told);
    Choose(*form, "GroupNameList", "Youngs");
    QCOMPARE(names.Count(), 0);
    // What another workstation added shows after a refresh.
    GroupName_Add("Zander", "", LinkRef(m_family));
    Press(*form, "RefBtn");
    QCOMPARE(Chosen(*form, "LinkList"), u"Family"_qs);
    QCOMPARE(names.Count(), 1);

    frmGroupName dialog;
    dialog.EditItem(m_bells);
    dialog.show();
    QVERIFY(!Find<QPushButton>(dialog, "AddBtn")->isEnabled());
    QCOMPARE(Find<QLabel>(dialog, "Warn")->text(),
             u"The group No. " % SqlNumber(m_bells) %
                 u" cannot be read, and nothing can be stored here. Another user may have deleted it.");
    Press(dialog, "CanBtn");
    QVERIFY(!dialog.isVisible());
}

/// Whom another workstation put into the group stays in it, and whom it took out stays out.
void TestContactGroups::MembersChangedMeanwhile()
{
    const auto put = [this](int contactRef) {
        Sql(u"INSERT INTO Groups (ContactRef, LinkRef, GroupRef) VALUES (" % SqlNumber(contactRef) % u',' %
            SqlNumber(m_family) % u',' % SqlNumber(m_bells) % u')');
    };
    const int carl = Contact_Add(Person("Carl", "Moor"));
    put(carl);
    const auto form = EditingWithNewMember();
    Sql("DELETE FROM Groups");
    put(m_ben);
    m->dialogs.Expect("Groupings",
                      "Another user has added these to the group 'Bells' meanwhile, and they stay in it:\n"
                      "    Young, Ben");
    m->dialogs.Expect("Groupings",
                      "Another user has removed these from the group 'Bells' meanwhile:\n    Moor, Carl");
    Press(*form, "OKBtn");
    QCOMPARE(TestDatabase::Rows("SELECT ContactRef FROM Groups ORDER BY ContactRef"),
             QStringList({SqlNumber(m_anna), SqlNumber(m_ben)}));
    QCOMPARE(Texts(List(*form, "LinkInfo")), QStringList({"Bell, Anna", "Young, Ben"}));

    // What is written once is what the next change sets out from.
    Press(*form, "EditBtn");
    List(*form, "LinkInfo").SelectOnly(0);
    Press(*form, "RemBtn");
    Press(*form, "OKBtn");
    QCOMPARE(Rows("Groups"), 1);
}

/// From the tree and from the list of members; the new name shows in both.
void TestContactGroups::OpensPeople()
{
    ListModel both;
    for (const int who : {m_anna, m_ben})
        both.Add({Key(who) % u'!' % QString::number(m_family), "somebody"});
    Progress progress;
    SeenMembers unknown;
    Group_Update(GroupRef(m_bells), both, unknown, progress);
    const auto form = Editing();
    Choose(*form, "GroupNameList", "Bells");
    ListModel &members = List(*form, "LinkInfo");
    auto *tree = Find<TreeView>(*form, "GroupTree");
    const auto renames = [&](const QString &surname, const std::function<void()> &open) {
        m->driver.Expect("frmAddContact", [surname](QDialog &record) {
            Press(record, "EditBtn");
            TypeInto(record, "Surname", surname);
            Press(record, "OKBtn");
            Press(record, "ExitBtn");
        });
        open();
        const QString name = surname % ", Ben";
        return tree->Model().Nodes().back()->text == name && Texts(members).contains(name);
    };
    const auto enter = [tree] { QTest::keyClick(tree, Qt::Key_Return); };
    tree->Model().Select(tree->Model().Nodes().front());
    enter(); // what is no person opens nothing
    tree->Model().Select(tree->Model().Nodes().back());
    QVERIFY(renames("Old", enter));
    members.SelectOnly(members.Find(both.At(1).key));
    QVERIFY(renames("Older", [&form] { Press(*form, "ViewBtn"); }));
}

/// Though the forename is there, until it is changed itself.
void TestContactGroups::EmptiedGroupTypeMarksTheForename()
{
    const auto form = Editing();
    auto *forename = Find<CaptionLabel>(*form, "Label_1");
    QVERIFY(!forename->IsMissing());
    TypeInto(*form, "LinkList", "");
    QVERIFY(forename->IsMissing());
    m->dialogs.Expect("Form not complete", "The followings fields must be completed:\n    Forename\n");
    Press(*form, "OKBtn");
    TypeInto(*form, "Forname", "Anne");
    Press(*form, "OKBtn");
    QCOMPARE(Stored(m_anna).forename, u"Anne"_qs);
}

void TestContactGroups::Rights()
{
    for (const auto &[right, list] : {std::pair(34, "LinkList"), {33, "GroupNameList"}}) {
        for (const int level : {2, 3}) {
            gUserRights = RightsWith(right, level);
            QCOMPARE(Find<TypedCombo>(*Editing(), list)->isEditable(), level == 3);
        }
    }
    frmAddContact looking;
    looking.OpenRecords({Key(m_anna)});
    for (const char *field : {"SelectBtn", "ClearGBtn", "MakeLinkBtn"})
        QVERIFY2(!Find<QWidget>(looking, field)->isEnabled(), field);
    // Another group may be looked at, but not typed.
    for (const char *list : {"LinkList", "GroupNameList"}) {
        QVERIFY2(Find<QWidget>(looking, list)->isEnabled(), list);
        QVERIFY2(Find<TypedCombo>(looking, list)->lineEdit()->isReadOnly(), list);
    }
    QVERIFY(Find<QWidget>(looking, "RefBtn")->isEnabled());
}

void TestContactGroups::GroupDialog()
{
    frmGroupName adding;
    adding.show();
    Find<ComboBox>(adding, "LinkList")->Model().SetCurrent(-1);
    m->dialogs.Expect("Form not complete",
                      "The followings fields must be completed:\n    Group Type\n    Group Name\n");
    Press(adding, "AddBtn");
    Choose(adding, "LinkList", "Team");
    TypeInto(adding, "GroupName", "Bells");
    m->dialogs.Expect("Add Group Name", "Group name already exists in database.");
    Press(adding, "AddBtn");
    TypeInto(adding, "RefName", "2");
    Press(adding, "AddBtn");
    QVERIFY(!adding.isVisible() && gDialogResult > m_youngs);

    frmGroupName form;
    form.EditItem(m_bells);
    form.show();
    QCOMPARE(Chosen(form, "LinkList"), u"Family"_qs);
    TypeInto(form, "GroupName", "Ringers");
    m->dialogs.Expect("Warning", "Some of the data has changed.\nOkay to update before exiting?",
                      Dialogs::Answer::Yes);
    Press(form, "CanBtn");
    QCOMPARE(gDialogResult, m_bells);
    QCOMPARE(Rows("GroupNames WHERE Name = 'Ringers'"), 1);
}

QTEST_MAIN(TestContactGroups)
#include "test_contact_groups.moc"
