#include "contacts/manager/ContactSearchODBC.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "core/files/ErrorHandler.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Dialogs.h"

#include <QElapsedTimer>

namespace
{
constexpr const char *routineName = "ADO_Contact_Search";

/// Milliseconds that the window waits for the search at most. Serving the window after every row would take
/// longer than the rows.
constexpr qint64 servedEvery = 25;

/// Looks a person up in a table of what people have.
class TickFilter final
{
public:
    // NOLINTNEXTLINE(bugprone-easily-swappable-parameters): in the order of the form, must before must not.
    TickFilter(const QString &select, const SearchTickList &must, const SearchTickList &mustNot, bool any)
        : m_select(select)
        , m_must(must)
        , m_mustNot(mustNot)
        , m_any(any)
    {
    }

    /// Whether the person stays. With AND somebody who has all of what must not be is out, with OR somebody
    /// who has any of it; and all of what must be is needed with AND, any of it with OR.
    bool Takes(const QString &contactRef, QStringView section) const
    {
        if (m_mustNot.count > 0) {
            const int held = Held(contactRef, section, m_mustNot);
            if (held > 0 && (m_any || held == m_mustNot.count))
                return false;
        }
        if (m_must.count > 0) {
            const int held = Held(contactRef, section, m_must);
            if (held == 0 || (!m_any && held != m_must.count))
                return false;
        }
        return true;
    }

private:
    int Held(const QString &contactRef, QStringView section, const SearchTickList &list) const
    {
        return OpenRecordset(m_select % contactRef % section % u" AND (" % list.condition % u')').RowCount();
    }

    QString m_select;
    const SearchTickList &m_must;
    const SearchTickList &m_mustNot;
    bool m_any;
};

/// The row loop of a search.
class Search final
{
public:
    Search(ListModel &found, const std::function<void(int looked)> &showLooked,
           const ContactSearchQuery &query, bool any)
        : m_found(found)
        , m_showLooked(showLooked)
        , m_characteristics(QStringLiteral("SELECT * FROM ContactConcession WHERE ContactRef = "),
                            query.characteristics, query.notCharacteristics, any)
        , m_attributes(QStringLiteral("SELECT * FROM AppliedAttributes WHERE AppliesToRef = "),
                       query.attributes, query.notAttributes, any)
    {
        m_sinceServed.start();
    }

    /// False once the user has stopped the search.
    bool Look(const Recordset &people, int firstRow);
    void Show();

private:
    void LookAt(const Recordset::Row &person);

    struct Columns {
        int contactRef, surname, forename, addr1, city, postcode;
    };

    ListModel &m_found;
    const std::function<void(int looked)> &m_showLooked;
    TickFilter m_characteristics;
    TickFilter m_attributes;
    Columns m_columns{};
    std::vector<ListItem> m_new; ///< found since the list was brought up to date
    int m_looked = 0;
    QElapsedTimer m_sinceServed;
};

bool Search::Look(const Recordset &people, int firstRow)
{
    if (firstRow == 0) {
        m_found.Clear();
        m_new.clear();
        m_looked = 0;
        m_columns = {people.ColumnIndex(u"ContactRef"),    people.ColumnIndex(u"Cust_Surname"),
                     people.ColumnIndex(u"Cust_Forename"), people.ColumnIndex(u"Cust_Addr1"),
                     people.ColumnIndex(u"City"),          people.ColumnIndex(u"Cust_Postcode")};
    }
    for (const Recordset::Row person : people) {
        if (gStop)
            return false;
        LookAt(person);
        ++m_looked;
        if (m_sinceServed.elapsed() >= servedEvery)
            Show();
    }
    // On a server the rows can take their time to come.
    if (m_sinceServed.elapsed() >= servedEvery)
        Show();
    return !gStop;
}

void Search::LookAt(const Recordset::Row &person)
{
    const QString contactRef = person.Text(m_columns.contactRef);
    if (!m_characteristics.Takes(contactRef, {}) || !m_attributes.Takes(contactRef, u" AND RefSection = 1"))
        return;
    if (!person.HasText(m_columns.surname) || !person.HasText(m_columns.forename) ||
        person.Long(m_columns.contactRef) <= 1)
        return;
    m_new.push_back(
        {u'?' % contactRef,
         person.Text(m_columns.surname) % u", " % person.Text(m_columns.forename),
         {person.Text(m_columns.addr1), person.Text(m_columns.city), person.Text(m_columns.postcode)}});
}

void Search::Show()
{
    m_found.AddAll(std::exchange(m_new, {}));
    m_showLooked(m_looked);
    Dialogs::ServeEvents();
    m_sinceServed.start();
}

/// Typed text goes into the statement as it is. One apostrophe would close it there, and what follows would
/// run as SQL: with a second one the engine would not even object.
void RefuseApostrophes(const ContactSearchCriteria &criteria)
{
    const QString typed = TypedApostrophe(criteria);
    if (typed.isEmpty())
        return;
    SetCurrentError({0, QStringLiteral("Contact Search"),
                     u"People cannot be searched by " % typed %
                         u": it has an apostrophe. Nobody was searched for; type only what comes before it.",
                     QString()});
    HandleError(QString::fromLatin1(routineName), 0);
    throw StatementGivenUp{};
}
} // namespace

std::vector<SearchTick> SearchTicksOf(const TreeModel &tree)
{
    std::vector<SearchTick> ticks;
    for (const TreeNode *node : tree.Nodes()) {
        if (node->tick == TreeTick::On || node->tick == TreeTick::Not)
            ticks.push_back({KeyNumber(node->key), node->text, node->tick == TreeTick::Not});
    }
    return ticks;
}

QString ADO_Contact_Search(const ContactSearchCriteria &criteria, ListModel &found,
                           const std::function<void(int looked)> &showLooked)
{
    return Reported(routineName, QStringLiteral("Search Error!"), [&]() -> QString {
        found.Clear();
        RefuseApostrophes(criteria);
        const ContactSearchQuery query = ContactSearch_Build(criteria, DateToInt(Clock::Today()));
        Search search(found, showLooked, query, criteria.any);
        ReadInPieces(query.sql, [&search](const Recordset &people, int firstRow) {
            return search.Look(people, firstRow);
        });
        search.Show();
        QString summary =
            query.description % u"\nNumber of records found = " % QString::number(found.Count());
        Dialogs::MsgBox(summary);
        return summary;
    });
}
