#include "platform/engines/FileText.h"

#include <QChar>

#include <sqlite3.h>

#include <algorithm>

namespace
{
/// Walks UTF-8 character by character with the case folded. A byte that is not valid UTF-8 counts as itself.
class Folded final
{
public:
    Folded(const void *text, int size)
        : m_at(static_cast<const unsigned char *>(text))
        , m_end(m_at + size)
    {
    }

    bool AtEnd() const { return m_at >= m_end; }

    char32_t Next()
    {
        const unsigned char first = *m_at++;
        if (first < 0x80)
            return first >= 'A' && first <= 'Z' ? first + 32u : first;
        const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
        if (more == 0 || m_end - m_at < more)
            return first;
        char32_t c = first & (0x3Fu >> more);
        for (int i = 0; i < more; ++i)
            c = (c << 6) | (*m_at++ & 0x3Fu);
        return c > QChar::LastValidCodePoint ? c : QChar::toCaseFolded(c);
    }

private:
    const unsigned char *m_at;
    const unsigned char *m_end;
};

int CompareTexts(void *, int leftSize, const void *left, int rightSize, const void *right)
{
    const auto *a = static_cast<const unsigned char *>(left);
    const auto *b = static_cast<const unsigned char *>(right);
    const int common = std::min(leftSize, rightSize);
    int same = 0;
    while (same < common && a[same] == b[same] && a[same] < 0x80)
        ++same;
    Folded l(a + same, leftSize - same);
    Folded r(b + same, rightSize - same);
    while (!l.AtEnd() && !r.AtEnd()) {
        const char32_t x = l.Next();
        const char32_t y = r.Next();
        if (x != y)
            return x < y ? -1 : 1;
    }
    if (l.AtEnd() && r.AtEnd())
        return 0;
    return l.AtEnd() ? -1 : 1;
}

/// Whether `text` matches `pattern`: "%" is any run of characters, "_" any single one.
bool IsLike(Folded pattern, Folded text)
{
    // The position after the last "%", to go back to when what follows it does not match here.
    Folded patternBehindRun = pattern;
    Folded textOfRun = text;
    bool hasRun = false;
    while (true) {
        Folded patternNext = pattern;
        const bool patternEnds = pattern.AtEnd();
        const char32_t wanted = patternEnds ? U'\0' : patternNext.Next();
        if (!patternEnds && wanted == U'%') {
            pattern = patternNext;
            patternBehindRun = pattern;
            textOfRun = text;
            hasRun = true;
            continue;
        }
        if (text.AtEnd())
            return patternEnds;
        Folded textNext = text;
        const char32_t found = textNext.Next();
        if (!patternEnds && (wanted == U'_' || wanted == found)) {
            pattern = patternNext;
            text = textNext;
            continue;
        }
        if (!hasRun || textOfRun.AtEnd())
            return false;
        textOfRun.Next();
        pattern = patternBehindRun;
        text = textOfRun;
    }
}

void LikeInEveryAlphabet(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL)
        return;
    const auto folded = [](sqlite3_value *value) {
        const unsigned char *text = sqlite3_value_text(value);
        return Folded(text, sqlite3_value_bytes(value));
    };
    sqlite3_result_int(context, IsLike(folded(arguments[0]), folded(arguments[1])) ? 1 : 0);
}
} // namespace

bool InstallTextComparison(sqlite3 *handle)
{
    return sqlite3_create_collation_v2(handle, "NOCASE", SQLITE_UTF8, nullptr, CompareTexts, nullptr) ==
               SQLITE_OK &&
           sqlite3_create_function_v2(handle, "regexp", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                      LikeInEveryAlphabet, nullptr, nullptr, nullptr) == SQLITE_OK;
}
