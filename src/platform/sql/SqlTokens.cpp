#include "platform/sql/SqlTokens.h"

#include <QList>

#include <array>

namespace
{
/// What a character can be part of. Every statement goes through this, so ASCII is looked up in a table.
enum CharClass : quint8 { Space = 1, Digit = 2, WordStart = 4, WordPart = 8 };

constexpr auto asciiClasses = [] {
    std::array<quint8, 128> classes{};
    for (size_t c = 0; c < classes.size(); ++c) {
        const bool isLetter = (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
        if (c <= u' ')
            classes[c] = Space;
        else if (c >= u'0' && c <= u'9')
            classes[c] = Digit | WordPart;
        else if (isLetter)
            classes[c] = WordStart | WordPart;
        else if (c == u'$' || c == u'#' || c == u'@')
            classes[c] = WordPart;
    }
    return classes;
}();

bool Is(char16_t c, CharClass wanted)
{
    constexpr char16_t hardSpace = 0xA0;
    if (c < asciiClasses.size())
        return (asciiClasses[c] & wanted) != 0;
    return c == hardSpace ? wanted == Space : c > hardSpace && (wanted == WordStart || wanted == WordPart);
}

bool IsDigit(char16_t c)
{
    return Is(c, Digit);
}

/// Walks a statement. Each End... returns the position after the token that begins at `at`.
class Cursor final
{
public:
    explicit Cursor(QStringView sql)
        : m_text(sql.utf16())
        , m_size(sql.size())
    {
    }

    char16_t At(qsizetype at) const { return at < m_size ? m_text[at] : u'\0'; }

    /// The position after the closing quote (a doubled quote is part of the text); -1 if there is none.
    qsizetype EndOfQuoted(qsizetype at, char16_t quote) const
    {
        for (qsizetype i = at + 1; i < m_size; ++i) {
            if (m_text[i] != quote)
                continue;
            if (At(i + 1) != quote)
                return i + 1;
            ++i;
        }
        return -1;
    }

    qsizetype EndOfWord(qsizetype at) const
    {
        while (at < m_size && Is(m_text[at], WordPart))
            ++at;
        return at;
    }

    qsizetype EndOfNumber(qsizetype at) const
    {
        at = EndOfDigits(at);
        if (At(at) == u'.')
            at = EndOfDigits(at + 1);
        if (At(at) == u'e' || At(at) == u'E') {
            const bool hasSign = At(at + 1) == u'+' || At(at + 1) == u'-';
            const qsizetype digits = at + (hasSign ? 2 : 1);
            if (IsDigit(At(digits)))
                at = EndOfDigits(digits);
        }
        return at;
    }

    qsizetype EndOfSymbol(qsizetype at) const
    {
        const char16_t first = At(at);
        const char16_t second = At(at + 1);
        const bool pair = (first == u'<' && (second == u'>' || second == u'=')) ||
                          (first == u'>' && second == u'=') || (first == u'!' && second == u'=') ||
                          (first == u'|' && second == u'|');
        return at + (pair ? 2 : 1);
    }

private:
    qsizetype EndOfDigits(qsizetype at) const
    {
        while (at < m_size && IsDigit(m_text[at]))
            ++at;
        return at;
    }

    const char16_t *m_text;
    qsizetype m_size;
};
} // namespace

SqlFault SqlTokens::Read(QStringView sql)
{
    m_sql = sql;
    m_tokens.clear();
    const Cursor cursor(sql);
    bool finished = false;
    for (qsizetype at = 0; at < sql.size();) {
        const char16_t c = cursor.At(at);
        if (Is(c, Space)) {
            ++at;
            continue;
        }
        if (finished)
            return SqlFault::SecondStatement;
        if (c == u';') {
            finished = true;
            ++at;
            continue;
        }
        SqlKind kind = SqlKind::Symbol;
        qsizetype end = at;
        if (c == u'\'') {
            kind = SqlKind::Text;
            end = cursor.EndOfQuoted(at, c);
            if (end < 0)
                return SqlFault::OpenText;
        } else if (c == u'"' || c == u'[') {
            kind = SqlKind::Name;
            end = cursor.EndOfQuoted(at, c == u'[' ? u']' : c);
            if (end < 0)
                return SqlFault::OpenName;
        } else if (Is(c, WordStart)) {
            kind = SqlKind::Word;
            end = cursor.EndOfWord(at);
        } else if (IsDigit(c) || (c == u'.' && IsDigit(cursor.At(at + 1)))) {
            kind = SqlKind::Number;
            end = cursor.EndOfNumber(at);
        } else {
            end = cursor.EndOfSymbol(at);
        }
        m_tokens.push_back({kind, false, static_cast<qint32>(at), static_cast<qint32>(end)});
        at = end;
    }
    return SqlFault::None;
}

bool SqlTokens::IsSymbol(qsizetype index, QChar symbol) const
{
    return IsKind(index, SqlKind::Symbol) && At(index).end - At(index).begin == 1 &&
           m_sql[At(index).begin] == symbol;
}

QString SqlTokens::NameAt(qsizetype index) const
{
    const QStringView spelling = Spelling(index);
    if (At(index).kind != SqlKind::Name)
        return spelling.toString();
    const QString quote = spelling.last(1).toString();
    return spelling.sliced(1, spelling.size() - 2).toString().replace(quote + quote, quote);
}

QString WellFormed(const QString &sql)
{
    if (sql.isValidUtf16() && !sql.contains(QChar(u'\0')))
        return sql;
    const QList<uint> characters = sql.toUcs4();
    QString result;
    for (const uint character : characters)
        result += QChar::fromUcs4(character);
    result.remove(QChar(u'\0'));
    return result;
}

QString SqlFaultText(SqlFault fault)
{
    switch (fault) {
    case SqlFault::None:
        break;
    case SqlFault::OpenText:
        return QStringLiteral("Syntax error: a text in the statement has no closing apostrophe.");
    case SqlFault::OpenName:
        return QStringLiteral("Syntax error: a quoted name in the statement has no closing quote.");
    case SqlFault::SecondStatement:
        return QStringLiteral("Syntax error: characters found after the end of the statement.");
    }
    return {};
}
