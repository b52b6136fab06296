#include "courses/lists/SelectionMatch.h"

#include "controls/ListModel.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "platform/connection/Connection.h"

QStringList StoredKeys(const QString &stored)
{
    QStringList keys;
    for (const Recordset::Row row : OpenRecordset(stored))
        keys.append(u'?' % row.Text(u"ContactRef"));
    return keys;
}

QSet<QString> RemoveUnselected(const QString &stored, const StatementOfPerson &remove,
                               const ListModel &selected, const QSet<QString> &known, Progress &progress)
{
    QSet<QString> kept;
    progress.Begin(selected.Count());
    WriteGroup group(gConnection);
    for (const QString &key : StoredKeys(stored)) {
        if (progress.IsCancelled())
            break;
        if (selected.Contains(key) || !known.contains(key)) {
            kept.insert(key);
            continue;
        }
        Execute(remove(key.mid(1)));
        EndRow(group);
        progress.SetValue(0);
    }
    EndRows(group);
    return kept;
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): the test before the write.
bool InsertSelected(const QString &table, const StatementOfPerson &isThere, const StatementOfPerson &insert,
                    const QSet<QString> &stored, const ListModel &selected, Progress &progress)
{
    int done = 0;
    WriteGroup group(gConnection);
    while (done < selected.Count() && !progress.IsCancelled()) {
        const QString &key = selected.At(done).key;
        if (!stored.contains(key)) {
            InOneStep(table, [&, contactRef = key.mid(1)] {
                if (!HasRow(isThere(contactRef)))
                    Execute(insert(contactRef));
                return true;
            });
            EndRow(group);
        }
        progress.SetValue(++done);
    }
    EndRows(group);
    return done == selected.Count();
}
