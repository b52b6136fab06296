#include "core/Session.h"
#include "exchange/frmExportWiz.h"
#include "forms/ListView.h"
#include "platform/Directories.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>

/// The export wizard as a user drives it, by keys and buttons.
class TestExportWiz final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ExportsByKeyboardAlone();
    void StaysWhereSomethingIsMissing();
    void GoesBackWhereNoFileCame();
    void CancelStopsTheRun();

private:
    static void Type(QWidget &form, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static QString Title(QWidget &form);
    static bool IsEnabled(QWidget &form, const QString &button)
    {
        return Find<QPushButton>(form, button)->isEnabled();
    }
    static QByteArray Bytes(const QString &fileName);
    static void AddPeople(int count);
    /// Through the first three pages, to the file of that name.
    static void GoToFile(QWidget &form, const QString &fileName);

    QTemporaryDir m_folder;
    std::optional<TestDatabase> m_database;
    std::optional<ScriptedDialogs> m_user;
};

void TestExportWiz::init()
{
    m_database.emplace();
    m_user.emplace();
}

void TestExportWiz::cleanup()
{
    m_user.reset();
    m_database.reset();
}

void TestExportWiz::Type(QWidget &form, int key, Qt::KeyboardModifiers modifiers)
{
    QWidget *focus = form.focusWidget();
    QTest::keyClick(focus ? focus : &form, static_cast<Qt::Key>(key), modifiers);
}

QString TestExportWiz::Title(QWidget &form)
{
    const QString page = form.findChild<QStackedWidget *>()->currentWidget()->objectName();
    return Find<QLabel>(form, page + "_Title")->text();
}

QByteArray TestExportWiz::Bytes(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestExportWiz::AddPeople(int count)
{
    WriteGroup group(gConnection);
    for (int person = 0; person < count; ++person)
        gConnection.Execute(u"INSERT INTO Contacts (Cust_Forename, Cust_Surname, Cust_City, Cust_County, "
                            u"Cust_Country, Cust_Designation, Cust_Ethnicgroup, OrganRef) VALUES ('Ann', "
                            u"'Ash " %
                            QString::number(person) % u"', 1, 1, 1, 1, 1, 1)");
    group.Finish();
}

void TestExportWiz::GoToFile(QWidget &form, const QString &fileName)
{
    form.show();
    Press(form, "cmdNav_2");
    Press(form, "cmdNav_2");
    TypeInto(form, "Filename", fileName);
}

void TestExportWiz::ExportsByKeyboardAlone()
{
    AddPeople(2);
    const QString fileName = m_folder.filePath("people.csv");
    frmExportWiz form;
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    QCOMPARE(Title(form), QStringLiteral("Welcome to the Export Wizard"));
    QVERIFY(!IsEnabled(form, "cmdNav_1"));
    Type(form, Qt::Key_Return);

    QCOMPARE(Title(form), QStringLiteral("Select Fields"));
    ListModel &fields = Find<ListView>(form, "ExportSel")->Model();
    QCOMPARE(fields.CheckedRows().size(), size_t(28));
    Type(form, Qt::Key_O, Qt::AltModifier);
    QTRY_COMPARE(fields.CheckedRows().size(), size_t(0));
    Type(form, Qt::Key_A, Qt::AltModifier);
    QTRY_COMPARE(fields.CheckedRows().size(), size_t(28));
    Type(form, Qt::Key_O, Qt::AltModifier);
    QTRY_COMPARE(fields.CheckedRows().size(), size_t(0));
    Type(form, Qt::Key_D, Qt::AltModifier);
    Type(form, Qt::Key_Down);
    Type(form, Qt::Key_Space);
    Type(form, Qt::Key_Down);
    Type(form, Qt::Key_Space);
    QCOMPARE(fields.CheckedRows(), (std::vector<int>{1, 2}));
    Type(form, Qt::Key_N, Qt::AltModifier);
    QTRY_COMPARE(Title(form), QStringLiteral("CSV Export"));
    QVERIFY(!IsEnabled(form, "cmdNav_2"));
    QTest::keyClicks(form.focusWidget(), fileName);
    m_user->Expect("CSV Export", "Export complete:\n2 Records where exported.");
    Type(form, Qt::Key_Return);
    QCOMPARE(Title(form), QStringLiteral("Exporting Data..."));
    QCOMPARE(Find<QProgressBar>(form, "ProgBar")->value(), 2);
    QCOMPARE(Find<QLabel>(form, "ProgText")->text(), QStringLiteral("Record 2 of 2"));
    QVERIFY(IsEnabled(form, "cmdNav_3") && !IsEnabled(form, "cmdNav_1") && !IsEnabled(form, "cmdNav_2"));
    Type(form, Qt::Key_Return);
    QVERIFY(!form.isVisible());
    QCOMPARE(Bytes(fileName), QByteArray("\xEF\xBB\xBF\"Forename\",\"Surname\"\r\n\"Ann\",\"Ash 0\"\r\n"
                                         "\"Ann\",\"Ash 1\"\r\n"));
    QCOMPARE(Bytes(Directories::WrittenFile("export.tmp")), QByteArray("6\r\n-1\r\n"));

    frmExportWiz again;
    again.show();
    Press(again, "cmdNav_2");
    QCOMPARE(Find<ListView>(again, "ExportSel")->Model().CheckedRows(), (std::vector<int>{1, 2}));
}

void TestExportWiz::StaysWhereSomethingIsMissing()
{
    frmExportWiz form;
    form.show();
    m_user->Expect("", "Help not available.");
    Press(form, "cmdNav_0");
    Find<ListView>(form, "ExportList")->Model().ClearSelection();
    m_user->Expect("CSV Export", "No selected/available items to export.");
    Press(form, "cmdNav_2");
    Find<ListView>(form, "ExportList")->Model().SelectOnly(1);
    Press(form, "cmdNav_2");
    Press(form, "NoneBtn");
    m_user->Expect("CSV Export", "You need at least one field to export.");
    Press(form, "cmdNav_2");
    QCOMPARE(Title(form), QStringLiteral("Select Fields"));
    Press(form, "AllBtn");
    Press(form, "cmdNav_2");
    QString proposed;
    Dialogs::Installed().saveFile = [&](const Dialogs::FileQuestion &question) {
        proposed = question.title % u' ' % question.fileName;
        return m_folder.filePath("organisations.csv");
    };
    Press(form, "BrowseBtn");
    QCOMPARE(proposed, QStringLiteral("Save As Organisations.csv"));
    m_user->Expect("CSV Export", "No Records found in database.");
    Press(form, "cmdNav_2");
    QVERIFY(!QFile::exists(m_folder.filePath("organisations.csv")));
    Type(form, Qt::Key_Escape);
    QVERIFY(!form.isVisible());
}

void TestExportWiz::GoesBackWhereNoFileCame()
{
    AddPeople(1);
    frmExportWiz form;
    GoToFile(form, m_folder.filePath("no/such/folder.csv"));
    m_user->Expect("CSV Export", "A number of errors have been detected, please seek technical support.");
    m_user->Expect("CSV Export",
                   u"Export failed, maybe an invalid SQL query was passed.\n\nUnable to write '" %
                       m_folder.filePath("no/such/folder.csv") % u"': No such file or directory.");
    Press(form, "cmdNav_2");
    Press(form, "cmdNav_1");
    TypeInto(form, "Filename", m_folder.filePath("one.csv"));
    m_user->Expect("CSV Export", "Export complete:\n1 Records where exported.");
    Press(form, "cmdNav_2");
    QVERIFY(!IsEnabled(form, "cmdNav_1"));
    QVERIFY(QFile::exists(m_folder.filePath("one.csv")));
}

void TestExportWiz::CancelStopsTheRun()
{
    AddPeople(200);
    const QString fileName = m_folder.filePath("long.csv");
    frmExportWiz form;
    GoToFile(form, fileName);
    int presses = 0;
    Dialogs::Installed().serveEvents = [&] {
        const bool isUnderWay = Find<QProgressBar>(form, "ProgBar")->maximum() == 200;
        if (isUnderWay && ++presses == 1) {
            QVERIFY(!IsEnabled(form, "cmdNav_3") && !IsEnabled(form, "cmdNav_1"));
            Press(form, "cmdNav_4");
        }
    };
    m_user->Expect("CSV Export", "Export cancelled, nothing was written.");
    Press(form, "cmdNav_2");
    QCOMPARE(presses, 1);
    QVERIFY(form.isVisible() && !QFile::exists(fileName));
    Press(form, "cmdNav_3");
    QVERIFY(!form.isVisible());
}

QTEST_MAIN(TestExportWiz)
#include "test_exportwiz.moc"
