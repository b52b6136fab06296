#include "forms/fields/FieldNote.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>

namespace
{
constexpr int air = 4; ///< logical pixels around the word

/// The colour of a field with a bit of red in it, in light and in dark.
QColor Reddened(const QColor &base)
{
    constexpr double share = 0.18;
    const QColor red(Qt::red);
    return QColor::fromRgbF(static_cast<float>(base.redF() * (1 - share) + red.redF() * share),
                            static_cast<float>(base.greenF() * (1 - share)),
                            static_cast<float>(base.blueF() * (1 - share)));
}
} // namespace

FieldNote::FieldNote(QLineEdit *field)
    : QObject(field)
    , m_field(field)
    , m_label(new QLabel(field))
{
    m_label->setObjectName(QStringLiteral("FieldNote"));
    m_label->setTextFormat(Qt::PlainText);
    m_label->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_label->setForegroundRole(QPalette::PlaceholderText);
    m_label->hide();
    field->installEventFilter(this);
}

void FieldNote::Show(const QString &text, Tone tone)
{
    Tint(!text.isEmpty() && tone == Tone::Warning);
    if (m_label->text() == text)
        return;
    m_label->setText(text);
    m_label->setVisible(!text.isEmpty());
    // Screen readers hear of it too.
    m_field->setAccessibleDescription(text);
    Place();
}

QString FieldNote::Text() const
{
    return m_label->text();
}

void FieldNote::Tint(bool tinted)
{
    if (m_tinted == tinted)
        return;
    m_tinted = tinted;
    QPalette palette;
    if (tinted)
        palette.setColor(QPalette::Base, Reddened(m_field->palette().color(QPalette::Base)));
    m_field->setPalette(palette);
}

void FieldNote::Place()
{
    if (m_label->text().isEmpty()) {
        KeepFree(0);
        return;
    }
    m_label->adjustSize();
    int right = m_field->width() - air;
    for (const QAbstractButton *button : m_field->findChildren<QAbstractButton *>()) {
        if (button->width() > 0)
            right = qMin(right, button->x());
    }
    m_label->move(right - m_label->width(), (m_field->height() - m_label->height()) / 2);
    KeepFree(m_label->width() + air);
}

void FieldNote::KeepFree(int width)
{
    QMargins margins = m_field->textMargins();
    margins.setRight(width);
    m_field->setTextMargins(margins);
}

bool FieldNote::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::Resize)
        Place();
    return QObject::eventFilter(watched, event);
}
