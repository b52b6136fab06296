#include "core/INIfile.h"
#include "core/Session.h"
#include "core/WebSite.h"
#include "core/frmAbout.h"
#include "core/frmLocalOptions.h"
#include "platform/Dialogs.h"
#include "support/ModalDriver.h"
#include "support/TestDatabase.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace
{
/// How strongly two colours differ for the eye, 1 to 21; below 4.5 a text is hard to read.
double Contrast(const QColor &first, const QColor &second)
{
    const auto light = [](const QColor &colour) {
        const auto part = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
    };
    const auto [darker, lighter] = std::minmax({light(first), light(second)});
    return (lighter + 0.05) / (darker + 0.05);
}
} // namespace

/// The options of the workstation, and what the program says about itself.
class TestLocalOptions final : public QObject
{
    Q_OBJECT

private slots:
    void OptionsReachTheFileOnlyOnOk()
    {
        const TestDatabase database;
        const QString file = database.Directory() + u"/prog.ini"_qs;
        ReadSettings(file);
        int startedOn = -1;
        const auto edit = [&](const QString &button) {
            frmLocalOptions form;
            form.show();
            QVERIFY(Find<QCheckBox>(form, u"ShowIDs"_qs)->isChecked());
            Dialogs::Installed().chooseColour = [&](int colour) {
                startedOn = colour;
                return 0xFFC0CB;
            };
            Find<QAbstractButton>(form, u"WarnColour"_qs)->click();
            Find<QCheckBox>(form, u"ShowIDs"_qs)->click();
            Press(form, button);
            QVERIFY(!form.isVisible());
        };
        edit(u"CancelBtn"_qs);
        QCOMPARE(startedOn, 0xFFFFFF);
        QCOMPARE(gWarnColour, 0xFFFFFF);
        QCOMPARE(gShowIDs, 1);
        edit(u"OKBtn"_qs);
        QVERIFY(WriteSettings(file));
        ReadSettings(file);
        QCOMPARE(gWarnColour, 0xFFC0CB);
        QCOMPARE(gShowIDs, 0);
        gShowIDs = 1;
    }

    void ACancelledColourChangesNothing()
    {
        Dialogs::Installed().chooseColour = [](int) { return std::nullopt; };
        gWarnColour = 0x123456;
        frmLocalOptions form;
        form.show();
        Find<QAbstractButton>(form, u"WarnColour"_qs)->click();
        Press(form, u"OKBtn"_qs);
        QCOMPARE(gWarnColour, 0x123456);
    }

    void TheLinkCanBeReadOnAnyPalette_data()
    {
        QTest::addColumn<QColor>("window");
        QTest::newRow("light") << QColor(239, 240, 241);
        QTest::newRow("dark") << QColor(35, 38, 41);
    }
    void TheLinkCanBeReadOnAnyPalette()
    {
        QFETCH(QColor, window);
        const QPalette before = QApplication::palette();
        QApplication::setPalette(QPalette(window));
        const TestDatabase database;
        frmAbout form;
        form.show();
        const QImage link = Find<QLabel>(form, "WebLink")->grab().toImage();
        QApplication::setPalette(before);
        double clearest = 0;
        for (int i = 0; i < link.width() * link.height(); ++i)
            clearest =
                std::max(clearest, Contrast(link.pixelColor(i % link.width(), i / link.width()), window));
        QVERIFY2(clearest >= 4.5, qPrintable(QString::number(clearest)));
        QVERIFY(Find<QLabel>(form, "WebLink")->text().contains(WebSite()));
        QCOMPARE(Find<QLabel>(form, "Label1")->text(), u"Version 1.20 (1020/3)"_qs);
    }
};

QTEST_MAIN(TestLocalOptions)
#include "test_localoptions.moc"
