#include "courses/SelectionMatch.h"

#include "controls/ListModel.h"
#include "core/Progress.h"
#include "core/Session.h"
#include "database/MiscODBC.h"
#include "platform/Connection.h"

QSet<QString> RemoveUnselected(const QString &stored, const StatementOfPerson &remove,
                               const ListModel &selected, Progress &progress)
{
    QSet<QString> kept;
    progress.Begin(selected.Count());
    WriteGroup group(gConnection);
    for (const Recordset::Row row : OpenRecordset(stored)) {
        if (progress.IsCancelled())
            break;
        const QString contactRef = row.Text(u"ContactRef");
        if (selected.Contains(u'?' % contactRef)) {
            kept.insert(u'?' % contactRef);
            continue;
        }
        Execute(remove(contactRef));
        EndRow(group);
        progress.SetValue(0);
    }
    EndRows(group);
    return kept;
}

bool InsertSelected(const StatementOfPerson &insert, const QSet<QString> &stored, const ListModel &selected,
                    Progress &progress)
{
    int done = 0;
    WriteGroup group(gConnection);
    while (done < selected.Count() && !progress.IsCancelled()) {
        const QString &key = selected.At(done).key;
        if (!stored.contains(key)) {
            Execute(insert(key.mid(1)));
            EndRow(group);
        }
        progress.SetValue(++done);
    }
    EndRows(group);
    return done == selected.Count();
}
