#include "forms/lists/EmptyText.h"

#include <QAbstractItemView>
#include <QPainter>

EmptyText::EmptyText(QAbstractItemView *view)
    : m_view(view)
{
}

void EmptyText::Set(const QString &text)
{
    m_text = text;
    m_view->viewport()->update();
}

void EmptyText::Paint() const
{
    if (m_view->model()->rowCount() > 0)
        return;
    QPainter painter(m_view->viewport());
    painter.setPen(m_view->palette().color(QPalette::PlaceholderText));
    const int margin = m_view->fontMetrics().height();
    painter.drawText(m_view->viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     static_cast<int>(Qt::AlignHCenter | Qt::AlignTop) | Qt::TextWordWrap, m_text);
}
