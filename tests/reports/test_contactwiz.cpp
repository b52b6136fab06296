#include "controls/ListModel.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/System.h"
#include "forms/lists/ListView.h"
#include "reports/OwnDesktop.h"
#include "reports/ReportPages.h"
#include "reports/contacts/frmContactWiz.h"
#include "reports/writer/ReportPdf.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"
#include "support/TestTable.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace
{
const QString back = QStringLiteral("cmdNav_1");
const QString next = QStringLiteral("cmdNav_2");
const QString finish = QStringLiteral("cmdNav_3");
const QString cancel = QStringLiteral("cmdNav_4");

QByteArray BytesOf(const QString &file)
{
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

/// A PDF document and all that is compressed in it.
QByteArray Unpacked(const QByteArray &pdf)
{
    const QByteArray begin = ">>\nstream\n";
    QByteArray bytes = pdf;
    for (qsizetype at = pdf.indexOf(begin); at >= 0; at = pdf.indexOf(begin, at + 1))
        bytes += qUncompress(QByteArray(3, '\0') + '\1' + pdf.mid(at + begin.size()));
    return bytes;
}

QString Shown(QWidget &form, const char *label)
{
    return Find<QLabel>(form, QString::fromLatin1(label))->text();
}

void SelectReport(QWidget &form, int report)
{
    Find<ListView>(form, QStringLiteral("RepList"))->Model().SelectOnly(report - 1);
}

/// A report of `rows` rows of `columns` columns, with a letterhead that holds a picture.
void WriteTable(int rows, int columns)
{
    QImage logo(8, 8, QImage::Format_RGB32);
    logo.fill(Qt::red);
    logo.save(gDocDir % u"/logo.png");
    gHeaderFile = gDocDir % u"/header.htm";
    QFile header(gHeaderFile);
    if (header.open(QIODevice::WriteOnly))
        header.write("<p>College</p>\n<img src=logo.png>\n</body>\n");
    header.close();
    HTML_Start(QStringLiteral("Table"));
    HTML_Table();
    for (int row = 0; row < rows; ++row) {
        HTML_RowStart();
        for (int column = 0; column < columns; ++column)
            HTML_Cell(0, row == 0 ? 1 : 2, row == 0 ? 1 : 0, 0, 2, 100,
                      (row == 0 ? u"Title " : u"Row ") % QString::number(row));
        HTML_RowEnd();
    }
    HTML_TableEnd();
    QVERIFY(HTML_Finish(HtmlEnd::Small));
}

Progress onward;
} // namespace

class test_contactwiz final : public QObject
{
    Q_OBJECT

private slots:

    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        FillReportPeople();
        LoadSystemValues();
        gContactData.fill(0);
        gDocDir = m_database->Directory();
        gHeaderFile.clear();
        HTMLBorder = 0;
        InstallDesktop(m_database->Directory());
    }
    void cleanup() { m_database.reset(); }

    void selected_people_to_the_browser_and_to_pdf()
    {
        TestDatabase::Run({QStringLiteral("INSERT INTO Ref (ContactRef) VALUES (2)")});
        frmContactWiz form(nullptr, frmContactWiz::Opener::PeopleSelected);
        form.show();
        Find<QCheckBox>(form, QStringLiteral("HTMLopt"))->setChecked(true);
        QVERIFY(!Find<QPushButton>(form, finish)->isEnabled());
        Press(form, next);
        QVERIFY(!Find<QPushButton>(form, next)->isEnabled());
        Press(form, QStringLiteral("AllBtn"));
        Find<QRadioButton>(form, QStringLiteral("nameOpt_3"))->setChecked(true);
        Press(form, finish);
        QCOMPARE(Shown(form, "Held"),
                 QStringLiteral("The report \"Selected Contact Details\" holds 1 person."));
        QCOMPARE(HTMLBorder, 1);
        QCOMPARE(ReportLines().value(2), QStringLiteral("Dr Ann Lee"));
        QCOMPARE(std::count(gContactData.begin(), gContactData.end(), 1), 33);
        const QString opened = m_database->Directory() % u"/opened";
        QTRY_COMPARE(QString::fromUtf8(BytesOf(opened)).trimmed(), HTML_OutputPath());

        ScriptedDialogs user;
        const QString pdf = m_database->Directory() % u"/ann.pdf";
        user.ExpectFile(QStringLiteral("Save as PDF"), pdf);
        Press(form, QStringLiteral("PdfBtn"));
        QVERIFY(BytesOf(pdf).startsWith("%PDF"));
        QCOMPARE(Shown(form, "Saved"), QString(u"Saved as " % QDir::toNativeSeparators(pdf)));
        user.ExpectFile(QStringLiteral("Save as PDF"), m_database->Directory() % u"/gone/ann.pdf");
        Press(form, QStringLiteral("PdfBtn"));
        QVERIFY(Shown(form, "Saved").contains(u"/gone/ann.pdf"));

        // Back leads past what was only shown, to the choices of the next report.
        Press(form, back);
        QVERIFY(Find<QWidget>(form, QStringLiteral("Basic"))->isVisible());
        Press(form, finish);
        Press(form, finish);
        QVERIFY(!form.isVisible());
    }

    void without_a_browser_the_pages_are_shown()
    {
        InstallDesktop(m_database->Directory(), {});
        frmContactWiz form;
        form.show();
        SelectReport(form, 3);
        ModalDriver user;
        const auto look = [](QDialog &preview) {
            QCOMPARE(preview.windowTitle(), QStringLiteral("Preview: Characteristics & Discounts"));
            const auto labels = preview.findChildren<QLabel *>();
            QVERIFY(std::any_of(labels.begin(), labels.end(),
                                [](const QLabel *label) { return label->text() == u"/ 1"; }));
            QSet<QKeySequence> keys;
            for (const QAction *action : preview.findChildren<QAction *>())
                keys += action->shortcut();
            QVERIFY(keys.contains(QKeySequence::Print) && keys.contains(Qt::Key_PageDown));
            preview.reject();
        };
        user.Expect(QStringLiteral("ReportPreview"), look);
        Press(form, finish);
        user.Expect(QStringLiteral("ReportPreview"), look);
        Press(form, QStringLiteral("PreviewBtn"));

        const QString paper = m_database->Directory() % u"/paper.pdf";
        user.Expect(QStringLiteral("PrintDialog"), [&](QDialog &chooser) {
            TypeInto(chooser, QStringLiteral("filename"), paper);
            chooser.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        });
        Press(form, QStringLiteral("PrintBtn"));
        QVERIFY(BytesOf(paper).contains("/Count 1"));
        QCOMPARE(Shown(form, "Saved"), QString(u"Printed to " % paper));

        QVERIFY(QFile::remove(HTML_OutputPath()));
        user.Expect(QStringLiteral("ReportPreview"), [](QDialog &preview) { preview.reject(); });
        Press(form, QStringLiteral("PreviewBtn"));
        QVERIFY2(Shown(form, "Saved").contains(HTML_OutputPath()), qPrintable(Shown(form, "Saved")));
    }

    void pages_of_each_report_data()
    {
        // The list is that of the page between.
        const TestTable<int, QString, bool, QString> row{"report", "list", "forced", "held"};
        row("contacts", 1, "Basic", false, "\"Contact Details\" holds 2 people.");
        row("staff", 2, "Basic", false, "\"Staff Details\" holds 1 person.");
        row("characteristics", 3, "", false, "\"Characteristics & Discounts\" holds 2 characteristics.");
        row("organisations", 4, "OrgDetails", false, "\"Organisations\" holds 1 organisation.");
        row("by characteristic", 5, "Basic", true,
            "\"Contact Details, ordered by Characteristic\" holds 2 people.");
        row("by group type", 6, "Basic", true,
            "\"Contact Details, ordered by Group Type then Group\" holds 2 people.");
        row("by group", 7, "Basic", true,
            "\"Contact Details, Ordered by Group then Group Type\" holds 2 people.");
    }
    void pages_of_each_report()
    {
        QFETCH(int, report);
        QFETCH(QString, list);
        QFETCH(bool, forced);
        frmContactWiz form;
        form.show();
        SelectReport(form, report);
        QCOMPARE(Find<QPushButton>(form, next)->isEnabled(), !list.isEmpty());
        if (!list.isEmpty()) {
            Press(form, next);
            QVERIFY(Find<QWidget>(form, list)->isVisible());
            QCOMPARE(Find<QRadioButton>(form, QStringLiteral("LayOpt_0"))->isEnabled(), !forced);
            QCOMPARE(Find<QRadioButton>(form, QStringLiteral("LayOpt_1"))->isChecked(), forced);
        }
        Press(form, finish);
        QFETCH(QString, held);
        QVERIFY2(Shown(form, "Held").endsWith(held), qPrintable(Shown(form, "Held")));
    }

    void a_forced_layout_is_left_again()
    {
        frmContactWiz form;
        form.show();
        for (const int report : {1, 5, 6, 1}) {
            SelectReport(form, report);
            Press(form, next);
            QCOMPARE(Find<QRadioButton>(form, QStringLiteral("LayOpt_0"))->isChecked(), report == 1);
            Press(form, back);
        }
    }

    void only_the_contact_manager_offers_its_selection()
    {
        using Opener = frmContactWiz::Opener;
        for (const Opener opener : {Opener::MainWindow, Opener::NothingSelected, Opener::PeopleSelected}) {
            frmContactWiz form(nullptr, opener);
            form.show();
            Press(form, next);
            auto *all = Find<QRadioButton>(form, QStringLiteral("ConOpt_0"));
            auto *selected = Find<QRadioButton>(form, QStringLiteral("ConOpt_1"));
            QCOMPARE(selected->isVisible(), opener != Opener::MainWindow);
            QCOMPARE(selected->isChecked(), opener == Opener::PeopleSelected);
            QCOMPARE(all->isChecked(), opener != Opener::PeopleSelected);
        }
    }

    void stopping_goes_back_to_the_choices()
    {
        frmContactWiz form;
        form.show();
        Press(form, next);
        const auto serve = Dialogs::Installed().serveEvents;
        int looks = 0;
        Dialogs::Installed().serveEvents = [&] {
            if (++looks == 2)
                Press(form, cancel);
        };
        Press(form, finish);
        Dialogs::Installed().serveEvents = serve;
        QVERIFY(form.isVisible());
        QVERIFY(Find<QWidget>(form, QStringLiteral("Basic"))->isVisible());
        QVERIFY(!QFile::exists(HTML_OutputPath()));
        Press(form, cancel);
        QVERIFY(!form.isVisible());
    }

    void a_report_that_cannot_be_written_stays_on_screen()
    {
        gDocDir += QStringLiteral("/gone");
        frmContactWiz form;
        form.show();
        SelectReport(form, 3);
        {
            ScriptedDialogs user;
            user.Expect(
                QDir::toNativeSeparators(HTML_OutputPath()),
                QStringLiteral("A number of errors have been detected, please seek technical support."));
            Press(form, finish);
        }
        const QString why = QDir::toNativeSeparators(HTML_OutputPath()) % u": No such file or directory";
        QCOMPARE(Shown(form, "Notice"), QString(u"The report was not written: " % why));
        gDocDir = m_database->Directory();
        Press(form, back);
        Press(form, finish);
        QVERIFY(Shown(form, "Held").contains(u"2 characteristics"));
    }

    void pdf_pages_data()
    {
        const TestTable<int, int, QByteArray, int, int> row{"rows", "columns", "sheet", "least", "most"};
        row("a few rows", 5, 3, "[0 0 595", 1, 1);
        row("many rows", 1000, 3, "[0 0 595", 15, 40);
        row("wide", 5, 12, "[0 0 842", 1, 1);
        row("very wide", 5, 40, "[0 0 2384", 1, 1);
    }
    void pdf_pages()
    {
        QFETCH(int, rows);
        QFETCH(int, columns);
        QFETCH(QByteArray, sheet);
        QFETCH(int, least);
        QFETCH(int, most);
        WriteTable(rows, columns);
        const QString pdf = m_database->Directory() % u"/table.pdf";
        QString fault;
        QVERIFY2(SaveReportAsPdf(HTML_OutputPath(), pdf, onward, fault), qPrintable(fault));
        const QByteArray bytes = Unpacked(BytesOf(pdf));
        const qsizetype pages = bytes.count("/Type /Page\n");
        QVERIFY2(pages >= least && pages <= most, qPrintable(QString::number(pages)));
        QVERIFY2(bytes.contains(QByteArray("/MediaBox " + sheet)),
                 bytes.mid(bytes.indexOf("/MediaBox"), 40).constData());
        QVERIFY(bytes.contains("/Subtype /Image"));
    }

    void a_pdf_that_is_stopped_or_impossible_leaves_the_last_one()
    {
        WriteTable(1000, 3);
        const QString pdf = m_database->Directory() % u"/table.pdf";
        QFile last(pdf);
        QVERIFY(last.open(QIODevice::WriteOnly) && last.write("last") == 4);
        last.close();
        QString fault;
        Progress *running = nullptr;
        Progress stopping(
            [&running](int done, int) {
                if (done > 0)
                    running->Cancel();
            },
            0);
        running = &stopping;
        QVERIFY(!SaveReportAsPdf(HTML_OutputPath(), pdf, stopping, fault));
        QVERIFY(stopping.Value() < stopping.Maximum());
        QVERIFY(fault.isEmpty());
        QCOMPARE(BytesOf(pdf), QByteArray("last"));
        QVERIFY(!SaveReportAsPdf(gDocDir % u"/none.htm", pdf, onward, fault));
        QVERIFY(fault.contains(u"none.htm"));
        QCOMPARE(BytesOf(pdf), QByteArray("last"));
    }

private:
    std::unique_ptr<TestDatabase> m_database;
};

QTEST_MAIN(test_contactwiz)
#include "test_contactwiz.moc"
