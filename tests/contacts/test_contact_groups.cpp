#include "contacts/ContactForm.h"
#include "contacts/GroupModule.h"
#include "contacts/frmAddContact.h"
#include "contacts/frmGroupName.h"

#include <QTest>

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
    void PutsPeopleIntoAGroup();
    void KeepsTheOpenContact();
    void AsksBeforeAnotherGroup_data();
    void AsksBeforeAnotherGroup();
    void WithoutAGroup();
    void MembersThatFail();
    void NextPersonStartsAnew();
    void OpensPeople();
    void TypesAndGroupsTyped();
    void TypeMarksTheForename();
    void Rights_data();
    void Rights();
    void GroupDialog();
    void GroupDialogOnAGroupThatIsGone();

private:
    std::unique_ptr<frmAddContact> Editing() const;

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
    m_bells = GroupName_Add("Bells", "", m_family);
    m_youngs = GroupName_Add("Youngs", "", m_family);
    Contact_AddItem(ContactSection::GroupTypes, "Team", "");
}

/// Anna's record, free to be changed, with the groups in front.
std::unique_ptr<frmAddContact> TestContactGroups::Editing() const
{
    auto form = std::make_unique<frmAddContact>();
    form->OpenRecords({Key(m_anna), Key(m_ben)});
    Press(*form, "EditBtn");
    auto *tabs = Find<QTabWidget>(*form, "SSActiveTabs1");
    tabs->setCurrentWidget(Find<QWidget>(*form, "Groups"));
    form->show();
    return form;
}

void TestContactGroups::PutsPeopleIntoAGroup()
{
    const auto form = Editing();
    QCOMPARE(Chosen(*form, "LinkList"), u"Family"_qs);
    QCOMPARE(Chosen(*form, "GroupNameList"), QString());
    Choose(*form, "GroupNameList", "Bells");
    QCOMPARE(Texts(List(*form, "GroupList")), QStringList("Bell, Anna"));

    m->driver.Expect("frmSelectContacts", [this](QDialog &picker) {
        ListModel &available = List(picker, "ContactList");
        available.SelectOnly(available.Find(Key(m_ben)));
        Press(picker, "AddCBtn");
        Press(picker, "ExitBtn");
    });
    Press(*form, "SelectBtn");
    QCOMPARE(Texts(List(*form, "GroupList")), QStringList({"Bell, Anna", "Young, Ben"}));
    Press(*form, "MakeLinkBtn");
    Press(*form, "MakeLinkBtn");
    QCOMPARE(Texts(List(*form, "LinkInfo")), QStringList({"Bell, Anna", "Young, Ben"}));
    QCOMPARE(Rows("Groups"), 0);
    Press(*form, "OKBtn");
    QCOMPARE(Rows(Members(m_bells)), 2);
    auto &tree = Find<TreeView>(*form, "GroupTree")->Model();
    QCOMPARE(tree.Nodes().back()->text, u"Young, Ben"_qs);

    Press(*form, "EditBtn");
    List(*form, "LinkInfo").SelectOnly(1);
    Press(*form, "RemBtn");
    Press(*form, "OKBtn");
    QCOMPARE(TestDatabase::Rows("SELECT ContactRef FROM Groups"), QStringList(QString::number(m_anna)));
    // Nothing changed since: the save leaves the group alone.
    TestDatabase::Run({"DELETE FROM Groups"});
    Press(*form, "EditBtn");
    Press(*form, "OKBtn");
    QCOMPARE(Rows("Groups"), 0);
}

void TestContactGroups::KeepsTheOpenContact()
{
    const auto form = Editing();
    ListModel &people = List(*form, "GroupList");
    people.Add({Key(m_ben), "Young, Ben"});
    people.SelectAll();
    Press(*form, "RemGBtn");
    QCOMPARE(Keys(people), QStringList(Key(m_anna)));
    people.Add({Key(m_ben), "Young, Ben"});
    TypeInto(*form, "Surname", "Smith");
    Press(*form, "OKBtn");
    Press(*form, "EditBtn");
    Press(*form, "ClearGBtn");
    QCOMPARE(Texts(people), QStringList("Smith, Anna"));

    // A new person has the place, and none of the roles and groups of the one before.
    Press(*form, "NewBtn");
    QVERIFY(people.IsEmpty());
    TypeName(*form, "Carl", "Moor");
    Press(*form, "OKBtn");
    QCOMPARE(Texts(people), QStringList("Moor, Carl"));
}

void TestContactGroups::AsksBeforeAnotherGroup_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("choice");
    QTest::addColumn<Dialogs::Answer>("answer");
    QTest::addColumn<int>("stored");
    QTest::newRow("group, Yes") << "GroupNameList"
                                << "Youngs" << Dialogs::Answer::Yes << 1;
    QTest::newRow("group, No loses the additions") << "GroupNameList"
                                                   << "Youngs" << Dialogs::Answer::No << 0;
    QTest::newRow("type, Yes") << "LinkList"
                               << "Team" << Dialogs::Answer::Yes << 1;
    QTest::newRow("type, No") << "LinkList"
                              << "Team" << Dialogs::Answer::No << 0;
}

void TestContactGroups::AsksBeforeAnotherGroup()
{
    QFETCH(QString, list);
    QFETCH(QString, choice);
    QFETCH(Dialogs::Answer, answer);
    QFETCH(int, stored);
    const auto form = Editing();
    Choose(*form, "GroupNameList", "Bells");
    Press(*form, "MakeLinkBtn");
    m->dialogs.Expect("Groupings", Question("Bells"), answer);
    Choose(*form, list, choice);
    QVERIFY(List(*form, "LinkInfo").IsEmpty());
    QCOMPARE(Rows(Members(m_bells)), stored);
    // Asked once: neither the next group nor the save comes back to it.
    Choose(*form, "LinkList", "Family");
    Choose(*form, "GroupNameList", "Bells");
    QCOMPARE(List(*form, "LinkInfo").Count(), stored);
    Press(*form, "OKBtn");
    QCOMPARE(Rows("Groups"), stored);
}

void TestContactGroups::WithoutAGroup()
{
    const auto form = Editing();
    m->dialogs.Expect("Grouping Members", "No group name selected.");
    Press(*form, "MakeLinkBtn");
    Press(*form, "OKBtn");
    QCOMPARE(Rows("Groups"), 0);
}

/// The person is stored, the group is not: it stays on the screen, to be saved again.
void TestContactGroups::MembersThatFail()
{
    const auto form = Editing();
    Choose(*form, "GroupNameList", "Bells");
    Press(*form, "MakeLinkBtn");
    Sql("ALTER TABLE Groups RENAME TO Away");
    gConnection.OpenRecordset("SELECT * FROM Groups");
    m->dialogs.Expect(gConnection.Errors().first().source,
                      "A number of errors have been detected, please seek technical support.");
    Press(*form, "OKBtn");
    Sql("ALTER TABLE Away RENAME TO Groups");
    QCOMPARE(Caption(*form, "EditBtn"), u"&View"_qs);
    Press(*form, "OKBtn");
    QCOMPARE(Rows(Members(m_bells)), 1);
}

void TestContactGroups::NextPersonStartsAnew()
{
    const auto form = Editing();
    Choose(*form, "GroupNameList", "Bells");
    Press(*form, "MakeLinkBtn");
    m->dialogs.Expect("Record Changed", "Okay to update record?", Dialogs::Answer::No);
    Press(*form, "NextBtn");
    QCOMPARE(Texts(List(*form, "GroupList")), QStringList("Young, Ben"));
    QCOMPARE(Chosen(*form, "GroupNameList"), QString());
    Press(*form, "EditBtn");
    Press(*form, "OKBtn");
    QCOMPARE(Rows("Groups"), 0);
}

void TestContactGroups::OpensPeople()
{
    for (const int who : {m_anna, m_ben})
        Sql(u"INSERT INTO Groups (ContactRef, LinkRef, GroupRef) VALUES (" % QString::number(who) % u',' %
            QString::number(m_family) % u',' % QString::number(m_bells) % u')');
    const auto form = Editing();
    auto *tree = Find<TreeView>(*form, "GroupTree");
    const auto rename = [](const QString &surname) {
        return [surname](QDialog &record) {
            Press(record, "EditBtn");
            TypeInto(record, "Surname", surname);
            Press(record, "OKBtn");
            Press(record, "ExitBtn");
        };
    };
    tree->Model().Select(tree->Model().Nodes().back());
    m->driver.Expect("frmAddContact", rename("Old"));
    QTest::keyClick(tree, Qt::Key_Return);
    QCOMPARE(tree->Model().Nodes().back()->text, u"Old, Ben"_qs);
    // What is no person opens nothing.
    tree->Model().Select(tree->Model().Nodes().front());
    QTest::keyClick(tree, Qt::Key_Return);

    Choose(*form, "GroupNameList", "Bells");
    ListModel &members = List(*form, "LinkInfo");
    members.SelectOnly(members.Find(Key(m_ben) % u'!' % QString::number(m_family)));
    m->driver.Expect("frmAddContact", rename("Older"));
    Press(*form, "ViewBtn");
    QVERIFY(Texts(members).contains("Older, Ben"));
}

void TestContactGroups::TypesAndGroupsTyped()
{
    const auto form = Editing();
    auto *types = Find<TypedCombo>(*form, "LinkList");
    TypeInto(*form, "LinkList", "Choir");
    QTest::keyClick(types, Qt::Key_Return);
    QCOMPARE(Chosen(*form, "LinkList"), u"Choir"_qs);
    TypeInto(*form, "GroupNameList", "Altos");
    Press(*form, "MakeLinkBtn");
    Press(*form, "OKBtn");
    QCOMPARE(
        TestDatabase::Rows("SELECT LinkNames.LinkName, GroupNames.Name FROM (Groups INNER JOIN GroupNames ON "
                           "Groups.GroupRef = GroupNames.GroupRef) INNER JOIN LinkNames ON "
                           "GroupNames.LinkRef = LinkNames.LinkRef"),
        QStringList("Choir|Altos"));

    // What another workstation added shows after a refresh, and the choice stays.
    GroupName_Add("Bass", "", types->Model().CurrentData());
    Press(*form, "RefBtn");
    QCOMPARE(Chosen(*form, "LinkList"), u"Choir"_qs);
    QCOMPARE(Chosen(*form, "GroupNameList"), u"Altos"_qs);
    QCOMPARE(Find<ComboBox>(*form, "GroupNameList")->Model().Count(), 2);
    QCOMPARE(List(*form, "LinkInfo").Count(), 1);
}

void TestContactGroups::TypeMarksTheForename()
{
    const auto form = Editing();
    auto *forename = Find<CaptionLabel>(*form, "Label_1");
    QVERIFY(!forename->IsMissing());
    // Emptying the type of a group marks the forename, which stands there, until that is changed itself.
    TypeInto(*form, "LinkList", "");
    QVERIFY(forename->IsMissing());
    m->dialogs.Expect("Form not complete", "The followings fields must be completed:\n    Forename\n");
    Press(*form, "OKBtn");
    TypeInto(*form, "Forname", "Anne");
    Press(*form, "OKBtn");
    QCOMPARE(Stored(m_anna).forename, u"Anne"_qs);
}

void TestContactGroups::Rights_data()
{
    QTest::addColumn<int>("right");
    QTest::addColumn<QString>("list");
    QTest::newRow("group types") << 34 << "LinkList";
    QTest::newRow("groups") << 33 << "GroupNameList";
}

void TestContactGroups::Rights()
{
    QFETCH(int, right);
    QFETCH(QString, list);
    for (const int level : {2, 3}) {
        gUserRights[right] = QChar(u'0' + level);
        QCOMPARE(Find<TypedCombo>(*Editing(), list)->isEditable(), level == 3);
    }
    frmAddContact looking;
    looking.OpenRecords({Key(m_anna)});
    for (const char *field : {"LinkList", "GroupNameList", "SelectBtn", "ClearGBtn", "MakeLinkBtn"})
        QVERIFY2(!Find<QWidget>(looking, field)->isEnabled(), field);
    QVERIFY(Find<QWidget>(looking, "RefBtn")->isEnabled());
}

void TestContactGroups::GroupDialog()
{
    {
        frmGroupName form;
        form.show();
        Find<ComboBox>(form, "LinkList")->Model().SetCurrent(-1);
        m->dialogs.Expect("Form not complete",
                          "The followings fields must be completed:\n    Group Type\n    Group Name\n");
        Press(form, "AddBtn");
        Choose(form, "LinkList", "Team");
        TypeInto(form, "GroupName", "Bells");
        m->dialogs.Expect("Add Group Name", "Group name already exists in database.");
        Press(form, "AddBtn");
        TypeInto(form, "RefName", "2");
        Press(form, "AddBtn");
        QVERIFY(!form.isVisible());
        QVERIFY(gDialogResult > m_youngs);
        QCOMPARE(form.Item().name, u"Bells"_qs);
        QCOMPARE(form.Item().reference, u"2"_qs);
    }
    frmGroupName form;
    form.EditItem(m_bells);
    form.show();
    QCOMPARE(Caption(form, "AddBtn"), u"&Update"_qs);
    QCOMPARE(Chosen(form, "LinkList"), u"Family"_qs);
    TypeInto(form, "LinkList", "Choir");
    TypeInto(form, "GroupName", "Ringers");
    m->dialogs.Expect("Warning", "Some of the data has changed.\nOkay to update before exiting?",
                      Dialogs::Answer::Yes);
    Press(form, "CanBtn");
    QCOMPARE(gDialogResult, m_bells);
    QCOMPARE(TestDatabase::Rows(
                 "SELECT GroupNames.Name FROM GroupNames INNER JOIN LinkNames ON GroupNames.LinkRef "
                 "= LinkNames.LinkRef WHERE LinkNames.LinkName = 'Choir'"),
             QStringList("Ringers"));
}

void TestContactGroups::GroupDialogOnAGroupThatIsGone()
{
    frmGroupName form;
    form.EditItem(4711);
    form.show();
    QVERIFY(!Find<QPushButton>(form, "AddBtn")->isEnabled());
    QCOMPARE(Find<QLabel>(form, "Warn")->text(), u"This group is no more."_qs);
    Press(form, "CanBtn");
    QVERIFY(!form.isVisible());
}

QTEST_MAIN(TestContactGroups)
#include "test_contact_groups.moc"
