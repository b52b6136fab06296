#include "attributes/Attributes.h"
#include "attributes/frmAddAttribute.h"
#include "attributes/frmCustomAttributes.h"
#include "contacts/ContactForm.h"
#include "contacts/lists/ConcessionModule.h"
#include "core/shell/Screens.h"
#include "support/Keyboard.h"
#include "support/RightsTable.h"

#include <QTest>

namespace
{
const QString askToSave = QStringLiteral("Some of the data has changed.\nOkay to update before exiting?");

TreeModel &Tree(QWidget &form)
{
    return Find<TreeView>(form, "AttribList")->Model();
}

QStringList Ticked(const QStringList &seen)
{
    return seen.filter("x ");
}

void Select(QWidget &form, const QString &text)
{
    Tree(form).Select(NodeOf(Tree(form), text));
}

void OpenTab(QWidget &form, const QString &page = "CustomAttributes")
{
    Find<QTabWidget>(form, "SSActiveTabs1")->setCurrentWidget(Find<QWidget>(form, page));
}

/// A click on the tick of a node.
void Click(QWidget &form, const QString &text)
{
    auto *list = Find<TreeView>(form, "AttribList");
    const QRect row = list->visualRect(Tree(form).IndexOf(NodeOf(Tree(form), text)));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(row.left() + 6, row.center().y()));
}
} // namespace

/// Where attributes are kept, and where people are given them.
class TestAttributeScreens final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void KeepsAttributesByKeys();
    void Deletes();
    void IncompleteAttribute();
    void DeletedMeanwhile();
    void Rights();
    void OneOfEachKindByKeys();
    void FromPersonToPerson();
    void OrganisationCharacteristicsKeepTheTicks();
    void MultiBecomesSingleMeanwhile();

private:
    std::unique_ptr<ContactFixture> m;
};

/// By the command of the main window, without a mouse.
void TestAttributeScreens::KeepsAttributesByKeys()
{
    // What the keys of the list open: a dialog of that title, where a name is typed and Enter saves it.
    const auto name = [this](const QString &form, const QString &title, const QString &typed) {
        m->driver.Expect(form, [title, typed](QDialog &dialog) {
            QCOMPARE(dialog.windowTitle(), title);
            const Keyboard keys(dialog);
            keys.Press(Qt::Key_A, Qt::ControlModifier);
            keys.Type(typed);
            keys.Press(Qt::Key_Return);
        });
    };
    m->driver.Expect("frmCustomAttributes", [&](QDialog &form) {
        const Keyboard keys(form);
        name("frmAddAttribute", "Add Attribute", "Diet");
        keys.Alt(Qt::Key_N);
        // A value goes to the attribute selected, or to that of the value selected.
        for (const char *value : {"Vegan", "Halal"}) {
            name("frmAddAttributeVal", "Add Attribute Value to Diet", value);
            keys.Alt(Qt::Key_V);
        }
        name("frmAddAttributeVal", "Update Attribute Value of Diet", "Kosher");
        keys.Alt(Qt::Key_E);
        QCOMPARE(Seen(Tree(form)), QStringList({"any of Diet", "- Kosher", "- Vegan"}));
        QCOMPARE(Tree(form).Selected()->text, u"Kosher"_qs);

        keys.TabTo("AttribList");
        keys.Press(Qt::Key_Home);
        m->driver.Expect("frmAddAttribute", [](QDialog &dialog) {
            const Keyboard inner(dialog);
            inner.TabTo("SelectOpt_0");
            inner.Press(Qt::Key_Down);
            inner.Alt(Qt::Key_U);
        });
        keys.Press(Qt::Key_Return);
        QCOMPARE(Seen(Tree(form)), QStringList({"one of Diet", "- Kosher", "- Vegan"}));
        keys.Press(Qt::Key_Escape);
    });
    Screens::Of("ID_CustomAttributes")->runModal(nullptr);
}

void TestAttributeScreens::Deletes()
{
    const SiteAttributes site;
    Give(7, {"Red", "Vegan"});
    frmCustomAttributes form;
    form.show();
    for (const auto &[item, answer, left] : {std::tuple("Red", Dialogs::Answer::No, 6),
                                             {"Red", Dialogs::Answer::Yes, 5},
                                             {"Diet", Dialogs::Answer::Yes, 2}}) {
        Select(form, item);
        m->dialogs.Expect("Confirm Deletion", u"Okay to delete item '" % QString(item) % u'\'', answer);
        QTest::keyClick(Find<TreeView>(form, "AttribList"), Qt::Key_Delete);
        QCOMPARE(Seen(Tree(form)).size(), left);
        QVERIFY(Tree(form).Selected());
    }
    QCOMPARE(SeenOf(7), QStringList({"one of Colour", "o Blue"}));
}

void TestAttributeScreens::IncompleteAttribute()
{
    frmAddAttribute form;
    form.show();
    m->dialogs.Expect("Form not complete", "The followings fields must be completed:\n    Name\n");
    Press(form, "AddBtn");
    TypeInto(form, "AttribName", "Diet");
    List(form, "ApplyList").ClearSelection();
    m->dialogs.Expect("Form not complete", "Attribute must apply to at least one section.");
    Press(form, "AddBtn");
    QVERIFY(form.isVisible());
    QCOMPARE(Rows("CustomAttributes"), 0);
}

/// Under the open dialog, and before it opens: the list then shows what is left.
void TestAttributeScreens::DeletedMeanwhile()
{
    const SiteAttributes site;
    frmCustomAttributes form;
    form.show();
    Select(form, "Vegan");
    m->driver.Expect("frmAddAttributeVal", [&site, this](QDialog &dialog) {
        ADO_CustomAttrib_DelAttribVal(site.vegan);
        TypeInto(dialog, "AttribName", "Vegetarian");
        m->dialogs.Expect("Update Attribute Value",
                          "Another user has deleted this value meanwhile. Nothing was stored for it.");
        Press(dialog, "AddBtn");
        m->dialogs.Expect("Warning", askToSave, Dialogs::Answer::No);
        Press(dialog, "CanBtn");
    });
    Press(form, "EditBtn");
    QCOMPARE(Seen(Tree(form)), QStringList({"one of Colour", "- Blue", "- Red", "any of Diet", "- Halal"}));

    Select(form, "Colour");
    ADO_CustomAttrib_DelAttrib(site.colour);
    m->driver.Expect("frmAddAttribute", [](QDialog &dialog) {
        QVERIFY(IsShown(dialog, "Warn"));
        QVERIFY(!Find<QPushButton>(dialog, "AddBtn")->isEnabled());
        Press(dialog, "CanBtn");
    });
    Press(form, "EditBtn");
    QCOMPARE(Seen(Tree(form)), QStringList({"any of Diet", "- Halal"}));
}

void TestAttributeScreens::Rights()
{
    frmCustomAttributes empty;
    for (const char *button : {"AddValBtn", "EditBtn", "DelBtn"})
        QVERIFY2(!Find<QPushButton>(empty, button)->isEnabled(), button);
    const SiteAttributes site;
    CheckRights([] { return std::make_unique<frmCustomAttributes>(); },
                {{120, 1, "AddAttribBtn", Left::Disabled},
                 {120, 1, "AddValBtn", Left::Disabled},
                 {120, 1, "RefBtn", Left::Enabled},
                 {120, 2, "AddAttribBtn", Left::Enabled},
                 {120, 2, "AddValBtn", Left::Enabled},
                 {120, 2, "EditBtn", Left::Disabled},
                 {120, 3, "EditBtn", Left::Enabled},
                 {120, 3, "DelBtn", Left::Disabled},
                 {120, 9, "DelBtn", Left::Enabled}});
    gUserRights = RightsWith(120, 2);
    frmCustomAttributes form;
    form.show();
    QCOMPARE(Caption(form, "EditBtn"), u"&View"_qs);
    // Keys open and delete no more than the buttons do.
    QTest::keyClick(Find<TreeView>(form, "AttribList"), Qt::Key_Return);
    QTest::keyClick(Find<TreeView>(form, "AttribList"), Qt::Key_Delete);
    QCOMPARE(Seen(Tree(form)).size(), 6);
}

/// Without a mouse: a value of the single select attribute, then another one, and two of the multi-select
/// one.
void TestAttributeScreens::OneOfEachKindByKeys()
{
    const SiteAttributes site;
    const int anna = Contact_Add(Person("Anna", "Bell"));
    frmAddContact form;
    form.OpenRecords({Key(anna)});
    const Keyboard keys(form);
    OpenTab(form);
    Click(form, "Vegan"); // a record that is looked at does not change
    QCOMPARE(Ticked(Seen(Tree(form))), QStringList());
    QVERIFY(!Find<QPushButton>(form, "ClearAttribBtn")->isEnabled());
    OpenTab(form, "Details");
    keys.Alt(Qt::Key_E);
    for (int tab = 0; tab < 2; ++tab)
        keys.Press(Qt::Key_Tab, Qt::ControlModifier);
    keys.TabTo("AttribList");
    keys.Press(Qt::Key_Home);
    for (const bool isValue : {true, true, false, true, true}) {
        keys.Press(Qt::Key_Down);
        if (isValue)
            keys.Press(Qt::Key_Space);
    }
    keys.Alt(Qt::Key_U);
    QCOMPARE(SeenOf(anna),
             QStringList({"one of Colour", "o Blue", "x Red", "any of Diet", "x Halal", "x Vegan"}));
}

void TestAttributeScreens::FromPersonToPerson()
{
    const SiteAttributes site;
    const int anna = Contact_Add(Person("Anna", "Bell"));
    const int ben = Contact_Add(Person("Ben", "Carter"));
    Give(anna, {"Red", "Vegan"});
    const auto record = EditingOn("CustomAttributes", {Key(ben), Key(anna)});
    frmAddContact &form = *record;
    Click(form, "Blue");
    m->dialogs.Expect("Record Changed", "Okay to update record?", Dialogs::Answer::Yes);
    Press(form, "NextBtn");
    QCOMPARE(Ticked(SeenOf(ben)), QStringList("x Blue"));
    QCOMPARE(Ticked(Seen(Tree(form))), QStringList({"x Red", "x Vegan"}));
    Press(form, "EditBtn");
    Press(form, "ClearAttribBtn");
    m->dialogs.Expect("Record Changed", "Okay to update record?", Dialogs::Answer::No);
    Press(form, "PrevBtn");
    QCOMPARE(Ticked(SeenOf(anna)), QStringList({"x Red", "x Vegan"}));
    Press(form, "NewBtn");
    QCOMPARE(Ticked(Seen(Tree(form))), QStringList());
}

/// Yes shows the person again, and what the user ticked is not lost by that.
void TestAttributeScreens::OrganisationCharacteristicsKeepTheTicks()
{
    const SiteAttributes site;
    const int member = Concession_Add("Member", 10, 0, "");
    ContactRecord person = Person("Anna", "Bell");
    person.organRef = Contact_AddItem(ContactSection::Organisations, "Acme", "");
    Sql(u"INSERT INTO OrganChars (OrganRef,ConcessionRef) VALUES (" % SqlNumber(person.organRef) % u',' %
        SqlNumber(member) % u')');
    const int anna = Contact_Add(person);
    Give(anna, {"Red"});
    const auto record = EditingOn("CustomAttributes", {Key(anna)});
    frmAddContact &form = *record;
    Click(form, "Blue");
    m->dialogs.Expect("Organisation Characteristics",
                      "Would you like to apply the Organisation Characteristics to this Contact?",
                      Dialogs::Answer::Yes);
    Press(form, "OKBtn");
    QCOMPARE(Ticked(SeenOf(anna)), QStringList("x Blue"));
    QCOMPARE(Ticked(Seen(Tree(form))), QStringList("x Blue"));
    QCOMPARE(List(form, "UsedCriteria").Count(), 1);
}

/// Who has two values keeps both until one is cleared.
void TestAttributeScreens::MultiBecomesSingleMeanwhile()
{
    const SiteAttributes site;
    const int anna = Contact_Add(Person("Anna", "Bell"));
    Give(anna, {"Halal", "Vegan"});
    const auto record = EditingOn("CustomAttributes", {Key(anna)});
    frmAddContact &form = *record;
    CustomAttrib_UpdateAttrib(site.diet, {"Diet", AttribType::Single});
    for (const auto &[clicked, ticked] :
         {std::pair("Red", QStringList({"x Red", "x Halal", "x Vegan"})), {"Halal", {"x Red", "x Vegan"}}}) {
        Click(form, clicked);
        Press(form, "OKBtn");
        Press(form, "MainRefBtn");
        QCOMPARE(Ticked(Seen(Tree(form))), ticked);
        Press(form, "EditBtn");
    }
}

QTEST_MAIN(TestAttributeScreens)
#include "test_attribute_screens.moc"
