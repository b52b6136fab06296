#pragma once

#include <QFile>

/// Puts desktop tools of the test's own in front of the real ones; what they were asked to open is in
/// the file "opened". With `browser` empty no program is set for any type.
inline void InstallDesktop(const QString &directory, const QByteArray &browser = "browser.desktop")
{
    const auto tool = [&](const QString &name, const QByteArray &body) {
        QFile file(directory % u'/' % name);
        if (file.open(QIODevice::WriteOnly))
            file.write("#!/bin/sh\n" + body + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    };
    tool(QStringLiteral("xdg-mime"), "echo " + browser);
    tool(QStringLiteral("xdg-open"), "echo \"$1\" > " + directory.toUtf8() + "/opened");
    static const QByteArray path = qgetenv("PATH");
    qputenv("PATH", directory.toUtf8() + ':' + path);
}
