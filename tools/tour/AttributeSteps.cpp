#include "tour/Keyboard.h"
#include "tour/TourPlan.h"

namespace
{
const QString form = QStringLiteral("frmCustomAttributes");
const QString tree = QStringLiteral("AttribList");

/// Adds an attribute of one kind and gives it its values.
void Define(Keyboard &keys, const QString &name, const QString &kind, const QStringList &values)
{
    keys.On(form, u"new attribute " % name, [&keys] { keys.Press(QStringLiteral("AddAttribBtn")); });
    keys.On(QStringLiteral("frmAddAttribute"), name, [&keys, name, kind] {
        keys.Expect(keys.Focus() == u"AttribName", u"the dialog starts at " % keys.Focus());
        keys.Write(name);
        keys.Press(kind);
    });
    keys.See(QStringLiteral("frmAddAttribute"), u"attribute " % name,
             [&keys] { keys.Tap(QStringLiteral("Return")); });
    for (const QString &value : values) {
        keys.On(form, u"a value of " % name, [&keys] { keys.Press(QStringLiteral("AddValBtn")); });
        keys.On(QStringLiteral("frmAddAttributeVal"), value, [&keys, name, value] {
            keys.Expect(keys.Title() == u"Add Attribute Value to " % name,
                        u"the dialog is titled " % keys.Title());
            keys.Write(value);
            keys.Tap(QStringLiteral("Return"));
        });
    }
    keys.On(form, u"values of " % name, [&keys, name, values] {
        for (const QString &value : values)
            keys.ExpectRow(tree, u"  " % value);
    });
}
} // namespace

void AddAttributes(Keyboard &keys)
{
    keys.Command(QStringLiteral("C"), 2, QStringLiteral("C"));
    keys.See(form, QStringLiteral("no attributes yet"),
             [&keys] { keys.Expect(keys.Rows(tree).isEmpty(), QStringLiteral("there are attributes")); });
    Define(keys, QStringLiteral("Languages"), QStringLiteral("SelectOpt_0"),
           {QStringLiteral("French"), QStringLiteral("German"), QStringLiteral("Welsh")});
    Define(keys, QStringLiteral("Preferred time"), QStringLiteral("SelectOpt_1"),
           {QStringLiteral("Evening"), QStringLiteral("Weekend")});
    keys.See(form, QStringLiteral("attributes"), [&keys] { keys.Press(QStringLiteral("ExitBtn")); });
}

void AddPersonsAttributes(Keyboard &keys, TourPlan &plan)
{
    const QString record = QStringLiteral("frmAddContact");
    keys.On(record, QStringLiteral("attributes of the person"), [&keys] {
        keys.Press(QStringLiteral("EditBtn"));
        keys.OpenTab(QStringLiteral("Custom Attributes"));
        keys.Go(tree);
        for (const auto *value : {"French", "Welsh", "Evening", "Weekend"}) {
            keys.ToRow(QString::fromLatin1(value));
            keys.Tap(QStringLiteral("Space"));
        }
        keys.ExpectRow(tree, QStringLiteral("  Weekend (tick)"));
        keys.ExpectRow(tree, QStringLiteral("  Evening"));
    });
    keys.See(record, QStringLiteral("attributes of a person"),
             [&keys] { keys.Press(QStringLiteral("OKBtn")); });
    keys.On(record, QStringLiteral("attributes stored"), [&keys, &plan] {
        // Where only one value can be ticked, the later one replaced the earlier.
        const QString applied =
            u"SELECT AttributeValue FROM AppliedAttributes INNER JOIN CustomAttributeValues ON "
            u"AppliedAttributes.AttributeValueRef = CustomAttributeValues.AttributeValueRef "
            u"WHERE AppliesToRef = " %
            KeyOf(plan.members.at(0));
        keys.Expect(RowsOf(applied) == 3, u"the person has " % QString::number(RowsOf(applied)) % u" values");
        keys.Expect(RowsOf(applied % u" AND AttributeValue = 'Weekend'") == 1,
                    QStringLiteral("the person does not prefer the weekend"));
        keys.Press(QStringLiteral("ExitBtn"));
    });
}
