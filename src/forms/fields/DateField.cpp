#include "forms/fields/DateField.h"

#include "core/icons/Icons.h"
#include "forms/fields/CaptionLabel.h"
#include "forms/fields/FieldFocus.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Dialogs.h"

#include <QAction>
#include <QCalendarWidget>
#include <QFrame>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QStyle>
#include <QVBoxLayout>

namespace
{
const QString dateFormat = QStringLiteral("dd/MM/yyyy");

/// What a pressed key enters: every mark between the parts of a date becomes a slash.
QString Stroke(const QString &key)
{
    return key.size() == 1 && QStringView(u".,- ").contains(key.front()) ? QStringLiteral("/") : key;
}
} // namespace

DateField::DateField(QWidget *parent)
    : QLineEdit(parent)
{
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9./, -]{0,10}")), this));
    setToolTip(
        QStringLiteral("Day, month and year, such as 1/2/1990 or 010290. Alt+Down opens the calendar."));
    QAction *open = addAction(Icons::Of(QStringLiteral("view-calendar")), TrailingPosition);
    connect(open, &QAction::triggered, this, &DateField::OpenCalendar);
    connect(this, &QLineEdit::returnPressed, this, &DateField::Leave);
    // A mistyped date is marked only once the user has finished with it.
    connect(this, &QLineEdit::textEdited, this, [this] {
        m_isUnknown = false;
        setPalette(QPalette());
    });
}

QDate DateField::Day() const
{
    return Typed().value_or(m_day);
}

bool DateField::IsDay() const
{
    return text().trimmed().isEmpty() || Typed();
}

void DateField::SetDay(QDate day)
{
    m_isUnknown = false;
    m_day = day;
    setPalette(QPalette());
    setText(day.toString(dateFormat));
}

void DateField::SetUnknown(QDate proposed)
{
    SetDay(proposed);
    m_isUnknown = true;
    Dim();
}

void DateField::Dim()
{
    const QColor dimmed = palette().color(QPalette::PlaceholderText);
    if (palette().color(QPalette::Text) == dimmed)
        return;
    QPalette dim = palette();
    dim.setColor(QPalette::Text, dimmed);
    setPalette(dim);
}

void DateField::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    // Locking and unlocking a form colours its fields.
    if (event->type() == QEvent::PaletteChange && m_isUnknown)
        Dim();
}

int DateField::FullYear(int shortYear) const
{
    constexpr int near = 50; // years
    const int today = Clock::Today().year();
    const int year = today - today % 100 + shortYear;
    if (year > (m_past ? today : today + near))
        return year - 100;
    return !m_past && year <= today - near ? year + 100 : year;
}

std::optional<QDate> DateField::Typed() const
{
    static const QRegularExpression marks(QStringLiteral("[., -]"));
    static const QRegularExpression day(QStringLiteral("^(\\d{1,2})(?:/(\\d{1,2})(?:/(\\d{2}|\\d{4}))?)?/?$"
                                                       "|^(\\d{2})(\\d{2})(\\d{2}|\\d{4})?$"));
    const QRegularExpressionMatch match = day.match(QString(text().trimmed()).replace(marks, u"/"_qs));
    if (!match.hasMatch())
        return {};
    const int first = match.capturedLength(1) > 0 ? 1 : 4;
    const QDate today = Clock::Today();
    const QStringView month = match.capturedView(first + 1);
    const QStringView year = match.capturedView(first + 2);
    const QDate typed(year.isEmpty()     ? today.year()
                      : year.size() == 2 ? FullYear(year.toInt())
                                         : year.toInt(),
                      month.isEmpty() ? today.month() : month.toInt(), match.capturedView(first).toInt());
    if (!typed.isValid() || typed.year() < 1000)
        return {};
    return typed;
}

void DateField::Leave()
{
    if (isReadOnly() || m_isUnknown)
        return;
    if (IsDay()) {
        SetDay(Day());
        return;
    }
    QPalette wrong = palette();
    wrong.setColor(QPalette::Text, palette().color(QPalette::Base).lightness() < 128 ? QColor(255, 128, 128)
                                                                                     : QColor(176, 0, 0));
    setPalette(wrong);
}

void DateField::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (IsLeft(*event))
        Leave();
}

void DateField::keyPressEvent(QKeyEvent *event)
{
    if (isReadOnly())
        return QLineEdit::keyPressEvent(event);
    const int key = event->key();
    const int step = key == Qt::Key_Up || key == Qt::Key_PageUp ? 1 : -1;
    if (key == Qt::Key_F4 || (key == Qt::Key_Down && event->modifiers() & Qt::AltModifier)) {
        OpenCalendar();
    } else if (key == Qt::Key_Up || key == Qt::Key_Down) {
        SetDay(Day().addDays(step));
    } else if (key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
        SetDay(Day().addMonths(step));
    } else {
        QKeyEvent typed(QEvent::KeyPress, key, event->modifiers(), Stroke(event->text()));
        QLineEdit::keyPressEvent(&typed);
        event->setAccepted(typed.isAccepted());
        return;
    }
    event->accept();
}

void DateField::OpenCalendar()
{
    if (isReadOnly())
        return;
    auto *popup = new QFrame(this, Qt::Popup);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    auto *layout = new QVBoxLayout(popup);
    layout->setContentsMargins({});
    auto *calendar = new QCalendarWidget;
    calendar->setSelectedDate(Day());
    layout->addWidget(calendar);
    connect(calendar, &QCalendarWidget::activated, popup, [this, popup](QDate day) {
        SetDay(day);
        popup->close();
    });
    connect(calendar, &QCalendarWidget::clicked, calendar, &QCalendarWidget::activated);
    popup->move(mapToGlobal(rect().bottomLeft()));
    popup->show();
    calendar->setFocus();
}

QSize DateField::sizeHint() const
{
    const int icon = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    const int day = fontMetrics().horizontalAdvance(QStringLiteral("00/00/0000"));
    return {day + 2 * icon, QLineEdit::sizeHint().height()};
}

QSize DateField::minimumSizeHint() const
{
    return sizeHint();
}

bool DaysAreReadable(QWidget *form)
{
    for (DateField *field : form->findChildren<DateField *>()) {
        if (field->IsDay())
            continue;
        Dialogs::MsgBox(CaptionBefore(*field) % u'\'' % field->text() %
                            u"' is not a date. Type day, month and year, such as 1/2/1990.",
                        form->window()->windowTitle(), Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation);
        FocusField(field);
        return false;
    }
    return true;
}
