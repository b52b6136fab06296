#pragma once

#include <QString>

#include <array>
#include <vector>

/// The fields that people are searched by, in the order in which the statement has them.
enum class SearchField {
    Title,
    Forename,
    Surname,
    Gender,
    Age,
    Address,
    Town,
    County,
    Country,
    Postcode,
    EthnicOrigin,
    OrgAddress,
    OrgTown,
    OrgCounty,
    OrgCountry,
    OrgPostcode,
};
constexpr size_t searchFieldCount = 16;

/// What one field asks for. A list asks by key and takes part while something with a text is chosen, a text
/// field while it is not empty.
struct SearchCriterion {
    QString text;
    int key = -1;       ///< item data of the list; -1 where nothing is chosen
    bool isNot = false; ///< "<>" instead of "="
};

/// A node of the characteristics or attributes that people must have, or must not have.
struct SearchTick {
    int key;
    QString text;
    bool isNot;
};

struct ContactSearchCriteria {
    std::array<SearchCriterion, searchFieldCount> fields; ///< by SearchField; the age has its lower end here
    QString ageTo;
    bool any = false; ///< OR instead of AND
    std::vector<SearchTick> characteristics;
    std::vector<SearchTick> attributes;

    SearchCriterion &Of(SearchField field) { return fields[static_cast<size_t>(field)]; }
    const SearchCriterion &Of(SearchField field) const { return fields[static_cast<size_t>(field)]; }
};

/// The keys that somebody must have all or any of, as a condition.
struct SearchTickList {
    int count = 0;
    QString condition; ///< "ConcessionRef = 3 OR ConcessionRef = 5 "
};

/// A search as the database and the row loop take it.
struct ContactSearchQuery {
    QString sql;
    QString description; ///< what is searched for, a line each, for the summary
    SearchTickList characteristics;
    SearchTickList notCharacteristics;
    SearchTickList attributes;
    SearchTickList notAttributes;
};

/// The first field that is typed into and holds an apostrophe, with its text (`Surname "O'Neil"`); "" if none
/// does. What a list shows does not count, since its key goes into the statement.
QString TypedApostrophe(const ContactSearchCriteria &criteria);
/// Texts go into the statement as typed, so that TypedApostrophe must be asked before it runs. `today` is
/// a date-int.
ContactSearchQuery ContactSearch_Build(const ContactSearchCriteria &criteria, int today);
