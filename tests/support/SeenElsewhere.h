#pragma once

#include "core/session/Session.h"
#include "support/TestDatabase.h"

#include <QSet>

/// What another workstation finds by a query of one value while `work` runs: all that it sees before each of
/// the statements.
template <typename Work>
QSet<QString> SeenElsewhere(const TestDatabase &database, const QString &sql, Work &&work)
{
    Connection other;
    QSet<QString> seen;
    if (!other.Open(database.ConnectionText()))
        return seen;
    gConnection.ObserveStatements([&](const QString &) {
        const auto rows = other.OpenRecordset(sql);
        seen.insert(rows && !rows->IsEmpty() ? rows->First().Text(0) : u"none"_qs);
    });
    work();
    gConnection.ObserveStatements({});
    return seen;
}
