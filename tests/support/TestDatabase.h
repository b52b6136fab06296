#pragma once

#include "platform/connection/Connection.h"

#include <QStringList>
#include <QTemporaryDir>

/// A fresh database with the session connected to it, for as long as it lives: the template's tables and
/// rows and nothing else. The program's directory is a temporary one, which holds the shipped `system`
/// files. VELTRANE_TEST_BACKEND picks the engine: "file" (as without it) or "postgresql"; a test listed
/// with DATABASE runs on both.
class TestDatabase final
{
public:
    TestDatabase();
    ~TestDatabase();
    TestDatabase(const TestDatabase &) = delete;
    TestDatabase &operator=(const TestDatabase &) = delete;

    static bool IsOnServer();
    /// Whether its columns of texts refuse what is longer than they are.
    static bool HasSizedTexts();
    /// The program's directory.
    QString Directory() const { return m_directory.path(); }
    /// The text that the session is connected with; a second connection is another workstation.
    QString ConnectionText() const { return m_text; }
    /// Connects the session again.
    bool Reconnect() const;

    /// Makes a database file, as the template has it and without its password.
    static void MakeFile(const QString &file);
    /// Every row as its values joined by "|". A statement that fails fails the test.
    static QStringList Rows(const QString &sql);
    /// The first value, "" without a row.
    static QString Value(const QString &sql);
    /// Runs statements that arrange a test.
    static void Run(const QStringList &statements);

private:
    void MakeProgramDirectory() const;
    void ChooseFile();
    void MakeCatalogue();
    QTemporaryDir m_directory;
    QString m_text;
};
