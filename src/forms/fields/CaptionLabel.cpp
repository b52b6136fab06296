#include "forms/fields/CaptionLabel.h"

#include "core/session/Session.h"

#include <QPainter>
#include <QStyle>

namespace
{
constexpr int unchosen = 0xFFFFFF;
}

CaptionLabel::CaptionLabel(const QString &caption, QWidget *parent)
    : QLabel(caption, parent)
{
    setTextFormat(Qt::PlainText);
    // Space for both sides of the plate, on the right only, so that captions line up with the fields below
    // them.
    setContentsMargins(0, 0, fontMetrics().averageCharWidth(), 0);
}

QString CaptionLabel::Name() const
{
    QString name = text().remove(u'&');
    if (name.endsWith(u':'))
        name.chop(1);
    return name;
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
    const int margin = fontMetrics().averageCharWidth() / 2;
    const QRect room = contentsRect().translated(margin, 0);
    const QRect text =
        style()->itemTextRect(fontMetrics(), room, static_cast<int>(alignment()), true, this->text());
    const QRectF around = QRectF(text).adjusted(-margin, 0, margin, 0) & QRectF(rect());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor ink = palette().color(QPalette::WindowText);
    painter.setPen(ink);
    if (gWarnColour == unchosen) {
        painter.setPen(palette().color(QPalette::Highlight));
    } else {
        const QColor plate = QColor::fromRgb(static_cast<QRgb>(gWarnColour) | 0xFF000000U);
        ink = qGray(plate.rgb()) < 128 ? Qt::white : Qt::black;
        painter.setBrush(plate);
    }
    painter.drawRoundedRect(around.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter.setPen(ink);
    const int flags = static_cast<int>(alignment()) | (buddy() ? Qt::TextShowMnemonic : 0);
    painter.drawText(room, flags, this->text());
}

QString CaptionBefore(const QWidget &field)
{
    for (const CaptionLabel *caption : field.window()->findChildren<CaptionLabel *>()) {
        if (caption->buddy() == &field)
            return caption->Name() % u": ";
    }
    return {};
}
