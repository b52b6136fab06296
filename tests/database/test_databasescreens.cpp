#include "controls/ListModel.h"
#include "database/ConnectFixture.h"
#include "database/connection/ConnectDatabase.h"
#include "database/connection/CredentialStore.h"
#include "database/connection/Registry.h"
#include "database/connection/frmDBLogon.h"
#include "database/connection/frmDBPass.h"
#include "database/connection/frmDBProps.h"
#include "database/connection/frmODBCLogon.h"
#include "database/connection/frmRegisterDB.h"
#include "database/statements/System.h"
#include "forms/lists/ListView.h"
#include "support/ModalDriver.h"
#include "support/TestTable.h"

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
const QString college = u"College"_qs;
const QString collegeFile = u"college.mdb"_qs;

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
        const TestTable<bool, bool, int, int> row{"valid", "source", "type", "way"};
        row("no database yet", false, false, 0, 1);
        row("a source", true, true, 1, 0);
        row("a source that failed", false, true, 1, 1);
        row("a file", true, false, 1, 2);
        row("a server", true, false, 2, 3);
    }
    void ChooserStartsOnTheSession()
    {
        QFETCH(const bool, valid);
        QFETCH(const bool, source);
        QFETCH(const int, type);
        QFETCH(const int, way);
        ConnectFixture fixture;
        gDBValid = valid;
        gDBQUseODBC = source;
        gDBQType = type;
        gDBQName = "name";
        gDBQFilename = "file";
        gDBPassword = "kept";
        fixture.sources.SetContent("[College]\nDriver=Microsoft Access Driver (*.mdb)\nDBQ=/college.mdb\n"
                                   "[Name]\nDriver=PostgreSQL Unicode\nDescription=Head office\n");
        frmODBCLogon form;
        form.show();
        QCOMPARE(gDialogResult, 0);
        QVERIFY(Find<QRadioButton>(form, u"Opt_" % QString::number(way))->isChecked());
        QCOMPARE(Find<QRadioButton>(form, "Opt_0")->isVisible(), valid);
        QCOMPARE(TextIn(form, "txtDBAccessPath") % u'/' % TextIn(form, "txtServerName"),
                 QStringList({"/", "/", "file/", "/name"}).at(way));
        QCOMPARE(FetchCredential(fixture.Path("key.dat"), source ? gDBQName : gDBQFilename).isEmpty(),
                 !valid);
        QVERIFY(Find<ListView>(form, "ODBClist")->Model().At(1).checked);
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
        QCOMPARE(fixture.boxes, QStringList("[ODBC Login] No database selected!"));
        QVERIFY(form.isVisible());
        const QAbstractItemModel *list = Find<QTreeView>(form, "ODBClist")->model();
        for (const auto &[column, text] : {std::pair{0, "College"}, {1, "Ours"}, {2, "/college.mdb"}})
            QCOMPARE(list->index(0, column).data().toString(), text);
        Check(form, 1);
        Check(form, 0);
        QCOMPARE(list->index(1, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked)); // one at a time
        Press(form, "OKBtn");
        QVERIFY(gDialogResult == 1 && gDBQUseODBC);
        QCOMPARE(QStringList({gDBQName, gDBQDescription, gDBQFilename}),
                 QStringList({college, "Ours", "/college.mdb"}));
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
        QCOMPARE(fixture.boxes,
                 QStringList({u"[Direct Connection Login] No Access database selected!"_qs,
                              u"[Direct Connection Login] No SQLserver or Catalogue specified!"_qs}));
        QCOMPARE(gDBQType, 0);
        TypeInto(form, "txtServerCatalog", "veltrane");
        Press(form, "OKBtn");
        QCOMPARE(gDialogResult, 1);
        QCOMPARE(gDBQName + u'/' + gDBQFilename, u"office/veltrane"_qs);
        QCOMPARE(gDBQType, 2);
        fixture.boxes.clear();

        frmODBCLogon next;
        next.show();
        Choose(next, 2);
        fixture.chosenFile = u"/data/college.mdb"_qs;
        Press(next, "FindDBBtn");
        fixture.chosenFile.clear();
        Press(next, "FindDBBtn");
        QCOMPARE(TextIn(next, "txtDBAccessPath"), u"/data/college.mdb"_qs);
        QCOMPARE(fixture.boxes[0], u"[Veltrane Database Location] Micrsoft Access Database (*.mdb)"_qs);
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
            gDBUser = "sa";
            gDBPassword = "old";
            gDialogResult = 0;
            for (const bool accepted : {false, true}) {
                frmDBLogon form;
                form.show();
                QCOMPARE(Find<QLineEdit>(form, "txtUID")->isVisible(), type == 2); // a file has no user
                QCOMPARE(TextIn(form, "txtUID") % TextIn(form, "txtPWD"), u"saold"_qs);
                TypeInto(form, "txtPWD", "it's;new");
                QTest::keyClick(&form, accepted ? Qt::Key_Return : Qt::Key_Escape);
                QCOMPARE(gDBPassword, accepted ? u"it's;new"_qs : u"old"_qs);
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
            u"[Form not complete] The followings fields must be completed:\n    Data Source"));
        TypeInto(form, "DSN", "Taken");
        TypeInto(form, "DatabasePath", "/nowhere.mdb");
        QCOMPARE(pressed(), u"[Database not found] Database not found!"_qs);
        fixture.chosenFile = file;
        Press(form, "SelectBtn");
        QCOMPARE(pressed(), u"[Invalid DSN] Data Source Name already in use."_qs);
        for (const QChar bad : u"=()*!{}[];@,?\\"_qs) {
            TypeInto(form, "DSN", u"Col" % QString(bad) % u"lege");
            QCOMPARE(pressed(), u"[Invalid DSN] Invalid character for the Database Source Name.\nInvalid "
                                "characters are =()*!{}[];@,?\\"_qs);
        }
        TypeInto(form, "DSN", college);
        TypeInto(form, "Description", "O'Neil's %1 \"college\"");
        // Leaving with Yes registers as the button does.
        fixture.answers = {Dialogs::Answer::Yes};
        fixture.boxes.clear();
        Press(form, "CancelBtn");
        QCOMPARE(fixture.boxes.value(1), u"[ODBC-32] Successfully created and registered Database."_qs);
        QVERIFY(!form.isVisible());
        QCOMPARE(DSNDescription(college), u"O'Neil's %1 \"college\""_qs);
        QCOMPARE(DSNFile(college), file);
    }

    void PropertiesShowNoPassword()
    {
        ConnectFixture fixture;
        gDBQFilename = fixture.MakeDatabase(collegeFile, "top;secret");
        gDBPassword = u"top;secret"_qs;
        QVERIFY(ConnectDatabase(false));
        frmDBProps form(u"Our college"_qs, true);
        form.show();
        QAbstractItemModel *list = Find<QTreeView>(form, "DBList")->model();
        QStringList rows;
        for (int row = 0; row < list->rowCount(); ++row)
            rows.append(list->index(row, 0).data().toString());
        QCOMPARE(rows.value(0), u"Connection properties for Our college:"_qs);
        QCOMPARE(rows.value(1), u"    DBQ=" % gDBQFilename);
        QVERIFY(rows.contains(u"    Threads=20"_qs));
        QVERIFY2(!rows.join(u'|').contains(u"secret"_qs), qPrintable(rows.join(u'|')));

        TypeInto(form, "DName", "O'Neil's college");
        QTest::keyClick(&form, Qt::Key_Escape);
        LoadSystemValues();
        QCOMPARE(SystemValue(SystemRef::DatabaseName), u"O'Neil's college"_qs);
        QVERIFY(!frmDBProps({}, false).findChild<QLineEdit *>("DName")->isEnabled());
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
        QCOMPARE(change({}, "a", "A"), u"[Security] New Password doesn't match Confirm Password!"_qs);
        QCOMPARE(change("x", "a", "a"), u"[Security] Invalid Password!"_qs);
        {
            Connection other;
            QVERIFY(other.Open(gConnection.ConnectionText()) && other.OpenRecordset("SELECT * FROM City"));
            QCOMPARE(change({}, "new", "new"),
                     u"[Password] Unable to open the database for exclusive access, may already be "
                     "in use elsewhere."_qs);
            QVERIFY(gConnection.IsOpen() && gDBPassword.isEmpty());
        }
        const QString changed = u"[Password] Password Changed!"_qs;
        const QString marigold = u"m@ri;gold"_qs;
        QCOMPARE(change({}, marigold, marigold), changed);
        QVERIFY(!FileDatabase::OpenExclusive(gDBQFilename, {}));
        QVERIFY(gConnection.IsOpen());
        QCOMPARE(gDBPassword, marigold);
        QCOMPARE(change(marigold, {}, {}), changed);
        QCOMPARE(gDBPassword, QString());
        gConnection.Close();
        QVERIFY(FileDatabase::OpenExclusive(gDBQFilename, {}));

        frmDBPass form;
        form.show();
        const QSignalSpy lost(&form, &frmDBPass::DatabaseLost);
        QVERIFY(QFile::remove(gDBQFilename));
        Press(form, "OKBtn");
        QVERIFY(lost.count() == 1 && !form.isVisible());
    }
};

QTEST_MAIN(TestDatabaseScreens)
#include "test_databasescreens.moc"
