#pragma once

#include "contacts/manager/ContactSearchQuery.h"

#include <functional>

class ListModel;
class TreeModel;

/// The nodes of a criterion tree that people must have or must not have, in the order shown.
std::vector<SearchTick> SearchTicksOf(const TreeModel &tree);

/// Searches people: the database decides on the fields, then each row is looked up for characteristics and
/// attributes. `found` is emptied and takes the people found: key "?" + reference, "surname, forename", then
/// address, town and postcode. `showLooked` is told how many people were looked at, several times a second,
/// after `found` was brought up to date. The search ends early once gStop is set, and what was found till
/// then counts. The summary is shown to the user and returned; "Search Error!" after an error. Reads
/// `Contacts`, `Organisations`, `City`, `ContactConcession` and `AppliedAttributes`.
QString ADO_Contact_Search(const ContactSearchCriteria &criteria, ListModel &found,
                           const std::function<void(int looked)> &showLooked);
