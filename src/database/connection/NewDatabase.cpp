#include "database/connection/NewDatabase.h"

#include "core/session/Session.h"
#include "database/connection/BlankTemplate.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"
#include "platform/engines/FileDatabase.h"

#include <QFileInfo>

namespace
{
void TellFatal(const QString &text)
{
    Dialogs::MsgBox(text, QStringLiteral("Fatal System Error"), Dialogs::Buttons::Ok, Dialogs::Icon::Stop);
}

void TellNotCreated(const QString &file)
{
    Dialogs::MsgBox(u"Unable to create database " % file, QStringLiteral("Error"), Dialogs::Buttons::Ok,
                    Dialogs::Icon::Exclamation);
}

/// A database that somebody is working on must not be replaced under them.
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

/// The files that the engine keeps beside a database belong to the old file.
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
    if (!OpenUpTemplate(working)) {
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
