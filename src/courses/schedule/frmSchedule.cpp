#include "courses/schedule/frmSchedule.h"

#include "core/files/SaveFile.h"
#include "core/icons/Icons.h"
#include "courses/events/frmEvent.h"
#include "courses/schedule/ICalendar.h"
#include "courses/schedule/MonthView.h"
#include "database/values/DecodeDateFunc.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/FormSize.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Dialogs.h"

#include <QDir>
#include <QMdiSubWindow>
#include <QScopedValueRollback>

namespace
{
constexpr int firstYear = 1999;
constexpr int lastYear = 2050;

/// A column of the list; widths are those of the program's first version, in twentieths of a point.
struct RunningColumn {
    QString title;
    int width;
    QString (*text)(const ScheduleRow &row);
};

struct KindOfThing {
    QString name;
    QString frame;
    frmEvent::Tab tab;
    QList<RunningColumn> columns;
};

const KindOfThing &KindNumber(ScheduleKind kind)
{
    static const RunningColumn course{QStringLiteral("Course Name"), 3000,
                                      [](const ScheduleRow &row) { return row.title; }};
    static const RunningColumn time{QStringLiteral("Time"), 1800, [](const ScheduleRow &row) {
                                        return TimesText(row.hours.from, row.hours.to);
                                    }};
    static const RunningColumn event{QStringLiteral("Event"), 700,
                                     [](const ScheduleRow &row) { return QString::number(row.eventNo); }};
    static const RunningColumn description{QStringLiteral("Description"), 5000,
                                           [](const ScheduleRow &row) { return row.description; }};
    static const RunningColumn role{QStringLiteral("Role"), 2500,
                                    [](const ScheduleRow &row) { return row.role; }};
    const auto named = [](const QString &title) -> RunningColumn {
        return {title, 2500, [](const ScheduleRow &row) { return row.name; }};
    };
    static const std::array<KindOfThing, 4> kinds{
        KindOfThing{QStringLiteral("Events"),
                    QStringLiteral("Running Events:"),
                    frmEvent::Tab::Event,
                    {course, time, event, description}},
        KindOfThing{QStringLiteral("Venues"),
                    QStringLiteral("Running Venues:"),
                    frmEvent::Tab::Venues,
                    {named(QStringLiteral("Venue")), time, course, event}},
        KindOfThing{QStringLiteral("Staff"),
                    QStringLiteral("Running Staff:"),
                    frmEvent::Tab::Staff,
                    {named(QStringLiteral("Staff Name")), role, time, course, event, description}},
        KindOfThing{QStringLiteral("Facilities"),
                    QStringLiteral("Running Facilities:"),
                    frmEvent::Tab::Facilities,
                    {named(QStringLiteral("Facilities")), time, course, event, description}}};
    return kinds[static_cast<size_t>(kind) - 1];
}

constexpr std::array<ScheduleKind, 4> allKinds{ScheduleKind::Events, ScheduleKind::Venues,
                                               ScheduleKind::Staff, ScheduleKind::Facilities};

ListItem ItemOf(const ScheduleRow &row, const KindOfThing &kind)
{
    ListItem item{u'?' % SqlNumber(row.courseRef) % u',' % SqlNumber(row.eventNo), kind.columns[0].text(row)};
    for (const RunningColumn &column : kind.columns.sliced(1))
        item.subItems.append(FlattenLines(column.text(row)));
    return item;
}
} // namespace

frmSchedule::frmSchedule(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("frmSchedule"));
    setWindowTitle(QStringLiteral("Calendar"));
    FormSize::Remember(this);
    for (const QString &name : MonthNames())
        m_months.Add(name);
    for (int year = firstYear; year <= lastYear; ++year)
        m_years.Add(QString::number(year), year);
    for (const ScheduleKind kind : allKinds)
        m_kinds.Add(KindNumber(kind).name, static_cast<int>(kind));
    m_kinds.SetCurrent(0);
    Build();
    // As in any bar of tools, Tab passes them by: whoever opens the calendar walks through the days.
    for (QWidget *tool : std::as_const(m_tools))
        tool->setFocusPolicy(Qt::ClickFocus);
    ShowKind();
    const QDate today = Clock::Today();
    {
        const QScopedValueRollback quiet(m_quiet, true);
        m_months.SetCurrent(today.month() - 1);
        m_years.ChooseData(today.year());
    }
    Connect();
    UpdateCal(today);
    // A child window would take the first tool, though Tab passes it by.
    m_grid->setFocus();
}

void frmSchedule::Build()
{
    FormBuilder form(this);
    BuildTools(form);
    form.BeginColumns(3);
    m_monthFrame = form.BeginGroup({}, QStringLiteral("Frame1"));
    m_grid = new MonthView(m_month);
    m_grid->setAccessibleName(QStringLiteral("Days of the month"));
    form.Place(m_grid, QStringLiteral("Grid1"), {}, true);
    form.EndGroup();
    form.NextColumn(4);
    m_listFrame = form.BeginGroup({}, QStringLiteral("Frame2"));
    m_list = form.List(QStringLiteral("EventInfo"), {}, m_running);
    m_list->setAccessibleName(QStringLiteral("What runs on the day"));
    m_list->SetEmptyText(QStringLiteral("Nothing runs on this day."));
    form.EndGroup();
    form.EndColumns();
    BuildButtons(form);
    resize(fontMetrics().averageCharWidth() * 150, fontMetrics().lineSpacing() * 28);
}

void frmSchedule::BuildTools(FormBuilder &form)
{
    const auto step = [this, &form](const QString &name, const QString &icon, const QString &tip,
                                    const QKeySequence &key, const std::function<void()> &go) {
        auto *button = new QPushButton(Icons::Of(icon), {});
        button->setShortcut(key);
        button->setToolTip(tip % u" (" % key.toString(QKeySequence::NativeText) % u')');
        button->setAccessibleName(tip);
        form.Place(button, name);
        form.Beside();
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        connect(button, &QPushButton::clicked, this, go);
        m_tools.append(button);
    };
    const auto choose = [this, &form](const QString &name, const QString &caption, ComboModel &model) {
        m_tools.append(form.Combo(name, caption, model));
        form.Beside();
    };
    const QString back = QStringLiteral("go-previous");
    const QString on = QStringLiteral("go-next");
    choose(QStringLiteral("ID_Month"), QStringLiteral("&Month:"), m_months);
    step(QStringLiteral("ID_PrevMonth"), back, QStringLiteral("The month before"), Qt::ALT | Qt::Key_Left,
         [this] { StepMonth(-1); });
    step(QStringLiteral("ID_NextMonth"), on, QStringLiteral("The next month"), Qt::ALT | Qt::Key_Right,
         [this] { StepMonth(1); });
    choose(QStringLiteral("ID_Year"), QStringLiteral("&Year:"), m_years);
    step(QStringLiteral("ID_PrevYear"), back, QStringLiteral("The year before"), Qt::SHIFT | Qt::Key_PageUp,
         [this] { StepYear(-1); });
    step(QStringLiteral("ID_NextYear"), on, QStringLiteral("The next year"), Qt::SHIFT | Qt::Key_PageDown,
         [this] { StepYear(1); });
    m_tools.append(form.Combo(QStringLiteral("ID_Type"), QStringLiteral("&Information For"), m_kinds));
}

void frmSchedule::BuildButtons(FormBuilder &form)
{
    form.BeginButtons(FormBuilder::Align::Start);
    m_view = form.Button(QStringLiteral("ID_View"), QStringLiteral("&View Event"));
    QPushButton *save = form.Button(QStringLiteral("SaveBtn"), QStringLiteral("&Save as iCalendar..."));
    QPushButton *refresh = form.Button(QStringLiteral("ID_Refresh"), QStringLiteral("&Refresh"));
    form.Gap();
    QPushButton *exit = form.Button(QStringLiteral("ID_Exit"), QStringLiteral("E&xit"));
    form.EndButtons();
    connect(m_view, &QPushButton::clicked, this, &frmSchedule::ViewEvent);
    connect(save, &QPushButton::clicked, this, &frmSchedule::SaveCalendar);
    connect(refresh, &QPushButton::clicked, this, &frmSchedule::Form_Refresh);
    connect(exit, &QPushButton::clicked, this, [this] {
        auto *frame = qobject_cast<QMdiSubWindow *>(parentWidget());
        frame ? frame->close() : close();
    });
}

void frmSchedule::Connect()
{
    const auto showMonth = [this] {
        if (!m_quiet)
            UpdateCal(Clock::Today());
    };
    connect(&m_months, &ComboModel::CurrentChanged, this, showMonth);
    connect(&m_years, &ComboModel::CurrentChanged, this, showMonth);
    connect(&m_kinds, &ComboModel::CurrentChanged, this, [this] {
        ShowKind();
        MarkDays();
        ShowDay(m_grid->Day());
    });
    connect(m_grid, &MonthView::DayPicked, this, &frmSchedule::ShowDay);
    connect(m_grid, &MonthView::DayAsked, this, &frmSchedule::GoTo);
    connect(m_grid, &MonthView::Opened, this, [this] {
        if (!m_running.IsEmpty())
            m_list->setFocus();
    });
    connect(m_list, &ListView::Opened, this, &frmSchedule::ViewEvent);
    const auto enable = [this] { EnableButton(m_view, m_running.CurrentRow() >= 0, m_list); };
    connect(m_running.Selection(), &QItemSelectionModel::currentChanged, this, enable);
    connect(&m_running, &ListModel::Changed, this, enable);
}

ScheduleKind frmSchedule::Kind() const
{
    return static_cast<ScheduleKind>(m_kinds.CurrentData());
}

int frmSchedule::Year() const
{
    return m_years.CurrentData();
}

int frmSchedule::Month() const
{
    return m_months.Current() + 1;
}

/// Shows the chosen month with `day` as the current one, if it is in view.
void frmSchedule::UpdateCal(QDate day)
{
    if (Month() < 1 || Year() < 1)
        return;
    m_month.ShowMonth(Year(), Month());
    m_monthFrame->setTitle(m_months.CurrentText() % u' ' % m_years.CurrentText());
    MarkDays();
    m_grid->SetDay(day);
    if (!m_grid->Day().isValid())
        m_running.Clear();
}

void frmSchedule::MarkDays()
{
    QSet<QDate> days;
    for (int row = 0; row < m_month.rowCount(); ++row) {
        for (int column = 0; column < m_month.columnCount(); ++column) {
            const QDate day = m_month.Day(m_month.index(row, column));
            if (ADO_Schedule_EventToday(DateToInt(day), Kind()) > 0)
                days.insert(day);
        }
    }
    m_month.Mark(days);
}

void frmSchedule::StepMonth(int months)
{
    const QDate then = QDate(Year(), Month(), 1).addMonths(months);
    if (then.year() < firstYear || then.year() > lastYear)
        return;
    {
        const QScopedValueRollback quiet(m_quiet, true);
        m_months.SetCurrent(then.month() - 1);
        m_years.ChooseData(then.year());
    }
    UpdateCal(Clock::Today());
}

void frmSchedule::StepYear(int years)
{
    StepMonth(12 * years);
}

void frmSchedule::GoTo(QDate day)
{
    if (day.year() < firstYear || day.year() > lastYear)
        return;
    if (m_month.IsInMonth(day)) {
        m_grid->SetDay(day);
        return;
    }
    {
        const QScopedValueRollback quiet(m_quiet, true);
        m_months.SetCurrent(day.month() - 1);
        m_years.ChooseData(day.year());
    }
    UpdateCal(day);
}

void frmSchedule::ShowDay(QDate day)
{
    std::vector<ListItem> items;
    if (day.isValid()) {
        const auto rows = ADO_Schedule_DisplayEvents(DateToInt(day), Kind());
        for (const ScheduleRow &row : rows.value_or(std::vector<ScheduleRow>()))
            items.push_back(ItemOf(row, KindNumber(Kind())));
    }
    m_running.Fill(std::move(items));
    m_list->KeepOrder();
    m_running.SelectFirst();
}

void frmSchedule::ShowKind()
{
    constexpr int twipsPerChar = 108;
    const KindOfThing &kind = KindNumber(Kind());
    QStringList titles;
    QList<int> chars;
    for (const RunningColumn &column : kind.columns) {
        titles.append(column.title);
        chars.append(qMax(column.width / twipsPerChar, static_cast<int>(column.title.size()) + 3));
    }
    m_running.Clear();
    m_running.SetColumns(titles);
    m_list->SetColumnChars(chars, ListView::Narrow::Scroll);
    m_listFrame->setTitle(kind.frame);
}

void frmSchedule::Form_Refresh()
{
    const QDate day = m_grid->Day();
    UpdateCal(day.isValid() ? day : Clock::Today());
    ShowDay(m_grid->Day());
}

void frmSchedule::ViewEvent()
{
    const int row = m_running.CurrentRow();
    if (row < 0)
        return;
    const QString key = m_running.At(row).key;
    frmEvent form(CourseRef(KeyNumber(key)), key.section(u',', 1).toInt(), KindNumber(Kind()).tab, this);
    form.Run();
    Form_Refresh();
}

void frmSchedule::SaveCalendar()
{
    std::vector<ScheduleRow> rows;
    const QDate first(Year(), Month(), 1);
    for (QDate day = first; day.month() == first.month(); day = day.addDays(1)) {
        const auto running = ADO_Schedule_DisplayEvents(DateToInt(day), Kind());
        if (!running)
            return;
        rows.insert(rows.end(), running->begin(), running->end());
    }
    const QString name = Dialogs::SaveFile({QStringLiteral("Save as iCalendar"), QDir::homePath(),
                                            KindNumber(Kind()).name % u' ' % m_monthFrame->title() % u".ics",
                                            QStringLiteral("iCalendar (*.ics)"), QStringLiteral("ics")});
    if (name.isEmpty())
        return;
    QSaveFile file(name);
    const QByteArray text = ICalendar::Text(rows, Kind(), Clock::Now());
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        Dialogs::Tell(UnableToWrite(file), windowTitle(), Dialogs::Icon::Exclamation);
        return;
    }
    Dialogs::Tell(QString::number(rows.size()) % u" entries were written to '" %
                      QDir::toNativeSeparators(name) % u"'.",
                  windowTitle(), Dialogs::Icon::Information);
}
