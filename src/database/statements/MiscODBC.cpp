#include "database/statements/MiscODBC.h"

#include "controls/ListModel.h"
#include "core/files/ErrorHandler.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/values/GlobalCode.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Directories.h"

#include <QFile>

namespace
{
constexpr int retryAnswer = 4;
const char *g_runningRoutine = "";

EngineError FirstError()
{
    const EngineErrors &errors = gConnection.Errors();
    return errors.isEmpty() ? EngineError{} : errors.first();
}

bool WantsRetry(const char *routineName)
{
    SetCurrentError(FirstError());
    return HandleError(QString::fromLatin1(routineName), 0) == retryAnswer;
}

/// True if the failed statement is to run again. Inside a step the user is not asked: the whole step ends.
bool RetryAfterFailure()
{
    if (OneStep::IsRunning(gConnection))
        throw StepBroken{g_runningRoutine};
    return WantsRetry(g_runningRoutine);
}

/// True if two workstations waited for each other and the server chose this one to give way.
bool IsDeadlock(const EngineError &error)
{
    constexpr int sqlServersNumber = 1205;
    return error.number == sqlServersNumber ||
           error.description.contains(QStringLiteral("deadlock detected"), Qt::CaseInsensitive);
}

/// The second word of "UPDATE Courses SET ...", the third of "INSERT INTO Courses (...".
QString TableOf(QStringView statement)
{
    const QList<QStringView> words = statement.split(u' ');
    return words.at(statement.startsWith(u"INSERT") ? 2 : 1).toString();
}
} // namespace

ReportedScope::ReportedScope(const char *routineName)
    : m_outer(g_runningRoutine)
{
    g_runningRoutine = routineName;
}

ReportedScope::~ReportedScope()
{
    g_runningRoutine = m_outer;
}

void RequireBegun(const OneStep &step)
{
    if (!step.HasBegun())
        throw StepBroken{g_runningRoutine};
}

void KeepStep(OneStep &step)
{
    if (!step.Keep())
        throw StepBroken{g_runningRoutine};
}

bool RunsAgain(const StepBroken &broken, int attempt)
{
    constexpr int mostAttempts = 5;
    return (IsDeadlock(FirstError()) && attempt < mostAttempts) || WantsRetry(broken.routineName);
}

void Execute(const QString &sql)
{
    while (!gConnection.Execute(sql)) {
        if (!RetryAfterFailure())
            throw StatementGivenUp{};
    }
}

Recordset OpenRecordset(const QString &sql)
{
    while (true) {
        if (std::optional<Recordset> rows = gConnection.OpenRecordset(sql))
            return *std::move(rows);
        if (!RetryAfterFailure())
            throw StatementGivenUp{};
    }
}

void ReadInPieces(const QString &sql, const TakeRows &take)
{
    while (!gConnection.ReadInPieces(sql, take)) {
        if (!RetryAfterFailure())
            throw StatementGivenUp{};
    }
}

bool HasRow(const QString &sql)
{
    return !OpenRecordset(sql).IsEmpty();
}

int ReadKey(const QString &sql, QStringView column)
{
    const Recordset rows = OpenRecordset(sql);
    return rows.IsEmpty() ? 0 : static_cast<int>(rows.First().Long(column));
}

bool RunWithKey(const char *routineName, std::initializer_list<QStringView> statements, int key)
{
    return Reported(routineName, false, [&] {
        WriteGroup group(gConnection);
        for (const QStringView statement : statements)
            Execute(statement % SqlNumber(key));
        EndRows(group);
        return true;
    });
}

void EndRow(WriteGroup &group)
{
    while (!group.Tick()) {
        if (!RetryAfterFailure())
            throw StatementGivenUp{};
    }
}

void EndRows(WriteGroup &group)
{
    while (!group.Finish()) {
        if (!RetryAfterFailure())
            throw StatementGivenUp{};
    }
}

int AddRow(const char *routineName, const QString &same, const QString &insert, const QString &readBack,
           QStringView keyColumn)
{
    return Reported(routineName, -1, [&] {
        return InOneStep(TableOf(insert), [&] {
            if (HasRow(same))
                return 0;
            Execute(insert);
            return ReadKey(readBack, keyColumn);
        });
    });
}

int UpdateRow(const char *routineName, const QString &other, const QString &update, int key)
{
    return Reported(routineName, -1, [&] {
        return InOneStep(TableOf(update), [&] {
            if (HasRow(other))
                return 0;
            Execute(update);
            return key;
        });
    });
}

bool TryExecute(const QString &sql)
{
    return gConnection.Execute(sql);
}

std::optional<Recordset> TryOpenRecordset(const QString &sql)
{
    return gConnection.OpenRecordset(sql);
}

double GetDBVersion()
{
    const std::optional<Recordset> rows = TryOpenRecordset(QStringLiteral("SELECT DBVersion FROM Version"));
    return rows && !rows->IsEmpty() ? rows->First().Double(u"DBVersion") : 0;
}

void FillRefTable(const ListModel &selection, const QString &fileName, Progress &progress)
{
    QFile file(Directories::WrittenFile(u"temp/" % fileName));
    file.remove();
    file.open(QIODevice::WriteOnly | QIODevice::Text);
    WriteGroup group(gConnection);
    TryExecute(QStringLiteral("DELETE FROM Ref"));
    progress.Begin(selection.Count());
    for (int row = 0; row < selection.Count() && !progress.IsCancelled(); ++row) {
        const QString &key = selection.At(row).key;
        if (key.startsWith(u'?')) {
            const QString reference = key.mid(1);
            TryExecute(u"INSERT INTO Ref (ContactRef) VALUES (" % reference % u")");
            file.write(reference.toLatin1() + '\n');
            group.Tick(); // a commit that fails is ignored like a statement
        }
        progress.SetValue(row + 1);
    }
}
