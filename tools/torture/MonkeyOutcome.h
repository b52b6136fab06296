#pragma once

#include <QString>
#include <QStringList>

/// How a process of the monkey ended.
struct MonkeyOutcome {
    bool isGood = false;
    bool hangs = false;
    QString said; ///< its last lines, the report of a sanitizer among them

    /// The line that names its fault, or its last line if there is none.
    QString Verdict() const;
    /// The same without anything that differs from run to run; "" for no fault.
    QString Fault() const;

    /// Lets a monkey loose with the arguments of its role, and waits for its end.
    static MonkeyOutcome Of(const QStringList &arguments);
};

/// Plays ever longer ends of `keys`, the session that led to `outcome`, until one leads to the same fault,
/// and leaves out what is not needed, for some minutes at most. Writes the keys to `file`: all of them if no
/// end of the session leads to the fault.
QStringList ReducedKeys(const QStringList &keys, const MonkeyOutcome &outcome, const QString &file);
