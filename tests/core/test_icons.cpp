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
        const QStringList files = QDir(u":/icons/breeze/22"_qs).entryList(QDir::Files);
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
        QVERIFY(Icons::Of(u"no-such-icon"_qs).isNull());
    }

    void ADrawingFollowsThePalette()
    {
        const QIcon icon = Icons::Of(u"document-edit"_qs);
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
        const auto icon = [](auto &&...extensions) { return Drawn(Icons::OfFileType(extensions...), 22); };
        QCOMPARE(icon(".PDF"), Drawn(Icons::Of("application-pdf"), 22));
        QCOMPARE(icon(".doc"), Drawn(Icons::Of("x-office-document"), 22)); // by its generic kind
        QCOMPARE(icon(".qqzz"), Drawn(Icons::Of("unknown"), 22));
        QCOMPARE(icon(".qqzz", ".pdf"), icon(".pdf"));
        QCOMPARE(icon(".htm", ".pdf"), Drawn(Icons::Of("text-html"), 22));
    }
};

QTEST_MAIN(TestIcons)
#include "test_icons.moc"
