#include "attributes/Attributes.h"
#include "contacts/People.h"
#include "database/values/GlobalCode.h"

#include <QTest>

namespace
{
constexpr int anna = 71;

QStringList Applied()
{
    return TestDatabase::Rows("SELECT AttributeRef, AttributeValueRef, AppliesToRef, RefSection FROM "
                              "AppliedAttributes ORDER BY AppliesToRef, AttributeValueRef");
}
} // namespace

class TestCustomAttrib final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<LogicFixture>(); }
    void cleanup() { m.reset(); }
    void DefineGiveAndTakeAway();
    void NamesAndValues();
    void Clicks();
    void ListedAnew();
    void DeletedMeanwhile();
    void DeleteThatStopsHalfWay();

private:
    std::unique_ptr<LogicFixture> m;
};

void TestCustomAttrib::DefineGiveAndTakeAway()
{
    const SiteAttributes site;
    CustomAttrib_AddAttrib({"Zodiac", AttribType::Single});
    Give(anna, {"Red", "Halal", "Vegan"});
    Give(72, {"Blue"});
    QCOMPARE(SeenOf(anna), QStringList({"one of Colour", "o Blue", "x Red", "any of Diet", "x Halal",
                                        "x Vegan", "one of Zodiac"}));
    Give(anna, {"Vegan"});
    QCOMPARE(CustomAttrib_UpdateAttrib(site.diet, {"Food", AttribType::Single}), site.diet.number);
    // A backtick is doubled when it is stored, and stays so.
    QCOMPARE(CustomAttrib_UpdateAttribVal(site.vegan, "'%1`", site.diet), site.vegan.number);
    QCOMPARE(SeenOf(anna), QStringList({"one of Colour", "o Blue", "o Red", "one of Food", "x '%1``",
                                        "o Halal", "one of Zodiac"}));

    // Records of another section keep theirs, and its attributes are not offered to people.
    Sql("INSERT INTO AppliedAttributes (AttributeRef,AttributeValueRef,AppliesToRef,RefSection) VALUES "
        "(8,9,71,2)");
    CustomAttrib_AddAttrib({"Wheelchair access", AttribType::Multi, AttribSection(2)});
    Give(anna, {});
    QCOMPARE(Applied(),
             QStringList({"8|9|71|2", SqlNumber(site.colour) % u'|' % SqlNumber(site.blue) % u"|72|1"}));
    QVERIFY(!SeenOf(anna).contains("any of Wheelchair access"));
}

void TestCustomAttrib::NamesAndValues()
{
    const QString attribExists = "Attribute already exists in database.";
    const QString valueExists = "Attribute Value already exists for this Attribute.";
    const SiteAttributes site;
    m->dialogs.Expect("Add Attribute", attribExists);
    QCOMPARE(CustomAttrib_AddAttrib({"colour", AttribType::Multi, AttribSection(2)}), 0);
    m->dialogs.Expect("Update Attribute", attribExists);
    QCOMPARE(CustomAttrib_UpdateAttrib(site.diet, {"Colour", AttribType::Multi}), 0);
    m->dialogs.Expect("Add Attribute Value", valueExists);
    QCOMPARE(CustomAttrib_AddAttribVal("RED", site.colour), 0);
    m->dialogs.Expect("Update Attribute Value", valueExists);
    QCOMPARE(CustomAttrib_UpdateAttribVal(site.blue, "Red", site.colour), 0);
    // Another attribute can have the value, and what stays the same is no duplicate of itself.
    QVERIFY(CustomAttrib_AddAttribVal("Red", site.diet) > site.red.number);
    QCOMPARE(CustomAttrib_UpdateAttrib(site.diet, {"Diet", AttribType::Multi}), site.diet.number);
    QCOMPARE(CustomAttrib_UpdateAttribVal(site.red, "red", site.colour), site.red.number);
    const QString odd = QString(244, 'x') % "100% [O'N]\"";
    CustomAttrib_AddAttribVal(odd, AttributeRef(CustomAttrib_AddAttrib({odd, AttribType::Single})));
    QCOMPARE(SeenOf(anna), QStringList({"one of Colour", "o Blue", "o red", "any of Diet", "o Halal", "o Red",
                                        "o Vegan", "one of " + odd, "o " + odd}));
}

void TestCustomAttrib::Clicks()
{
    const SiteAttributes site;
    TreeModel tree;
    ADO_CustomAttrib_Show(tree, AttribSection::Contacts);
    const std::pair<const char *, QStringList> clicks[] = {
        {"Red", {"Red"}},
        {"Vegan", {"Red", "Vegan"}},
        {"Halal", {"Red", "Halal", "Vegan"}}, // one more of a multi-select
        {"Blue", {"Blue", "Halal", "Vegan"}}, // another one of a single select
        {"Diet", {"Blue", "Halal", "Vegan"}}, // an attribute
        {"Blue", {"Halal", "Vegan"}},
    };
    for (const auto &[clicked, left] : clicks) {
        CustomAttrib_Toggle(tree, NodeOf(tree, clicked));
        QCOMPARE(Seen(tree).filter("x ").replaceInStrings("x ", ""), left);
    }
}

/// What the user folded and where he stood stays so; what is new is open.
void TestCustomAttrib::ListedAnew()
{
    const SiteAttributes site;
    TreeModel tree;
    ADO_CustomAttrib_Show(tree, AttribSection::Contacts);
    tree.SetExpanded(NodeOf(tree, "Diet"), false);
    tree.Select(NodeOf(tree, "Red"));
    CustomAttrib_AddAttribVal("York", AttributeRef(CustomAttrib_AddAttrib({"Town", AttribType::Multi})));
    ADO_CustomAttrib_Show(tree, AttribSection::Contacts);
    QVERIFY(NodeOf(tree, "Colour")->expanded && !NodeOf(tree, "Diet")->expanded);
    QVERIFY(NodeOf(tree, "Town")->expanded);
    QCOMPARE(tree.Selected(), NodeOf(tree, "Red"));
}

void TestCustomAttrib::DeletedMeanwhile()
{
    const SiteAttributes site;
    TreeModel tree;
    ADO_CustomAttrib_Show(tree, AttribSection::Contacts);
    for (const char *value : {"Red", "Halal", "Vegan"})
        tree.SetTick(NodeOf(tree, value), TreeTick::On);
    ADO_CustomAttrib_DelAttrib(site.colour);
    ADO_CustomAttrib_DelAttribVal(site.halal);
    m->dialogs.Expect(
        "Custom Attributes",
        "Another user has deleted these meanwhile, and they are left out:\n    Colour: Red\n    "
        "Diet: Halal");
    QVERIFY(CustomAttrib_LeaveOutDeleted(tree));
    QVERIFY(ADO_CustomAttrib_Store(tree, anna, AttribSection::Contacts));
    QCOMPARE(Rows("AppliedAttributes"), 1);
    QCOMPARE(SeenOf(anna), QStringList({"any of Diet", "x Vegan"}));

    const auto gone = [this](const QString &title, const QString &what) {
        m->dialogs.Expect(title, u"Another user has deleted this " % what %
                                     u" meanwhile. Nothing was stored for it.");
    };
    gone("Add Attribute Value", "attribute");
    QCOMPARE(CustomAttrib_AddAttribVal("Green", site.colour), 0);
    gone("Update Attribute", "attribute");
    QCOMPARE(CustomAttrib_UpdateAttrib(site.colour, {"Hue", AttribType::Multi}), 0);
    gone("Update Attribute Value", "value");
    QCOMPARE(CustomAttrib_UpdateAttribVal(site.halal, "Kosher", site.diet), 0);
    QCOMPARE(Rows("CustomAttributeValues"), 1);
}

/// Nobody has the attribute any more, and it still exists: the delete can be repeated.
void TestCustomAttrib::DeleteThatStopsHalfWay()
{
    const SiteAttributes site;
    Give(anna, {"Red"});
    m->dialogs.Expect(FailureTitle(), engineFailure);
    Sql("ALTER TABLE CustomAttributeValues RENAME TO Away");
    QVERIFY(!ADO_CustomAttrib_DelAttrib(site.colour));
    Sql("ALTER TABLE Away RENAME TO CustomAttributeValues");
    QVERIFY(Applied().isEmpty());
    QCOMPARE(Rows("CustomAttributes"), 2);
    QVERIFY(ADO_CustomAttrib_DelAttrib(site.colour));
    QCOMPARE(SeenOf(anna), QStringList({"any of Diet", "o Halal", "o Vegan"}));
}

QTEST_GUILESS_MAIN(TestCustomAttrib)
#include "test_customattrib.moc"
