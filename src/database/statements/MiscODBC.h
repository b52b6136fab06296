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

/// Names the data function that runs, for the error report, as long as it lives.
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

/// Runs `body`. A statement of it that fails goes to HandleError under `routineName`; on Retry it runs
/// again in place, otherwise the body is left and `failureValue` is the result.
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

/// Keeps the step; its failure is the step's failure.
void KeepStep(OneStep &step);
/// Tells that a step could not begin; its failure is the step's failure.
void RequireBegun(const OneStep &step);
/// True when the step that broke is to run again: at once where the server chose it to give way to another,
/// otherwise if the user says so. `attempt` counts from 1.
bool RunsAgain(const StepBroken &broken, int attempt);

/// Runs `body`, a test and the write that relies on it, as one OneStep under `key`, and gives its result;
/// only inside Reported. A statement that fails takes back all that the body did before the failure is told;
/// on Retry the body runs again from its beginning. No question may be asked inside.
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
            // An inner step has no end of its own.
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
/// Runs a query of very many rows and hands them over as they come; only inside Reported. After a failure
/// that is tried again they come from the first row on.
void ReadInPieces(const QString &sql, const TakeRows &take);
/// True if the query gives a row; only inside Reported.
bool HasRow(const QString &sql);
/// The whole number in `column` of the query's first row, 0 without a row; only inside Reported.
int ReadKey(const QString &sql, QStringView column);

/// Runs statements that end in `key`, in order and one transaction. False on an error: those before it stay.
bool RunWithKey(const char *routineName, std::initializer_list<QStringView> statements, int key);

/// Marks the end of a whole row of a long loop; only inside Reported, which a commit that fails goes to.
void EndRow(WriteGroup &group);
/// Commits what the group still holds behind the last row; only inside Reported, likewise.
void EndRows(WriteGroup &group);

/// Adds a row where `same` finds none, in one step: the key that `readBack` then gives in `keyColumn`; 0
/// where there is one already, -1 on an error.
int AddRow(const char *routineName, const QString &same, const QString &insert, const QString &readBack,
           QStringView keyColumn);
/// Writes a row where `other` finds none that it would be equal to, in one step: `key`; 0 where there is one,
/// -1 on an error.
int UpdateRow(const char *routineName, const QString &other, const QString &update, int key);

/// The same with errors ignored, for the few routines that go on after a failure.
bool TryExecute(const QString &sql);
std::optional<Recordset> TryOpenRecordset(const QString &sql);

/// The schema level in table `Version`; 0 with no row or on any error.
double GetDBVersion();

/// Publishes the current contact selection: the references behind the "?" keys of `selection`, in table
/// `Ref` (emptied first) and one a line in the file `fileName` of the folder `temp`. Errors are ignored. A
/// cancelled `progress` ends it behind a person, with the rest in neither.
void FillRefTable(const ListModel &selection, const QString &fileName, Progress &progress);
