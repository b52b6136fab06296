#include "core/icons/ThemedSvgEngine.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace
{
constexpr int smallDrawing = 16;
constexpr int largeDrawing = 22;

QString FileOf(const QString &name, int drawing)
{
    return u":/icons/breeze/" % QString::number(drawing) % u'/' % name % u".svg";
}

/// The drawing made for that many logical pixels: the small one has fewer lines, on a grid of its own.
QString BestFile(const QString &name, int logicalSize)
{
    const bool large = logicalSize >= largeDrawing;
    const QString best = FileOf(name, large ? largeDrawing : smallDrawing);
    return QFile::exists(best) ? best : FileOf(name, large ? smallDrawing : largeDrawing);
}

QColor TextColour(QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    if (mode == QIcon::Selected)
        return palette.color(QPalette::HighlightedText);
    return palette.color(mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active,
                         QPalette::WindowText);
}

QColor AccentColour(QIcon::Mode mode)
{
    return mode == QIcon::Normal || mode == QIcon::Active
               ? QGuiApplication::palette().color(QPalette::Highlight)
               : TextColour(mode);
}

/// The style sheet that replaces the drawing's own.
QByteArray StyleSheet(QIcon::Mode mode)
{
    const auto rule = [](const char *name, const QColor &colour) -> QByteArray {
        return QByteArray(".ColorScheme-") + name + "{color:" + colour.name().toLatin1() + ";}";
    };
    const bool plain = mode == QIcon::Disabled || mode == QIcon::Selected;
    const QColor text = TextColour(mode);
    return rule("Text", text) + rule("Highlight", AccentColour(mode)) +
           rule("NegativeText", plain ? text : QColor(0xda, 0x44, 0x53)) +
           rule("NeutralText", plain ? text : QColor(0xf6, 0x74, 0x00)) +
           rule("PositiveText", plain ? text : QColor(0x27, 0xae, 0x60)) +
           rule("Background", QGuiApplication::palette().color(QPalette::Window));
}

QByteArray Coloured(QByteArray drawing, QIcon::Mode mode)
{
    const qsizetype tag = drawing.indexOf("<style");
    const qsizetype begin = tag < 0 ? -1 : drawing.indexOf('>', tag) + 1;
    const qsizetype end = drawing.indexOf("</style>");
    if (begin > 0 && end > begin)
        drawing.replace(begin, end - begin, StyleSheet(mode));
    return drawing;
}
} // namespace

ThemedSvgEngine::ThemedSvgEngine(QString name)
    : m_name(std::move(name))
    , m_isNull(!QFile::exists(FileOf(m_name, largeDrawing)) && !QFile::exists(FileOf(m_name, smallDrawing)))
{
}

void ThemedSvgEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state)
{
    const qreal scale = painter->device() ? painter->device()->devicePixelRatio() : 1.0;
    painter->drawPixmap(rect, scaledPixmap(rect.size() * scale, mode, state, scale));
}

QPixmap ThemedSvgEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    return scaledPixmap(size, mode, state, 1.0);
}

QPixmap ThemedSvgEngine::scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, qreal scale)
{
    const int side = qMin(size.width(), size.height());
    const int logicalSize = qRound(side / scale);
    const QString cacheKey = u"veltrane-icon/" % m_name % u'/' % QString::number(side) % u'/' %
                             QString::number(scale) % u'/' % QString::number(mode) % u'/' %
                             TextColour(mode).name() % AccentColour(mode).name();
    QPixmap picture;
    if (QPixmapCache::find(cacheKey, &picture))
        return picture;

    picture = QPixmap(size);
    picture.fill(Qt::transparent);
    QFile file(BestFile(m_name, logicalSize));
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray drawing = file.readAll();
        QSvgRenderer renderer(Coloured(drawing, mode));
        QPainter painter(&picture);
        if (mode == QIcon::Disabled && !drawing.contains("currentColor"))
            painter.setOpacity(0.5);
        renderer.render(&painter,
                        QRectF((size.width() - side) / 2.0, (size.height() - side) / 2.0, side, side));
    }
    picture.setDevicePixelRatio(scale);
    QPixmapCache::insert(cacheKey, picture);
    return picture;
}

QList<QSize> ThemedSvgEngine::availableSizes(QIcon::Mode, QIcon::State)
{
    return {QSize(16, 16), QSize(22, 22), QSize(32, 32), QSize(48, 48), QSize(64, 64)};
}

QIconEngine *ThemedSvgEngine::clone() const
{
    return new ThemedSvgEngine(*this);
}

QString ThemedSvgEngine::key() const
{
    return QStringLiteral("veltrane-themed-svg");
}
