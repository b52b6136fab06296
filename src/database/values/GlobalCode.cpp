#include "database/values/GlobalCode.h"

#include "core/session/Session.h"
#include "platform/desktop/Dialogs.h"
#include "platform/sql/Numbers.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace
{
/// `digits` (a plain decimal text without sign) cut to `places` decimals, half away from zero.
QString RoundedDecimal(const QString &digits, int places)
{
    const qsizetype point = digits.indexOf(u'.');
    QString whole = point < 0 ? digits : digits.left(point);
    QString fraction = point < 0 ? QString() : digits.mid(point + 1);
    if (fraction.size() <= places)
        return whole % u'.' % fraction.leftJustified(places, u'0');

    const bool up = fraction.at(places) >= u'5';
    QString kept = whole % fraction.left(places);
    for (qsizetype i = kept.size() - 1; up && i >= 0; --i) {
        if (kept.at(i) != u'9') {
            kept[i] = QChar(kept.at(i).unicode() + 1);
            break;
        }
        kept[i] = u'0';
        if (i == 0)
            kept.prepend(u'1');
    }
    return kept.left(kept.size() - places) % u'.' % kept.right(places);
}

QString ShortestDecimal(double value)
{
    // The shortest text that reads back as the value has at most 17 digits; "f" with that precision would
    // show further digits.
    return QString::number(value, 'f', QLocale::FloatingPointShortest);
}

/// The text of an amount in whole hundredths, as nearly all are, without the search for the shortest decimal;
/// "" for any other.
QString WholeCents(double size)
{
    constexpr double most = 1e12;
    if (size >= most)
        return {};
    const qint64 cents = std::llround(size * 100);
    if (static_cast<double>(cents) / 100 != size)
        return {};
    const QString digits = QString::number(cents).rightJustified(3, u'0');
    return digits.left(digits.size() - 2) % u'.' % digits.right(2);
}

/// The locale's separator between groups of digits. The decimal sign is always a point, because amounts are
/// read back that way; if the locale separates groups with a point, a comma is used instead.
QString GroupSeparator()
{
    const QString separator = QLocale().groupSeparator();
    return separator == u"." ? QStringLiteral(",") : separator;
}

QString Grouped(const QString &whole)
{
    const QString separator = GroupSeparator();
    QString result = whole;
    for (qsizetype i = whole.size() - 3; i > 0; i -= 3)
        result.insert(i, separator);
    return result;
}
} // namespace

QString SqlSafeText(const QString &value)
{
    const auto isDoubled = [](QChar c) { return c == u'\'' || c == u'`'; };
    if (std::none_of(value.begin(), value.end(), isDoubled))
        return value;
    QString result;
    result.reserve(value.size() + 8);
    for (const QChar c : value) {
        result.append(c);
        if (isDoubled(c))
            result.append(c);
    }
    return result;
}

QString DoubledApostrophes(const QString &value)
{
    QString result = value;
    return result.replace(u'\'', QStringLiteral("''"));
}

QString SqlNumber(double value)
{
    return ShortestNumber(value);
}

QString SqlNumber(qint64 value)
{
    return QString::number(value);
}

int TellDuplicate(int key, const QString &text, const QString &title)
{
    if (key == 0)
        Dialogs::MsgBox(text, title, Dialogs::Buttons::Ok, Dialogs::Icon::Information);
    return key;
}

double ParseNumber(const QString &text)
{
    QString kept;
    for (const QChar c : text) {
        const bool digit = c >= u'0' && c <= u'9';
        if (digit || (c == u'.' && !kept.contains(u'.')))
            kept.append(c);
    }
    return kept.toDouble();
}

double TextValue(const QString &text)
{
    QString plain = text.trimmed();
    plain.remove(GroupSeparator());
    qsizetype end = plain.startsWith(u'-') || plain.startsWith(u'+') ? 1 : 0;
    bool point = false;
    while (end < plain.size()) {
        const QChar c = plain.at(end);
        if (c == u'.' && !point)
            point = true;
        else if (c < u'0' || c > u'9')
            break;
        ++end;
    }
    return plain.left(end).toDouble();
}

double CurrencyValue(const QString &text, int places)
{
    return TextValue(FormatNumber(TextValue(text), places));
}

QString FormatNumber(double value, int places)
{
    if (!std::isfinite(value))
        value = 0;
    QString rounded = places == 2 ? WholeCents(std::abs(value)) : QString();
    if (rounded.isEmpty())
        rounded = RoundedDecimal(ShortestDecimal(std::abs(value)), places);
    const qsizetype point = rounded.indexOf(u'.');
    const QString fraction = rounded.mid(point + 1);
    QString result = Grouped(rounded.left(point));
    if (places > 0)
        result += u'.' % fraction;
    const bool isZero = rounded.count(u'0') == rounded.size() - 1;
    return value < 0 && !isZero ? u'-' % result : result;
}

QString FlattenLines(const QString &text)
{
    QString result = text;
    return result.replace(u'\r', u',').replace(u'\n', u' ');
}

QString SelectOrTypeNewText()
{
    return QStringLiteral(" Select or Type New ");
}

QString FormatRefLabel(const QString &reference, const QString &text)
{
    return gShowIDs == 0 || reference.isEmpty() ? text : u'[' % reference % u"] " % text;
}

RefLabel SplitRefLabel(const QString &text)
{
    const qsizetype open = text.indexOf(u'[');
    const qsizetype close = text.indexOf(u']', open + 1);
    if (open < 0 || close <= open + 1)
        return {QString(), text};
    return {text.mid(open + 1, close - open - 1), text.mid(close + 1).trimmed()};
}

QString VersionString()
{
    const QString number =
        QString::number(VELTRANE_VERSION_MAJOR) % u'.' % QString::number(VELTRANE_VERSION_MINOR);
    constexpr int revision = VELTRANE_VERSION_REVISION;
    return revision == 0 ? number : number % QChar(u'a' + revision - 1);
}

QString FullVersionString()
{
    return QString::number(VELTRANE_VERSION_MAJOR) % u'.' % QString::number(VELTRANE_VERSION_MINOR) % u'.' %
           QString::number(VELTRANE_VERSION_REVISION);
}
