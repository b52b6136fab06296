#include "tour/Keyboard.h"
#include "tour/TourPlan.h"

namespace
{
const QString manager = QStringLiteral("frmContact");
const QString search = QStringLiteral("frmSearchContact");
const QString found = QStringLiteral("ContactInfo");
const QString given = QStringLiteral("Open evening");

/// The people of the first member's county, counted without the search.
QString OfCounty(const TourPlan &plan)
{
    return u"SELECT * FROM Contacts WHERE Cust_County = (SELECT Cust_County FROM Contacts WHERE ContactRef "
           u"= " %
           KeyOf(plan.members.at(0)) % u')';
}

QString CountyOf(const TourPlan &plan)
{
    return TextOf(u"SELECT County FROM County WHERE County_ID = (SELECT Cust_County FROM Contacts WHERE "
                  u"ContactRef = " %
                  KeyOf(plan.members.at(0)) % u')');
}

QString Summary(const QString &conditions, int count)
{
    return u"Searching on the following fields:\n\n" % conditions % u"\n\n\n\nNumber of records found = " %
           QString::number(count);
}

void ExpectFound(Keyboard &keys, int count)
{
    const int rows = static_cast<int>(keys.Rows(found).size());
    keys.Expect(rows == count,
                u"the search found " % QString::number(rows) % u" people and not " % QString::number(count));
    keys.Expect(keys.Title() == u"Search Result: " % QString::number(count) % u" items found",
                u"the search is titled " % keys.Title());
}

void SearchForCounty(Keyboard &keys, TourPlan &plan)
{
    keys.On(manager, QStringLiteral("search"), [&keys] { keys.Press(QStringLiteral("FindBtn")); });
    keys.On(search, QStringLiteral("a county"), [&keys, &plan] {
        keys.Expect(keys.Focus() == u"SearchSurname", u"the search starts at " % keys.Focus());
        keys.Choose(QStringLiteral("SearchCountyList"), CountyOf(plan));
    });
    keys.See(search, QStringLiteral("search for a county"),
             [&keys] { keys.Press(QStringLiteral("FindBtn")); });
    keys.Box(
        QStringLiteral("Veltrane"),
        [&plan] {
            plan.found = RowsOf(OfCounty(plan));
            return Summary(u"State/County = \"" % CountyOf(plan) % u'"', plan.found);
        },
        QStringLiteral("OK"));
    keys.See(search, QStringLiteral("people of a county"), [&keys, &plan] {
        ExpectFound(keys, plan.found);
        keys.Press(QStringLiteral("SelectBtn"));
    });
    keys.Box(QStringLiteral("Selection"), QStringLiteral("Clear selection box first?"),
             QStringLiteral("Yes"));
}

void ApplyCharacteristic(Keyboard &keys, TourPlan &plan)
{
    keys.On(manager, QStringLiteral("a characteristic for all of them"), [&keys, &plan] {
        keys.Expect(keys.Rows(found).size() == plan.found, QStringLiteral("not everybody found is selected"));
        keys.Fill(QStringLiteral("CharList"), given);
        keys.Tap(QStringLiteral("Return"));
        keys.Press(QStringLiteral("AddToConBtn"));
        keys.Choose(QStringLiteral("ConcessionList"), given);
        keys.Expect(keys.Rows(QStringLiteral("ContactList2")).size() == plan.found,
                    QStringLiteral("the characteristic was not given to everybody"));
    });
    keys.See(manager, QStringLiteral("those with the characteristic"), [&keys, &plan] {
        keys.Choose(QStringLiteral("ConcessionList"), {});
        keys.Expect(keys.Rows(QStringLiteral("ContactList2")).size() == plan.people,
                    QStringLiteral("not everybody is listed again"));
    });
}

/// Searches for those who speak French, have the characteristic and live in the county, but do not prefer the
/// evening.
void SearchOnAllTabs(Keyboard &keys, TourPlan &plan)
{
    keys.On(manager, QStringLiteral("search again"), [&keys] { keys.Press(QStringLiteral("FindBtn")); });
    keys.On(search, QStringLiteral("all three tabs"), [&keys, &plan] {
        keys.Choose(QStringLiteral("SearchCountyList"), CountyOf(plan));
        keys.OpenTab(QStringLiteral("Characteristics"));
        keys.Go(QStringLiteral("SearchCharList"));
        keys.ToRow(given);
        keys.Tap(QStringLiteral("Space"));
    });
    keys.See(search, QStringLiteral("search by characteristic"), [&keys] {
        keys.OpenTab(QStringLiteral("Custom Attributes"));
        keys.Go(QStringLiteral("AttribList"));
        keys.ToRow(QStringLiteral("French"));
        keys.Tap(QStringLiteral("Space"));
        keys.ToRow(QStringLiteral("Evening"));
        keys.Tap(QStringLiteral("Space"), 2);
        keys.ExpectRow(QStringLiteral("AttribList"), QStringLiteral("  Evening (cross)"));
    });
    keys.See(search, QStringLiteral("search by attribute"),
             [&keys] { keys.Press(QStringLiteral("FindBtn")); });
    keys.Box(
        QStringLiteral("Veltrane"),
        [&plan] {
            return Summary(u"State/County = \"" % CountyOf(plan) % u"\"\n AND Characteristic = " % given %
                               u"\n AND Attribute = French\n AND Attribute <> Evening",
                           1);
        },
        QStringLiteral("OK"));
    keys.See(search, QStringLiteral("one person found"), [&keys, &plan] {
        ExpectFound(keys, 1);
        keys.Expect(keys.Rows(found).first().startsWith(plan.members.at(0)),
                    u"the search found " % keys.Rows(found).first());
        keys.Press(QStringLiteral("ClearBtn"));
        keys.Expect(keys.Rows(found).isEmpty() && keys.Focus() == u"SearchSurname",
                    QStringLiteral("the search does not start over"));
    });
    // A name that nobody has, with OR: what the lists ask for still narrows the result.
    keys.On(search, QStringLiteral("with or"), [&keys] {
        keys.Press(QStringLiteral("LblEquals_2"));
        keys.Fill(QStringLiteral("SearchSurname"), QStringLiteral("Nobody"));
        keys.OpenTab(QStringLiteral("Characteristics"));
        keys.Go(QStringLiteral("SearchCharList"));
        keys.ToRow(given);
        keys.Tap(QStringLiteral("Space"));
        keys.Go(QStringLiteral("Opt_AndOr_0"));
        keys.Tap(QStringLiteral("Right"));
    });
    keys.See(search, QStringLiteral("search with or"), [&keys] { keys.Press(QStringLiteral("FindBtn")); });
    keys.Box(
        QStringLiteral("Veltrane"),
        [&plan] { return Summary(u"Surname <> \"Nobody\"\nCharacteristic = " % given, plan.found); },
        QStringLiteral("OK"));
    keys.See(search, QStringLiteral("found with or"), [&keys, &plan] {
        ExpectFound(keys, plan.found);
        keys.Tap(QStringLiteral("Escape"));
    });
}
} // namespace

void AddSearch(Keyboard &keys, TourPlan &plan)
{
    SearchForCounty(keys, plan);
    ApplyCharacteristic(keys, plan);
    SearchOnAllTabs(keys, plan);
}
