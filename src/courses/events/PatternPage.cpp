#include "courses/events/PatternPage.h"

#include "forms/frames/FormBuilder.h"
#include "platform/desktop/Clock.h"

#include <QLocale>

namespace
{
struct Interval {
    const char *caption;
    int days;
};
/// A month has four weeks here, so that events stay on their weekdays.
constexpr std::array<Interval, 3> intervals{{{"Weekly", 7}, {"Fortnightly", 14}, {"Monthly", 28}}};

constexpr int singleTimes = 7; ///< the number of the pair of times of a series without a pattern
} // namespace

PatternPage::PatternPage(QWidget *parent)
    : QWidget(parent)
{
    for (const auto &[caption, days] : intervals)
        m_follow.Add(QString::fromLatin1(caption), days);
    m_follow.SetCurrent(0);
    Build();
    m_start->SetDay(Clock::Today());
    m_count->setText(QStringLiteral("0"));
    Connect();
    FixStartDay();
    ShowFrames();
}

void PatternPage::Build()
{
    FormBuilder form(this);
    m_start = form.Date(QStringLiteral("EDate"), QStringLiteral("&Start Date:"));
    m_count = form.Digits(QStringLiteral("EventNo"), QStringLiteral("&Number of events:"), 6);
    m_regular = form.Check(QStringLiteral("RegEventChk"), QStringLiteral("Use &Regular Event Pattern"));
    m_plainFrame = form.BeginGroup({}, QStringLiteral("NoRegEventFrame"));
    m_single = AddTimes(form, singleTimes);
    form.EndGroup();
    m_dayFrame =
        form.BeginGroup(QStringLiteral("Select which day(s) and times you would like the events on:"),
                        QStringLiteral("RegEventFrame"));
    BuildDays(form);
    form.EndGroup();
}

void PatternPage::BuildDays(FormBuilder &form)
{
    for (int number = 0; number < static_cast<int>(m_days.size()); ++number) {
        Day &day = m_days[static_cast<size_t>(number)];
        day.check =
            form.Check(u"DayCheck_" % QString::number(number), QLocale(QLocale::English).dayName(number + 1));
        form.Beside();
        day.times = AddTimes(form, number);
    }
    form.Combo(QStringLiteral("EventFollow"), QStringLiteral("Events &happen:"), m_follow);
}

PatternPage::Times PatternPage::AddTimes(FormBuilder &form, int number)
{
    Times times;
    const QString place = QString::number(number);
    times.from = form.Time(u"TimeFrom_" % place, QStringLiteral("Start Time:"));
    times.fromCaption = form.Label();
    form.Beside();
    times.to = form.Time(u"TimeTo_" % place, QStringLiteral("End Time:"));
    times.toCaption = form.Label();
    for (QWidget *widget : {times.fromCaption, static_cast<QWidget *>(times.from), times.toCaption,
                            static_cast<QWidget *>(times.to)}) {
        QSizePolicy policy = widget->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        widget->setSizePolicy(policy);
    }
    return times;
}

void PatternPage::Connect()
{
    // The beginning of a date can be another date, whose weekday is not wanted.
    connect(m_start, &QLineEdit::editingFinished, this, &PatternPage::FixStartDay);
    connect(m_start, &QLineEdit::textChanged, this, [this] {
        if (m_start->isModified())
            emit Changed();
        else
            FixStartDay();
    });
    connect(m_count, &QLineEdit::textChanged, this, &PatternPage::Changed);
    m_count->SetLeaveHandler([this] { m_count->setText(QString::number(Count())); });
    connect(m_regular, &QCheckBox::toggled, this, &PatternPage::ShowFrames);
    connect(&m_follow, &ComboModel::CurrentChanged, this, &PatternPage::Changed);
    Follow(m_single);
    for (const Day &day : m_days) {
        Follow(day.times);
        connect(day.check, &QCheckBox::toggled, this, [this, &day] {
            ShowTimes(day);
            emit Changed();
        });
    }
}

void PatternPage::Follow(const Times &times)
{
    for (TimeField *field : {times.from, times.to})
        connect(field, &QLineEdit::textChanged, this, &PatternPage::Changed);
    connect(times.to, &TimeField::Left, this, [this, &times] { Remember(times); });
}

void PatternPage::Remember(const Times &times)
{
    PutInOrder(times.from, times.to);
    m_last = TimesOf(times);
}

SeriesPlan::Times PatternPage::TimesOf(const Times &times) const
{
    return {times.from->Time(), times.to->Time()};
}

/// The weekday of the start is always one of the days.
void PatternPage::FixStartDay()
{
    const int first = m_start->Day().dayOfWeek() - 1;
    for (int number = 0; number < static_cast<int>(m_days.size()); ++number) {
        const Day &day = m_days[static_cast<size_t>(number)];
        day.check->setEnabled(number != first);
        if (number == first)
            day.check->setChecked(true);
        ShowTimes(day);
    }
    emit Changed();
}

void PatternPage::ShowFrames()
{
    m_plainFrame->setVisible(!m_regular->isChecked());
    m_dayFrame->setVisible(m_regular->isChecked());
    emit Changed();
}

void PatternPage::ShowTimes(const Day &day)
{
    const bool isTicked = day.check->isChecked();
    if (isTicked && day.times.from->isHidden()) {
        day.times.from->SetTime(m_last.from);
        day.times.to->SetTime(m_last.to);
    }
    for (QWidget *widget : {day.times.fromCaption, static_cast<QWidget *>(day.times.from),
                            day.times.toCaption, static_cast<QWidget *>(day.times.to)})
        widget->setVisible(isTicked);
}

QDate PatternPage::Start() const
{
    return m_start->Day();
}

int PatternPage::Count() const
{
    return m_count->text().toInt();
}

SeriesPlan PatternPage::Plan() const
{
    SeriesPlan plan{Start(), Count(), m_regular->isChecked(), TimesOf(m_single), {}, m_follow.CurrentData(),
                    {}};
    for (size_t number = 0; number < m_days.size(); ++number) {
        if (m_days[number].check->isChecked())
            plan.days[number] = TimesOf(m_days[number].times);
    }
    return plan;
}

/// A text that is no time is not asked about once its field is hidden.
void PatternPage::LeaveHidden()
{
    for (TimeField *field : findChildren<TimeField *>()) {
        if (!field->isVisibleTo(this))
            field->SetTime(field->Time());
    }
}

bool PatternPage::Leave()
{
    m_count->Leave();
    LeaveHidden();
    if (!DaysAreReadable(this) || !TimesAreReadable(this))
        return false;
    FixStartDay();
    PutInOrder(m_single.from, m_single.to);
    for (const Day &day : m_days)
        PutInOrder(day.times.from, day.times.to);
    return true;
}
