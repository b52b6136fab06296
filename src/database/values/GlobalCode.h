#pragma once

#include <QString>

/// Text to place between quotes in SQL: every apostrophe and every backtick is doubled. The backtick is
/// doubled on purpose, so that a text with one reads back with two. Null gives "".
QString SqlSafeText(const QString &value);
/// The same with only the apostrophes doubled, for a text that came from the database: its backticks were
/// doubled when it was stored.
QString DoubledApostrophes(const QString &value);

/// A number as SQL text: the shortest decimal text of its value, no thousands separator, and no exponent
/// for ordinary amounts.
QString SqlNumber(double value);
QString SqlNumber(qint64 value);
inline QString SqlNumber(int value)
{
    return SqlNumber(static_cast<qint64>(value));
}

/// Tells the user about a duplicate: shows a box with `text` if `key`, the result of a data function that
/// adds or updates, is 0. Returns `key`, including -1 after an error.
int TellDuplicate(int key, const QString &text, const QString &title);

/// The digits and the first point of `text` as a number; everything else is dropped; 0 if nothing is left.
double ParseNumber(const QString &text);
/// The number in an amount field's text, grouped ("1,234.50") or not, rounded to `places` half away from
/// zero; an empty text, or one that is not a number, gives 0.
double CurrencyValue(const QString &text, int places = 2);
/// `value` with `places` decimals, grouped by the locale, with a leading zero, rounded half away from zero on
/// the shortest decimal text of the value.
QString FormatNumber(double value, int places = 2);
/// The number at the start of `text`, with a point as the decimal sign; 0 if there is none. Accepts grouped
/// numbers too. Every amount box is read back with it.
double TextValue(const QString &text);

/// `text` with each carriage return replaced by "," and each line feed by a blank.
QString FlattenLines(const QString &text);
/// " Select or Type New ", the first row of a list that takes new text.
QString SelectOrTypeNewText();

/// "[reference] text" if gShowIDs is on and `reference` is not empty, otherwise `text`.
QString FormatRefLabel(const QString &reference, const QString &text);
struct RefLabel {
    QString reference;
    QString name;
};
/// The reverse: what a user typed or picked, split into reference and name.
RefLabel SplitRefLabel(const QString &text);

/// "1.20", followed by the lower-case letter of the revision number if that is not 0.
QString VersionString();
/// "1.20.0", for the log.
QString FullVersionString();
