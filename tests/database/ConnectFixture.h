#pragma once

#include "core/session/Session.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"
#include "platform/engines/FileDatabase.h"
#include "support/OwnDataSources.h"
#include "support/TestDatabase.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTemporaryDir>

/// A workstation of the test's own: program directory, data sources, an untouched session, and a user who
/// answers the questions for a password from a list and is shown nothing else.
struct ConnectFixture {
    ConnectFixture()
    {
        Directories::SetProgram(directory.path());
        gConnection.Close();
        gDBValid = false;
        gDBQUseODBC = false;
        gDBQType = 1;
        gDialogResult = -7;
        for (QString *text : {&gDBQName, &gDBQFilename, &gDBUser, &gDBPassword})
            text->clear();
        gDBQDescription = u"Veltrane Database"_qs;
        Dialogs::Hooks &hooks = Dialogs::Installed();
        hooks = {};
        hooks.msgBox = [this](const QString &text, const QString &title, Dialogs::Buttons, Dialogs::Icon,
                              Dialogs::Answer) {
            boxes.append(u'[' % title % u"] " % text);
            return answers.isEmpty() ? Dialogs::Answer::Ok : answers.takeFirst();
        };
        hooks.openFile = [this](const Dialogs::FileQuestion &question) {
            boxes.append(u'[' % question.title % u"] " % question.filter);
            return chosenFile;
        };
        hooks.saveFile = hooks.openFile;
        hooks.databaseLogon = [this] {
            ++asked;
            if (typedPasswords.isEmpty())
                return;
            gDBPassword = typedPasswords.takeFirst();
            gDialogResult = 1;
        };
    }
    ~ConnectFixture()
    {
        gConnection.Close();
        Dialogs::Installed() = {};
    }
    ConnectFixture(const ConnectFixture &) = delete;
    ConnectFixture &operator=(const ConnectFixture &) = delete;

    QString Path(const QString &name) const { return directory.filePath(name); }

    /// A new database with that password; its full path.
    QString MakeDatabase(const QString &name, const QString &password = {}) const
    {
        Directories::Writable(); // makes the folders
        const QString file = Path(name);
        TestDatabase::MakeFile(file);
        if (!password.isEmpty())
            FileDatabase::OpenExclusive(file, {})->NewPassword(password);
        return file;
    }

    QTemporaryDir directory;
    OwnDataSources sources;
    QStringList boxes;
    QList<Dialogs::Answer> answers; ///< of the next boxes; OK when there are none
    QString chosenFile;             ///< in a file chooser; "" = cancelled
    QStringList typedPasswords;
    int asked = 0;
};
