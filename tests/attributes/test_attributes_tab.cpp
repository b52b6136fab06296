#include "attributes/Attributes.h"
#include "contacts/ConcessionODBC.h"
#include "contacts/ContactForm.h"
#include "contacts/Keyboard.h"
#include "contacts/frmAddContact.h"
#include "contacts/frmSearchContact.h"

#include <QTest>

namespace
{
TreeModel &Tree(QWidget &form)
{
    return Find<TreeView>(form, "AttribList")->Model();
}

void OpenTab(QWidget &form)
{
    Find<QTabWidget>(form, "SSActiveTabs1")->setCurrentWidget(Find<QWidget>(form, "CustomAttributes"));
}

/// A click on the tick of a node.
void Click(QWidget &form, const QString &text)
{
    auto *list = Find<TreeView>(form, "AttribList");
    const QRect row = list->visualRect(Tree(form).IndexOf(NodeOf(Tree(form), text)));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(row.left() + 6, row.center().y()));
}

QStringList Ticked(const QStringList &seen)
{
    return seen.filter("x ");
}
} // namespace

/// The attributes on the screens of people.
class TestAttributesTab final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void ANewPerson();
    void FromPersonToPerson();
    void OrganisationCharacteristicsKeepThem();
    void ChangedByAnotherWorkstation();
    void UnreadableIsLocked();
    void PeopleAreFoundByThem();

private:
    std::unique_ptr<ContactFixture> m;
};

void TestAttributesTab::ANewPerson()
{
    const SiteAttributes site;
    frmAddContact form;
    const Keyboard keys(form);
    TypeName(form, "Anna", "Bell");
    Press(form, "OKBtn");
    OpenTab(form);
    Click(form, "Vegan"); // a record that is looked at does not change
    QCOMPARE(Ticked(Seen(Tree(form))), QStringList());
    QVERIFY(!Find<QPushButton>(form, "ClearAttribBtn")->isEnabled());
    Press(form, "EditBtn");
    keys.TabTo("AttribList");
    keys.Press(Qt::Key_Home);
    // The first value of the first attribute, and then the next: the attribute takes one.
    for (int value = 0; value < 2; ++value) {
        keys.Press(Qt::Key_Down);
        keys.Press(Qt::Key_Space);
    }
    Click(form, "Halal");
    Click(form, "Vegan");
    keys.Alt(Qt::Key_U);
    form.reject();
    QCOMPARE(SeenOf(gDialogResult),
             QStringList({"one of Colour", "o Blue", "x Red", "any of Diet", "x Halal", "x Vegan"}));
}

void TestAttributesTab::FromPersonToPerson()
{
    const SiteAttributes site;
    const int anna = Contact_Add(Person("Anna", "Bell"));
    const int ben = Contact_Add(Person("Ben", "Carter"));
    Give(anna, {"Red", "Vegan"});
    frmAddContact form;
    form.show();
    form.OpenRecords({Key(anna), Key(ben)});
    Press(form, "NextBtn");
    QCOMPARE(Ticked(Seen(Tree(form))), QStringList());
    OpenTab(form);
    Press(form, "EditBtn");
    Click(form, "Blue");
    m->dialogs.Expect("Record Changed", "Okay to update record?", Dialogs::Answer::Yes);
    Press(form, "PrevBtn");
    QCOMPARE(Ticked(SeenOf(ben)), QStringList("x Blue"));
    QCOMPARE(Ticked(Seen(Tree(form))), QStringList({"x Red", "x Vegan"}));

    Press(form, "EditBtn");
    Press(form, "ClearAttribBtn");
    m->dialogs.Expect("Record Changed", "Okay to update record?", Dialogs::Answer::No);
    Press(form, "NextBtn");
    QCOMPARE(Ticked(SeenOf(anna)), QStringList({"x Red", "x Vegan"}));
    Press(form, "NewBtn");
    QCOMPARE(Ticked(Seen(Tree(form))), QStringList());
}

/// Yes shows the person anew, ticks and all.
void TestAttributesTab::OrganisationCharacteristicsKeepThem()
{
    const SiteAttributes site;
    const int member = Concession_Add("Member", 10, 0, "");
    ContactRecord record = Person("Anna", "Bell");
    record.organRef = Contact_AddItem(ContactSection::Organisations, "Acme", "");
    Sql(u"INSERT INTO OrganChars (OrganRef,ConcessionRef) VALUES (" % SqlNumber(record.organRef) % u',' %
        SqlNumber(member) % u')');
    const int anna = Contact_Add(record);
    Give(anna, {"Red"});
    frmAddContact form;
    form.show();
    form.OpenRecords({Key(anna)});
    Press(form, "EditBtn");
    OpenTab(form);
    Click(form, "Blue");
    m->dialogs.Expect("Organisation Characteristics",
                      "Would you like to apply the Organisation Characteristics to this Contact?",
                      Dialogs::Answer::Yes);
    Press(form, "OKBtn");
    QCOMPARE(Ticked(SeenOf(anna)), QStringList("x Blue"));
    QCOMPARE(Ticked(Seen(Tree(form))), QStringList("x Blue"));
    QCOMPARE(List(form, "UsedCriteria").Count(), 1);
}

/// An attribute becomes single select, and one is deleted, while a person who has both is edited.
void TestAttributesTab::ChangedByAnotherWorkstation()
{
    const SiteAttributes site;
    const int anna = Contact_Add(Person("Anna", "Bell"));
    Give(anna, {"Halal", "Vegan"});
    frmAddContact form;
    form.show();
    form.OpenRecords({Key(anna)});
    OpenTab(form);
    CustomAttrib_UpdateAttrib(site.diet, {"Diet", AttribType::Single});
    ADO_CustomAttrib_DelAttrib(site.colour);
    Press(form, "EditBtn");
    Click(form, "Red");
    Press(form, "OKBtn");
    Press(form, "MainRefBtn");
    QCOMPARE(Seen(Tree(form)), QStringList({"one of Diet", "x Halal", "x Vegan"}));
    Press(form, "EditBtn");
    Click(form, "Halal");
    Press(form, "OKBtn");
    QCOMPARE(SeenOf(anna), QStringList({"one of Diet", "o Halal", "x Vegan"}));
}

/// A save would wipe what could not be read.
void TestAttributesTab::UnreadableIsLocked()
{
    const int anna = Contact_Add(Person("Anna", "Bell"));
    frmAddContact form;
    form.show();
    Sql("ALTER TABLE AppliedAttributes RENAME TO Away");
    int boxes = 0;
    const Dialogs::Hooks outer = Dialogs::Installed();
    Dialogs::Installed().msgBox = [&boxes](auto &&...) {
        ++boxes;
        return Dialogs::Answer::Cancel;
    };
    form.OpenRecords({Key(anna)});
    Dialogs::Installed() = outer;
    QCOMPARE(boxes, 1);
    QVERIFY(!IsShown(form, "EditBtn"));
    Sql("ALTER TABLE Away RENAME TO AppliedAttributes");
    Press(form, "MainRefBtn");
    QVERIFY(IsShown(form, "EditBtn"));
}

/// A search takes any mix of values, of single select attributes too.
void TestAttributesTab::PeopleAreFoundByThem()
{
    const SiteAttributes site;
    const int anna = Contact_Add(Person("Anna", "Bell"));
    const int ben = Contact_Add(Person("Ben", "Carter"));
    Give(anna, {"Red", "Vegan"});
    Give(ben, {"Blue", "Vegan"});
    ListModel target;
    frmSearchContact form(target);
    form.show();
    Find<QTabWidget>(form, "SSActiveTabs1")->setCurrentWidget(Find<QWidget>(form, "AttribFrame"));
    const auto finds = [&](const QString &asked, int contactRef) {
        m->dialogs.Expect({}, u"Searching on the following fields:\n\n" % asked %
                                  u"\nNumber of records found = 1");
        Press(form, "FindBtn");
        QCOMPARE(Keys(List(form, "ContactInfo")), QStringList(Key(contactRef)));
    };
    Click(form, "Vegan");
    Click(form, "Red");
    finds(" AND Attribute = Red\n AND Attribute = Vegan\n", anna);
    Click(form, "Red");
    finds(" AND Attribute <> Red\n AND Attribute = Vegan\n", ben);
    Find<QRadioButton>(form, "Opt_AndOr_1")->click();
    Click(form, "Blue");
    finds("Attribute = Blue\nAttribute <> Red\nAttribute = Vegan\n", ben);
    Press(form, "ClearBtn");
    QCOMPARE(Seen(Tree(form)).filter("o ").size(), 4);
}

QTEST_MAIN(TestAttributesTab)
#include "test_attributes_tab.moc"
