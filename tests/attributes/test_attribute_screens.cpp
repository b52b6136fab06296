#include "attributes/Attributes.h"
#include "attributes/frmAddAttribute.h"
#include "attributes/frmCustomAttributes.h"
#include "contacts/ContactForm.h"
#include "contacts/Keyboard.h"
#include "core/Screens.h"
#include "support/RightsTable.h"

#include <QTest>

namespace
{
TreeModel &Tree(QWidget &form)
{
    return Find<TreeView>(form, "AttribList")->Model();
}

void Select(QWidget &form, const QString &text)
{
    Tree(form).Select(NodeOf(Tree(form), text));
}

QString SelectedText(QWidget &form)
{
    return Tree(form).Selected() ? Tree(form).Selected()->text : QString();
}
} // namespace

class TestAttributeScreens final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void KeepsAttributes();
    void Deletes();
    void IncompleteAndDuplicate();
    void GoneMeanwhile();
    void Rights();

private:
    std::unique_ptr<ContactFixture> m;
};

/// By the command of the main window, without a mouse.
void TestAttributeScreens::KeepsAttributes()
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
        for (const char *button : {"AddValBtn", "EditBtn", "DelBtn"})
            QVERIFY2(!Find<QPushButton>(form, button)->isEnabled(), button);
        name("frmAddAttribute", "Add Attribute", "Diet");
        keys.Alt(Qt::Key_N);
        // A value goes to the attribute selected, or to that of the value selected.
        name("frmAddAttributeVal", "Add Attribute Value to Diet", "Vegan");
        keys.Alt(Qt::Key_V);
        QCOMPARE(SelectedText(form), u"Vegan"_qs);
        name("frmAddAttributeVal", "Add Attribute Value to Diet", "Halal");
        keys.Alt(Qt::Key_V);
        name("frmAddAttributeVal", "Update Attribute Value of Diet", "Kosher");
        keys.Alt(Qt::Key_E);
        QCOMPARE(Seen(Tree(form)), QStringList({"any of Diet", "- Kosher", "- Vegan"}));
        QCOMPARE(SelectedText(form), u"Kosher"_qs);

        keys.TabTo("AttribList");
        keys.Press(Qt::Key_Home);
        m->driver.Expect("frmAddAttribute", [](QDialog &dialog) {
            QCOMPARE(Find<QLineEdit>(dialog, "AttribName")->text(), u"Diet"_qs);
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
        QVERIFY(!SelectedText(form).isEmpty());
    }
    QCOMPARE(SeenOf(7), QStringList({"one of Colour", "o Blue"}));
}

void TestAttributeScreens::IncompleteAndDuplicate()
{
    const SiteAttributes site;
    frmAddAttribute form;
    form.show();
    m->dialogs.Expect("Form not complete", "The followings fields must be completed:\n    Name\n");
    Press(form, "AddBtn");
    TypeInto(form, "AttribName", "Diet");
    List(form, "ApplyList").ClearSelection();
    m->dialogs.Expect("Form not complete", "Attribute must apply to at least one section.");
    Press(form, "AddBtn");
    List(form, "ApplyList").SelectFirst();
    m->dialogs.Expect("Add Attribute", "Attribute already exists in database.");
    Press(form, "AddBtn");
    QVERIFY(form.isVisible());
    QCOMPARE(gDialogResult, 0);
}

/// Another workstation deletes what is on the screen.
void TestAttributeScreens::GoneMeanwhile()
{
    const SiteAttributes site;
    frmCustomAttributes form;
    form.show();
    Select(form, "Vegan");
    m->driver.Expect("frmAddAttributeVal", [&site](QDialog &dialog) {
        ADO_CustomAttrib_DelAttribVal(site.vegan);
        TypeInto(dialog, "AttribName", "Vegetarian");
        Press(dialog, "AddBtn");
    });
    m->dialogs.Expect("Custom Attributes", "Another user has deleted this item meanwhile.");
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
    gUserRights[120] = u'2';
    frmCustomAttributes form;
    form.show();
    QCOMPARE(Caption(form, "EditBtn"), u"&View"_qs);
    // Keys open and delete no more than the buttons do.
    QTest::keyClick(Find<TreeView>(form, "AttribList"), Qt::Key_Return);
    QTest::keyClick(Find<TreeView>(form, "AttribList"), Qt::Key_Delete);
    QCOMPARE(Seen(Tree(form)).size(), 6);
}

QTEST_MAIN(TestAttributeScreens)
#include "test_attribute_screens.moc"
