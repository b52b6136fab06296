#pragma once

#include "support/TestDatabase.h"

#include <QString>

/// Where the monkey lives: a directory for everything that it can write, with a database of people, courses
/// and organisations, and no way to any other program.
class MonkeyHome final
{
public:
    MonkeyHome();

    /// Puts the database and the settings back as they were at first; no session may be open.
    void TidyUp();
    /// What is wrong with the session's open database; "" if nothing is.
    static QString FaultOfDatabase();

private:
    void ShutDoors();
    static void FillDatabase();
    QString File(const QString &name) const { return m_database.Directory() + u'/' + name; }

    QString NextOf(const QStringList &files);

    TestDatabase m_database;
    qsizetype m_filesChosen = 0;
};
