#pragma once

#include "platform/sql/SameName.h"

#include <QString>
#include <QStringView>

#include <vector>

enum class SqlKind : quint8 {
    Word,
    Name,   ///< [Name] or "Name"
    Text,   ///< 'text', apostrophes inside doubled
    Number, ///< without sign
    Symbol
};

struct SqlToken {
    SqlKind kind;
    bool lifted; ///< its value is bound instead of being written in the statement
    qint32 begin;
    qint32 end;
};

enum class SqlFault { None, OpenText, OpenName, SecondStatement };

/// One statement, cut into tokens. There are no comments: two hyphens are two minus signs, so that nothing
/// after them can vanish. A second statement after a semicolon is a fault, and so are quotes that do not
/// close; neither reaches an engine.
class SqlTokens final
{
public:
    /// Reads a statement, replacing the previous one; `sql` must outlive the tokens.
    SqlFault Read(QStringView sql);

    QStringView Sql() const { return m_sql; }
    qsizetype Count() const { return static_cast<qsizetype>(m_tokens.size()); }
    SqlToken &At(qsizetype index) { return m_tokens[static_cast<size_t>(index)]; }
    const SqlToken &At(qsizetype index) const { return m_tokens[static_cast<size_t>(index)]; }
    QStringView Spelling(qsizetype index) const
    {
        const SqlToken &token = At(index);
        return m_sql.sliced(token.begin, token.end - token.begin);
    }
    bool IsKind(qsizetype index, SqlKind kind) const
    {
        return index >= 0 && index < Count() && At(index).kind == kind;
    }
    /// Whether that token is the keyword, in any case; false outside the statement.
    bool IsWord(qsizetype index, QStringView keyword) const
    {
        return IsKind(index, SqlKind::Word) && SameName(Spelling(index), keyword);
    }
    bool IsSymbol(qsizetype index, QChar symbol) const;
    /// What a [Name], "Name" or plain word names.
    QString NameAt(qsizetype index) const;

private:
    QStringView m_sql;
    std::vector<SqlToken> m_tokens;
};

/// `sql` as every engine can hold it: no NUL, and no half of a surrogate pair.
QString WellFormed(const QString &sql);

/// A plain sentence on why the statement is refused.
QString SqlFaultText(SqlFault fault);
