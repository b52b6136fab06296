#include "forms/CaptionLabel.h"

#include "core/Session.h"

#include <QPainter>
#include <QStyle>

CaptionLabel::CaptionLabel(const QString &caption, QWidget *parent)
    : QLabel(caption, parent)
{
    setTextFormat(Qt::PlainText);
    const int plateMargin = fontMetrics().averageCharWidth() / 2;
    setContentsMargins(plateMargin, 0, plateMargin, 0);
}

void CaptionLabel::SetMissing(bool missing)
{
    if (missing == m_missing)
        return;
    m_missing = missing;
    update();
}

void CaptionLabel::paintEvent(QPaintEvent *event)
{
    if (!m_missing || !isEnabled()) {
        QLabel::paintEvent(event);
        return;
    }
    const QColor plate = QColor::fromRgb(static_cast<QRgb>(gWarnColour) | 0xFF000000U);
    const QColor ink = qGray(plate.rgb()) < 128 ? Qt::white : Qt::black;
    const QRect text = style()->itemTextRect(fontMetrics(), contentsRect(), static_cast<int>(alignment()),
                                             true, this->text());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setBrush(plate);
    const qreal margin = fontMetrics().averageCharWidth() / 2.0;
    const QRectF around = QRectF(text).adjusted(-margin, 0, margin, 0) & QRectF(rect());
    painter.drawRoundedRect(around.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter.setPen(ink);
    const int flags = static_cast<int>(alignment()) | (buddy() ? Qt::TextShowMnemonic : 0);
    painter.drawText(contentsRect(), flags, this->text());
}
