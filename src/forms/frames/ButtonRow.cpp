#include "forms/frames/ButtonRow.h"

#include <QPushButton>

ButtonRow::ButtonRow(const ButtonRow *above)
    : m_rows(above ? above->m_rows : std::make_shared<QList<const ButtonRow *>>())
{
    m_rows->append(this);
}

ButtonRow::~ButtonRow()
{
    m_rows->removeOne(this);
}

/// The layout above calls this whenever a caption, the font or the visibility of a button has changed.
void ButtonRow::invalidate()
{
    QHBoxLayout::invalidate();
    QList<QWidget *> buttons;
    for (const ButtonRow *row : *m_rows)
        buttons += row->Buttons();
    int width = 0;
    for (const QWidget *button : buttons)
        width = qMax(width, button->isHidden() ? 0 : button->sizeHint().width());
    for (QWidget *button : buttons)
        button->setMinimumWidth(width);
}

QList<QWidget *> ButtonRow::Buttons() const
{
    QList<QWidget *> buttons;
    for (int i = 0; i < count(); ++i) {
        if (auto *button = qobject_cast<QPushButton *>(itemAt(i)->widget()))
            buttons.append(button);
    }
    return buttons;
}
