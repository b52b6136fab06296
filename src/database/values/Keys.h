#pragma once

#include "database/values/GlobalCode.h"

#include <QHashFunctions>

#include <compare>

/// The key of a row. Each table has a type of its own, so that a person cannot be taken for a course.
template <typename Table>
struct Key {
    int number = 0; ///< as it is stored; 0 = no row

    constexpr Key() = default;
    constexpr explicit Key(int stored)
        : number(stored)
    {
    }
    constexpr explicit operator bool() const { return number != 0; }
    friend constexpr auto operator<=>(const Key &, const Key &) = default;
};

template <typename Table>
size_t qHash(Key<Table> key, size_t seed = 0)
{
    return qHash(key.number, seed);
}

template <typename Table>
QString SqlNumber(Key<Table> key)
{
    return SqlNumber(key.number);
}

using ContactRef = Key<struct ContactsTable>;
using CourseRef = Key<struct CoursesTable>;
using OrganRef = Key<struct OrganisationTable>;
using EventRef = Key<struct EventsTable>;
using GroupRef = Key<struct GroupsTable>;
using LinkRef = Key<struct LinksTable>;
using ConcessionRef = Key<struct ConcessionsTable>;
