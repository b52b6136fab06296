#include "database/NewDatabase.h"

#include "core/Session.h"
#include "platform/Dialogs.h"
#include "platform/Directories.h"
#include "platform/FileDatabase.h"

#include <QFileInfo>
#include <QSaveFile>

namespace
{
const QString templatePassword = QStringLiteral("marigold");

void TellFatal(const QString &text)
{
    Dialogs::MsgBox(text, QStringLiteral("Fatal System Error"), Dialogs::Buttons::Ok, Dialogs::Icon::Stop);
}

void TellNotCreated(const QString &file)
{
    Dialogs::MsgBox(u"Unable to create database " % file, QStringLiteral("Error"), Dialogs::Buttons::Ok,
                    Dialogs::Icon::Exclamation);
}

/// Copies a file over another, which stays as it is if that fails.
bool CopyOver(const QString &from, const QString &to)
{
    constexpr qint64 piece = 1024 * 1024;
    QFile in(from);
    QSaveFile out(to);
    if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly))
        return false;
    while (!in.atEnd()) {
        const QByteArray data = in.read(piece);
        if (data.isEmpty() || out.write(data) != data.size())
            return false;
    }
    return out.flush() && out.commit();
}

/// Removes the template's password from its copy. False if the copy is no such template; one that opens
/// without a password is none.
bool OpenUp(const QString &file)
{
    if (FileDatabase::OpenExclusive(file, QString()))
        return false;
    const auto database = FileDatabase::OpenExclusive(file, templatePassword);
    return database && database->NewPassword(QString());
}

/// A database that somebody works on must not be replaced under them.
bool IsInUse(const QString &file)
{
    const QFileInfo chosen(file);
    if (!chosen.exists() || chosen.size() == 0)
        return false;
    if (gDBValid && gDBQType == 1 && chosen == QFileInfo(gDBQFilename))
        return true;
    constexpr int busy = 5;
    const bool alone = FileDatabase::OpenExclusive(file, QString()) != nullptr;
    return !alone && !EngineErrorList().isEmpty() && EngineErrorList().first().number == busy;
}

/// What the engine keeps beside a database belongs to the file that was there before.
void RemoveCompanions(const QString &file)
{
    for (const auto *ending : {"-wal", "-shm", "-journal"})
        QFile::remove(file + QLatin1String(ending));
}
} // namespace

void NewDatabase()
{
    const QString blank = Directories::SystemFile(QStringLiteral("blank"));
    if (!QFileInfo::exists(blank)) {
        TellFatal(QStringLiteral("Fatal:Missing blank database template."));
        return;
    }
    const QString working = Directories::WrittenFile(QStringLiteral("new.tmp"));
    if (!CopyOver(blank, working)) {
        TellNotCreated(working);
        return;
    }
    if (!OpenUp(working)) {
        QFile::remove(working);
        TellFatal(QStringLiteral("Fatal:Invalid blank database template or from different version."));
        return;
    }

    const QString file =
        Dialogs::SaveFile({QStringLiteral("New Veltrane Database Location"),
                           Directories::WrittenFile(QStringLiteral("database")), QStringLiteral("new.mdb"),
                           QStringLiteral("Microsoft Access Database (*.mdb)"), QStringLiteral("mdb")});
    if (file.isEmpty())
        return;
    const bool copied = !IsInUse(file) && CopyOver(working, file);
    QFile::remove(working);
    if (!copied) {
        TellNotCreated(file);
        return;
    }
    RemoveCompanions(file);
    Dialogs::Installed().registerDatabase(QStringLiteral("New Blank Veltrane Database"),
                                          QStringLiteral("Veltrane Database"), file);
}
