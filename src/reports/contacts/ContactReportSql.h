#pragma once

#include "reports/contacts/ReportChoices.h"

#include <QString>

#include <optional>

/// In which order, and under which group, the people of a table stand.
enum class ContactOrdering { None, Characteristic, GroupTypeThenGroup, GroupThenGroupType };

/// What a contact report was asked for.
struct ContactReport {
    ContactFlags flags{};
    bool staffOnly = false;    ///< people with a staff role
    bool selectedOnly = false; ///< people in table `Ref`
    int nameOpt = 0; ///< "Name2, Name1", "Name2, Name1 (Mr)", "Name1 Name2" or "Mr Name1 Name2", from 0
    ContactOrdering ordering = ContactOrdering::None;
};

/// The condition on who is in the report, "" for everybody. Nobody selected gives the condition of the empty
/// person 1, whom no report shows. Nothing after a failure, which has been reported: a report without its
/// condition would tell of everybody. Reads `Ref`.
std::optional<QString> BuildWhereString(const ContactReport &report);
/// The same for staff: those with a role, of the selection or of all. Reads `Ref` and `ContactRoles`.
std::optional<QString> BuildStaffWhereString(const ContactReport &report);

/// "Selected Staff Details" and the like, with the ordering behind it.
QString BuildTitleString(const ContactReport &report);

/// The statement of the people up to its condition: the columns of the ticked items and their joins, and
/// those of the ordering.
QString BuildLayoutSqlString(const ContactFlags &flags, ContactOrdering ordering = ContactOrdering::None);
/// What stands behind the condition.
QString OrderBy(ContactOrdering ordering);

/// The statement of the organisations up to its order.
QString BuildOrgSqlString(const OrgFlags &flags);
