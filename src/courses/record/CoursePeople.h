#pragma once

#include "contacts/manager/PeopleStore.h"

/// What the picker of people fills on a course.
namespace CoursePeople
{
/// The students of a course; `limit` is the most that it takes, 0 = no limit. Those who have paid are removed
/// only after a question.
PeopleStore Students(int courseRef, int limit);
/// Those who attended an event.
PeopleStore Attendees(int courseRef, int eventRef);
} // namespace CoursePeople
