#include "platform/engines/FileEngine.h"

#include "platform/engines/FileOpen.h"
#include "platform/engines/FileSchema.h"
#include "platform/sql/SqlDialect.h"

#include <sqlite3.h>

#include <thread>

namespace
{
QString Source()
{
    return QStringLiteral("Veltrane Connection");
}

void AddCell(Recordset::Builder &rows, sqlite3_stmt *statement, int column)
{
    // The engine is compiled for one thread per connection, so a column's value may be read directly.
    sqlite3_value *const value = sqlite3_column_value(statement, column);
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        rows.AddNull();
        break;
    case SQLITE_INTEGER:
        rows.AddLong(sqlite3_value_int64(value));
        break;
    case SQLITE_FLOAT:
        rows.AddDouble(sqlite3_value_double(value));
        break;
    default: {
        const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
        rows.AddUtf8(text, sqlite3_value_bytes(value));
        break;
    }
    }
}

/// Leaves a statement ready for its next run, so that it holds no lock on the tables.
class Running final
{
public:
    explicit Running(sqlite3_stmt *statement)
        : m_statement(statement)
    {
    }
    ~Running() { sqlite3_reset(m_statement); }
    Running(const Running &) = delete;
    Running &operator=(const Running &) = delete;

private:
    sqlite3_stmt *m_statement;
};
} // namespace

std::unique_ptr<Engine> FileEngine::Open(const Request &request, EngineErrors &errors)
{
    std::unique_ptr<FileEngine> engine = TryOpen(request, errors);
    // The program that replaced the file in the meantime held it exclusively and has finished.
    if (engine && FileOpen::HasMoved(engine->m_handle))
        engine = TryOpen(request, errors);
    return engine;
}

std::unique_ptr<FileEngine> FileEngine::TryOpen(const Request &request, EngineErrors &errors)
{
    FileOpen::Request file;
    file.file = request.file;
    file.password = request.password;
    file.source = Source();
    file.lockWait = request.lockWait;
    EngineError error;
    bool hasPassword = false;
    sqlite3 *handle = FileOpen::Open(file, error, &hasPassword);
    if (!handle) {
        errors = {error};
        return nullptr;
    }
    std::unique_ptr<FileEngine> engine(new FileEngine(handle, request, FileOpen::PaceOf(file)));
    if (const QString foreign = FileSchema::WhyForeign(handle, request.file); !foreign.isEmpty()) {
        errors = {{SQLITE_NOTADB, Source(), foreign, QString()}};
        return nullptr;
    }
    if (!request.password.isEmpty() && !hasPassword)
        engine->ForgetPassword();
    engine->Configure();
    FileSchema::AddMissingIndexes(handle);
    return engine;
}

FileEngine::~FileEngine()
{
    m_cache.Clear();
    sqlite3_close(m_handle);
}

/// Makes the connection text say that the file has no password, whatever it was opened with.
void FileEngine::ForgetPassword()
{
    const QString mark = QStringLiteral(";PWD=");
    const qsizetype found =
        m_request.connectionText.indexOf(mark % m_request.password, 0, Qt::CaseInsensitive);
    if (found >= 0)
        m_request.connectionText.remove(found + mark.size(), m_request.password.size());
    m_request.password.clear();
}

/// Makes committed work survive a power cut. The write-ahead log needs memory shared by all its users, which
/// computers on a network do not have.
void FileEngine::Configure()
{
    const bool onNetwork = FileOpen::IsOnNetwork(m_request.file);
    EngineErrors ignored; // another program may have the file open in the other mode, which works as well
    Run(onNetwork ? "PRAGMA journal_mode=DELETE" : "PRAGMA journal_mode=WAL", ignored);
    Run("PRAGMA synchronous=FULL", ignored);
    Run("PRAGMA foreign_keys=OFF", ignored);
    Run("PRAGMA cache_size=-16384", ignored); // KiB
}

bool FileEngine::Execute(const QString &sql, EngineErrors &errors)
{
    std::unique_ptr<PreparedStatement> once;
    PreparedStatement *prepared = Prepare(sql, once, errors);
    if (!prepared)
        return false;
    const bool writesAlone = !IsInTransaction() && sqlite3_stmt_readonly(prepared->Statement()) == 0;
    if (writesAlone) {
        LeaveGap();
        if (!IsInPlace(errors))
            return false;
    }
    const Running running(prepared->Statement());
    int step = SQLITE_ROW;
    while (step == SQLITE_ROW)
        step = sqlite3_step(prepared->Statement());
    if (writesAlone)
        m_lastWrite = Clock::now();
    return step == SQLITE_DONE || Fail(errors);
}

bool FileEngine::OpenRecordset(const QString &sql, Recordset &result, EngineErrors &errors)
{
    std::unique_ptr<PreparedStatement> once;
    PreparedStatement *prepared = Prepare(sql, once, errors);
    if (!prepared)
        return false;
    sqlite3_stmt *statement = prepared->Statement();
    const Running running(statement);
    int step = sqlite3_step(statement);
    Recordset::Builder rows(prepared->DescribeColumns());
    const int columns = sqlite3_column_count(statement);
    for (; step == SQLITE_ROW; step = sqlite3_step(statement)) {
        for (int column = 0; column < columns; ++column)
            AddCell(rows, statement, column);
    }
    if (step != SQLITE_DONE)
        return Fail(errors);
    result = rows.Finish();
    return true;
}

bool FileEngine::ReadInPieces(const QString &sql, const TakeRows &take, EngineErrors &errors)
{
    constexpr int firstPiece = 32;
    constexpr int laterPieces = 512;
    if (const SqlFault fault = m_tokens.Read(sql); fault != SqlFault::None) {
        errors = {{SQLITE_ERROR, Source(), SqlFaultText(fault), QString()}};
        return false;
    }
    // A cached statement could be dropped by the statements that run in between.
    sqlite3_stmt *statement = PrepareText(WellFormed(SqlFor(SqlDialect::File, m_tokens)), false, errors);
    if (!statement)
        return false;
    PreparedStatement prepared(statement);
    const int columns = sqlite3_column_count(statement);
    int step = sqlite3_step(statement);
    int given = 0;
    while (true) {
        Recordset::Builder rows(prepared.DescribeColumns());
        const int end = given + (given == 0 ? firstPiece : laterPieces);
        int read = given;
        for (; step == SQLITE_ROW && read < end; step = sqlite3_step(statement), ++read) {
            for (int column = 0; column < columns; ++column)
                AddCell(rows, statement, column);
        }
        if (step != SQLITE_ROW && step != SQLITE_DONE)
            return Fail(errors);
        if (!take(rows.Finish(), given) || step == SQLITE_DONE)
            return true;
        given = read;
    }
}

/// A group takes the write lock at once: taken only at the first write, it would fail without waiting if
/// another workstation wrote after the group's first read.
bool FileEngine::Begin(EngineErrors &errors)
{
    LeaveGap();
    if (!Run("BEGIN IMMEDIATE", errors))
        return false;
    if (IsInPlace(errors))
        return true;
    EngineErrors ignored;
    Rollback(ignored);
    return false;
}

bool FileEngine::Commit(EngineErrors &errors)
{
    if (IsInTransaction() && !IsInPlace(errors)) {
        EngineErrors ignored;
        Rollback(ignored);
        return false;
    }
    if (IsInTransaction()) {
        const bool done = Run("COMMIT", errors);
        m_lastWrite = Clock::now();
        return done;
    }
    // When the disk is full or fails, the engine undoes a transaction of its own accord.
    errors = {{SQLITE_ABORT, Source(),
               u"The last change to the database file " % m_request.file %
                   u" was not stored, since its disk is full or failed. Please make it again.",
               QString()}};
    return false;
}

bool FileEngine::Rollback(EngineErrors &errors)
{
    return !IsInTransaction() || Run("ROLLBACK", errors);
}

bool FileEngine::BeginReading()
{
    EngineErrors ignored; // each statement then takes its own lock
    return HasLog() && !IsInTransaction() && Run("BEGIN", ignored);
}

bool FileEngine::IsInTransaction() const
{
    return sqlite3_get_autocommit(m_handle) == 0;
}

/// The prepared statement with the values of `sql` bound. One that is not cached lives in `once`.
PreparedStatement *FileEngine::Prepare(const QString &sql, std::unique_ptr<PreparedStatement> &once,
                                       EngineErrors &errors)
{
    if (const SqlFault fault = m_tokens.Read(sql); fault != SqlFault::None) {
        errors = {{SQLITE_ERROR, Source(), SqlFaultText(fault), QString()}};
        return nullptr;
    }
    if (!m_shape.Take(m_tokens)) {
        // Statements that define tables need them free of prepared statements.
        if (!IsRowStatement(m_tokens))
            m_cache.Clear();
        sqlite3_stmt *statement = PrepareText(WellFormed(SqlFor(SqlDialect::File, m_tokens)), false, errors);
        if (statement)
            once = std::make_unique<PreparedStatement>(statement);
        return once.get();
    }
    PreparedStatement *prepared = m_cache.Find(m_shape.Key());
    if (!prepared) {
        sqlite3_stmt *statement = PrepareText(WellFormed(SqlFor(SqlDialect::File, m_tokens)), true, errors);
        if (!statement)
            return nullptr;
        prepared = m_cache.Add(
            m_shape.Key(), std::make_unique<PreparedStatement>(statement, WholeTargets(m_tokens, m_handle)));
    }
    for (const WholeTarget &target : prepared->WholeNumbers()) {
        const QString why = FitWholeNumber(target, m_shape.ValueAt(target.value), m_shape.Texts());
        if (!why.isEmpty()) {
            errors = {{SQLITE_MISMATCH, Source(), why, QString()}};
            return nullptr;
        }
    }
    BindValues(prepared->Statement());
    return prepared;
}

sqlite3_stmt *FileEngine::PrepareText(const QString &engineSql, bool isKept, EngineErrors &errors)
{
    const QByteArray text = engineSql.toUtf8();
    sqlite3_stmt *statement = nullptr;
    const int prepared = sqlite3_prepare_v3(m_handle, text.constData(), static_cast<int>(text.size()) + 1,
                                            isKept ? SQLITE_PREPARE_PERSISTENT : 0, &statement, nullptr);
    if (prepared != SQLITE_OK) {
        Fail(errors);
        return nullptr;
    }
    if (!statement)
        errors = {{SQLITE_ERROR, Source(), QStringLiteral("The statement is empty."), QString()}};
    return statement;
}

/// The texts are bound without a copy: they outlive the run.
void FileEngine::BindValues(sqlite3_stmt *statement) const
{
    int place = 0;
    for (const SqlValue &value : m_shape.Values()) {
        ++place;
        switch (value.kind) {
        case SqlValue::Kind::Whole:
            sqlite3_bind_int64(statement, place, value.whole);
            break;
        case SqlValue::Kind::Real:
            sqlite3_bind_double(statement, place, value.real);
            break;
        case SqlValue::Kind::Text:
            sqlite3_bind_text(statement, place, m_shape.Texts() + value.text.offset, value.text.size,
                              SQLITE_STATIC);
            break;
        }
    }
}

bool FileEngine::Fail(EngineErrors &errors) const
{
    errors = {FileOpen::LastError(m_handle, m_request.file, Source())};
    return false;
}

/// What is written to a file that was deleted or replaced would never be found again.
bool FileEngine::IsInPlace(EngineErrors &errors) const
{
    if (!FileOpen::HasMoved(m_handle))
        return true;
    errors = {FileOpen::Moved(m_request.file, Source())};
    return false;
}

/// A loop that locks the file again at once gives the others no chance to lock it.
void FileEngine::LeaveGap()
{
    constexpr std::chrono::milliseconds longestRun{100};
    const std::chrono::milliseconds gap{FileWait::Gap(m_pace)};
    const bool isRunning = Clock::now() - m_lastWrite < gap;
    if (isRunning && Clock::now() - m_runBegun < longestRun)
        return;
    if (isRunning)
        std::this_thread::sleep_for(gap);
    m_runBegun = Clock::now();
}

bool FileEngine::Run(const char *sql, EngineErrors &errors) const
{
    return sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK || Fail(errors);
}

/// Whether writers use the write-ahead log, so that they need not wait for readers.
bool FileEngine::HasLog() const
{
    const auto isLog = [](void *found, int, char **values, char **) {
        *static_cast<bool *>(found) = sqlite3_stricmp(values[0], "wal") == 0;
        return 0;
    };
    bool hasLog = false;
    sqlite3_exec(m_handle, "PRAGMA journal_mode", isLog, &hasLog, nullptr);
    return hasLog;
}
