#include "exchange/frmChangeMap.h"
#include "exchange/frmImportWiz.h"
#include "forms/ListView.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>

/// The import wizard as a user drives it, by keys and buttons.
class TestImportWiz final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ImportsByKeyboardAlone();
    void ChangesTheMapping();
    void ChecksTheFile();
    void StaysWhereSomethingIsMissing();
    void CancelStopsTheRun();

private:
    static void Type(QWidget &form, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static QString Title(QWidget &form);
    static bool IsEnabled(QWidget &form, const QString &button)
    {
        return Find<QPushButton>(form, button)->isEnabled();
    }

    QTemporaryDir m_folder;
    std::optional<TestDatabase> m_database;
    std::optional<ScriptedDialogs> m_user;
};

void TestImportWiz::init()
{
    m_database.emplace();
    m_user.emplace();
}

void TestImportWiz::cleanup()
{
    m_user.reset();
    m_database.reset();
}

void TestImportWiz::Type(QWidget &form, int key, Qt::KeyboardModifiers modifiers)
{
    QWidget *focus = form.focusWidget();
    QTest::keyClick(focus ? focus : &form, static_cast<Qt::Key>(key), modifiers);
}

QString TestImportWiz::Title(QWidget &form)
{
    const QString page = form.findChild<QStackedWidget *>()->currentWidget()->objectName();
    return Find<QLabel>(form, page + "_Title")->text();
}

void TestImportWiz::ImportsByKeyboardAlone()
{
    frmImportWiz form;
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    QCOMPARE(Title(form), QStringLiteral("Welcome to the Import Wizard"));
    QVERIFY(!IsEnabled(form, "cmdNav_1"));
    Type(form, Qt::Key_Return);

    QCOMPARE(Title(form), QStringLiteral("CSV Import"));
    QVERIFY(!IsEnabled(form, "cmdNav_2"));
    QTest::keyClicks(form.focusWidget(), DEMO_DATA "/people.csv");
    QVERIFY(IsEnabled(form, "cmdNav_2"));
    Type(form, Qt::Key_Return);

    QCOMPARE(Title(form), QStringLiteral("Field Mapping"));
    QCOMPARE(Find<ListView>(form, "ImportSel")->Model().CheckedRows().size(), size_t(11));
    m_user->Expect("CSV Import", "Import complete:\n500 Records where imported.\n0 Records where updated.\n"
                                 "0 Records where skipped.");
    Type(form, Qt::Key_N, Qt::AltModifier);
    QTRY_VERIFY(m_user->AllCame()); // a mnemonic shows its button pressed for a moment

    QCOMPARE(Title(form), QStringLiteral("Importing Data..."));
    QCOMPARE(Find<QProgressBar>(form, "ProgBar")->value(), 500);
    QVERIFY(IsEnabled(form, "cmdNav_3") && !IsEnabled(form, "cmdNav_1") && !IsEnabled(form, "cmdNav_2"));
    Type(form, Qt::Key_Return);
    QVERIFY(!form.isVisible());
    QCOMPARE(TestDatabase::Value("SELECT COUNT(*) FROM Contacts").toInt(), 501);
}

void TestImportWiz::ChangesTheMapping()
{
    QFile file(m_folder.filePath("shuffled.csv"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("Given,Surname,Address,Extra\nAnn,Ash,1 High St,x\n");
    file.close();
    frmImportWiz form;
    form.show();
    Press(form, "cmdNav_2");
    TypeInto(form, "Filename", file.fileName());
    Press(form, "cmdNav_2");
    ListModel &fields = Find<ListView>(form, "ImportSel")->Model();
    const auto keys = [&fields] {
        QStringList all;
        for (int row = 0; row < fields.Count(); ++row)
            all.append(fields.At(row).key);
        return all;
    };
    QCOMPARE(keys(), (QStringList{"?1", "*2-Cust_Surname", "*3-Cust_Addr1", "?4"}));

    ModalDriver hands;
    const auto changing = [&](int row, const std::function<void(QDialog &)> &step) {
        fields.SelectOnly(row);
        hands.Expect("frmChangeMap", step);
        Press(form, "MapBtn");
    };
    changing(0, [&](QDialog &map) {
        QVERIFY(IsEnabled(map, "ExitBtn"));
        Find<QCheckBox>(map, "ImportField")->setChecked(true);
        QVERIFY(!IsEnabled(map, "ExitBtn"));
        ListModel &targets = Find<ListView>(map, "FieldList")->Model();
        targets.SelectOnly(targets.Find("*Cust_Forename"));
        Press(map, "ExitBtn");
    });
    QCOMPARE(keys(), (QStringList{"*1-Cust_Forename", "*2-Cust_Surname", "*3-Cust_Addr1", "?4"}));
    changing(2, [&](QDialog &map) {
        ListModel &targets = Find<ListView>(map, "FieldList")->Model();
        QCOMPARE(targets.SelectedKeys(), QStringList{"*Cust_Addr1"});
        Find<QCheckBox>(map, "ImportField")->setChecked(false);
        Press(map, "ExitBtn");
    });
    QCOMPARE(keys(), (QStringList{"*1-Cust_Forename", "*2-Cust_Surname", "?3", "?4"}));

    Press(form, "cmdNav_1");
    Press(form, "cmdNav_2");
    QCOMPARE(keys(), (QStringList{"?1", "*2-Cust_Surname", "*3-Cust_Addr1", "?4"}));
}

void TestImportWiz::ChecksTheFile()
{
    QFile file(m_folder.filePath("faults.csv"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("Forename,Surname,Address,Date of Birth\nAnn,Ash,1 High St,\nBen,Birch,2 Low St,soon\n");
    file.close();
    frmImportWiz form;
    form.show();
    Press(form, "cmdNav_2");
    TypeInto(form, "Filename", file.fileName());
    Press(form, "cmdNav_2");
    Find<ListView>(form, "ImportSel")->Model().SetChecked(1, false);
    m_user->Expect("CSV Import", "The following fields are required:\n    Surname\n");
    Press(form, "CheckBtn");
    Press(form, "cmdNav_1");
    Press(form, "cmdNav_2");

    ModalDriver hands;
    const QString list = m_folder.filePath("list.csv");
    hands.Expect("frmCheckFile", [&](QDialog &check) {
        QTRY_VERIFY(IsEnabled(check, "SaveBtn"));
        QCOMPARE(Find<QLabel>(check, "Notice")->text(),
                 QStringLiteral("2 lines: 1 new, 0 changed, 0 the same, 1 faulty. An import skips the faulty "
                                "ones."));
        const ListModel &faults = Find<ListView>(check, "FaultList")->Model();
        QCOMPARE(faults.Count(), 1);
        QCOMPARE(faults.At(0).text, QStringLiteral("3"));
        QCOMPARE(faults.At(0).subItems,
                 (QStringList{"Date of Birth", "soon", "is no date as DD/MM/YYYY or YYYY-MM-DD"}));
        m_user->ExpectFile("Save As", list);
        Press(check, "SaveBtn");
        Type(check, Qt::Key_Escape);
    });
    Press(form, "CheckBtn");
    QVERIFY(QFile::exists(list));
    QCOMPARE(TestDatabase::Value("SELECT COUNT(*) FROM Contacts"), QStringLiteral("1"));
    QCOMPARE(Title(form), QStringLiteral("Field Mapping"));
}

void TestImportWiz::StaysWhereSomethingIsMissing()
{
    frmImportWiz form;
    form.show();
    m_user->Expect("", "Help not available.");
    Press(form, "cmdNav_0");

    Press(form, "cmdNav_2");
    TypeInto(form, "Filename", "/no/such.csv");
    m_user->Expect("CSV Import", "Unable to open '/no/such.csv'.");
    Press(form, "cmdNav_2");
    QCOMPARE(Title(form), QStringLiteral("CSV Import"));
    m_user->ExpectFile("Open", DEMO_DATA "/people.csv");
    Press(form, "BrowseBtn");
    Press(form, "cmdNav_2");

    Find<ListView>(form, "ImportSel")->Model().SetChecked(1, false);
    m_user->Expect("CSV Import", "The following fields are required:\n    Surname\n");
    Press(form, "cmdNav_2");
    QCOMPARE(Title(form), QStringLiteral("Field Mapping"));
    Type(form, Qt::Key_Escape);
    QVERIFY(!form.isVisible());
}

void TestImportWiz::CancelStopsTheRun()
{
    QFile file(m_folder.filePath("long.csv"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("Forename,Surname,Address\n");
    for (int i = 0; i < 20000; ++i)
        file.write("Ann,Ash " + QByteArray::number(i) + ",1 High St\n");
    file.close();
    frmImportWiz form;
    form.show();
    Press(form, "cmdNav_2");
    TypeInto(form, "Filename", file.fileName());
    Press(form, "cmdNav_2");

    int presses = 0;
    Dialogs::Installed().serveEvents = [&] {
        const int done = Find<QProgressBar>(form, "ProgBar")->value();
        if (done > 0 && done < 20000 && ++presses == 1) {
            QVERIFY(!IsEnabled(form, "cmdNav_3"));
            Press(form, "cmdNav_4");
        }
    };
    QString told;
    Dialogs::Installed().msgBox = [&](const QString &text, auto...) {
        told = text;
        return Dialogs::Answer::Ok;
    };
    Press(form, "cmdNav_2");
    QCOMPARE(presses, 1);
    QVERIFY2(told.startsWith("Import cancelled behind line "), qPrintable(told));
    QVERIFY(form.isVisible());
    const int people = TestDatabase::Value("SELECT COUNT(*) FROM Contacts").toInt() - 1;
    QVERIFY(people > 0 && people < 20000);
    QVERIFY2(told.contains("\n" + QString::number(people) + " Records where imported."), qPrintable(told));
    Press(form, "cmdNav_3");
    QVERIFY(!form.isVisible());
}

QTEST_MAIN(TestImportWiz)
#include "test_importwiz.moc"
