#include "contacts/manager/QuickFilter.h"

#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/Sentinel.h"
#include "database/values/GlobalCode.h"

#include <QStringMatcher>

#include <algorithm>

namespace
{
/// The columns of Read.
enum Column { Reference, Surname, Forename, ReferenceId, TelDay, TelEve, Email, Postcode };

/// Entries have none, so that none is found across two fields.
constexpr char16_t endOfField = u'\n';

/// Without what people write between the digits of a number.
QString Bare(QString text)
{
    return text.removeIf([](QChar c) { return !c.isLetterOrNumber(); });
}

ListItem ItemOf(const Recordset::Row &row)
{
    return {u'?' % row.Text(Reference),
            FormatRefLabel(row.Text(ReferenceId), row.Text(Surname) % u", " % row.Text(Forename)),
            {row.HasText(TelDay) ? row.Text(TelDay) : row.Text(TelEve), row.Text(Email), row.Text(Postcode)}};
}
} // namespace

bool QuickFilter::Read()
{
    return Reported("QuickFilter", false, [this] {
        m_people = OpenRecordset(QStringLiteral(
            "SELECT ContactRef, Cust_Surname, Cust_Forename, ReferenceID, Cust_TelDay, Cust_TelEve, "
            "Cust_Email, Cust_Postcode FROM Contacts ORDER BY Cust_Surname,Cust_Forename ASC"));
        m_text.clear();
        m_begin.clear();
        m_rowOf.clear();
        for (int row = 0; row < m_people.RowCount(); ++row) {
            const Recordset::Row person = m_people.At(row);
            if (IsSentinel(static_cast<int>(person.Long(Reference))) ||
                (!person.HasText(Surname) && !person.HasText(Forename)))
                continue;
            m_begin.push_back(m_text.size());
            m_rowOf.push_back(row);
            Append(person);
        }
        return true;
    });
}

void QuickFilter::Append(const Recordset::Row &row)
{
    const QString surname = row.Text(Surname);
    const QString forename = row.Text(Forename);
    QString fields = surname % u", " % forename % endOfField % forename % u' ' % surname % endOfField;
    for (const int column : {TelDay, TelEve, Email, Postcode}) {
        if (row.HasText(column))
            fields += row.Text(column) % endOfField;
    }
    for (const int column : {TelDay, TelEve, Postcode}) {
        const QString text = row.Text(column);
        if (const QString bare = Bare(text); bare.size() != text.size())
            fields += bare % endOfField;
    }
    m_text += fields.toUpper().toStdU16String();
}

int QuickFilter::Find(const QString &entry, int most, ListModel &found) const
{
    std::vector<ListItem> items;
    int count = 0;
    const QString wanted = entry.trimmed().toUpper();
    // Only in a number are the blanks of the entry left out too: "an na" is nobody's name.
    const bool isNumber = std::any_of(wanted.begin(), wanted.end(), [](QChar c) { return c.isDigit(); }) &&
                          !wanted.contains(u'@');
    const QStringMatcher matcher(wanted);
    const QStringMatcher bareMatcher(isNumber ? Bare(wanted) : wanted);
    const auto next = [this](const QStringMatcher &of, size_t from) {
        const qsizetype at = of.indexIn(QStringView(m_text), static_cast<qsizetype>(from));
        return at < 0 ? m_text.size() : static_cast<size_t>(at);
    };
    const bool both = bareMatcher.pattern() != wanted;
    size_t at = next(matcher, 0);
    size_t bareAt = both ? next(bareMatcher, 0) : m_text.size();
    while (!wanted.isEmpty() && std::min(at, bareAt) < m_text.size()) {
        const auto after = std::upper_bound(m_begin.begin(), m_begin.end(), std::min(at, bareAt));
        if (++count <= most)
            items.push_back(ItemOf(m_people.At(m_rowOf[static_cast<size_t>(after - m_begin.begin()) - 1])));
        if (after == m_begin.end())
            break;
        if (at < *after)
            at = next(matcher, *after);
        if (bareAt < *after)
            bareAt = next(bareMatcher, *after);
    }
    found.Fill(std::move(items));
    return count;
}
