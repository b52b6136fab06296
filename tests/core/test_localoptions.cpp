#include "core/files/INIfile.h"
#include "core/icons/Icons.h"
#include "core/session/Session.h"
#include "core/shell/frmLocalOptions.h"
#include "platform/desktop/Dialogs.h"
#include "support/ModalDriver.h"
#include "support/TestDatabase.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QTest>

namespace
{
QImage Drawn(const QIcon &icon)
{
    return icon.pixmap(QSize(22, 22), 1.0).toImage();
}
} // namespace

/// The options of the workstation, and what its palette makes of the icons.
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
        const auto edit = [&](const QString &button, std::optional<int> chosen) {
            frmLocalOptions form;
            form.show();
            Dialogs::Installed().chooseColour = [&](int colour) {
                startedOn = colour;
                return chosen;
            };
            Find<QAbstractButton>(form, "WarnColour")->click();
            Find<QCheckBox>(form, "ShowIDs")->click();
            Press(form, button);
            QVERIFY(!form.isVisible());
        };
        edit("CancelBtn", 0xFFC0CB);
        QCOMPARE(startedOn, 0xFFFFFF);
        QCOMPARE(gWarnColour, 0xFFFFFF);
        QCOMPARE(gShowIDs, 1);
        edit("OKBtn", std::nullopt); // the colour's own dialog was cancelled
        QCOMPARE(gWarnColour, 0xFFFFFF);
        QCOMPARE(gShowIDs, 0);
        edit("OKBtn", 0xFFC0CB);
        edit("OKBtn", 0xFFC0CB);
        QVERIFY(WriteSettings(file));
        ReadSettings(file);
        QCOMPARE(gWarnColour, 0xFFC0CB);
        QCOMPARE(gShowIDs, 0);
        gShowIDs = 1;
    }

    void AnIconFollowsThePalette()
    {
        const QPalette before = QApplication::palette();
        for (const QColor window : {QColor(240, 240, 240), QColor(35, 38, 41)}) {
            QApplication::setPalette(QPalette(window));
            const QImage drawn = Drawn(Icons::Of("document-edit"));
            int opaque = 0;
            for (int i = 0; i < drawn.width() * drawn.height(); ++i) {
                const QColor pixel = drawn.pixelColor(i % drawn.width(), i / drawn.width());
                if (pixel.alpha() < 250)
                    continue;
                ++opaque;
                QVERIFY2(std::abs(pixel.lightness() - window.lightness()) > 120, qPrintable(pixel.name()));
            }
            QVERIFY(opaque > 0);
        }
        QApplication::setPalette(before);
    }

    void AFileTypeHasItsIcon()
    {
        const auto icon = [](auto &&...extensions) { return Drawn(Icons::OfFileType(extensions...)); };
        QCOMPARE(icon(".PDF"), Drawn(Icons::Of("application-pdf")));
        QCOMPARE(icon(".doc"), Drawn(Icons::Of("x-office-document"))); // by its generic kind
        QCOMPARE(icon(".qqzz"), Drawn(Icons::Of("unknown")));
        QCOMPARE(icon(".qqzz", ".pdf"), icon(".pdf"));
        QCOMPARE(icon(".htm", ".pdf"), Drawn(Icons::Of("text-html")));
    }
};

QTEST_MAIN(TestLocalOptions)
#include "test_localoptions.moc"
