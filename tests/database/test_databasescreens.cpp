#include "database/ConnectDatabase.h"
#include "database/ConnectFixture.h"
#include "database/CredentialStore.h"
#include "database/Registry.h"
#include "database/System.h"
#include "database/frmDBLogon.h"
#include "database/frmDBPass.h"
#include "database/frmDBProps.h"
#include "database/frmODBCLogon.h"
#include "database/frmRegisterDB.h"
#include "support/ModalDriver.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>
#include <QTreeView>

namespace
{
const QString college = QStringLiteral("College");
const QString collegeFile = QStringLiteral("college.mdb");

QString TextIn(QWidget &form, const QString &field)
{
    return Find<QLineEdit>(form, field)->text();
}

void Choose(QWidget &form, int way)
{
    Find<QRadioButton>(form, u"Opt_" % QString::number(way))->click();
}

void Check(QWidget &form, int row)
{
    QAbstractItemModel *list = Find<QTreeView>(form, "ODBClist")->model();
    list->setData(list->index(row, 0), Qt::Checked, Qt::CheckStateRole);
}
} // namespace

class TestDatabaseScreens final : public QObject
{
    Q_OBJECT

private slots:
    void ChooserStartsOnTheSession_data()
    {
        QTest::addColumn<bool>("valid");
        QTest::addColumn<bool>("source");
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("way");
        QTest::newRow("no database yet") << false << false << 0 << 1;
        QTest::newRow("a source") << true << true << 1 << 0;
        QTest::newRow("a source that failed") << false << true << 1 << 1;
        QTest::newRow("a file") << true << false << 1 << 2;
        QTest::newRow("a server") << true << false << 2 << 3;
    }
    void ChooserStartsOnTheSession()
    {
        QFETCH(bool, valid);
        QFETCH(bool, source);
        QFETCH(int, type);
        QFETCH(int, way);
        ConnectFixture fixture;
        gDBValid = valid;
        gDBQUseODBC = source;
        gDBQType = type;
        gDBQName = QStringLiteral("name");
        gDBQFilename = QStringLiteral("file");
        gDBPassword = QStringLiteral("kept");
        fixture.sources.SetContent("[College]\nDriver=Microsoft Access Driver (*.mdb)\nDBQ=/college.mdb\n"
                                   "[Name]\nDriver=PostgreSQL Unicode\nDescription=Head office\n");
        frmODBCLogon form;
        form.show();
        QCOMPARE(gDialogResult, 0);
        QVERIFY(Find<QRadioButton>(form, u"Opt_" % QString::number(way))->isChecked());
        QCOMPARE(Find<QRadioButton>(form, "Opt_0")->isVisible(), valid);
        QCOMPARE(TextIn(form, "txtDBAccessPath"), way == 2 ? QStringLiteral("file") : QString());
        QCOMPARE(TextIn(form, "txtServerName"), way == 3 ? QStringLiteral("name") : QString());
        QCOMPARE(FetchCredential(fixture.Path(QStringLiteral("key.dat")),
                                 source ? QStringLiteral("name") : QStringLiteral("file"))
                     .isEmpty(),
                 !valid);
        // Accepting what is shown chooses nothing new.
        Choose(form, way);
        if (way == 1)
            Check(form, 1);
        Press(form, "OKBtn");
        QCOMPARE(gDialogResult, way == 1 && !source ? 1 : 0);
        QVERIFY(!form.isVisible());
    }

    void ChooserTakesASource()
    {
        ConnectFixture fixture;
        gDBQType = 0;
        gDBQUseODBC = gDBValid = true;
        frmODBCLogon form;
        form.show();
        Choose(form, 1);
        fixture.sources.SetContent("[College]\nDriver=Microsoft Access Driver (*.mdb)\nDBQ=/college.mdb\n"
                                   "Description=Ours\n[Other]\nDriver=FreeTDS\n");
        Press(form, "Command1");
        QVERIFY(Find<QRadioButton>(form, "Opt_0")->isChecked());
        Choose(form, 1);
        Press(form, "OKBtn");
        QCOMPARE(fixture.boxes, QStringList(QStringLiteral("[ODBC Login] No database selected!")));
        QVERIFY(form.isVisible());

        Check(form, 1);
        Check(form, 0);
        Press(form, "OKBtn");
        QCOMPARE(gDialogResult, 1);
        QVERIFY(gDBQUseODBC);
        QCOMPARE(gDBQName, college);
        QCOMPARE(gDBQDescription, QStringLiteral("Ours"));
        QCOMPARE(gDBQFilename, QStringLiteral("/college.mdb"));
    }

    void ChooserTakesAFileOrAServer()
    {
        ConnectFixture fixture;
        gDBQType = 0;
        frmODBCLogon form;
        form.show();
        Choose(form, 2);
        Press(form, "OKBtn");
        Choose(form, 3);
        TypeInto(form, "txtServerName", "office");
        Press(form, "OKBtn");
        QCOMPARE(
            fixture.boxes,
            QStringList({QStringLiteral("[Direct Connection Login] No Access database selected!"),
                         QStringLiteral("[Direct Connection Login] No SQLserver or Catalogue specified!")}));
        QCOMPARE(gDBQType, 0);
        TypeInto(form, "txtServerCatalog", "veltrane");
        Press(form, "OKBtn");
        QCOMPARE(gDialogResult, 1);
        QCOMPARE(gDBQName + u'/' + gDBQFilename, QStringLiteral("office/veltrane"));
        QCOMPARE(gDBQType, 2);
        fixture.boxes.clear();

        frmODBCLogon next;
        next.show();
        Choose(next, 2);
        fixture.chosenFile = QStringLiteral("/data/college.mdb");
        Press(next, "FindDBBtn");
        fixture.chosenFile.clear();
        Press(next, "FindDBBtn");
        QCOMPARE(TextIn(next, "txtDBAccessPath"), QStringLiteral("/data/college.mdb"));
        QCOMPARE(fixture.boxes[0],
                 QStringLiteral("[Veltrane Database Location] Micrsoft Access Database (*.mdb)"));
        Press(next, "OKBtn");
        QCOMPARE(gDialogResult, 1);
        QCOMPARE(gDBQType, 1);
        QVERIFY(!gDBQUseODBC);
    }

    void LogonTakesCredentials()
    {
        ConnectFixture fixture;
        for (const int type : {1, 2}) {
            gDBQType = type;
            gDBUser = QStringLiteral("sa");
            gDBPassword = QStringLiteral("old");
            gDialogResult = 0;
            for (const bool accepted : {false, true}) {
                frmDBLogon form;
                form.show();
                QCOMPARE(Find<QLineEdit>(form, "txtUID")->isVisible(), type == 2); // a file has no user
                QCOMPARE(TextIn(form, "txtUID") % TextIn(form, "txtPWD"), QStringLiteral("saold"));
                TypeInto(form, "txtPWD", "it's;new");
                if (accepted)
                    QTest::keyClick(&form, Qt::Key_Return);
                else
                    Press(form, "cmdCancel");
                QCOMPARE(gDBPassword, accepted ? QStringLiteral("it's;new") : QStringLiteral("old"));
                QCOMPARE(gDialogResult, accepted ? 1 : 0);
            }
        }
    }

    void RegistersAnExistingDatabase()
    {
        ConnectFixture fixture;
        const QString file = fixture.MakeDatabase(collegeFile);
        fixture.sources.SetContent("[Taken]\nDriver=FreeTDS\n");
        frmRegisterDB form;
        form.show();
        const auto pressed = [&] {
            fixture.boxes.clear();
            Press(form, "OKBtn");
            return fixture.boxes.value(0);
        };
        QVERIFY(pressed().startsWith(
            QStringLiteral("[Form not complete] The followings fields must be completed:\n    Data Source")));
        TypeInto(form, "DSN", "Taken");
        TypeInto(form, "DatabasePath", "/nowhere.mdb");
        QCOMPARE(pressed(), QStringLiteral("[Database not found] Database not found!"));
        fixture.chosenFile = file;
        Press(form, "SelectBtn");
        QCOMPARE(pressed(), QStringLiteral("[Invalid DSN] Data Source Name already in use."));
        for (const QChar bad : QStringLiteral("=()*!{}[];@,?\\")) {
            TypeInto(form, "DSN", u"Col" % QString(bad) % u"lege");
            QCOMPARE(pressed(),
                     QStringLiteral("[Invalid DSN] Invalid character for the Database Source Name.\nInvalid "
                                    "characters are =()*!{}[];@,?\\"));
        }
        QVERIFY(DSNMissing(QStringLiteral("Col")));
        TypeInto(form, "DSN", college);
        TypeInto(form, "Description", "O'Neil's %1 \"college\"");
        QCOMPARE(pressed(), QStringLiteral("[ODBC-32] Successfully created and registered Database."));
        QVERIFY(!form.isVisible());
        QCOMPARE(DSNDescription(college), QStringLiteral("O'Neil's %1 \"college\""));

        gDBQUseODBC = true;
        gDBQName = college;
        QVERIFY(ConnectDatabase(false));
        QCOMPARE(gDBQFilename, file);
        QVERIFY(gConnection.Execute(QStringLiteral("INSERT INTO City (City) VALUES ('Leeds')")));
        QVERIFY(ConnectDatabase(false));
        QVERIFY(
            !gConnection.OpenRecordset(QStringLiteral("SELECT * FROM City WHERE City = 'leeds'"))->IsEmpty());
    }

    void RegisteringAsksBeforeItLosesWhatWasTyped()
    {
        using Dialogs::Answer;
        ConnectFixture fixture;
        const QString question =
            QStringLiteral("[Warning] Some of the data has changed.\nOkay to update before exiting?");
        frmRegisterDB form;
        form.show();
        TypeInto(form, "DSN", college);
        fixture.answers = {Answer::Cancel};
        QTest::keyClick(&form, Qt::Key_Escape);
        QVERIFY(form.isVisible());
        fixture.answers = {Answer::Yes};
        Press(form, "CancelBtn");
        QVERIFY(form.isVisible()); // not complete yet
        fixture.answers = {Answer::Yes};
        TypeInto(form, "DatabasePath", fixture.MakeDatabase(collegeFile));
        Press(form, "CancelBtn");
        QVERIFY(!form.isVisible());
        QVERIFY(!DSNMissing(college));
        QCOMPARE(fixture.boxes.count(question), 3);

        frmRegisterDB untouched;
        untouched.show();
        Press(untouched, "CancelBtn");
        QCOMPARE(fixture.boxes.count(question), 3);
    }

    void PropertiesShowNoPassword()
    {
        ConnectFixture fixture;
        gDBQFilename = fixture.MakeDatabase(collegeFile, QStringLiteral("top;secret"));
        gDBPassword = QStringLiteral("top;secret");
        QVERIFY(ConnectDatabase(false));
        frmDBProps form(QStringLiteral("Our college"), true);
        form.show();
        QAbstractItemModel *list = Find<QTreeView>(form, "DBList")->model();
        QStringList rows;
        for (int row = 0; row < list->rowCount(); ++row)
            rows.append(list->index(row, 0).data().toString());
        QCOMPARE(rows.value(0), QStringLiteral("Connection properties for Our college:"));
        QCOMPARE(rows.value(1), u"    DBQ=" % gDBQFilename);
        QVERIFY(rows.contains(QStringLiteral("    Threads=20")));
        QVERIFY2(!rows.join(u'|').contains(QStringLiteral("secret")), qPrintable(rows.join(u'|')));

        TypeInto(form, "DName", "O'Neil's college");
        QTest::keyClick(&form, Qt::Key_Escape);
        LoadSystemValues();
        QCOMPARE(SystemValue(SystemRef::DatabaseName), QStringLiteral("O'Neil's college"));
        QVERIFY(!frmDBProps({}, false).findChild<QLineEdit *>(QStringLiteral("DName"))->isEnabled());
    }

    void ChangesThePasswordOfTheFile()
    {
        ConnectFixture fixture;
        gDBQFilename = fixture.MakeDatabase(collegeFile);
        QVERIFY(ConnectDatabase(false));
        const auto change = [&](const QString &old, const QString &first, const QString &second) {
            frmDBPass form;
            form.show();
            TypeInto(form, "OldPass", old);
            TypeInto(form, "NewPass1", first);
            TypeInto(form, "NewPass2", second);
            fixture.boxes.clear();
            Press(form, "OKBtn");
            return fixture.boxes.value(0);
        };
        const QString changed = QStringLiteral("[Password] Password Changed!");
        const QString marigold = QStringLiteral("m@ri;gold");
        QCOMPARE(change({}, "a", "A"),
                 QStringLiteral("[Security] New Password doesn't match Confirm Password!"));
        QCOMPARE(change("x", "a", "a"), QStringLiteral("[Security] Invalid Password!"));
        QCOMPARE(change({}, marigold, marigold), changed);
        QVERIFY(!FileDatabase::OpenExclusive(gDBQFilename, {}));
        QVERIFY(gConnection.IsOpen());
        QCOMPARE(gDBPassword, marigold);

        QCOMPARE(change(marigold, {}, {}), changed);
        QCOMPARE(gDBPassword, QString());
        gConnection.Close();
        QVERIFY(FileDatabase::OpenExclusive(gDBQFilename, {}));
    }

    void PasswordStaysWhereTheFileIsInUse()
    {
        ConnectFixture fixture;
        gDBQFilename = fixture.MakeDatabase(collegeFile);
        QVERIFY(ConnectDatabase(false));
        Connection other;
        QVERIFY(other.Open(gConnection.ConnectionText()));
        QVERIFY(other.OpenRecordset(QStringLiteral("SELECT * FROM City")));
        frmDBPass form;
        form.show();
        TypeInto(form, "NewPass1", "new");
        TypeInto(form, "NewPass2", "new");
        Press(form, "OKBtn");
        QCOMPARE(fixture.boxes.value(0),
                 QStringLiteral("[Password] Unable to open the database for exclusive access, may already be "
                                "in use elsewhere."));
        QVERIFY(gConnection.IsOpen());
        QCOMPARE(gDBPassword, QString());
    }

    void TellsWhenTheDatabaseIsLost()
    {
        ConnectFixture fixture;
        gDBQFilename = fixture.MakeDatabase(collegeFile);
        QVERIFY(ConnectDatabase(false));
        frmDBPass form;
        form.show();
        const QSignalSpy lost(&form, &frmDBPass::DatabaseLost);
        gConnection.Close();
        QVERIFY(QFile::remove(gDBQFilename));
        Press(form, "OKBtn");
        QCOMPARE(lost.count(), 1);
        QVERIFY(!form.isVisible());
    }
};

QTEST_MAIN(TestDatabaseScreens)
#include "test_databasescreens.moc"
