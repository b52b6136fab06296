#pragma once

#include "contacts/manager/ContactSearchQuery.h"

class ListModel;
class TreeModel;

/// What ADO_Contact_Search asks of the search screen.
class ContactSearchView
{
public:
    virtual ~ContactSearchView() = default;
    virtual ContactSearchCriteria Criteria() const = 0;
    /// Takes the people found: key "?" + reference, "surname, forename", then address, town and postcode.
    virtual ListModel &ContactInfo() = 0;
    /// So many people were looked at. It comes several times a second while the search runs, with the list
    /// brought up to date before it.
    virtual void ShowLooked(int looked) = 0;
};

/// The nodes of a criterion tree that people must have or must not have, in the order shown.
std::vector<SearchTick> SearchTicksOf(const TreeModel &tree);

/// Searches people by what the form asks for: the database decides on the fields, then each row is looked
/// up for characteristics and attributes. It ends early once gStop is set, and what was found till then
/// counts. The summary is shown to the user and returned; "Search Error!" after an error. Reads `Contacts`,
/// `Organisations`, `City`, `ContactConcession` and `AppliedAttributes`.
QString ADO_Contact_Search(ContactSearchView &form);
