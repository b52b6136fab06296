#pragma once

#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "platform/connection/Connection.h"

#include <utility>

/// What came of storing a record with all that hangs on it.
struct RecordSaved {
    int key = 0;          ///< of the record, which is stored; 0 where nothing was stored, -1 on an error
    bool isWhole = false; ///< so is all that hangs on it; otherwise it may have less than was to be stored
};

/// Stores a record by `storeRecord`, which gives its key or 0 or -1, and what hangs on it by
/// `storeLists(key)`, which is false on an error, in one transaction: a crash leaves all of it or nothing.
/// Cancelled `progress` takes all back. A statement that fails leaves what came before it. All that is to be
/// asked is asked before, since a question ends the transaction.
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
