#pragma once

#include "contacts/manager/PeopleStore.h"
#include "database/values/Keys.h"

/// What the picker of people fills on an event.
namespace EventPeople
{
/// Those who attended an event.
PeopleStore Attendees(CourseRef courseRef, EventRef eventRef);
} // namespace EventPeople
