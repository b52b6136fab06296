#pragma once

class ListModel;
class Progress;

/// Data functions of table `AttendanceRecord`: one row for each person who was at an event; its column
/// `EventNo` holds the event's EventRef.

/// Makes those who attended an event the people of a list ("?" keys), enrolled on the course or not. An empty
/// list removes them all. An error or a cancel stops at that person, with the earlier ones stored; false
/// then.
bool ADO_Course_Attended(int courseRef, int eventRef, const ListModel &selected, Progress &progress);
