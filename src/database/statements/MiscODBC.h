#pragma once

#include "core/session/Session.h"
#include "platform/connection/Connection.h"
#include "platform/connection/OneStep.h"

#include <QString>

#include <initializer_list>
#include <optional>
#include <utility>

class ListModel;
class Progress;

/// How every data function reaches the database: complete SQL text with inline values on the session
/// connection. A function wraps its steps in Reported, the one error handler of the data layer.

/// Leaves the body of a Reported after a failure that the user gave up on. It never leaves Reported.
struct StatementGivenUp {
};

/// Names the running data function for the error report, for as long as it lives.
class ReportedScope final
{
public:
    explicit ReportedScope(const char *routineName);
    ~ReportedScope();
    ReportedScope(const ReportedScope &) = delete;
    ReportedScope &operator=(const ReportedScope &) = delete;

private:
    const char *m_outer;
};

/// Runs `body`. A statement in it that fails goes to HandleError under `routineName`; on Retry the statement
/// runs again, otherwise the body is left and `failureValue` is returned.
template <typename Value, typename Body>
Value Reported(const char *routineName, Value failureValue, Body &&body)
{
    const ReportedScope scope(routineName);
    try {
        return static_cast<Value>(std::forward<Body>(body)());
    } catch (const StatementGivenUp &) {
        return failureValue;
    }
}

/// The same for a function with no result.
template <typename Body>
void Reported(const char *routineName, Body &&body)
{
    const ReportedScope scope(routineName);
    try {
        std::forward<Body>(body)();
    } catch (const StatementGivenUp &) {
        // Reported and given up: what was done before stays done.
    }
}

/// A statement that failed inside a step, on its way to the step's end. It never leaves InOneStep.
struct StepBroken {
    const char *routineName; ///< the data function whose statement it was
};

/// Keeps the step; if that fails, the step has failed.
void KeepStep(OneStep &step);
/// Requires that the step has begun; if it could not, the step has failed.
void RequireBegun(const OneStep &step);
/// True if the failed step is to run again: at once if the server chose it to give way to another, otherwise
/// if the user says so. `attempt` counts from 1.
bool RunsAgain(const StepBroken &broken, int attempt);

/// Runs `body`, a test and the write that relies on it, as one OneStep under `key`, and returns its result;
/// only inside Reported. When a statement fails, everything that the body did is undone before the failure is
/// reported; on Retry the body runs again from its beginning. It must not ask the user anything.
template <typename Body>
auto InOneStep(const QString &key, Body &&body)
{
    for (int attempt = 1;; ++attempt) {
        try {
            OneStep step(gConnection, key);
            RequireBegun(step);
            auto result = body();
            KeepStep(step);
            return result;
        } catch (const StepBroken &broken) {
            // An inner step ends with the outer one.
            if (OneStep::IsRunning(gConnection))
                throw;
            if (!RunsAgain(broken, attempt))
                throw StatementGivenUp{};
        }
    }
}

/// Runs a statement that returns no rows; only inside Reported.
void Execute(const QString &sql);
/// Opens a query and reads it whole; only inside Reported.
Recordset OpenRecordset(const QString &sql);
/// Runs a query of very many rows and hands them over as they come; only inside Reported. On a retry after a
/// failure they come from the first row again.
void ReadInPieces(const QString &sql, const TakeRows &take);
/// True if the query returns a row; only inside Reported.
bool HasRow(const QString &sql);
/// The whole number in `column` of the query's first row, 0 without a row; only inside Reported.
int ReadKey(const QString &sql, QStringView column);

/// Runs statements that end in `key`, in order and in one transaction. False on an error: what the statements
/// before it did is kept.
bool RunWithKey(const char *routineName, std::initializer_list<QStringView> statements, int key);

/// Marks the end of a whole row in a long loop; only inside Reported, which handles a commit that fails.
void EndRow(WriteGroup &group);
/// Commits what the group still holds after the last row; only inside Reported, which handles a failure.
void EndRows(WriteGroup &group);

/// Adds a row if `same` finds none, in one step. Returns the key that `readBack` then gives in `keyColumn`; 0
/// if there is such a row already, -1 on an error.
int AddRow(const char *routineName, const QString &same, const QString &insert, const QString &readBack,
           QStringView keyColumn);
/// Writes a row if `other` finds no row that it would duplicate, in one step. Returns `key`; 0 if there is a
/// duplicate, -1 on an error.
int UpdateRow(const char *routineName, const QString &other, const QString &update, int key);

/// The same with errors ignored, for the few routines that go on after a failure.
bool TryExecute(const QString &sql);
std::optional<Recordset> TryOpenRecordset(const QString &sql);

/// The schema level in table `Version`; 0 without a row or on any error.
double GetDBVersion();

/// Publishes the current contact selection: the references in the "?" keys of `selection`, in table `Ref`
/// (emptied first) and one per line in the file `fileName` in the folder `temp`. Errors are ignored. A
/// cancelled `progress` ends it after a whole person; the rest are then in neither.
void FillRefTable(const ListModel &selection, const QString &fileName, Progress &progress);
