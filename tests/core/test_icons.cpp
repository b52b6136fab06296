#include "core/Icons.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QTest>

#include <algorithm>

namespace
{
/// The lightness of every pixel that is drawn in full, in order.
QList<int> Lightness(const QImage &image)
{
    QList<int> drawn;
    for (int i = 0; i < image.width() * image.height(); ++i) {
        const QColor pixel = image.pixelColor(i % image.width(), i / image.width());
        if (pixel.alpha() >= 250)
            drawn.append(pixel.lightness());
    }
    std::sort(drawn.begin(), drawn.end());
    return drawn;
}

QImage Drawn(const QIcon &icon, int side, QIcon::Mode mode = QIcon::Normal)
{
    return icon.pixmap(QSize(side, side), 1.0, mode).toImage();
}
} // namespace

class TestIcons : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QGuiApplication::setPalette(QPalette()); }

    void EveryShippedIconDrawsSomethingAtEverySize()
    {
        Icons::Application();
        const QStringList files = QDir(QStringLiteral(":/icons/breeze/22")).entryList(QDir::Files);
        QVERIFY(files.size() > 100);
        for (const QString &file : files) {
            const QIcon icon = Icons::Of(file.chopped(4));
            for (const int side : {16, 22, 32}) {
                for (const auto mode : {QIcon::Normal, QIcon::Disabled, QIcon::Selected}) {
                    const QImage image = Drawn(icon, side, mode);
                    QImage nothing(image.size(), image.format());
                    nothing.fill(Qt::transparent);
                    nothing.setDevicePixelRatio(image.devicePixelRatio());
                    QVERIFY2(!image.isNull() && image != nothing, qPrintable(file));
                }
            }
        }
        QVERIFY(Icons::Of(QStringLiteral("no-such-icon")).isNull());
    }

    void ADrawingFollowsThePalette()
    {
        const QIcon icon = Icons::Of(QStringLiteral("document-edit"));
        QGuiApplication::setPalette(QPalette(QColor(240, 240, 240)));
        const QList<int> onLight = Lightness(Drawn(icon, 22));
        QVERIFY(!onLight.isEmpty() && onLight.last() < 100);
        QGuiApplication::setPalette(QPalette(QColor(35, 38, 41)));
        const QList<int> onDark = Lightness(Drawn(icon, 22));
        QVERIFY(!onDark.isEmpty() && onDark.first() > 160);
        QCOMPARE(icon.pixmap(QSize(16, 16), 2.0).size(), QSize(32, 32)); // sharp at twice the scaling
    }

    void AFileTypeHasItsIcon()
    {
        const QList<std::pair<QString, QString>> types{{".pdf", "application-pdf"},
                                                       {".PDF", "application-pdf"},
                                                       {".doc", "x-office-document"},
                                                       {"folder", "folder"},
                                                       {".url", "internet-services"},
                                                       {".htm", "text-html"},
                                                       {".exe", "application-x-executable"},
                                                       {".qqzz", "unknown"},
                                                       {"", "unknown"}};
        for (const auto &[extension, name] : types)
            QVERIFY2(Drawn(Icons::OfFileType(extension), 22) == Drawn(Icons::Of(name), 22),
                     qPrintable(extension));
        QCOMPARE(Drawn(Icons::OfFileType(".qqzz", ".pdf"), 22), Drawn(Icons::OfFileType(".pdf"), 22));
        QCOMPARE(Drawn(Icons::OfFileType(".htm", ".pdf"), 22), Drawn(Icons::OfFileType(".htm"), 22));
    }
};

QTEST_MAIN(TestIcons)
#include "test_icons.moc"
