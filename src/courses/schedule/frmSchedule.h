#pragma once

#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "courses/schedule/MonthModel.h"
#include "courses/schedule/ScheduleODBC.h"

#include <QWidget>

class FormBuilder;
class ListView;
class MonthView;
class QGroupBox;
class QPushButton;

/// The calendar, a child window: the days of a month on which something runs, and what runs on one of them.
class frmSchedule final : public QWidget
{
    Q_OBJECT

public:
    explicit frmSchedule(QWidget *parent = nullptr);

public slots:
    /// Shows the month again, with what is stored now.
    void Form_Refresh();
    void Refresh() { Form_Refresh(); }

private:
    void Build();
    void BuildTools(FormBuilder &form);
    void BuildButtons(FormBuilder &form);
    void Connect();
    ScheduleKind Kind() const;
    int Year() const;
    int Month() const;
    void UpdateCal(QDate day);
    void MarkDays();
    void StepMonth(int months);
    void StepYear(int years);
    void ShowDay(QDate day);
    void GoTo(QDate day);
    void ShowKind();
    void ViewEvent();
    void SaveCalendar();

    MonthModel m_month;
    ListModel m_running;
    ComboModel m_months;
    ComboModel m_years;
    ComboModel m_kinds;
    QList<QWidget *> m_tools; ///< above the grid, from the left
    bool m_quiet = false;     ///< month or year are being chosen by the program
    QGroupBox *m_monthFrame = nullptr;
    QGroupBox *m_listFrame = nullptr;
    MonthView *m_grid = nullptr;
    ListView *m_list = nullptr;
    QPushButton *m_view = nullptr;
};
