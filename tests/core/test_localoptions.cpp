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
        const QString file = database.Directory() + QStringLiteral("/prog.ini");
        ReadSettings(file);
        int startedOn = -1;
        const auto edit = [&](const QString &button) {
            frmLocalOptions form;
            form.show();
            QVERIFY(Find<QCheckBox>(form, QStringLiteral("ShowIDs"))->isChecked());
            Dialogs::Installed().chooseColour = [&](int colour) {
                startedOn = colour;
                return 0xFFC0CB;
            };
            Find<QAbstractButton>(form, QStringLiteral("WarnColour"))->click();
            Find<QCheckBox>(form, QStringLiteral("ShowIDs"))->click();
            Press(form, button);
            QVERIFY(!form.isVisible());
        };
        edit(QStringLiteral("CancelBtn"));
        QCOMPARE(startedOn, 0xFFFFFF);
        QCOMPARE(gWarnColour, 0xFFFFFF);
        QCOMPARE(gShowIDs, 1);
        edit(QStringLiteral("OKBtn"));
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
        Find<QAbstractButton>(form, QStringLiteral("WarnColour"))->click();
        Press(form, QStringLiteral("OKBtn"));
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
        QApplication::setPalette(before);
        const auto *link = Find<QLabel>(form, QStringLiteral("WebLink"));
        QVERIFY(link->text().contains(WebSite()));
        QVERIFY(Contrast(link->palette().color(QPalette::Link), window) >= 4.5);
        QCOMPARE(Find<QLabel>(form, QStringLiteral("Label1"))->text(),
                 QStringLiteral("Version 1.20 (1020/3)"));
    }
};

QTEST_MAIN(TestLocalOptions)
#include "test_localoptions.moc"
