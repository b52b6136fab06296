#pragma once

#include "contacts/manager/PeopleStore.h"
#include "database/values/Keys.h"

/// What the picker of people fills on a course.
namespace CoursePeople
{
/// The students of a course; `limit` is the most that it takes, 0 = no limit. Those who have paid are removed
/// only after a question.
PeopleStore Students(CourseRef courseRef, int limit);
} // namespace CoursePeople
