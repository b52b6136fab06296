#pragma once

#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "platform/connection/Connection.h"

#include <utility>

/// The outcome of storing a record with everything that belongs to it.
struct RecordSaved {
    int key = 0; ///< of the stored record; 0 if nothing was stored, -1 on an error
    bool isWhole =
        false; ///< everything that belongs to it is stored too; otherwise some of that may be missing
};

/// Stores a record with `storeRecord`, which returns its key or 0 or -1, and what belongs to it with
/// `storeLists(key)`, which is false on an error, in one transaction: a crash leaves all of it or nothing. A
/// cancelled `progress` undoes everything. When a statement fails, what was written before it stays. Ask the
/// user everything beforehand, since a question ends the transaction.
template <typename StoreRecord, typename StoreLists>
RecordSaved SaveWhole(const char *routineName, const Progress &progress, StoreRecord &&storeRecord,
                      StoreLists &&storeLists)
{
    RecordSaved saved;
    Reported(routineName, [&] {
        WriteGroup group(gConnection);
        saved.key = std::forward<StoreRecord>(storeRecord)();
        if (saved.key < 1)
            return;
        const bool areStored = std::forward<StoreLists>(storeLists)(saved.key);
        if (!areStored && progress.IsCancelled() && group.Undo()) {
            saved.key = 0;
            return;
        }
        EndRows(group);
        saved.isWhole = areStored;
    });
    return saved;
}
