#include "exchange/Exchange.h"
#include "exchange/export/frmExportWiz.h"
#include "exchange/import/frmChangeMap.h"
#include "exchange/import/frmImportWiz.h"
#include "forms/frames/StandardDialogs.h"
#include "forms/lists/ListView.h"
#include "platform/desktop/Directories.h"
#include "support/Keyboard.h"
#include "support/ModalDriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>

namespace
{
const QString next = QStringLiteral("cmdNav_2");
const QString finish = QStringLiteral("cmdNav_3");
const QString cancel = QStringLiteral("cmdNav_4");
const QByteArray header("Forename,Surname,Address,Extra\n");

QString Title(QWidget &form)
{
    const QString page = Find<QStackedWidget>(form, "SSActiveTabs1")->currentWidget()->objectName();
    return Find<QLabel>(form, page + "_Title")->text();
}

/// Which of Back, Next, Finish and Cancel can be pressed: "BNFC".
QString Offered(QWidget &form)
{
    QString offered;
    for (int code = 1; code <= 4; ++code) {
        if (Find<QPushButton>(form, u"cmdNav_" % QString::number(code))->isEnabled())
            offered += u"BNFC"[code - 1];
    }
    return offered;
}

ListModel &List(QWidget &form, const QString &name)
{
    return Find<ListView>(form, name)->Model();
}

QStringList Keys(const ListModel &list)
{
    QStringList keys;
    for (int row = 0; row < list.Count(); ++row)
        keys.append(list.At(row).key);
    return keys;
}

/// To the page before the run, with that file.
void NameFile(QWidget &form, const QString &file)
{
    form.show();
    const bool isExport = qobject_cast<frmExportWiz *>(&form);
    Press(form, next);
    if (isExport)
        Press(form, next);
    TypeInto(form, "Filename", file);
    if (!isExport)
        Press(form, next);
}

} // namespace

/// The two wizards as a user drives them, by keys and buttons.
class TestCsvWizards final : public QObject
{
    Q_OBJECT

private slots:
    void ImportsByKeyboardAlone();
    void ExportsByKeyboardAlone();
    void ChangesTheMapping();
    void ChecksTheFile();
    void ImportThatDidNotBeginGoesBack();
    void ExportWithoutAFileGoesBack();
    void CancelLeavesWhatWasImported();
    void EscapeAnswersNo();
};

void TestCsvWizards::ImportsByKeyboardAlone()
{
    Exchange desk;
    frmImportWiz form;
    const Keyboard keys(form);
    QCOMPARE(Title(form), QStringLiteral("Welcome to the Import Wizard"));
    QCOMPARE(Offered(form), QStringLiteral("NC"));
    keys.Press(Qt::Key_Return);
    QCOMPARE(Title(form), QStringLiteral("CSV Import"));
    QCOMPARE(Offered(form), QStringLiteral("BC"));
    keys.Type(Exchange::Sample());
    keys.Press(Qt::Key_Return);
    QCOMPARE(Title(form), QStringLiteral("Field Mapping"));
    QCOMPARE(List(form, "ImportSel").CheckedRows().size(), size_t(11));
    // Enter opens the mapping of the row, it does not import.
    ModalDriver hands;
    hands.Expect("frmChangeMap", [](QDialog &map) { QTest::keyClick(&map, Qt::Key_Escape); });
    keys.Press(Qt::Key_Return);
    desk.user.Expect("CSV Import", Exchange::Summary(500, 0, 0));
    keys.Alt(Qt::Key_N);
    QTRY_COMPARE(Title(form), QStringLiteral("Importing Data..."));
    QCOMPARE(Find<QProgressBar>(form, "ProgBar")->value(), 500);
    QCOMPARE(Find<QLabel>(form, "ProgText")->text(), QStringLiteral("Line 500 of 500"));
    QCOMPARE(Offered(form), QStringLiteral("F"));
    keys.Press(Qt::Key_Return);
    QVERIFY(!form.isVisible());
    QCOMPARE(Exchange::Count("Contacts"), 501);
}

void TestCsvWizards::ExportsByKeyboardAlone()
{
    Exchange desk;
    Exchange::AddPeople(2);
    const QString fileName = desk.Path("people.csv");
    frmExportWiz form;
    const Keyboard keys(form);
    QCOMPARE(Title(form), QStringLiteral("Welcome to the Export Wizard"));
    keys.Press(Qt::Key_Return);
    QCOMPARE(Title(form), QStringLiteral("Select Fields"));
    const ListModel &fields = List(form, "ExportSel");
    QCOMPARE(fields.CheckedRows().size(), size_t(28));
    keys.Alt(Qt::Key_O);
    QCOMPARE(fields.CheckedRows().size(), size_t(0));
    keys.Alt(Qt::Key_D);
    keys.Press(Qt::Key_Down);
    keys.Press(Qt::Key_Space);
    keys.Press(Qt::Key_Down);
    keys.Press(Qt::Key_Return); // acts on the row, as in the mapping of an import
    QCOMPARE(fields.CheckedRows(), (std::vector<int>{1, 2}));
    keys.Alt(Qt::Key_N);
    QCOMPARE(Title(form), QStringLiteral("CSV Export"));
    QCOMPARE(Offered(form), QStringLiteral("BC"));
    keys.Type(fileName);
    desk.user.Expect("CSV Export", Exchange::Exported(2));
    keys.Press(Qt::Key_Return);
    QCOMPARE(Title(form), QStringLiteral("Exporting Data..."));
    QCOMPARE(Find<QProgressBar>(form, "ProgBar")->value(), 2);
    QCOMPARE(Offered(form), QStringLiteral("F"));
    keys.Press(Qt::Key_Return);
    QVERIFY(!form.isVisible());
    QCOMPARE(ContentOf(fileName), QByteArray("\xEF\xBB\xBF\"Forename\",\"Surname\"\r\n\"Ann\",\"Ash 0\"\r\n"
                                             "\"Ann\",\"Ash 1\"\r\n"));
    QCOMPARE(ContentOf(Directories::WrittenFile("export.tmp")), QByteArray("6\r\n-1\r\n"));
}

void TestCsvWizards::ChangesTheMapping()
{
    Exchange desk;
    frmImportWiz form;
    NameFile(form, desk.File("Given,Surname,Address,A Surname\nAnn,Ash,1 High St,x\n"));
    ListModel &fields = List(form, "ImportSel");
    const QStringList byName{"?1", "*2-Cust_Surname", "*3-Cust_Addr1", "?4"};
    QCOMPARE(Keys(fields), byName);
    ModalDriver hands;
    const auto changing = [&](int row, bool imported, const QString &target, const QString &button) {
        fields.SelectOnly(row);
        hands.Expect("frmChangeMap", [&](QDialog &map) {
            Find<QCheckBox>(map, "ImportField")->setChecked(imported);
            ListModel &targets = List(map, "FieldList");
            QCOMPARE(Find<QPushButton>(map, "ExitBtn")->isEnabled(),
                     !imported || !targets.SelectedKeys().empty());
            if (!target.isEmpty())
                targets.SelectOnly(targets.Find(target));
            Press(map, button);
        });
        Press(form, "MapBtn");
        return Keys(fields);
    };
    QCOMPARE(changing(0, true, "*Cust_Surname", "CanBtn"), byName);
    QCOMPARE(changing(0, true, "*Cust_Forename", "ExitBtn"),
             (QStringList{"*1-Cust_Forename", "*2-Cust_Surname", "*3-Cust_Addr1", "?4"}));
    QCOMPARE(changing(2, false, {}, "ExitBtn"),
             (QStringList{"*1-Cust_Forename", "*2-Cust_Surname", "?3", "?4"}));
    // A new reading of the file maps again, by the order of the file even where the list is sorted.
    Find<ListView>(form, "ImportSel")->sortByColumn(0, Qt::AscendingOrder);
    Press(form, "cmdNav_1");
    Press(form, next);
    QCOMPARE(Keys(fields), (QStringList{"?4", "*3-Cust_Addr1", "?1", "*2-Cust_Surname"}));
}

void TestCsvWizards::ChecksTheFile()
{
    Exchange desk;
    const QString file = desk.File("Forename,Surname,Address,Date of Birth\nAnn,Ash,1 High St,\n"
                                   "Ben,Birch,2 Low St,soon\n");
    frmImportWiz form;
    NameFile(form, file);
    ModalDriver hands;
    const QString faulty = desk.Path("faulty.csv");
    hands.Expect("frmCheckFile", [&](QDialog &check) {
        QTRY_VERIFY(Find<QPushButton>(check, "SaveBtn")->isEnabled());
        QCOMPARE(Find<QLabel>(check, "Notice")->text(),
                 QStringLiteral("2 lines: 1 new, 0 changed, 0 the same, 1 faulty. An import skips the faulty "
                                "ones."));
        QCOMPARE(Find<QLabel>(check, "FaultText")->text(),
                 QStringLiteral(
                     "Line 3, field 'Date of Birth': 'soon' is not a date (DD/MM/YYYY or YYYY-MM-DD)."));
        desk.user.ExpectFile("Save As", faulty);
        Press(check, "SaveBtn");
        QTest::keyClick(&check, Qt::Key_Escape);
    });
    Press(form, "CheckBtn");
    QVERIFY(ContentOf(faulty).endsWith("Ben,Birch,2 Low St,soon\r\n"));
    QCOMPARE(Exchange::Count("Contacts"), 1);
}

void TestCsvWizards::ImportThatDidNotBeginGoesBack()
{
    Exchange desk;
    frmImportWiz form;
    form.show();
    desk.user.Expect("", "Help not available.");
    Press(form, "cmdNav_0");
    Press(form, next);
    const QString file = desk.File(header + "Ann,Ash,1 High St,x\n");
    desk.user.ExpectFile("Open", file);
    Press(form, "BrowseBtn");
    Press(form, next);
    QVERIFY(QFile::remove(file));
    desk.user.Expect("CSV Import", u"Unable to open '" % file % u"'.\nThe file does not exist.");
    Press(form, next);
    QCOMPARE(Offered(form), QStringLiteral("BF"));
    Press(form, "cmdNav_1");
    QTest::keyClick(&form, Qt::Key_Escape);
    QVERIFY(!form.isVisible());
}

void TestCsvWizards::ExportWithoutAFileGoesBack()
{
    Exchange desk;
    Exchange::AddPeople(1);
    frmExportWiz form;
    const QString gone = desk.Path("no/such/folder.csv");
    NameFile(form, gone);
    desk.user.Expect("CSV Export", "A number of errors have been detected, please seek technical support.");
    desk.user.Expect("CSV Export",
                     u"Export failed, maybe an invalid SQL query was passed.\n\nUnable to write '" % gone %
                         u"': No such file or directory.");
    Press(form, next);
    QCOMPARE(Offered(form), QStringLiteral("BF"));
    QCOMPARE(Find<QLabel>(form, "Notice")->text(), QStringLiteral("Nothing was written."));
    Press(form, "cmdNav_1");
    Find<QLineEdit>(form, "Filename")->clear();
    QString proposed;
    Dialogs::Installed().saveFile = [&](const Dialogs::FileQuestion &question) {
        proposed = question.title % u' ' % question.fileName;
        return desk.Path("one.csv");
    };
    Press(form, "BrowseBtn");
    QCOMPARE(proposed, QStringLiteral("Save As Contacts.csv"));
    desk.user.Expect("CSV Export", Exchange::Exported(1));
    Press(form, next);
    QCOMPARE(Offered(form), QStringLiteral("F"));
}

void TestCsvWizards::CancelLeavesWhatWasImported()
{
    Exchange desk;
    QByteArray lines = header;
    for (int i = 0; i < 20000; ++i)
        lines += "Ann,Ash " + QByteArray::number(i) + ",1 High St,\n";
    frmImportWiz form;
    const QString file = desk.File(lines);
    NameFile(form, file);
    int presses = 0;
    Dialogs::Installed().serveEvents = [&] {
        const auto *bar = Find<QProgressBar>(form, "ProgBar");
        if (bar->value() > 0 && bar->value() < bar->maximum() && ++presses == 1) {
            QCOMPARE(Offered(form), QStringLiteral("C"));
            Press(form, cancel);
        }
    };
    QString told;
    Dialogs::Installed().msgBox = [&told](const QString &text, auto...) {
        told = text;
        return Dialogs::Answer::Ok;
    };
    Press(form, next);
    QCOMPARE(presses, 1);
    const int people = Exchange::Count("Contacts") - 1;
    QVERIFY(people > 0 && people < 20000);
    const QString number = QString::number(people);
    QCOMPARE(told, u"Import cancelled after record " % number % u" of 20000 of '" %
                       QFileInfo(file).fileName() % u"'. What it had done so far stays in the database:\n" %
                       number %
                       u" Records where imported.\n0 Records where updated.\n0 Records where skipped.");
    QCOMPARE(Offered(form), QStringLiteral("F"));
    Press(form, finish);
    QVERIFY(!form.isVisible());
}

/// The box of the run's questions itself: what a test's user answers is in its place elsewhere.
void TestCsvWizards::EscapeAnswersNo()
{
    Exchange desk;
    desk.user.Expect("CSV Import", Exchange::Summary(1, 0, 0));
    QVERIFY(desk.ImportBytes(header + "Ann,Ash,1 High St,\n"));
    const Dialogs::Hooks scripted = Dialogs::Installed();
    InstallStandardDialogs();
    QStringList buttons;
    QStringList texts;
    QTimer hands;
    connect(&hands, &QTimer::timeout, this, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        texts.append(box->text());
        if (texts.size() == 1)
            for (const QAbstractButton *button : box->buttons())
                buttons.append(button->text().remove(u'&'));
        QTest::keyClick(box, Qt::Key_Escape);
    });
    hands.start(10);
    const bool ran = desk.ImportBytes("Forename,Surname,Address,Postcode\nAnn,Ash,1 High St,A1\n"
                                      "Ben,Birch,2 Low St,B1\n");
    hands.stop();
    Dialogs::Installed() = scripted;
    QVERIFY(ran);
    QCOMPARE(buttons.size(), 4);
    for (const char *button : {"Yes", "Yes to All", "No", "No to All"})
        QVERIFY2(buttons.contains(QString(button), Qt::CaseInsensitive), qPrintable(buttons.join(u',')));
    QCOMPARE(texts.value(1), Exchange::Summary(1, 0, 0));
}

QTEST_MAIN(TestCsvWizards)
#include "test_csvwizards.moc"
