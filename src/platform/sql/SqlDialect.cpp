#include "platform/sql/SqlDialect.h"

#include "platform/sql/SameName.h"

#include <algorithm>
#include <array>
#include <optional>

namespace
{
/// Shorter chains gain nothing from being written as a list.
constexpr int shortestChain = 8;
/// SQL Server gives up on longer lists, and on deeper chains.
constexpr size_t longestServerList = 1000;

struct TypeNames {
    QStringView written;
    QStringView file;
    QStringView postgreSql;
};

/// The data types that the system writes when it adds a column. Flags are compared with 1 and written as -1,
/// so they are small integers; texts compare without regard to case.
constexpr std::array typeNames{
    TypeNames{u"BIT", u"SMALLINT", u"smallint"},   TypeNames{u"FLOAT", u"DOUBLE", u"double precision"},
    TypeNames{u"INT", u"INTEGER", u"integer"},     TypeNames{u"LONG", u"INTEGER", u"integer"},
    TypeNames{u"TEXT", u"VARCHAR", u"citext"},     TypeNames{u"VARCHAR", u"VARCHAR", u"citext"},
    TypeNames{u"NVARCHAR", u"VARCHAR", u"citext"}, TypeNames{u"MEMO", u"TEXT", u"citext"},
    TypeNames{u"NTEXT", u"TEXT", u"citext"},
};

bool IsWordLike(SqlKind kind)
{
    return kind != SqlKind::Symbol;
}

bool HoldsBeyondAscii(QStringView text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() > 0x7F; });
}

/// Rewrites a statement, token by token.
class Writer final
{
public:
    Writer(SqlDialect dialect, const SqlTokens &tokens)
        : m_dialect(dialect)
        , m_tokens(tokens)
    {
        m_out.reserve(tokens.Sql().size() + 32);
    }

    QString Write(const QString &order);

private:
    struct Limit {
        int depth;
        QString rows;
    };
    /// A run of `column = value OR column = value ...`.
    struct Chain {
        qsizetype columnEnd = 0;       ///< just after the first column's tokens
        qsizetype end = 0;             ///< just after the last term
        std::vector<qsizetype> values; ///< first token of each value, a minus sign or the literal
    };

    bool WriteTableDefinition();
    void WriteToken(qsizetype index);
    void WriteName(qsizetype index);
    void WriteText(qsizetype index);
    qsizetype WriteType(qsizetype index);
    qsizetype SkipTop(qsizetype index);
    void WriteLimits(int depth);
    bool StartsChain(qsizetype index) const;
    std::optional<Chain> FindChain(qsizetype index) const;
    qsizetype EndOfColumn(qsizetype index) const;
    qsizetype EndOfValue(qsizetype index) const;
    bool EndsTerm(qsizetype index) const;
    bool SameTokens(qsizetype first, qsizetype second, qsizetype count) const;
    void WriteChain(qsizetype index, const Chain &chain);

    SqlDialect m_dialect;
    const SqlTokens &m_tokens;
    QString m_out;
    qsizetype m_last = -1; ///< the token written last
    std::vector<Limit> m_limits;
};

QString Writer::Write(const QString &order)
{
    if (WriteTableDefinition())
        return m_out;
    int depth = 0;
    for (qsizetype i = 0; i < m_tokens.Count();) {
        if (const qsizetype behindTop = SkipTop(i); behindTop != i) {
            m_limits.push_back({depth, m_tokens.Spelling(behindTop - 1).toString()});
            i = behindTop;
            continue;
        }
        if (StartsChain(i)) {
            if (const std::optional<Chain> chain = FindChain(i)) {
                WriteChain(i, *chain);
                i = chain->end;
                continue;
            }
        }
        if (m_tokens.IsSymbol(i, u'('))
            ++depth;
        if (m_tokens.IsSymbol(i, u')'))
            WriteLimits(depth--);
        WriteToken(i++);
    }
    m_out += order;
    WriteLimits(0);
    return m_out;
}

/// Writes CREATE TABLE and ALTER TABLE ... ADD, whose column types have other names; false for any other
/// statement.
bool Writer::WriteTableDefinition()
{
    const bool creates = m_tokens.IsWord(0, u"CREATE") && m_tokens.IsWord(1, u"TABLE");
    if (creates && m_tokens.Count() == 3) {
        // A table without columns. On engines that do not allow one, the table gets the one column that it is
        // made for, and the statement that adds this column later fails as it does when the column already
        // exists.
        m_out = QStringLiteral("CREATE TABLE ");
        WriteName(2);
        m_out += m_dialect == SqlDialect::File         ? QStringLiteral(" (DBVersion DOUBLE)")
                 : m_dialect == SqlDialect::PostgreSql ? QStringLiteral(" ()")
                                                       : QStringLiteral(" (DBVersion FLOAT)");
        return true;
    }
    if (m_dialect == SqlDialect::SqlServer || !m_tokens.IsWord(0, u"ALTER") || !m_tokens.IsWord(3, u"ADD"))
        return false;
    const qsizetype typeAt = m_tokens.IsWord(4, u"COLUMN") ? 6 : 5;
    for (qsizetype i = 0; i < m_tokens.Count();) {
        if (i == typeAt)
            i = WriteType(i);
        else
            WriteToken(i++);
    }
    return true;
}

qsizetype Writer::WriteType(qsizetype index)
{
    const auto *type = std::find_if(typeNames.begin(), typeNames.end(), [&](const TypeNames &candidate) {
        return m_tokens.IsWord(index, candidate.written);
    });
    if (type == typeNames.end()) {
        WriteToken(index);
        return index + 1;
    }
    const bool hasWidth = m_tokens.IsSymbol(index + 1, u'(') && m_tokens.IsKind(index + 2, SqlKind::Number) &&
                          m_tokens.IsSymbol(index + 3, u')');
    m_out += u' ' + (m_dialect == SqlDialect::File ? type->file : type->postgreSql).toString();
    if (m_dialect == SqlDialect::File) {
        if (hasWidth)
            m_out += u'(' + m_tokens.Spelling(index + 2).toString() + u')';
        if (type->postgreSql == u"citext")
            m_out += QStringLiteral(" COLLATE NOCASE");
    }
    m_last = index;
    return index + (hasWidth ? 4 : 1);
}

void Writer::WriteToken(qsizetype index)
{
    const SqlToken &token = m_tokens.At(index);
    if (m_last >= 0) {
        const SqlToken &last = m_tokens.At(m_last);
        const bool apart = token.begin > last.end || m_last != index - 1;
        const bool wouldJoin = IsWordLike(last.kind) == IsWordLike(token.kind);
        if (apart || wouldJoin)
            m_out += u' ';
    }
    m_last = index;
    if (token.lifted) {
        m_out += u'?';
        return;
    }
    switch (token.kind) {
    case SqlKind::Word:
        if (m_tokens.IsWord(index, u"LIMIT"))
            WriteName(index);
        else if (m_dialect == SqlDialect::File && m_tokens.IsWord(index, u"LIKE") &&
                 m_tokens.IsKind(index + 1, SqlKind::Text) && HoldsBeyondAscii(m_tokens.Spelling(index + 1)))
            // The file engine's own LIKE knows only the case of A to Z; this operator is ours.
            m_out += QStringLiteral("REGEXP");
        else
            m_out += m_tokens.Spelling(index);
        break;
    case SqlKind::Name:
        WriteName(index);
        break;
    case SqlKind::Text:
        WriteText(index);
        break;
    case SqlKind::Number:
    case SqlKind::Symbol:
        m_out += m_tokens.Spelling(index);
        break;
    }
}

/// Writes a name in quotes, but unchanged for SQL Server. PostgreSQL keeps the case of a quoted name, and its
/// tables are made without quotes, in lower case.
void Writer::WriteName(qsizetype index)
{
    if (m_dialect == SqlDialect::SqlServer) {
        m_out += m_tokens.Spelling(index);
        return;
    }
    const QString name = m_tokens.NameAt(index);
    QString quoted = m_dialect == SqlDialect::PostgreSql ? name.toLower() : name;
    m_out += u'"' + quoted.replace(QStringLiteral("\""), QStringLiteral("\"\"")) + u'"';
}

void Writer::WriteText(qsizetype index)
{
    QString text = m_tokens.Spelling(index).toString();
    // Special characters in a pattern: PostgreSQL's backslash, and SQL Server's bracket, which opens a class.
    if (m_tokens.IsWord(index - 1, u"LIKE")) {
        if (m_dialect == SqlDialect::PostgreSql)
            text.replace(QStringLiteral("\\"), QStringLiteral("\\\\"));
        else if (m_dialect == SqlDialect::SqlServer)
            text.replace(QStringLiteral("["), QStringLiteral("[[]"));
    }
    m_out += text;
}

/// The position after a `TOP n` that begins at `index`; `index` itself if there is none.
qsizetype Writer::SkipTop(qsizetype index)
{
    const bool behindSelect =
        m_tokens.IsWord(index - 1, u"SELECT") ||
        (m_tokens.IsWord(index - 1, u"DISTINCT") && m_tokens.IsWord(index - 2, u"SELECT"));
    if (behindSelect && m_dialect != SqlDialect::SqlServer && m_tokens.IsWord(index, u"TOP") &&
        m_tokens.IsKind(index + 1, SqlKind::Number))
        return index + 2;
    return index;
}

void Writer::WriteLimits(int depth)
{
    while (!m_limits.empty() && m_limits.back().depth == depth) {
        m_out += u" LIMIT " + m_limits.back().rows;
        m_limits.pop_back();
    }
}

/// A chain may begin only where no AND or NOT binds its first term to something else.
bool Writer::StartsChain(qsizetype index) const
{
    return m_tokens.IsKind(index, SqlKind::Word) &&
           (m_tokens.IsWord(index - 1, u"WHERE") || m_tokens.IsWord(index - 1, u"OR") ||
            m_tokens.IsWord(index - 1, u"ON") || m_tokens.IsSymbol(index - 1, u'('));
}

std::optional<Writer::Chain> Writer::FindChain(qsizetype index) const
{
    Chain chain;
    chain.columnEnd = EndOfColumn(index);
    const qsizetype columnTokens = chain.columnEnd - index;
    for (qsizetype term = index;; term = chain.end + 1) {
        if (EndOfColumn(term) - term != columnTokens || !SameTokens(index, term, columnTokens) ||
            !m_tokens.IsSymbol(term + columnTokens, u'='))
            break;
        const qsizetype value = term + columnTokens + 1;
        const qsizetype end = EndOfValue(value);
        if (end < 0 || !EndsTerm(end))
            break;
        chain.values.push_back(value);
        chain.end = end;
        if (!m_tokens.IsWord(end, u"OR"))
            break;
    }
    if (chain.values.size() < shortestChain)
        return std::nullopt;
    return chain;
}

qsizetype Writer::EndOfColumn(qsizetype index) const
{
    const auto isName = [this](qsizetype at) {
        return m_tokens.IsKind(at, SqlKind::Word) || m_tokens.IsKind(at, SqlKind::Name);
    };
    if (!isName(index))
        return index;
    while (m_tokens.IsSymbol(index + 1, u'.') && isName(index + 2))
        index += 2;
    return index + 1;
}

qsizetype Writer::EndOfValue(qsizetype index) const
{
    if (m_tokens.IsSymbol(index, u'-'))
        return m_tokens.IsKind(index + 1, SqlKind::Number) ? index + 2 : -1;
    const bool isValue = m_tokens.IsKind(index, SqlKind::Number) || m_tokens.IsKind(index, SqlKind::Text);
    return isValue ? index + 1 : -1;
}

/// Whether nothing at `index` binds tighter than OR to the term before it.
bool Writer::EndsTerm(qsizetype index) const
{
    return index >= m_tokens.Count() || m_tokens.IsSymbol(index, u')') || m_tokens.IsWord(index, u"OR") ||
           m_tokens.IsWord(index, u"ORDER") || m_tokens.IsWord(index, u"GROUP");
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): two stretches, which may be compared either way.
bool Writer::SameTokens(qsizetype first, qsizetype second, qsizetype count) const
{
    for (qsizetype i = 0; i < count; ++i) {
        if (!SameName(m_tokens.Spelling(first + i), m_tokens.Spelling(second + i)))
            return false;
    }
    return true;
}

void Writer::WriteChain(qsizetype index, const Chain &chain)
{
    const size_t longest = m_dialect == SqlDialect::SqlServer ? longestServerList : chain.values.size();
    for (size_t term = 0; term < chain.values.size(); ++term) {
        if (term % longest == 0) {
            if (term > 0)
                m_out += QStringLiteral(") OR");
            for (qsizetype i = index; i < chain.columnEnd; ++i)
                WriteToken(i);
            m_out += QStringLiteral(" IN (");
        } else {
            m_out += u',';
        }
        for (qsizetype i = chain.values[term]; i < EndOfValue(chain.values[term]); ++i)
            WriteToken(i);
    }
    m_out += u')';
    m_last = chain.end - 1;
}
} // namespace

QString SqlFor(SqlDialect dialect, const SqlTokens &tokens, const QString &order)
{
    return Writer(dialect, tokens).Write(order);
}
