#include "forms/frames/FormStyle.h"

#include "core/icons/Icons.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOptionButton>

namespace
{
class FormStyle final : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *result) const override
    {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, result);
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                           const QWidget *widget) const override
    {
        QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        if (type == CT_PushButton) {
            const int air =
                pixelMetric(PM_ButtonMargin, option, widget) + 2 * option->fontMetrics.averageCharWidth();
            size.setWidth(qMax(size.width(), contents.width() + air));
        }
        return size;
    }

    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                         const QWidget *widget) const override
    {
        const auto *group = qstyleoption_cast<const QStyleOptionGroupBox *>(option);
        if (control == CC_GroupBox && group && group->text.isEmpty()) {
            if (part == SC_GroupBoxFrame)
                return group->rect;
            if (part == SC_GroupBoxContents) {
                const int frame = pixelMetric(PM_DefaultFrameWidth, option, widget);
                return group->rect.adjusted(frame, frame, -frame, -frame);
            }
        }
        return QProxyStyle::subControlRect(control, option, part, widget);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override
    {
        const auto *combo = qstyleoption_cast<const QStyleOptionComboBox *>(option);
        const auto *bar = qstyleoption_cast<const QStyleOptionTitleBar *>(option);
        if (control == CC_ComboBox && combo && !(combo->state & State_Enabled)) {
            QStyleOptionComboBox field = *combo;
            field.editable = true;
            QProxyStyle::drawComplexControl(control, &field, painter, widget);
        } else if (control == CC_TitleBar && bar && bar->titleBarState & State_Active) {
            QStyleOptionTitleBar readable = *bar;
            readable.icon = InWhite(*bar, subControlRect(control, bar, SC_TitleBarSysMenu, widget).size(),
                                    painter->device()->devicePixelRatioF());
            // The highlight of a dark palette is too light for signs and a title in white.
            const QColor highlight = bar->palette.color(QPalette::Highlight);
            readable.palette.setColor(QPalette::Highlight,
                                      IsDark(bar->palette) ? highlight.darker(160) : highlight);
            QProxyStyle::drawComplexControl(control, &readable, painter, widget);
        } else if (control == CC_TitleBar && bar && IsDark(bar->palette)) {
            // Its signs would be black on black, while those of an active bar are light.
            QStyleOptionTitleBar light = *bar;
            light.titleBarState |= State_Active;
            light.palette.setColor(QPalette::Highlight, bar->palette.color(QPalette::Window));
            QProxyStyle::drawComplexControl(control, &light, painter, widget);
        } else {
            QProxyStyle::drawComplexControl(control, option, painter, widget);
        }
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (element == PE_Frame && qobject_cast<const QAbstractScrollArea *>(widget)) {
            DrawFrame(option, painter);
            return;
        }
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
    /// The style's own frame loses lines at 125 % or 175 %, and cannot be seen in the dark.
    static void DrawFrame(const QStyleOption *option, QPainter *painter)
    {
        const QColor window = option->palette.color(QPalette::Window);
        const QColor quiet = IsDark(option->palette) ? window.lighter(170) : window.darker(140);
        const bool hasFocus = option->state & State_HasFocus;
        const QColor line = hasFocus ? option->palette.color(QPalette::Highlight) : quiet;
        const QRect r = option->rect;
        painter->fillRect(r.left(), r.top(), r.width(), 1, line);
        painter->fillRect(r.left(), r.bottom(), r.width(), 1, line);
        painter->fillRect(r.left(), r.top(), 1, r.height(), line);
        painter->fillRect(r.right(), r.top(), 1, r.height(), line);
    }

    /// The icon of an active title bar in the colour that the style writes the title in. Its own accents have
    /// that of the bar.
    static QIcon InWhite(const QStyleOptionTitleBar &bar, const QSize &size, qreal scale)
    {
        QPixmap picture = bar.icon.pixmap(size, scale);
        if (picture.isNull())
            return bar.icon;
        QPainter painter(&picture);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(QRect(QPoint(), size), Qt::white);
        return picture;
    }

    static bool IsDark(const QPalette &palette)
    {
        return qGray(palette.color(QPalette::Base).rgb()) < qGray(palette.color(QPalette::Text).rgb());
    }
};
} // namespace

void InstallFormStyle()
{
    QApplication::setWindowIcon(Icons::Application());
    // The styles of a desktop have an answer of their own.
    if (QApplication::style()->name().compare(u"fusion", Qt::CaseInsensitive) == 0)
        QApplication::setStyle(new FormStyle);
}
