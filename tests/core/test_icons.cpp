#include "core/Icons.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QTest>

class TestIcons : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QGuiApplication::setPalette(QPalette()); }

    void EveryShippedIconDrawsSomethingAtEverySize();
    void ADrawingFollowsThePalette_data();
    void ADrawingFollowsThePalette();
    void AnUnknownNameHasNoIcon() { QVERIFY(Icons::Of(QStringLiteral("no-such-icon")).isNull()); }
    void AFileTypeHasItsIcon_data();
    void AFileTypeHasItsIcon();
    void ThePictureIsSharpAtTwiceTheScaling();
};

namespace
{
/// The lightest and darkest of what is drawn, 0 to 255; -1 where nothing is.
std::pair<int, int> Lightness(const QImage &image)
{
    std::pair<int, int> range{-1, -1};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() < 250)
                continue;
            range.first = range.first < 0 ? pixel.lightness() : std::min(range.first, pixel.lightness());
            range.second = std::max(range.second, pixel.lightness());
        }
    }
    return range;
}
} // namespace

void TestIcons::EveryShippedIconDrawsSomethingAtEverySize()
{
    Icons::Application();
    const QStringList files = QDir(QStringLiteral(":/icons/breeze/22")).entryList(QDir::Files);
    QVERIFY(files.size() > 100);
    for (const QString &file : files) {
        const QIcon icon = Icons::Of(file.chopped(4));
        for (const int side : {16, 22, 32}) {
            for (const auto mode : {QIcon::Normal, QIcon::Disabled, QIcon::Selected}) {
                const QImage image = icon.pixmap(QSize(side, side), 1.0, mode).toImage();
                bool drawn = false;
                for (int y = 0; y < image.height() && !drawn; ++y)
                    for (int x = 0; x < image.width() && !drawn; ++x)
                        drawn = qAlpha(image.pixel(x, y)) > 60;
                QVERIFY2(drawn, qPrintable(file));
            }
        }
    }
}

void TestIcons::ADrawingFollowsThePalette_data()
{
    QTest::addColumn<QColor>("window");
    QTest::addColumn<bool>("lightDrawing");
    QTest::newRow("light window, dark drawing") << QColor(240, 240, 240) << false;
    QTest::newRow("dark window, light drawing") << QColor(35, 38, 41) << true;
}

void TestIcons::ADrawingFollowsThePalette()
{
    QFETCH(QColor, window);
    QFETCH(bool, lightDrawing);
    QGuiApplication::setPalette(QPalette(window));
    const QIcon icon = Icons::Of(QStringLiteral("document-edit"));
    const auto [darkest, lightest] = Lightness(icon.pixmap(QSize(22, 22), 1.0).toImage());
    if (lightDrawing)
        QVERIFY2(darkest > 160, qPrintable(QString::number(darkest)));
    else
        QVERIFY2(lightest >= 0 && lightest < 100, qPrintable(QString::number(lightest)));
}

void TestIcons::AFileTypeHasItsIcon_data()
{
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("name");
    QTest::newRow("pdf") << ".pdf"
                         << "application-pdf";
    QTest::newRow("in capitals") << ".PDF"
                                 << "application-pdf";
    QTest::newRow("by its generic kind") << ".doc"
                                         << "x-office-document";
    QTest::newRow("a folder") << "folder"
                              << "folder";
    QTest::newRow("an address") << ".url"
                                << "internet-services";
    QTest::newRow("a page") << ".htm"
                            << "text-html";
    QTest::newRow("a program") << ".exe"
                               << "application-x-executable";
    QTest::newRow("a type nobody knows") << ".qqzz"
                                         << "unknown";
    QTest::newRow("no extension") << ""
                                  << "unknown";
}

void TestIcons::AFileTypeHasItsIcon()
{
    QFETCH(QString, extension);
    QFETCH(QString, name);
    const QSize size(22, 22);
    QCOMPARE(Icons::OfFileType(extension).pixmap(size, 1.0).toImage(),
             Icons::Of(name).pixmap(size, 1.0).toImage());
}

void TestIcons::ThePictureIsSharpAtTwiceTheScaling()
{
    const QPixmap picture = Icons::Of(QStringLiteral("document-edit")).pixmap(QSize(16, 16), 2.0);
    QCOMPARE(picture.size(), QSize(32, 32));
    QCOMPARE(picture.devicePixelRatio(), 2.0);
}

QTEST_MAIN(TestIcons)
#include "test_icons.moc"
