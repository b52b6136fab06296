#pragma once

#include "database/values/Keys.h"

struct StudentRecord;

/// Brings the texts and the tax of an enrolment up to what is stored now, before a payment: what another
/// workstation changed since they were `shown` joins `left`, as the clerk leaves them, and where both changed
/// a field the user settles it. False on an error, and where the user went back to the form. Reads
/// `StudentsEnrolled`.
bool Course_MeetStudent(CourseRef courseRef, ContactRef contactRef, StudentRecord &shown,
                        StudentRecord &left);
