#pragma once

#include <QStringView>

/// Whether two names are the same without regard to case. Nearly all names are plain ASCII and most pairs
/// differ in the first character, which a comparison for every alphabet makes no use of.
inline bool SameName(QStringView left, QStringView right)
{
    if (left.size() != right.size())
        return false;
    const char16_t *a = left.utf16();
    const char16_t *b = right.utf16();
    for (qsizetype i = 0; i < left.size(); ++i) {
        if (a[i] == b[i])
            continue;
        if ((a[i] | b[i]) > 0x7F)
            return left.compare(right, Qt::CaseInsensitive) == 0;
        const char16_t lower = a[i] | 0x20;
        if (lower != (b[i] | 0x20) || lower < u'a' || lower > u'z')
            return false;
    }
    return true;
}
