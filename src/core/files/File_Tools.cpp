#include "core/files/File_Tools.h"

#include "core/session/Session.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"
#include "platform/desktop/Shell.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

namespace
{
constexpr int lastFailure = 31;

/// What follows the last separator, of either kind: documents may have been registered on another system.
QString BareName(const QString &file)
{
    return file.mid(qMax(file.lastIndexOf(u'\\'), file.lastIndexOf(u'/')) + 1);
}

QString FoundFile(const QString &file)
{
    const QString name = BareName(file);
    QString inDocuments = gDocDir % QDir::separator() % name;
    if (QFileInfo::exists(inDocuments))
        return inDocuments;
    const QString inProgram = Directories::Program() % QDir::separator() % name;
    return QFileInfo::exists(inProgram) ? inProgram : inDocuments;
}

QString FailureText(int result)
{
    static const QHash<int, QString> texts{
        {0, QStringLiteral("Insufficent system memory or corrupt program file.")},
        {2, QStringLiteral("File not found.")},
        {3, QStringLiteral("Invalid path.")},
        {5, QStringLiteral("Sharing or Protection Error.")},
        {6, QStringLiteral("Separate data segments are required for each task.")},
        {8, QStringLiteral("Insufficent memory to run the program.")},
        {10, QStringLiteral("Incorrect Windows version.")},
        {11, QStringLiteral("Invalid program file.")},
        {12, QStringLiteral("Program file requires a different operating system.")},
        {13, QStringLiteral("Program requires MS-DOS 4.0.")},
        {14, QStringLiteral("Unknown program file type.")},
        {15, QStringLiteral("Windows program does not support protected memory mode.")},
        {16, QStringLiteral("Invalid use of data segments when loading a second instance of a program.")},
        {19, QStringLiteral("Attempt to run a compressed program file.")},
        {20, QStringLiteral("Invalid dynamic link library.")},
        {21, QStringLiteral("Program requires Windows 32-bit extensions.")},
    };
    return texts.value(result);
}

bool AskForProgram(const QString &file)
{
    const QString program = Dialogs::OpenFile({.title = u"Open " % BareName(file) % u" with",
                                               .folder = QStringLiteral("/usr/bin"),
                                               .fileName = {},
                                               .filter = QStringLiteral("All Files (*)"),
                                               .defaultExtension = {}});
    return !program.isEmpty() && Shell::OpenWith(program, file);
}
} // namespace

bool DocumentExists(const QString &file)
{
    return QFileInfo::exists(FoundFile(file));
}

bool OpenDocument(const QString &file, const QString &arguments, const std::function<void()> &withoutProgram)
{
    const QString target = Shell::IsWebAddress(file) ? file : FoundFile(file);
    const int result = Shell::Open(target, arguments);
    if (result > lastFailure)
        return true;
    if (result == Shell::Result::NoAssociation) {
        if (!withoutProgram)
            return AskForProgram(target);
        withoutProgram();
        return false;
    }
    Dialogs::MsgBox(FailureText(result), u"Error running " % target, Dialogs::Buttons::Ok,
                    Dialogs::Icon::Exclamation);
    return false;
}
