#pragma once

#include <QCollator>
#include <QLocale>

/// Compares names as a telephone book of the user's language does, without regard to case; as an English one
/// if the system names no language.
inline const QCollator &NameCollation()
{
    static const QCollator collation = [] {
        const QLocale user;
        QCollator made(user.language() == QLocale::C ? QLocale(QLocale::English) : user);
        made.setCaseSensitivity(Qt::CaseInsensitive);
        return made;
    }();
    return collation;
}
