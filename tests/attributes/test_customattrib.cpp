#include "attributes/Attributes.h"
#include "database/GlobalCode.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"

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

class TestCustomAttrib : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void DefineGiveAndTakeAway();
    void Statements();
    void Duplicates();
    void Clicks();
    void ListedAnew();
    void FailuresAreTold();

private:
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
};

void TestCustomAttrib::init()
{
    m_database = std::make_unique<TestDatabase>();
    m_dialogs = std::make_unique<ScriptedDialogs>();
}

void TestCustomAttrib::cleanup()
{
    m_dialogs.reset();
    m_database.reset();
}

void TestCustomAttrib::DefineGiveAndTakeAway()
{
    const SiteAttributes site;
    CustomAttrib_AddAttrib({"Zodiac", AttribType::Single});
    Give(anna, {"Red", "Halal", "Vegan"});
    Give(72, {"Blue"});
    QCOMPARE(SeenOf(anna), QStringList({"one of Colour", "o Blue", "x Red", "any of Diet", "x Halal",
                                        "x Vegan", "one of Zodiac"}));
    Give(anna, {"Vegan"});
    QCOMPARE(CustomAttrib_UpdateAttrib(site.diet, {"Food", AttribType::Single}), site.diet);
    // A backtick is doubled when it is stored, and stays so.
    QCOMPARE(CustomAttrib_UpdateAttribVal(site.vegan, "'%1`", site.diet), site.vegan);
    QCOMPARE(SeenOf(anna), QStringList({"one of Colour", "o Blue", "o Red", "one of Food", "x '%1``",
                                        "o Halal", "one of Zodiac"}));

    // Records of another section keep theirs, and its attributes are not offered to people.
    TestDatabase::Run({"INSERT INTO AppliedAttributes (AttributeRef,AttributeValueRef,AppliesToRef,"
                       "RefSection) VALUES (8,9,71,2)"});
    CustomAttrib_AddAttrib({"Wheelchair access", AttribType::Multi, 2});
    QVERIFY(ADO_CustomAttrib_Store(TreeModel(), anna, AttribSection::contacts));
    QCOMPARE(Applied(),
             QStringList({"8|9|71|2", SqlNumber(site.colour) % u'|' % SqlNumber(site.blue) % u"|72|1"}));
    QVERIFY(!SeenOf(anna).contains("any of Wheelchair access"));
}

void TestCustomAttrib::Statements()
{
    TreeModel tree;
    tree.Add({}, {"!3", "Diet"});
    for (const char *key : {"?5!3", "?6!3", "?7!3"})
        tree.Add("!3", {key, key, {}, TreeTick::Off});
    tree.SetTick(tree.Find("?5!3"), TreeTick::On);
    tree.SetTick(tree.Find("?6!3"), TreeTick::Not);

    const StatementLog log;
    ADO_CustomAttrib_Store(tree, 7, 1);
    ADO_CustomAttrib_Show(tree, 1);
    ADO_CustomAttrib_Get(tree, 7, 1);
    CustomAttrib_AddAttrib({"It's", AttribType::Single, 1});
    CustomAttrib_UpdateAttrib(3, {"Diet", AttribType::Multi, 1});
    CustomAttrib_AddAttribVal("It's", 3);
    CustomAttrib_UpdateAttribVal(5, "Red", 3);
    CustomAttrib_Delete({"?5!3", "Red"});
    CustomAttrib_Delete({"!3", "Diet"});
    const QString sameName = "SELECT AttributeRef FROM CustomAttributes WHERE AttributeName = ";
    const QString sameValue = "SELECT AttributeValueRef FROM CustomAttributeValues WHERE AttributeValue = ";
    QCOMPARE(log.Statements(),
             QStringList({
                 "DELETE FROM AppliedAttributes WHERE AppliesToRef = 7 AND RefSection = 1",
                 "INSERT INTO AppliedAttributes (AttributeRef,AttributeValueRef,AppliesToRef,RefSection) "
                 "VALUES (3,5,7,1)",
                 "SELECT * FROM CustomAttributes WHERE AppliesTo = 1 ORDER BY AttributeName ASC",
                 "SELECT * FROM CustomAttributeValues ORDER BY AttributeValue ASC",
                 "SELECT AttributeValueRef, AttributeRef FROM AppliedAttributes WHERE AppliesToRef = 7 AND "
                 "RefSection = 1",
                 sameName + "'It''s'",
                 "INSERT INTO CustomAttributes (AttributeName, AttributeType, AppliesTo) VALUES "
                 "('It''s',1,1)",
                 sameName + "'It''s'",
                 sameName + "'Diet' AND AttributeRef <> 3",
                 "UPDATE CustomAttributes SET AttributeName='Diet', AttributeType = 2, AppliesTo = 1 WHERE "
                 "AttributeRef = 3",
                 sameValue + "'It''s' AND AttributeRef = 3",
                 "INSERT INTO CustomAttributeValues (AttributeValue,AttributeRef) VALUES ('It''s',3)",
                 sameValue + "'It''s' AND AttributeRef = 3",
                 sameValue + "'Red' AND AttributeRef = 3 AND AttributeValueRef <> 5",
                 "UPDATE CustomAttributeValues SET AttributeValue = 'Red' WHERE AttributeValueRef = 5",
                 "DELETE FROM AppliedAttributes WHERE AttributeValueRef = 5",
                 "DELETE FROM CustomAttributeValues WHERE AttributeValueRef = 5",
                 "DELETE FROM AppliedAttributes WHERE AttributeRef = 3",
                 "DELETE FROM CustomAttributeValues WHERE AttributeRef = 3",
                 "DELETE FROM CustomAttributes WHERE AttributeRef = 3",
             }));
}

void TestCustomAttrib::Duplicates()
{
    const QString attribExists = "Attribute already exists in database.";
    const QString valueExists = "Attribute Value already exists for this Attribute.";
    const SiteAttributes site;
    m_dialogs->Expect("Add Attribute", attribExists);
    QCOMPARE(CustomAttrib_AddAttrib({"colour", AttribType::Multi, 2}), 0);
    m_dialogs->Expect("Update Attribute", attribExists);
    QCOMPARE(CustomAttrib_UpdateAttrib(site.diet, {"Colour", AttribType::Multi}), 0);
    m_dialogs->Expect("Add Attribute Value", valueExists);
    QCOMPARE(CustomAttrib_AddAttribVal("RED", site.colour), 0);
    m_dialogs->Expect("Update Attribute Value", valueExists);
    QCOMPARE(CustomAttrib_UpdateAttribVal(site.blue, "Red", site.colour), 0);
    QCOMPARE(SeenOf(anna),
             QStringList({"one of Colour", "o Blue", "o Red", "any of Diet", "o Halal", "o Vegan"}));
    // Another attribute can have the value, and what stays the same is no duplicate of itself.
    QVERIFY(CustomAttrib_AddAttribVal("Red", site.diet) > site.red);
    QCOMPARE(CustomAttrib_UpdateAttrib(site.diet, {"Diet", AttribType::Multi}), site.diet);
    QCOMPARE(CustomAttrib_UpdateAttribVal(site.red, "red", site.colour), site.red);
}

void TestCustomAttrib::Clicks()
{
    const SiteAttributes site;
    TreeModel tree;
    ADO_CustomAttrib_Show(tree, AttribSection::contacts);
    const std::pair<const char *, QStringList> clicks[] = {
        {"Red", {"Red"}},
        {"Vegan", {"Red", "Vegan"}},
        {"Halal", {"Red", "Halal", "Vegan"}}, // one more of a multi-select
        {"Blue", {"Blue", "Halal", "Vegan"}}, // another one of a single select
        {"Diet", {"Blue", "Halal", "Vegan"}}, // an attribute
        {"Blue", {"Halal", "Vegan"}},
        {"Vegan", {"Halal"}},
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
    ADO_CustomAttrib_Show(tree, AttribSection::contacts);
    tree.SetExpanded(NodeOf(tree, "Diet"), false);
    tree.Select(NodeOf(tree, "Red"));
    CustomAttrib_AddAttribVal("York", CustomAttrib_AddAttrib({"Town", AttribType::Multi}));
    ADO_CustomAttrib_Show(tree, AttribSection::contacts);
    QVERIFY(NodeOf(tree, "Colour")->expanded && !NodeOf(tree, "Diet")->expanded);
    QVERIFY(NodeOf(tree, "Town")->expanded);
    QCOMPARE(tree.Selected(), NodeOf(tree, "Red"));
    ADO_CustomAttrib_DelAttribVal(site.red);
    ADO_CustomAttrib_Show(tree, AttribSection::contacts);
    QCOMPARE(tree.Selected(), nullptr);
}

void TestCustomAttrib::FailuresAreTold()
{
    const SiteAttributes site;
    Give(anna, {"Red"});
    TestDatabase::Run({"DROP TABLE CustomAttributeValues"});
    int boxes = 0;
    const Dialogs::Hooks outer = Dialogs::Installed();
    Dialogs::Installed().msgBox = [&boxes](auto &&...) {
        ++boxes;
        return Dialogs::Answer::Cancel;
    };
    TreeModel tree;
    QVERIFY(!ADO_CustomAttrib_Show(tree, AttribSection::contacts));
    QCOMPARE(CustomAttrib_AddAttribVal("Green", site.colour), -1);
    QCOMPARE(CustomAttrib_UpdateAttribVal(site.red, "Green", site.colour), -1);
    QVERIFY(!ADO_CustomAttrib_DelAttrib(site.colour));
    Dialogs::Installed() = outer;
    QCOMPARE(boxes, 4);
    // The cascade stopped half-way: nobody has the attribute any more, and it still stands.
    QVERIFY(Applied().isEmpty());
    QCOMPARE(TestDatabase::Rows("SELECT * FROM CustomAttributes").size(), 2);
}

QTEST_GUILESS_MAIN(TestCustomAttrib)
#include "test_customattrib.moc"
