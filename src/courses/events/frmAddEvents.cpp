#include "courses/events/frmAddEvents.h"

#include "core/session/Session.h"
#include "courses/booking/ResourcePanel.h"
#include "courses/events/EventODBC.h"
#include "courses/events/ExclusionsPage.h"
#include "courses/events/PatternPage.h"
#include "courses/events/frmUnbooked.h"
#include "courses/lists/CourseListODBC.h"
#include "database/values/DecodeDateFunc.h"
#include "forms/frames/FormBuilder.h"
#include "forms/progress/ProgressBox.h"
#include "platform/desktop/Dialogs.h"

#include <QLabel>
#include <QTimer>

#include <initializer_list>

namespace
{
constexpr int mostShown = 500;

ListItem RowOf(const SeriesDate &date, int number)
{
    const QDate day = IntToDate(date.hours.date);
    ListItem item{u'!' % SqlNumber(number),
                  QLocale(QLocale::English).dayName(day.dayOfWeek(), QLocale::ShortFormat),
                  {IntToDateText(int(date.hours.date)), TimesText(date.hours.from, date.hours.to),
                   date.isExcluded ? QString(u"left out: " % date.excludedBy) : date.clashes}};
    item.struck = date.isExcluded;
    return item;
}
} // namespace

frmAddEvents::frmAddEvents(CourseRef courseRef, bool hasEvents, QWidget *parent)
    : FormDialog(QStringLiteral("frmAddEvents"), QStringLiteral("Adding Event(s)"), parent)
    , m_courseRef(courseRef)
    , m_hasEvents(hasEvents)
    , m_later(new QTimer(this))
{
    const QString title = ADO_Course_Title(courseRef);
    if (!title.isEmpty())
        setWindowTitle(u"Adding Event(s): " % title);
    ResourceTree::AddEvent(m_resources, EventRef(), QStringLiteral("All Events have"),
                           ResourceTree::Kind::Attendance);
    m_dates.SetColumns({QStringLiteral("Day"), QStringLiteral("Date"), QStringLiteral("Time"),
                        QStringLiteral("Left out, or taken")});
    Build();
    Connect();
    m_exclusions->FillPeriods(m_pattern->Start());
    m_create->setEnabled(false);
    ShowPreview();
}

frmAddEvents::~frmAddEvents()
{
    // A field that loses the focus by being destroyed is left like any other, when this form is no more.
    for (QObject *part : std::initializer_list<QObject *>{m_tabs, m_pattern, m_exclusions})
        part->disconnect(this);
}

void frmAddEvents::Build()
{
    FormBuilder form(this);
    form.BeginColumns(5);
    m_tabs = form.Tabs(QStringLiteral("TabStrip1"));
    m_pattern =
        FormBuilder::AddTab(m_tabs, new PatternPage, QStringLiteral("EventsPage"), QStringLiteral("Events"));
    m_exclusions = FormBuilder::AddTab(m_tabs, new ExclusionsPage, QStringLiteral("ExclusionsPage"),
                                       QStringLiteral("Exclusions"));
    FormBuilder::AddTab(m_tabs, new ResourcePanel(m_resources, nullptr), QStringLiteral("ResourcesPage"),
                        QStringLiteral("Resources"));
    form.NextColumn(4);
    ListView *dates = form.List(QStringLiteral("DateList"), QStringLiteral("These events will be &made:"),
                                m_dates, ListView::Choice::Multi);
    dates->SetColumnChars({6, 14, 17, 20});
    dates->SetEmptyText(QStringLiteral("Give the number of events."));
    form.EndColumns();
    m_summary = form.Line(QStringLiteral("Summary"), {});
    form.BeginButtons();
    m_create = form.DefaultButton(QStringLiteral("DoBtn"), QStringLiteral("Create &Events"));
    QPushButton *exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("&Cancel"));
    form.EndButtons();
    connect(exit, &QPushButton::clicked, this, &frmAddEvents::reject);
    resize(fontMetrics().averageCharWidth() * 150, fontMetrics().lineSpacing() * 30);
}

void frmAddEvents::Connect()
{
    m_later->setSingleShot(true);
    connect(m_later, &QTimer::timeout, this, &frmAddEvents::ShowPreview);
    // A date or a time is typed letter by letter; the dates are worked out once.
    const auto later = [this] { m_later->start(100); };
    connect(m_pattern, &PatternPage::Changed, this, later);
    connect(m_pattern, &PatternPage::Changed, this, [this] { m_create->setEnabled(m_pattern->Count() > 0); });
    connect(m_exclusions, &ExclusionsPage::Changed, this, later);
    connect(&m_resources, &TreeModel::Changed, this, later);
    connect(m_create, &QPushButton::clicked, this, &frmAddEvents::CreateEvents);
    connect(m_tabs, &QTabWidget::currentChanged, this, [this](int tab) {
        if (m_tabs->widget(tab) == m_exclusions)
            m_exclusions->FillPeriods(m_pattern->Start());
    });
}

SeriesPlan frmAddEvents::Plan() const
{
    SeriesPlan plan = m_pattern->Plan();
    plan.exclusions = m_exclusions->Exclusions();
    return plan;
}

void frmAddEvents::ShowPreview()
{
    const SeriesPreview preview =
        Series_Preview(m_courseRef, Plan(), Series_Resources(m_resources), mostShown);
    std::vector<ListItem> rows;
    for (const SeriesDate &date : preview.dates)
        rows.push_back(RowOf(date, static_cast<int>(rows.size()) + 1));
    m_dates.Fill(std::move(rows));
    QString summary;
    if (preview.goesOn)
        summary = u"Only the first " % QString::number(mostShown) % u" dates are shown; " %
                  QString::number(m_pattern->Count()) % u" events will be made.";
    else if (preview.isExhausted)
        summary = QStringLiteral("The calendar ends before all of these events can be made.");
    m_summary->setText(summary);
    m_summary->setVisible(!summary.isEmpty());
}

/// A year far from the present is a slip of the finger: a calendar shows neither.
bool frmAddEvents::IsStartKnown()
{
    const QDate start = m_pattern->Start();
    if (start.year() >= 1900 && start.year() <= 2050)
        return true;
    Dialogs::Tell(u"Start Date: " % IntToDateText(DateToInt(start)) %
                      u" is not between 1900 and 2050. No event was made.",
                  windowTitle(), Dialogs::Icon::Exclamation);
    return false;
}

bool frmAddEvents::ClearEvents()
{
    // Another workstation may have made events while this form was open.
    if (m_hasEvents || ADO_Course_CountEvents(m_courseRef) > 0) {
        const Dialogs::Answer answer =
            Dialogs::MsgBox(QStringLiteral("Delete all current events?"), QStringLiteral("Question"),
                            Dialogs::Buttons::YesNo, Dialogs::Icon::Question, Dialogs::Answer::No);
        if (answer != Dialogs::Answer::Yes)
            return true;
    }
    return ADO_Course_DeleteEvent_ALL(m_courseRef);
}

void frmAddEvents::CreateEvents()
{
    if (!m_create->isEnabled() || !m_pattern->Leave() || !IsStartKnown())
        return;
    if (ADO_Course_Title(m_courseRef).isEmpty()) {
        Dialogs::Tell(QStringLiteral("Course has been deleted."), QStringLiteral("Courses"));
        return;
    }
    std::vector<SeriesResource> resources = Series_Resources(m_resources);
    if (!Series_LeaveOutDeleted(resources, windowTitle()) || !ClearEvents())
        return;
    SeriesMade made;
    ProgressBox::Run(
        this, windowTitle(), QStringLiteral("events"), QStringLiteral("The events that were made stay."),
        [&](Progress &progress) { made = Series_Make(m_courseRef, Plan(), resources, progress); });
    TellUnbooked(made);
    gDialogResult = 1;
    accept();
}

void frmAddEvents::TellUnbooked(const SeriesMade &made)
{
    if (made.isExhausted)
        Dialogs::Tell(u"The calendar ended before all events were made: there are " %
                          QString::number(made.events) % u" of " % QString::number(m_pattern->Count()) % u'.',
                      windowTitle(), Dialogs::Icon::Exclamation);
    if (!made.unbooked.empty())
        frmUnbooked(made.unbooked, this).exec();
}
