#include "core/shell/ColourPanel.h"

#include "platform/desktop/Dialogs.h"

#include <QPainter>

ColourPanel::ColourPanel(QWidget *parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QAbstractButton::clicked, this, &ColourPanel::Choose);
}

void ColourPanel::SetColour(int colour)
{
    m_colour = colour & 0xFFFFFF;
    setAccessibleDescription(u'#' % QString::number(m_colour, 16).rightJustified(6, u'0'));
    setToolTip(accessibleDescription());
    update();
}

void ColourPanel::Choose()
{
    if (const std::optional<int> chosen = Dialogs::ChooseColour(m_colour))
        SetColour(*chosen);
}

QSize ColourPanel::sizeHint() const
{
    const int em = fontMetrics().height();
    return {em * 6, em * 2};
}

void ColourPanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
    painter.setBrush(QColor::fromRgb(static_cast<QRgb>(m_colour) | 0xFF000000U));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
}
