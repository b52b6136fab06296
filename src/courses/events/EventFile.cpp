#include "courses/events/EventFile.h"

#include "courses/booking/BookingModule.h"
#include "courses/booking/BookingODBC.h"
#include "courses/booking/UsedResourcesODBC.h"
#include "courses/events/AttendanceODBC.h"
#include "courses/lists/CourseListODBC.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/statements/RecordLists.h"
#include "database/values/DecodeDateFunc.h"
#include "enrolment/EnrolmentODBC.h"

#include <vector>

namespace
{
const QString editEvent = QStringLiteral("Edit Event");
const QString venueWord = QStringLiteral("Venue");
const QString facilityWord = QStringLiteral("Facility");
const QString staffWord = QStringLiteral("Staff member");
const QString attendanceWord = QStringLiteral("Attendance");

using EventColumn = MergedColumn<CourseEvent>;

QString DayShown(const QString &value)
{
    return value == u"0" ? QString() : IntToDateText(value.toInt());
}

QString TimeShown(const QString &value)
{
    return IntToTimeText(value.toInt());
}

const std::vector<EventColumn> &EventColumns()
{
    static const std::vector<EventColumn> columns{
        {"Date", [](CourseEvent &event) -> int & { return event.hours.date; }, DayShown},
        {"Start Time", [](CourseEvent &event) -> int & { return event.hours.from; }, TimeShown},
        {"End Time", [](CourseEvent &event) -> int & { return event.hours.to; }, TimeShown},
        {"Description", &CourseEvent::description},
    };
    return columns;
}

bool ShowStudents(EventFile &file)
{
    const CourseEvent &event = file.event;
    ADO_Course_ShowEnrolledStudents(event.courseRef, file.students);
    return ADO_Course_ShowAttendedStudents(event.courseRef, event.eventRef, file.students);
}

bool ShowResources(EventFile &file)
{
    const CourseEvent &event = file.event;
    file.venues.Clear();
    file.facilities.Clear();
    return ADO_Course_FillList2(file.venuesAvailable, QStringLiteral("Description"),
                                QStringLiteral("VenueRef"), QStringLiteral("Venues")) &&
           ADO_Course_ShowUsedVenues(file.venuesAvailable, file.venues, event.courseRef, event.eventRef) &&
           ADO_Course_FillList2(file.facilitiesAvailable, QStringLiteral("Name"),
                                QStringLiteral("FacilityRef"), QStringLiteral("Facilities")) &&
           ADO_Course_ShowUsedFacilities(file.facilitiesAvailable, file.facilities, event.courseRef,
                                         event.eventRef);
}

bool ShowStaff(EventFile &file)
{
    file.staff.Clear();
    file.staffAvailable.Clear();
    return !file.role || (ADO_Course_FillStaffList(file.staffAvailable, file.role) &&
                          ADO_Course_ShowUsedStaff(file.staffAvailable, file.staff, file.event.courseRef,
                                                   file.role, file.event.eventRef));
}

bool ShowLists(EventFile &file)
{
    return ShowStudents(file) && ShowResources(file) && ShowStaff(file);
}

void FillAttended(ListModel &attended, const ListModel &students)
{
    std::vector<ListItem> people;
    for (const int row : students.CheckedRows())
        people.push_back({students.At(row).key, students.At(row).text});
    attended.Fill(std::move(people));
}

FieldValues ValuesOf(const EventFile &file)
{
    FieldValues values = ValuesOf(EventColumns(), file.event);
    ListModel attended;
    FillAttended(attended, file.students);
    AddRows(values, venueWord, file.venues, false);
    AddRows(values, facilityWord, file.facilities, false);
    AddRows(values, staffWord, file.staff, false);
    AddRows(values, attendanceWord, attended, false);
    return values;
}

/// Makes the ticks those of the list; whoever is not a row yet becomes one.
void TickAttended(ListModel &students, const ListModel &attended)
{
    for (int row = 0; row < students.Count(); ++row)
        students.SetChecked(row, attended.Contains(students.At(row).key));
    for (int row = 0; row < attended.Count(); ++row) {
        ListItem person = attended.At(row);
        if (students.Contains(person.key))
            continue;
        person.subItems = {QStringLiteral("Not Enrolled")};
        person.checked = true;
        students.Add(std::move(person));
    }
}

/// Puts the rows of a list that was read again in the place of those seen before.
void SeeRows(FieldValues &seen, const QString &word, const ListModel &list)
{
    if (seen.isEmpty())
        return;
    erase_if(seen, [&word](FieldValues::iterator field) { return field.key().startsWith(word); });
    AddRows(seen, word, list, false);
}

int WriteEvent(const CourseEvent &event)
{
    const bool isWritten =
        WipeEventRows(EventRows::Venues, event.eventRef, event.courseRef) &&
        WipeEventRows(EventRows::Attendance, event.eventRef, event.courseRef) &&
        WipeEventRows(EventRows::Facilities, event.eventRef, event.courseRef) &&
        ADO_Course_UpdateEvent(event.eventRef, event.eventNo, SqlSafeText(event.description), event.hours);
    return isWritten ? event.eventRef.number : -1;
}

/// Writes the event's row, merged with what is stored, and makes room for its lists. The event's key, 0 where
/// it is gone, -1 on an error and where the user went back to it.
int UpdateEvent(EventFile &file)
{
    EventFile stored;
    ListModel attended;
    ListModel attendedStored;
    FillAttended(attended, file.students);
    RecordLists lists;
    lists.Add(RecordLists::List{venueWord, file.venues, stored.venues, &file.venuesAvailable});
    lists.Add(RecordLists::List{facilityWord, file.facilities, stored.facilities, &file.facilitiesAvailable});
    lists.Add(RecordLists::List{staffWord, file.staff, stored.staff, &file.staffAvailable});
    lists.Add(RecordLists::List{attendanceWord, attended, attendedStored});
    MergedSave save = SaveOf(EventColumns(), lists, bookingStep, QStringLiteral("event"));
    save.read = [&] {
        const ReadRow<CourseEvent> event = ADO_Course_FindEvent(file.event.eventRef);
        stored.event = event ? *event : CourseEvent();
        stored.role = file.role;
        // Others note who attended in a step of its own, which, if it had to be waited for later, would store
        // this one half-way.
        if (!event || !InOneStep(attendanceStep, [&] { return ShowLists(stored); }))
            return FieldValues();
        FillAttended(attendedStored, stored.students);
        return ValuesOf(stored);
    };
    save.write = [&](const FieldValues &merged) {
        const ReadRow<CourseEvent> found = ADO_Course_FindEvent(file.event.eventRef);
        if (!found)
            return 0;
        // Its number changes whenever another workstation lists the events of the course.
        file.event.eventNo = found->eventNo;
        CourseEvent event = file.event;
        PutValues(EventColumns(), merged, event);
        return WriteEvent(event);
    };
    FieldValues values = ValuesOf(file);
    const int key = SaveMerged("Event_Save", save, file.seen, values);
    if (key > 0) {
        PutValues(EventColumns(), values, file.event);
        lists.Take(values);
        TickAttended(file.students, attended);
    }
    return key;
}

/// Books the rows of a list on the event and adds those that clash to `clashes`.
template <typename Book>
void BookAll(const EventFile &file, const ListModel &list, BookingClash::Of what, Book &&book,
             std::vector<BookingClash> &clashes)
{
    EventHours hours = file.event.hours;
    for (int row = 0; row < list.Count(); ++row) {
        CourseRef course = file.event.courseRef;
        const QString holder = book(course, KeyNumber(list.At(row).key), hours);
        if (!holder.isEmpty())
            clashes.push_back({what, list.At(row).text, holder});
    }
}

bool StoreLists(const EventFile &file, std::vector<BookingClash> &clashes)
{
    const EventRef eventRef = file.event.eventRef;
    const auto bookAs = [eventRef](ResourceKind kind) {
        return [eventRef, kind](CourseRef &course, int item, EventHours &hours) {
            return BookEventResource(kind, course, eventRef, item, hours);
        };
    };
    BookAll(file, file.venues, BookingClash::Of::Venue, bookAs(ResourceKind::Venue), clashes);
    BookAll(file, file.facilities, BookingClash::Of::Facility, bookAs(ResourceKind::Facility), clashes);
    if (file.role) {
        if (!ADO_Course_WipeStaff(eventRef, file.event.courseRef, file.role))
            return false;
        const auto bookStaff = [&](CourseRef &course, int contact, EventHours &hours) {
            return ADO_Course_StaffBooking(course, eventRef, contact, file.role, hours);
        };
        BookAll(file, file.staff, BookingClash::Of::Staff, bookStaff, clashes);
    }
    for (const int row : file.students.CheckedRows()) {
        if (!ADO_Course_StudentAttended(file.event.courseRef, eventRef,
                                        ContactRef(KeyNumber(file.students.At(row).key))))
            return false;
    }
    return true;
}

/// A post that nobody fills yet names nobody who could be deleted.
bool LeaveOutDeletedStaff(ListModel &staff)
{
    constexpr int nobody = 1; // the row of Contacts that is always there
    return LeaveOutDeleted(
        staff, QStringLiteral("Contacts"), QStringLiteral("ContactRef"), editEvent,
        [](const ListItem &row) { return row.key.startsWith(u'-') ? nobody : KeyNumber(row.key); },
        [](const ListItem &row) { return row.text; });
}

/// Everybody is employed in the one role on the screen, which may be gone.
bool LeaveOutStaffOfDeletedRole(EventFile &file)
{
    return LeaveOutDeleted(
        file.staff, QStringLiteral("RoleTypes"), QStringLiteral("RoleTypeRef"), editEvent,
        [&file](const ListItem &) { return file.role.number; }, [](const ListItem &row) { return row.text; });
}
} // namespace

EventRead Event_Show(EventFile &file, CourseRef courseRef, int eventNo, RoleTypeRef firstRole)
{
    file.seen.clear();
    const ReadRow<CourseEvent> event = ADO_Course_ShowEvent(courseRef, eventNo);
    if (!event)
        return event.IsMissing() ? EventRead::Gone : EventRead::Failed;
    file.event = *event;
    const RoleTypeRef role = ADO_Course_RoleOnEvent(courseRef, event->eventRef);
    file.role = role ? role : firstRole;
    if (!ShowLists(file))
        return EventRead::Failed;
    file.seen = ValuesOf(file);
    return EventRead::Found;
}

bool Event_ShowRole(EventFile &file, RoleTypeRef role)
{
    file.role = role;
    if (!ShowStaff(file))
        return false;
    SeeRows(file.seen, staffWord, file.staff);
    return true;
}

bool Event_ShowStudents(EventFile &file)
{
    if (!ShowStudents(file))
        return false;
    ListModel attended;
    FillAttended(attended, file.students);
    SeeRows(file.seen, attendanceWord, attended);
    return true;
}

RecordSaved Event_Save(EventFile &file)
{
    if (!LeaveOutDeleted(file.venues, QStringLiteral("Venues"), QStringLiteral("VenueRef"), editEvent) ||
        !LeaveOutDeleted(file.facilities, QStringLiteral("Facilities"), QStringLiteral("FacilityRef"),
                         editEvent) ||
        !LeaveOutDeletedStaff(file.staff) || !LeaveOutStaffOfDeletedRole(file) ||
        !LeaveOutDeleted(file.students, QStringLiteral("Contacts"), QStringLiteral("ContactRef"), editEvent))
        return {-1, false};
    std::vector<BookingClash> clashes;
    const RecordSaved saved = SaveWhole(
        "Event_Save", Progress(), [&] { return UpdateEvent(file); },
        [&](int) { return StoreLists(file, clashes); });
    for (const BookingClash &clash : clashes)
        TellClash(clash);
    return saved;
}
