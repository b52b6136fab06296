#pragma once

#include <QString>
#include <QStringList>

/// How a process of the monkey ended.
struct MonkeyOutcome {
    bool isGood = false;
    bool hangs = false;
    QString said; ///< its last lines, the report of a sanitizer among them

    /// The line that tells its fault; its last line where there is none.
    QString Verdict() const;
    /// The same less all that differs from one time to the next; "" for none.
    QString Fault() const;

    /// Lets a monkey loose with the arguments of its role, and waits for its end.
    static MonkeyOutcome Of(const QStringList &arguments);
};

/// Plays ends of `keys`, the session that came to `outcome`, until one comes to the same fault, and leaves
/// out of it what is not needed, for some minutes at most. Leaves the keys in `file`; where no end of the
/// session comes to the fault, all of them.
QStringList ReducedKeys(const QStringList &keys, const MonkeyOutcome &outcome, const QString &file);
