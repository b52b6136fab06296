#pragma once

#include "contacts/manager/PeopleStore.h"

/// The candidates of an assessment on a course, for the picker of people.
PeopleStore Candidates(int courseRef, int examRef);
