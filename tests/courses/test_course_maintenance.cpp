#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "courses/maintenance/CourseSections.h"
#include "courses/maintenance/ExclusionModule.h"
#include "courses/maintenance/ResourceModule.h"
#include "courses/maintenance/frmAddExcludeDates.h"
#include "courses/maintenance/frmCourseMain.h"
#include "courses/maintenance/frmFacilities.h"
#include "courses/maintenance/frmVenues.h"
#include "database/statements/Security.h"
#include "enrolment/School.h"
#include "forms/fields/TypedCombo.h"
#include "forms/lists/ListView.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace
{
void ChooseSection(QWidget &form, CourseSection section)
{
    ListModel &sections = Find<ListView>(form, "SecList")->Model();
    sections.SelectOnly(sections.Find(u'?' % QString::number(static_cast<int>(section))));
}

ListModel &ItemsOf(QWidget &form)
{
    return Find<ListView>(form, "MainList")->Model();
}

QStringList Names(const ListModel &list)
{
    QStringList names;
    for (int row = 0; row < list.Count(); ++row)
        names.append((QStringList{list.At(row).text} + list.At(row).subItems).join(u'|'));
    return names;
}
} // namespace

class TestCourseMaintenance final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        gUserRights = RightsBlank();
    }
    void cleanup() { m_database.reset(); }

    /// The same name under another reference is another row; a venue is told of as a facility.
    void VenuesAndFacilitiesAreTwins()
    {
        const QString awkward = u"O'Hara `1` 50% [x] \U0001F600 "_qs + QString(10000, u'n');
        const Resource hall{awkward, QString(10000, u'ä'), 12.5, OrganRef(1), u"A"_qs};
        const int venue = Venue_Add(hall);
        const int facility = Facility_Add(hall);
        QVERIFY(venue > 1 && facility > 0);
        {
            ScriptedDialogs user;
            user.Expect("Add Facility", "Venue already exists in database.");
            user.Expect("Add Facility", "Facility already exists in database.");
            QCOMPARE(Venue_Add(hall) + Facility_Add(hall), 0);
        }
        Resource other = hall;
        other.referenceID = u"B"_qs;
        const int second = Venue_Add(other);
        QVERIFY(second > venue);
        {
            ScriptedDialogs user;
            user.Expect("Update Facility", "Venue already exists in database.");
            QCOMPARE(Venue_Update(VenueRef(second), hall), 0);
        }
        QCOMPARE(Venue_Update(VenueRef(venue), hall), venue);
        const auto read = ADO_Course_ShowVenue(VenueRef(venue));
        QCOMPARE(read->notes, hall.notes);
        QCOMPARE(read->name, QString(awkward).replace(u'`', u"``"_qs));
        QCOMPARE(ADO_Course_ShowFacility(FacilityRef(facility))->chargeRate, 12.5);
        QVERIFY(ADO_Course_DeleteVenue(VenueRef(second)));
        ScriptedDialogs user;
        user.Expect("Update Facility",
                    "Another user has deleted this venue meanwhile. Nothing was stored for it.");
        QCOMPARE(Venue_Update(VenueRef(second), other), 0);
    }

    /// What hangs on a row goes with it or falls back to the first row, which itself stays.
    void Deletions()
    {
        const QString exam =
            u"INSERT INTO Exam (ExamName,ReferenceID,ExamNameRef,ExamTypeRef,OrganRef,VenueRef) "
            u"VALUES ('E','',2,2,1,2)"_qs;
        TestDatabase::Run({exam, "INSERT INTO VenuesEmployed (CourseRef,EventNo,VenueRef) VALUES (1,1,2)",
                           "INSERT INTO FacilitiesEmployed (CourseRef,EventNo,FacilityRef) VALUES (1,1,2)",
                           "INSERT INTO CourseVenues (CourseRef,VenueRef) VALUES (1,2)",
                           "INSERT INTO CourseChar (CourseRef,ConcessionRef) VALUES (1,2)",
                           "INSERT INTO Awards (AwardRef) VALUES (2)",
                           "INSERT INTO StudentExams (CourseRef,ExamRef) VALUES (1,1)"});
        for (const CourseSection section :
             {CourseSection::Venues, CourseSection::Facilities, CourseSection::AssessmentSubjects,
              CourseSection::AssessmentTypes, CourseSection::Awards, CourseSection::Characteristics})
            QVERIFY(Course_DeleteItem(section, 2));
        QCOMPARE(TestDatabase::Rows("SELECT ExamNameRef, ExamTypeRef, VenueRef FROM Exam"),
                 QStringList{u"1|1|1"_qs});
        for (const char *table : {"VenuesEmployed", "FacilitiesEmployed", "CourseChar"})
            QVERIFY2(TestDatabase::Rows(u"SELECT CourseRef FROM "_qs % table).isEmpty(), table);
        QVERIFY(TestDatabase::Rows("SELECT AwardRef FROM Awards").isEmpty());
        QCOMPARE(TestDatabase::Rows("SELECT VenueRef FROM CourseVenues"), QStringList{u"2"_qs});
        QVERIFY(Course_DeleteItem(CourseSection::Assessments, 1));
        QVERIFY(TestDatabase::Rows("SELECT ExamRef FROM StudentExams").isEmpty());
        for (const CourseSection section :
             {CourseSection::Venues, CourseSection::AssessmentSubjects, CourseSection::AssessmentTypes})
            QVERIFY(!Course_DeleteItem(section, 1));
        QCOMPARE(TestDatabase::Rows("SELECT VenueRef FROM Venues WHERE VenueRef = 1").size(), 1);
    }

    /// By the screen, in every simple section: added, found taken, renamed, deleted.
    void SimpleLists_data()
    {
        QTest::addColumn<int>("section");
        for (const CourseSection section : {CourseSection::Characteristics, CourseSection::AssessmentSubjects,
                                            CourseSection::AssessmentTypes})
            QTest::newRow(qPrintable(CourseSectionOf(section).caption)) << static_cast<int>(section);
    }
    void SimpleLists()
    {
        QFETCH(int, section);
        frmCourseMain form;
        form.show();
        ChooseSection(form, static_cast<CourseSection>(section));
        ModalDriver hands;
        const auto enter = [](const QString &name) {
            return [name](QDialog &dialog) {
                TypeInto(dialog, "CatName", name);
                Press(dialog, "AddBtn");
            };
        };
        for (const char *name : {"Zither", "O'Neil `s"}) {
            hands.Expect("frmCourseMainAddEdit", enter(name));
            Press(form, "AddBtn");
        }
        QCOMPARE(Names(ItemsOf(form)), (QStringList{u"O'Neil ``s"_qs, u"Zither"_qs}));
        ScriptedDialogs user;
        user.Expect("Add Item", "Item already exists in database.");
        hands.Expect("frmCourseMainAddEdit", [&](QDialog &dialog) {
            enter("Zither")(dialog);
            QVERIFY(dialog.isVisible());
            enter("Aria")(dialog);
        });
        Press(form, "AddBtn");
        hands.Expect("frmCourseMainAddEdit", enter("Zoo"));
        Press(form, "EditBtn");
        QCOMPARE(Names(ItemsOf(form)), (QStringList{u"O'Neil ``s"_qs, u"Zither"_qs, u"Zoo"_qs}));
        user.Expect("Confirm Deletion", "Okay to delete item 'Zoo'", Dialogs::Answer::Yes);
        Press(form, "DelBtn");
        QCOMPARE(ItemsOf(form).Count(), 2);
    }

    void PeriodsThatASeriesLeavesOut()
    {
        frmCourseMain form;
        form.show();
        ChooseSection(form, CourseSection::ExcludeDates);
        ModalDriver hands;
        const auto enter = [](const QString &first, const QString &last) {
            return [=](QDialog &dialog) {
                TypeInto(dialog, "RefName", "Easter");
                Enter(dialog, "FromDate", first);
                Enter(dialog, "ToDate", last);
                Press(dialog, "AddBtn");
            };
        };
        ScriptedDialogs user;
        user.Expect(
            "Exclusion Dates",
            "The period would end on 01/04/2027, before it begins on 05/04/2027. Nothing was stored.");
        hands.Expect("frmAddExcludeDates", [&](QDialog &dialog) {
            enter("5/4/2027", "1/4/2027")(dialog);
            QVERIFY(dialog.isVisible());
            enter("26/3/2027", "5/4/2027")(dialog);
        });
        Press(form, "AddBtn");
        QCOMPARE(Names(ItemsOf(form)), QStringList{u"Easter|26/03/2027|05/04/2027"_qs});
        user.Expect("Add Exclusion Dates", "Same exclude dates already exist in database.");
        hands.Expect("frmAddExcludeDates", [&](QDialog &dialog) {
            enter("26/3/2027", "5/4/2027")(dialog);
            enter("1/1/2027", "1/1/2027")(dialog);
        });
        Press(form, "AddBtn");
        const auto later = ADO_Course_FillExclusionDates2(20270405);
        QCOMPARE(later->size(), size_t(1));
        QCOMPARE(Exclusion_Text(later->front()), u"Easter 26/03/2027 - 05/04/2027"_qs);
        QVERIFY(ADO_Course_FillExclusionDates2(20270406)->empty());
    }

    void TakesANewOwner()
    {
        frmVenues form;
        form.show();
        TypeInto(form, "VenueName", "Hall");
        TypeInto(form, "Rate", "12.345");
        ScriptedDialogs user;
        user.Expect("Organisation Information",
                    "Would you like to fill in the information for this new Organisation 'Acme'?",
                    Dialogs::Answer::No);
        Enter(form, "OrganList", "Acme");
        Press(form, "AddBtn");
        const QString owner =
            TestDatabase::Value("SELECT OrganRef FROM Organisations WHERE OrganName = 'Acme'");
        QCOMPARE(
            TestDatabase::Rows("SELECT Description, ChargeRate, OrganRef FROM Venues WHERE VenueRef > 1"),
            QStringList{u"Hall|12.35|"_qs % owner});
    }

    /// Each level of each section's right: add from 2, change from 3, delete at 9; below 3 a venue is shown.
    void Rights()
    {
        TestDatabase::Run({"INSERT INTO Venues (Description,ReferenceID,ChargeRate) VALUES ('Hall','',5)",
                           "INSERT INTO Facilities (Name,ReferenceID) VALUES ('Torch','')"});
        Exclusion_Add({0, u"Easter"_qs, 20270326, 20270405});
        for (const CourseSectionInfo &section : CourseSections()) {
            if (section.code != CourseSection::ExcludeDates)
                Course_AddItem(section.code, {u""_qs, u"One"_qs});
        }
        for (const CourseSectionInfo &section : CourseSections()) {
            for (const char level : {'0', '1', '2', '3', '9'}) {
                gUserRights =
                    QString(RightsBlank()).replace(static_cast<int>(section.right), 1, QChar(level));
                frmCourseMain form;
                form.show();
                ChooseSection(form, section.code);
                ItemsOf(form).SelectFirst();
                const bool hasDialog =
                    section.code != CourseSection::Awards && section.code != CourseSection::Assessments;
                const bool isResource =
                    section.code == CourseSection::Venues || section.code == CourseSection::Facilities;
                const auto isOpen = [&](const char *button) {
                    return Find<QPushButton>(form, button)->isEnabled();
                };
                QCOMPARE(isOpen("AddBtn"), level >= '2' && hasDialog);
                QCOMPARE(isOpen("EditBtn"), level >= '3' || isResource);
                QCOMPARE(isOpen("DelBtn"), level == '9');
                QCOMPARE(Find<QPushButton>(form, "EditBtn")->text(), level >= '3' ? "&Edit" : "&View");
            }
        }
        gUserRights = QString(RightsBlank()).replace(static_cast<int>(Right::VenueRates), 1, u"1"_qs);
        frmVenues venue;
        venue.EditItem(School::LastKey("Venues", "VenueRef"));
        QVERIFY(!Find<QLineEdit>(venue, "VenueName")->isReadOnly());
        QVERIFY(Find<QLineEdit>(venue, "Rate")->isReadOnly());
        gUserRights = QString(RightsBlank()).replace(static_cast<int>(Right::Venues), 1, u"2"_qs);
        frmVenues looked;
        looked.EditItem(School::LastKey("Venues", "VenueRef"));
        QVERIFY(Find<QLineEdit>(looked, "VenueName")->isReadOnly());
        QVERIFY(!Find<QPushButton>(looked, "AddBtn")->isEnabled());
    }

private:
    std::unique_ptr<TestDatabase> m_database;
};

QTEST_MAIN(TestCourseMaintenance)
#include "test_course_maintenance.moc"
