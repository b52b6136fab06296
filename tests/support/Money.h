#pragma once

#include <QStringBuilder>

#include <cstdlib>

/// A whole number of hundredths as money text, without the code under test.
inline QString Hundredths(qint64 value)
{
    const qint64 size = std::abs(value);
    QString whole = QString::number(size / 100);
    for (qsizetype i = whole.size() - 3; i > 0; i -= 3)
        whole.insert(i, u',');
    return QString::fromLatin1(value < 0 ? "-" : "") % whole % u'.' %
           QString::number(size % 100).rightJustified(2, u'0');
}
