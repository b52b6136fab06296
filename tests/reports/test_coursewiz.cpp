#include "core/session/Session.h"
#include "forms/fields/DateField.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"
#include "reports/OwnDesktop.h"
#include "reports/courses/CourseSubset.h"
#include "reports/courses/frmCourseWiz.h"
#include "reports/wizard/SSWizardNavBar.h"
#include "reports/writer/HTMLscript.h"
#include "support/ModalDriver.h"
#include "support/TestDatabase.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace
{
const QString next = QStringLiteral("cmdNav_2");
const QString finish = QStringLiteral("cmdNav_3");

QString TextOf(const QString &file)
{
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? QString::fromUtf8(opened.readAll()).trimmed() : QString();
}
} // namespace

class test_coursewiz final : public QObject
{
    Q_OBJECT

private slots:

    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        gDocDir = m_database->Directory();
        gHeaderFile.clear();
        gFromDate = QStringLiteral("01/02/2026");
        gToDate = QStringLiteral("28/02/2026");
        HTMLBorder = 0;
        InstallDesktop(m_database->Directory());
    }
    void cleanup() { m_database.reset(); }

    void writes_the_report_opens_it_and_saves_it_as_pdf()
    {
        CourseSubset::Save({4, 7});
        frmCourseWiz form;
        form.show();
        QVERIFY(!Find<QPushButton>(form, finish)->isEnabled());
        Find<QCheckBox>(form, QStringLiteral("HTMLopt"))->setChecked(true);
        Press(form, next);
        QVERIFY(!Find<QPushButton>(form, next)->isEnabled());
        Press(form, finish);
        QCOMPARE(HTMLBorder, 1);
        const QString title = QStringLiteral("Transactions,  01/02/2026 to 28/02/2026");
        QCOMPARE(Find<QLabel>(form, QStringLiteral("Held"))->text(),
                 QString(u"The report \"" % title % u"\" holds 0 payments."));
        QVERIFY(TextOf(HTML_OutputPath()).contains(title));
        QTRY_COMPARE(TextOf(m_database->Directory() % u"/opened"), HTML_OutputPath());
        QCOMPARE(TextOf(Directories::WrittenFile(QStringLiteral("course.dat"))), QStringLiteral("4,7,"));

        QString offered;
        const auto saveFile = Dialogs::Installed().saveFile;
        Dialogs::Installed().saveFile = [&](const Dialogs::FileQuestion &question) {
            offered = question.fileName;
            return QString(m_database->Directory() % u"/paid.pdf");
        };
        Press(form, QStringLiteral("PdfBtn"));
        Dialogs::Installed().saveFile = saveFile;
        // The slashes of the dates would be folders.
        QCOMPARE(offered, QStringLiteral("Transactions,  01-02-2026 to 28-02-2026.pdf"));
        QVERIFY(TextOf(m_database->Directory() % u"/paid.pdf").startsWith(u"%PDF"));
        Press(form, finish);
        QCOMPARE(form.result(), static_cast<int>(QDialog::Accepted));
    }

    void dates_stay_in_order_and_are_remembered()
    {
        {
            frmCourseWiz form;
            form.show();
            Press(form, next);
            auto *from = Find<DateField>(form, QStringLiteral("DateFrom"));
            auto *to = Find<DateField>(form, QStringLiteral("DateTo"));
            QCOMPARE(from->Day(), QDate(2026, 2, 1));
            QApplication::setActiveWindow(&form);
            from->setFocus();
            from->SetDay({2026, 3, 5});
            to->setFocus();
            QCOMPARE(to->Day(), QDate(2026, 3, 5));
            Find<QCheckBox>(form, QStringLiteral("NoDates"))->setChecked(true);
            QVERIFY(!from->isEnabled() && !to->isEnabled());
            Press(form, finish);
        }
        QCOMPARE(gFromDate, QStringLiteral("05/03/2026"));
        QCOMPARE(gToDate, QStringLiteral("05/03/2026"));
        QVERIFY(TextOf(HTML_OutputPath()).contains(QStringLiteral("<title>Transactions</title>")));
    }

    void back_returns_the_way_that_was_taken()
    {
        QWidget window;
        auto *pages = new WizardPages(&window);
        for (const char *name : {"a", "b", "c", "d"})
            pages->AddPage(QString::fromLatin1(name), {});
        SSWizardNavBar bar(pages, &window);
        QSignalSpy shown(&bar, &SSWizardNavBar::PageShown);
        pages->SetAvailable(1, false);
        bar.GoNext();
        QCOMPARE(pages->currentIndex(), 2);
        pages->SetAvailable(1, true);
        bar.GoTo(3);
        QVERIFY(!bar.HasNext());
        bar.GoNext();
        bar.GoBack();
        bar.GoBack();
        QCOMPARE(pages->currentIndex(), 0);
        bar.GoBack();
        QCOMPARE(pages->currentIndex(), 0);
        QCOMPARE(shown.count(), 4);
    }

    void course_subset_of_any_bytes()
    {
        const std::pair<QByteArray, QList<int>> files[] = {{"12,5,\n", {12, 5}},
                                                           {"12,5", {12, 5}},
                                                           {"12,\r\n", {12}},
                                                           {QByteArray("\0\xFF,7,\x01", 6), {7}},
                                                           {"99999999999,3,", {3}}};
        for (const auto &[bytes, courses] : files) {
            QFile subset(Directories::WrittenFile(QStringLiteral("course.dat")));
            QVERIFY(subset.open(QIODevice::WriteOnly) && subset.write(bytes) == bytes.size());
            subset.close();
            QCOMPARE(CourseSubset::Load(), courses);
        }
    }

private:
    std::unique_ptr<TestDatabase> m_database;
};

QTEST_MAIN(test_coursewiz)
#include "test_coursewiz.moc"
