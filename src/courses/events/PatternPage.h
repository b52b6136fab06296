#pragma once

#include "controls/ComboModel.h"
#include "courses/events/EventSeries.h"

#include <QWidget>

#include <array>

class DateField;
class FormBuilder;
class MoneyField;
class QCheckBox;
class QGroupBox;
class TimeField;

/// The "Events" tab of a new series: when it begins, how many events it has, and on which days and at what
/// times they are.
class PatternPage final : public QWidget
{
    Q_OBJECT

public:
    explicit PatternPage(QWidget *parent = nullptr);

    QDate Start() const;
    int Count() const;
    /// What is on the page; the exclusions are the caller's.
    SeriesPlan Plan() const;
    /// Puts all times in order and takes over what is still being typed. False, after telling the user, where
    /// a text is no date or no time.
    bool Leave();

signals:
    void Changed();

private:
    struct Times {
        QWidget *fromCaption = nullptr;
        TimeField *from = nullptr;
        QWidget *toCaption = nullptr;
        TimeField *to = nullptr;
    };
    struct Day {
        QCheckBox *check = nullptr;
        Times times;
    };
    Times AddTimes(FormBuilder &form, int number);
    void Build();
    void BuildDays(FormBuilder &form);
    void Connect();
    void LeaveHidden();
    void Follow(const Times &times);
    void FixStartDay();
    void ShowFrames();
    void ShowTimes(const Day &day);
    void Remember(const Times &times);
    SeriesPlan::Times TimesOf(const Times &times) const;

    ComboModel m_follow;
    std::array<Day, 7> m_days; ///< Monday first
    Times m_single;            ///< of a series without a pattern
    SeriesPlan::Times m_last;  ///< the ones entered last
    DateField *m_start = nullptr;
    MoneyField *m_count = nullptr;
    QCheckBox *m_regular = nullptr;
    QGroupBox *m_plainFrame = nullptr;
    QGroupBox *m_dayFrame = nullptr;
};
