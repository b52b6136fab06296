#include "controls/TreeModel.h"
#include "core/session/Session.h"
#include "courses/booking/BookingODBC.h"
#include "courses/booking/ResourceTree.h"
#include "courses/events/EventODBC.h"
#include "courses/events/frmAddEvents.h"
#include "courses/maintenance/ExclusionODBC.h"
#include "database/statements/Security.h"
#include "enrolment/School.h"
#include "forms/lists/ListView.h"
#include "forms/lists/TreeView.h"
#include "platform/desktop/Clock.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

namespace
{
QStringList Shown(QWidget &form)
{
    QStringList rows;
    const ListModel &list = Find<ListView>(form, "DateList")->Model();
    for (int row = 0; row < list.Count(); ++row)
        rows.append((list.At(row).struck ? u"-"_qs : u""_qs) % list.At(row).text % u' ' %
                    list.At(row).subItems.join(u'|'));
    return rows;
}

QStringList Stored()
{
    return TestDatabase::Rows("SELECT EDate, TimeFrom, TimeTo FROM CourseEvents ORDER BY EDate");
}
} // namespace

class TestAddEvents final : public QObject
{
    Q_OBJECT

private slots:
    /// 2 March 2005 is a Wednesday.
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        gUserRights = RightsBlank();
        Clock::StopAt(QDateTime(QDate(2005, 3, 2), QTime(9, 0)));
        m_course = School::AddCourse("Welding", 10);
    }
    void cleanup()
    {
        Clock::StopAt({});
        m_database.reset();
    }

    /// The dates are shown before they are made: a holiday crossed out, a clash named.
    void ShowsWhatItThenMakes()
    {
        ADO_Course_AddExclusionDate(20050309, 20050309, "Holiday");
        TestDatabase::Run({"INSERT INTO Venues (Description,ReferenceID) VALUES ('Hall','')"});
        const int hall = School::LastKey("Venues", "VenueRef");
        CourseRef other = School::AddCourse("Pottery", 10);
        EventHours held{20050314, 900, 1000};
        QCOMPARE(BookEventResource(ResourceKind::Venue, other, EventRef(99), hall, held), QString());

        frmAddEvents form(m_course, false);
        form.show();
        QVERIFY(!Find<QPushButton>(form, "DoBtn")->isEnabled());
        Find<QCheckBox>(form, "RegEventChk")->setChecked(true);
        QVERIFY(Find<QCheckBox>(form, "DayCheck_2")->isChecked());
        QVERIFY(!Find<QCheckBox>(form, "DayCheck_2")->isEnabled());
        Enter(form, "EventNo", "4");
        Enter(form, "TimeFrom_2", "1430");
        Enter(form, "TimeTo_2", "1400");
        Find<QCheckBox>(form, "DayCheck_0")->setChecked(true);
        QCOMPARE(TextIn(form, "TimeFrom_0") + TextIn(form, "TimeTo_0"), u"14:0014:30"_qs);
        Enter(form, "TimeFrom_0", "9:30");
        Enter(form, "TimeTo_0", "11");
        auto *tabs = Find<QTabWidget>(form, "TabStrip1");
        tabs->setCurrentIndex(1);
        for (int i = 0; i < 2; ++i)
            Press(form, "AddDate");
        QCOMPARE(Find<ListView>(form, "Exclusions")->Model().Count(), 1);
        TreeModel &tree = Find<TreeView>(form, "ResourceList")->Model();
        ResourceTree::AddItem(tree, {ResourceTree::Kind::Venues, EventRef(), hall}, "Hall");
        const QStringList dates{u"Wed 02/03/2005|14:00 - 14:30|"_qs, u"Mon 07/03/2005|09:30 - 11:00|"_qs,
                                u"-Wed 09/03/2005|14:00 - 14:30|left out: Holiday"_qs,
                                u"Mon 14/03/2005|09:30 - 11:00|Hall: Pottery, 09:00 - 10:00"_qs,
                                u"Wed 16/03/2005|14:00 - 14:30|"_qs};
        QTRY_COMPARE(Shown(form), dates);

        ScriptedDialogs user;
        user.Expect("Event bookings", "Unable to book one or more items on Event 3\nVenue:HallPottery\n");
        ModalDriver hands;
        hands.Expect("frmUnbooked", [](QDialog &list) {
            const ListItem &row = Find<ListView>(list, "UnbookedList")->Model().At(0);
            QCOMPARE(row.text + u'|' + row.subItems.join(u'|'),
                     u"3|14/03/2005|09:30 - 11:00|Venue|Hall|Pottery"_qs);
            Press(list, "ExitBtn");
        });
        Press(form, "DoBtn");
        QVERIFY(!form.isVisible());
        QCOMPARE(Stored(), (QStringList{u"20050302|1400|1430"_qs, u"20050307|930|1100"_qs,
                                        u"20050314|930|1100"_qs, u"20050316|1400|1430"_qs}));
        QCOMPARE(TestDatabase::Rows("SELECT EDate FROM VenuesEmployed WHERE EventNo < 99").size(), 3);
    }

    /// Kept events are joined by the series; otherwise they go first.
    void KeepsOrReplacesTheEventsThere()
    {
        for (const Dialogs::Answer answer : {Dialogs::Answer::No, Dialogs::Answer::Yes}) {
            TestDatabase::Run({"DELETE FROM CourseEvents"});
            frmAddEvents form(m_course, false);
            form.show();
            ADO_Course_AddEvent(m_course, 1, {20050101, 900, 1000}); // by another workstation
            Enter(form, "EventNo", "2");
            ScriptedDialogs user;
            user.Expect("Question", "Delete all current events?", answer);
            Press(form, "DoBtn");
            const QStringList made{u"20050302|0|0"_qs, u"20050303|0|0"_qs};
            QCOMPARE(Stored(),
                     answer == Dialogs::Answer::Yes ? made : QStringList{u"20050101|900|1000"_qs} + made);
        }
    }

    /// A date that is typed passes through others, whose weekdays are not taken for days of the series; and
    /// what is no longer shown does not keep it from being made.
    void OnlyTheWholeDateIsTheStart()
    {
        frmAddEvents form(m_course, false);
        form.show();
        Find<QCheckBox>(form, "RegEventChk")->setChecked(true);
        Enter(form, "EventNo", "2");
        Enter(form, "EDate", "14/03/2005");
        QString days;
        for (int day = 0; day < 7; ++day)
            days += Find<QCheckBox>(form, u"DayCheck_%1"_qs.arg(day))->isChecked() ? u'x' : u'-';
        QCOMPARE(days, u"x-x----"_qs);
        Enter(form, "TimeFrom_2", "99");
        Find<QCheckBox>(form, "DayCheck_2")->setChecked(false);
        Press(form, "DoBtn");
        QCOMPARE(Stored(), (QStringList{u"20050314|0|0"_qs, u"20050321|0|0"_qs}));
    }

    /// Nothing is made on a date that nobody can mean, nor for a course that is gone.
    void RefusesWithoutATrace()
    {
        frmAddEvents form(m_course, false);
        form.show();
        Enter(form, "EventNo", "2");
        ScriptedDialogs user;
        user.Expect(form.windowTitle(),
                    "Start Date: 01/01/1850 is not between 1900 and 2050. No event was made.");
        Enter(form, "EDate", "01/01/1850");
        Press(form, "DoBtn");
        Enter(form, "EDate", "02/03/2005");
        TestDatabase::Run({"DELETE FROM Courses"});
        user.Expect("Courses", "Course has been deleted.");
        Press(form, "DoBtn");
        QVERIFY(Stored().isEmpty());
    }

    void AHundredThousandDatesAreNotAllShown()
    {
        frmAddEvents form(m_course, false);
        form.show();
        Enter(form, "EventNo", "100000");
        QTRY_COMPARE(Find<ListView>(form, "DateList")->Model().Count(), 500);
        QCOMPARE(Find<QLabel>(form, "Summary")->text(),
                 u"Only the first 500 dates are shown; 100000 events will be made."_qs);
    }

private:
    std::unique_ptr<TestDatabase> m_database;
    CourseRef m_course;
};

QTEST_MAIN(TestAddEvents)
#include "test_add_events.moc"
