#pragma once

#include <QDateTime>
#include <QString>

// date-int: year x 10000 + month x 100 + day, 0 = no date. time-int: hour x 100 + minute.

/// A date as a date-int; an invalid date gives 0.
int DateToInt(QDate date);
/// "DD/MM/YYYY". 0 is replaced by today's date-int, in the caller's variable too.
QString IntToDateText(int &value);
/// The same for a value that is not a variable.
QString IntToDateText(int &&value);
/// "DD/MM/YYYY HH:MM:SS", for the log and the status bar.
QString GeneralDateText(const QDateTime &moment);
/// A date-int as a date; invalid for 0 or a value that is not a date.
QDate IntToDate(int value);
/// The decimal text of `n`, with a "0" before a single character.
QString TwoDigits(int n);
/// The text of a time-int as the course reports print it. The hour is rounded, ties to even, so that 1451
/// gives "15:-49": kept as it always was, and used nowhere else.
QString LongToTimeText(int value);
int DateYear(int &value);
int DateMonth(int &value);
int DateDay(int &value);
/// A time as a time-int; an invalid time gives 0.
int TimeToInt(QTime time);
/// A time-int as "HH:MM".
QString IntToTimeText(int value);
int TimeHours(int value);
int TimeMinutes(int value);
