#include "platform/desktop/Shell.h"

#include <QDir>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QProcess>
#include <QStandardPaths>

namespace
{
/// How long the desktop may take to name the program for a type, in milliseconds.
constexpr int answerTime = 3000;

QString FoundProgram(const QString &name)
{
    return QStandardPaths::findExecutable(name);
}

bool IsAddress(const QString &file)
{
    return Shell::IsWebAddress(file) || file.startsWith(u"mailto:", Qt::CaseInsensitive);
}

QString TypeOf(const QString &file)
{
    if (IsAddress(file))
        return u"x-scheme-handler/" % file.section(u':', 0, 0).toLower();
    return QMimeDatabase().mimeTypeForFile(file).name();
}

/// True if the desktop names a program for the type. This is asked before opening, because the opener itself
/// may stay in the foreground for as long as the document is open.
bool HasHandler(const QString &type)
{
    QProcess query;
    query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"), type});
    if (!query.waitForFinished(answerTime)) {
        query.kill();
        query.waitForFinished();
        return false;
    }
    return !query.readAllStandardOutput().trimmed().isEmpty();
}

int OpenByHandler(const QString &target)
{
    const QString opener = FoundProgram(QStringLiteral("xdg-open"));
    if (opener.isEmpty() || !HasHandler(TypeOf(target)))
        return Shell::Result::NoAssociation;
    return QProcess::startDetached(opener, {target}) ? Shell::Result::Success : Shell::Result::NoAssociation;
}
} // namespace

bool Shell::IsWebAddress(QStringView text)
{
    return text.startsWith(u"http://", Qt::CaseInsensitive) ||
           text.startsWith(u"https://", Qt::CaseInsensitive);
}

int Shell::Open(const QString &file, const QString &arguments)
{
    if (IsAddress(file))
        return OpenByHandler(file);

    const QFileInfo info(file);
    if (!info.exists())
        return info.absoluteDir().exists() ? Result::FileNotFound : Result::PathNotFound;
    if (!info.isReadable())
        return Result::AccessDenied;
    if (info.isFile() && info.isExecutable() && TypeOf(file).startsWith(u"application/x-executable"))
        return QProcess::startDetached(info.absoluteFilePath(), QProcess::splitCommand(arguments))
                   ? Result::Success
                   : Result::NoAssociation;
    return OpenByHandler(info.absoluteFilePath());
}

bool Shell::OpenWith(const QString &program, const QString &file)
{
    return QProcess::startDetached(program, {file});
}

QString Shell::SystemInformationTool()
{
    for (const auto *name : {"kinfocenter", "hardinfo", "hardinfo2", "gnome-system-monitor"}) {
        QString program = FoundProgram(QString::fromLatin1(name));
        if (!program.isEmpty())
            return program;
    }
    return {};
}

bool Shell::Run(const QString &program)
{
    return QProcess::startDetached(program, {});
}
