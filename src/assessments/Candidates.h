#pragma once

#include "contacts/manager/PeopleStore.h"
#include "database/values/Keys.h"

/// The candidates of an assessment on a course, for the picker of people.
PeopleStore Candidates(CourseRef courseRef, ExamRef examRef);
