#pragma once

#include "database/values/GlobalCode.h"

#include <QHashFunctions>

#include <compare>

/// The key of a row. Each table has a type of its own, so that a person cannot be taken for a course.
template <typename Table>
struct RowKey {
    int number = 0; ///< as it is stored; 0 = no row

    constexpr RowKey() = default;
    constexpr explicit RowKey(int stored)
        : number(stored)
    {
    }
    constexpr explicit operator bool() const { return number > 0; }
    // NOLINTNEXTLINE(modernize-use-nullptr): what it returns is compared with a zero by the compiler.
    friend constexpr auto operator<=>(const RowKey &, const RowKey &) = default;
};

template <typename Table>
size_t qHash(RowKey<Table> key, size_t seed = 0)
{
    return qHash(key.number, seed);
}

template <typename Table>
QString SqlNumber(RowKey<Table> key)
{
    return SqlNumber(key.number);
}

using ContactRef = RowKey<struct ContactsTable>;
using OrganRef = RowKey<struct OrganisationsTable>;
using ConcessionRef = RowKey<struct ConcessionsTable>;
using GroupRef = RowKey<struct GroupNamesTable>;
using LinkRef = RowKey<struct LinkNamesTable>; ///< a type of groups
using RoleTypeRef = RowKey<struct RoleTypesTable>;
using AttributeRef = RowKey<struct CustomAttributesTable>;
using AttributeValueRef = RowKey<struct CustomAttributeValuesTable>;
using CourseRef = RowKey<struct CoursesTable>;
using FolderRef = RowKey<struct CoursesHierarchyTable>;
using EventRef = RowKey<struct CourseEventsTable>;
using ExamRef = RowKey<struct ExamTable>;
using VenueRef = RowKey<struct VenuesTable>;
using FacilityRef = RowKey<struct FacilitiesTable>;
using CreditCardRef = RowKey<struct CreditCardTransactionTable>;
