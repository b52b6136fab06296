#include "platform/sql/SqlKeyOrder.h"

namespace
{
/// The position of FROM; -1 if what is selected is not simply rows of a table.
qsizetype FindFrom(const SqlTokens &tokens)
{
    if (!tokens.IsWord(0, u"SELECT") || tokens.IsWord(1, u"DISTINCT"))
        return -1;
    for (qsizetype i = 1; i < tokens.Count(); ++i) {
        if (tokens.IsSymbol(i, u'(')) // COUNT(*) and the like make one row of many
            return -1;
        if (tokens.IsWord(i, u"FROM"))
            return i;
    }
    return -1;
}

/// Whether the condition only filters the rows, without grouping or ordering them.
bool IsPlainCondition(const SqlTokens &tokens, qsizetype begin)
{
    int depth = 0;
    for (qsizetype i = begin; i < tokens.Count(); ++i) {
        if (tokens.IsSymbol(i, u'('))
            ++depth;
        else if (tokens.IsSymbol(i, u')'))
            --depth;
        else if (depth == 0 && (tokens.IsWord(i, u"ORDER") || tokens.IsWord(i, u"GROUP") ||
                                tokens.IsWord(i, u"HAVING") || tokens.IsWord(i, u"UNION")))
            return false;
    }
    return true;
}
} // namespace

QString KeyOrder(const SqlTokens &tokens, const TableKeys &keys)
{
    const qsizetype from = FindFrom(tokens);
    const qsizetype behindTable = from + 2;
    if (from < 0 || behindTable > tokens.Count())
        return {};
    const bool isOneTable = behindTable == tokens.Count() || tokens.IsWord(behindTable, u"WHERE");
    if (!isOneTable)
        return {};
    const auto key = keys.constFind(tokens.NameAt(from + 1).toLower());
    if (key == keys.constEnd() || !IsPlainCondition(tokens, behindTable))
        return {};
    return u" ORDER BY " % *key;
}
