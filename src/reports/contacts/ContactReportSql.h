#pragma once

#include "reports/contacts/ReportChoices.h"

#include <QString>

#include <optional>

/// How the people in a table are ordered and grouped.
enum class ContactOrdering { None, Characteristic, GroupTypeThenGroup, GroupThenGroupType };

/// What a contact report was asked for.
struct ContactReport {
    ContactFlags flags{};
    bool staffOnly = false;    ///< people with a staff role
    bool selectedOnly = false; ///< people in table `Ref`
    int nameOpt = 0; ///< "Name2, Name1", "Name2, Name1 (Mr)", "Name1 Name2" or "Mr Name1 Name2", from 0
    ContactOrdering ordering = ContactOrdering::None;
};

/// The condition on who is in the report, "" for everybody. If nobody is selected, it is the condition for
/// the empty person 1, whom no report shows. Nullopt after a failure, which has been reported: a report
/// without its condition would show everybody. Reads `Ref`.
std::optional<QString> BuildWhereString(const ContactReport &report);
/// The same for staff: people with a role, from the selection or from all. Reads `Ref` and `ContactRoles`.
std::optional<QString> BuildStaffWhereString(const ContactReport &report);

/// "Selected Staff Details" and the like, followed by the ordering.
QString BuildTitleString(const ContactReport &report);

/// The statement of the people up to its condition: the columns of the ticked items and their joins, and
/// those of the ordering.
QString BuildLayoutSqlString(const ContactFlags &flags, ContactOrdering ordering = ContactOrdering::None);
/// What follows the condition.
QString OrderBy(ContactOrdering ordering);

/// The statement of the organisations up to its order.
QString BuildOrgSqlString(const OrgFlags &flags);
