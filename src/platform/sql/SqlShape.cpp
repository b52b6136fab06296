#include "platform/sql/SqlShape.h"

namespace
{
/// A statement with more values than this is run once; caching it would only fill the cache.
constexpr int mostValues = 150;

bool IsOrdering(const SqlTokens &tokens, qsizetype index)
{
    return tokens.IsWord(index, u"BY") &&
           (tokens.IsWord(index - 1, u"ORDER") || tokens.IsWord(index - 1, u"GROUP"));
}

bool FollowsKeptWord(const SqlTokens &tokens, qsizetype index)
{
    return tokens.IsWord(index - 1, u"LIKE") || tokens.IsWord(index - 1, u"TOP");
}

/// Marks the values to lift; false if there are too many.
bool MarkLifted(SqlTokens &tokens)
{
    int lifted = 0;
    for (qsizetype i = 0; i < tokens.Count(); ++i) {
        SqlToken &token = tokens.At(i);
        if (IsOrdering(tokens, i))
            break;
        if (token.kind != SqlKind::Text && token.kind != SqlKind::Number)
            continue;
        if (FollowsKeptWord(tokens, i))
            continue;
        token.lifted = true;
        if (++lifted > mostValues)
            return false;
    }
    return true;
}

/// Writes a character that is not ASCII at `out`, and returns the position after it.
char *WriteUtf8(char *out, char32_t c)
{
    if (c < 0x800) {
        *out++ = static_cast<char>(0xC0 | (c >> 6));
    } else {
        if (c < 0x10000) {
            *out++ = static_cast<char>(0xE0 | (c >> 12));
        } else {
            *out++ = static_cast<char>(0xF0 | (c >> 18));
            *out++ = static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        }
        *out++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    }
    *out++ = static_cast<char>(0x80 | (c & 0x3F));
    return out;
}
} // namespace

bool IsRowStatement(const SqlTokens &tokens)
{
    return tokens.IsWord(0, u"SELECT") || tokens.IsWord(0, u"INSERT") || tokens.IsWord(0, u"UPDATE") ||
           tokens.IsWord(0, u"DELETE");
}

bool SqlShape::Take(SqlTokens &tokens)
{
    m_key.clear();
    m_values.clear();
    m_texts.clear();
    if (!IsRowStatement(tokens))
        return false;
    if (!MarkLifted(tokens)) {
        for (qsizetype i = 0; i < tokens.Count(); ++i)
            tokens.At(i).lifted = false;
        return false;
    }

    const QStringView sql = tokens.Sql();
    qsizetype taken = 0;
    for (qsizetype i = 0; i < tokens.Count(); ++i) {
        const SqlToken &token = tokens.At(i);
        if (!token.lifted)
            continue;
        m_key.append(sql.utf16() + taken, static_cast<size_t>(token.begin - taken));
        // A text and a number in the same place make two shapes: nothing may depend on which came first.
        m_key.push_back(token.kind == SqlKind::Text ? u'\1' : u'\2');
        taken = token.end;
        if (token.kind == SqlKind::Text)
            TakeText(sql.sliced(token.begin + 1, token.end - token.begin - 2));
        else
            TakeNumber(tokens.Spelling(i));
    }
    m_key.append(sql.utf16() + taken, static_cast<size_t>(sql.size() - taken));
    return true;
}

void SqlShape::TakeText(QStringView inside)
{
    SqlValue value{};
    value.kind = SqlValue::Kind::Text;
    value.text.offset = static_cast<qint32>(m_texts.size());
    constexpr qsizetype mostBytes = 3; // of a UTF-16 unit
    m_texts.resize(m_texts.size() + static_cast<size_t>(inside.size() * mostBytes));
    char *out = m_texts.data() + value.text.offset;
    const char16_t *text = inside.utf16();
    const qsizetype size = inside.size();
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t c = text[i];
        if (c == u'\'')
            ++i; // the second of the pair
        if (c == u'\0')
            continue; // no server accepts it, so no engine is given it
        if (c < 0x80)
            *out++ = static_cast<char>(c);
        else if (!QChar::isSurrogate(c))
            out = WriteUtf8(out, c);
        else if (QChar::isHighSurrogate(c) && i + 1 < size && QChar::isLowSurrogate(text[i + 1]))
            out = WriteUtf8(out, QChar::surrogateToUcs4(c, text[++i]));
        else
            out = WriteUtf8(out, QChar::ReplacementCharacter);
    }
    m_texts.resize(static_cast<size_t>(out - m_texts.data()));
    value.text.size = static_cast<qint32>(m_texts.size()) - value.text.offset;
    m_values.push_back(value);
}

void SqlShape::TakeNumber(QStringView digits)
{
    constexpr qsizetype alwaysFits = 18;
    SqlValue value{};
    qint64 whole = 0;
    bool isWhole = digits.size() <= alwaysFits;
    for (qsizetype i = 0; isWhole && i < digits.size(); ++i) {
        isWhole = digits[i] >= u'0' && digits[i] <= u'9';
        whole = whole * 10 + (digits[i].unicode() - u'0');
    }
    if (isWhole) {
        value.kind = SqlValue::Kind::Whole;
        value.whole = whole;
    } else {
        value.kind = SqlValue::Kind::Real;
        value.real = digits.toDouble();
    }
    m_values.push_back(value);
}
