#include "forms/DarkStyle.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

namespace
{
class DarkStyle final : public QProxyStyle
{
public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
        if ((!box && element != PE_IndicatorRadioButton) || !IsDark(option->palette))
            return;
        QColor outline = option->palette.color(QPalette::Text);
        outline.setAlpha(option->state & State_Enabled ? 150 : 70);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing, !box);
        painter->setPen(outline);
        painter->setBrush(Qt::NoBrush);
        const QRectF around = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
        if (box)
            painter->drawRect(around);
        else
            painter->drawEllipse(around);
        painter->restore();
    }

private:
    static bool IsDark(const QPalette &palette)
    {
        return qGray(palette.color(QPalette::Base).rgb()) < qGray(palette.color(QPalette::Text).rgb());
    }
};
} // namespace

void InstallDarkStyle()
{
    // Styles that belong to a desktop have an answer of their own.
    if (QApplication::style()->name().compare(u"fusion", Qt::CaseInsensitive) == 0)
        QApplication::setStyle(new DarkStyle);
}
