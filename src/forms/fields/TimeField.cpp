#include "forms/fields/TimeField.h"

#include "database/values/DecodeDateFunc.h"
#include "forms/fields/CaptionLabel.h"
#include "forms/fields/FieldFocus.h"
#include "platform/desktop/Dialogs.h"

#include <QKeyEvent>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QTime>

namespace
{
constexpr int minutesOfDay = 24 * 60;
} // namespace

TimeField::TimeField(QWidget *parent)
    : QLineEdit(parent)
{
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9:.]{0,5}")), this));
    setToolTip(QStringLiteral("Hours and minutes, such as 9:30 or 930."));
    setText(IntToTimeText(0));
    connect(this, &QLineEdit::returnPressed, this, &TimeField::Leave);
    connect(this, &QLineEdit::textEdited, this, [this] { setPalette(QPalette()); });
}

void TimeField::SetTime(int time)
{
    m_time = time;
    setPalette(QPalette());
    setText(IntToTimeText(time));
}

bool TimeField::IsTime() const
{
    return text().isEmpty() || Typed();
}

std::optional<int> TimeField::Typed() const
{
    static const QRegularExpression time(
        QStringLiteral("^(\\d{1,2})(?:[:.](\\d{1,2})?)?$|^(\\d{1,2})(\\d{2})$"));
    const QRegularExpressionMatch match = time.match(text());
    if (!match.hasMatch())
        return {};
    const int first = match.capturedLength(1) > 0 ? 1 : 3;
    const QTime typed(match.capturedView(first).toInt(), match.capturedView(first + 1).toInt());
    return typed.isValid() ? std::optional(TimeToInt(typed)) : std::nullopt;
}

void TimeField::Leave()
{
    if (isReadOnly())
        return;
    if (IsTime()) {
        SetTime(Time());
        emit Left();
        return;
    }
    QPalette wrong = palette();
    wrong.setColor(QPalette::Text, palette().color(QPalette::Base).lightness() < 128 ? QColor(255, 128, 128)
                                                                                     : QColor(176, 0, 0));
    setPalette(wrong);
}

void TimeField::Step(int minutes)
{
    const int now = TimeHours(Time()) * 60 + TimeMinutes(Time());
    const int then = (now + minutes + minutesOfDay) % minutesOfDay;
    SetTime(TimeToInt(QTime(then / 60, then % 60)));
}

void TimeField::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (IsLeft(*event))
        Leave();
}

void TimeField::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    const bool isStep =
        key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
    if (isReadOnly() || !isStep) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const int minutes = key == Qt::Key_Up || key == Qt::Key_Down ? 5 : 60;
    Step(key == Qt::Key_Up || key == Qt::Key_PageUp ? minutes : -minutes);
    event->accept();
}

QSize TimeField::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(QStringLiteral("00:00:00")), QLineEdit::sizeHint().height()};
}

bool TimesAreReadable(QWidget *form)
{
    for (TimeField *field : form->findChildren<TimeField *>()) {
        if (field->IsTime())
            continue;
        Dialogs::MsgBox(CaptionBefore(*field) % u'\'' % field->text() %
                            u"' is not a time. Type hours and minutes, such as 9:30.",
                        form->window()->windowTitle(), Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation);
        FocusField(field);
        return false;
    }
    return true;
}

void PutInOrder(TimeField *from, TimeField *to)
{
    const int start = from->Time();
    const int end = to->Time();
    if (end >= start)
        return;
    from->SetTime(end);
    to->SetTime(start);
}
