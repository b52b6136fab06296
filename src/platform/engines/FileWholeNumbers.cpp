#include "platform/engines/FileWholeNumbers.h"

#include <QByteArray>
#include <QList>

#include <sqlite3.h>

#include <cmath>

namespace
{
/// The largest number that a column of that declared type takes, 0 if the type is not a whole number.
qint64 MostOf(const char *declared)
{
    const QByteArray type = QByteArray(declared).toUpper();
    if (type.startsWith("SMALLINT") || type == "BIT")
        return 32'767;
    return type.startsWith("INT") ? 2'147'483'647 : 0;
}

/// Walks a statement and notes which lifted value goes into which column.
class Walk final
{
public:
    Walk(const SqlTokens &tokens, sqlite3 *handle)
        : m_tokens(tokens)
        , m_handle(handle)
    {
        size_t lifted = 0;
        m_values.reserve(static_cast<size_t>(tokens.Count()));
        for (qsizetype i = 0; i < tokens.Count(); ++i)
            m_values.push_back(tokens.At(i).lifted ? lifted++ : 0);
    }

    std::vector<WholeTarget> Targets()
    {
        if (m_tokens.IsWord(0, u"INSERT") && m_tokens.IsWord(1, u"INTO"))
            OfInsert();
        else if (m_tokens.IsWord(0, u"UPDATE") && m_tokens.IsWord(2, u"SET"))
            OfUpdate();
        return std::move(m_targets);
    }

private:
    /// INSERT INTO table (column, ...) VALUES (value, ...)
    void OfInsert()
    {
        const QByteArray table = m_tokens.NameAt(2).toUtf8();
        QList<QByteArray> columns;
        qsizetype at = 3;
        while (m_tokens.IsSymbol(at, u',') || m_tokens.IsSymbol(at, u'(')) {
            columns.append(m_tokens.NameAt(at + 1).toUtf8());
            at += 2;
        }
        if (!m_tokens.IsSymbol(at, u')') || !m_tokens.IsWord(at + 1, u"VALUES"))
            return;
        at += 2;
        for (const QByteArray &column : columns) {
            Note(table, column, at + 1);
            at = EndOfValue(at + 1);
        }
    }

    /// UPDATE table SET column = value, ...
    void OfUpdate()
    {
        const QByteArray table = m_tokens.NameAt(1).toUtf8();
        qsizetype at = 2;
        do {
            if (!m_tokens.IsSymbol(at + 2, u'='))
                return;
            Note(table, m_tokens.NameAt(at + 1).toUtf8(), at + 3);
            at = EndOfValue(at + 3);
        } while (m_tokens.IsSymbol(at, u','));
    }

    /// The comma, bracket or word that ends the value beginning at `at`.
    qsizetype EndOfValue(qsizetype at) const
    {
        for (int depth = 0; at < m_tokens.Count(); ++at) {
            if (m_tokens.IsSymbol(at, u'('))
                ++depth;
            else if (depth == 0 && (m_tokens.IsSymbol(at, u',') || m_tokens.IsSymbol(at, u')') ||
                                    m_tokens.IsWord(at, u"WHERE")))
                return at;
            else if (m_tokens.IsSymbol(at, u')'))
                --depth;
        }
        return at;
    }

    /// Notes the value at `at` if it is a single value, apart from its sign.
    void Note(const QByteArray &table, const QByteArray &column, qsizetype at)
    {
        const int sign = m_tokens.IsSymbol(at, u'-') ? 1 : 0;
        const qsizetype value = at + sign;
        if (value >= m_tokens.Count() || !m_tokens.At(value).lifted || EndOfValue(value) != value + 1)
            return;
        const char *declared = nullptr;
        if (sqlite3_table_column_metadata(m_handle, nullptr, table.constData(), column.constData(), &declared,
                                          nullptr, nullptr, nullptr, nullptr) != SQLITE_OK)
            return;
        if (const qint64 most = MostOf(declared); most > 0)
            m_targets.push_back({m_values[static_cast<size_t>(value)], most + sign,
                                 QString::fromUtf8(column) % u" of " % QString::fromUtf8(table)});
    }

    const SqlTokens &m_tokens;
    sqlite3 *m_handle;
    std::vector<size_t> m_values{}; ///< for each lifted token, the index of its value
    std::vector<WholeTarget> m_targets{};
};

QByteArray TextOf(const SqlValue &value, const char *texts)
{
    return {texts + value.text.offset, value.text.size};
}

/// A text that contains a number is taken as that number, as on the servers.
bool TakeText(SqlValue &value, const QByteArray &text)
{
    bool isWhole = false;
    const qint64 whole = text.trimmed().toLongLong(&isWhole);
    value.kind = SqlValue::Kind::Whole;
    value.whole = whole;
    return isWhole;
}
} // namespace

std::vector<WholeTarget> WholeTargets(const SqlTokens &tokens, sqlite3 *handle)
{
    return Walk(tokens, handle).Targets();
}

QString FitWholeNumber(const WholeTarget &target, SqlValue &value, const char *texts)
{
    if (const QByteArray text = value.kind == SqlValue::Kind::Text ? TextOf(value, texts) : QByteArray();
        value.kind == SqlValue::Kind::Text && !TakeText(value, text))
        return u"The column " % target.column % u" takes only whole numbers, and not '" %
               QString::fromUtf8(text) % u"'.";
    if (value.kind == SqlValue::Kind::Real) {
        const double rounded = std::round(value.real);
        value.kind = SqlValue::Kind::Whole;
        // Too large for any column, and for the conversion to have a defined result.
        value.whole = std::abs(rounded) < 1e18 ? static_cast<qint64>(rounded) : target.most + 1;
    }
    if (value.whole <= target.most && value.whole >= -target.most - 1)
        return {};
    return u"The column " % target.column % u" takes numbers up to " % QString::number(target.most) %
           u" alone.";
}
