#pragma once

#include <QIconEngine>

/// Draws an icon of the shipped set. Its parts of one colour take the palette's current colour, so that the
/// same drawing serves light and dark palettes; it is drawn separately for each size and scaling.
class ThemedSvgEngine final : public QIconEngine
{
public:
    /// `name` is a file of the shipped set without its extension.
    explicit ThemedSvgEngine(QString name);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;
    QIconEngine *clone() const override;
    QString key() const override;
    bool isNull() override { return m_isNull; }

private:
    QString m_name;
    bool m_isNull; ///< asked for each row of a list that is painted
};
