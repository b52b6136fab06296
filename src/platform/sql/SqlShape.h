#pragma once

#include "platform/sql/SqlTokens.h"

#include <string>
#include <string_view>

/// A value lifted out of a statement, to be bound.
struct SqlValue {
    enum class Kind : quint8 { Whole, Real, Text };
    struct Piece {
        qint32 offset; ///< into SqlShape::Texts, UTF-8
        qint32 size;
    };
    Kind kind;
    union {
        qint64 whole;
        double real;
        Piece text;
    };
};

/// Whether the statement reads or changes rows; all others define tables or control the engine.
bool IsRowStatement(const SqlTokens &tokens);

/// What is left of a statement when its values are taken out. Statements of one shape differ only in their
/// values, so one prepared statement serves them all. A value that decides what the statement means or how it
/// runs stays in: after TOP and LIKE, after ORDER BY and GROUP BY, and every value in a statement that
/// defines tables or has very many values.
class SqlShape final
{
public:
    /// Takes the values out of `tokens` (and sets their `lifted` marks). False, with nothing lifted, if the
    /// statement has no shape worth keeping.
    bool Take(SqlTokens &tokens);

    std::u16string_view Key() const { return m_key; }
    const std::vector<SqlValue> &Values() const { return m_values; }
    SqlValue &ValueAt(size_t index) { return m_values[index]; }
    const char *Texts() const { return m_texts.data(); }

private:
    void TakeText(QStringView inside);
    void TakeNumber(QStringView digits);

    std::u16string m_key;
    std::vector<SqlValue> m_values;
    std::string m_texts;
};
