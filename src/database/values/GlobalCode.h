#pragma once

#include <QString>

/// Text for placing between quotes in SQL: every apostrophe and every backtick is doubled, the backtick
/// on purpose, so that a text holding one reads back with two. Null gives "".
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

/// Tells the user of a duplicate: a box with `text` where `key`, what a data function added or updated, is 0.
/// Gives `key` on, -1 after an error included.
int TellDuplicate(int key, const QString &text, const QString &title);

/// The digits and the first point of `text` as a number; all else is dropped, and nothing left gives 0.
double ParseNumber(const QString &text);
/// The number that an amount field's text holds, grouped ("1,234.50") or not, rounded to `places` half
/// away from zero; an empty text, or one that is no number, gives 0.
double CurrencyValue(const QString &text, int places = 2);
/// `value` with `places` decimals, grouped by the locale, a leading zero, rounded half away from zero on
/// the shortest decimal text of the value.
QString FormatNumber(double value, int places = 2);
/// The double that the leading part of `text` spells with a point as the decimal sign; 0 if there is none.
/// Takes grouped numbers too. It is how every amount box is read back.
double TextValue(const QString &text);

/// `text` with each carriage return as "," and each line feed as a blank.
QString FlattenLines(const QString &text);
/// " Select or Type New ", the first row of a list that takes new text.
QString SelectOrTypeNewText();

/// "[reference] text" where gShowIDs is on and `reference` is not empty, else `text`.
QString FormatRefLabel(const QString &reference, const QString &text);
struct RefLabel {
    QString reference;
    QString name;
};
/// The reverse: what a user typed or picked, parted into reference and name.
RefLabel SplitRefLabel(const QString &text);

/// "1.20", with the lower-case letter of the revision number where that is not 0.
QString VersionString();
/// "1.20.0", for the log.
QString FullVersionString();
