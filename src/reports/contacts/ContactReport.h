#pragma once

#include "platform/connection/Recordset.h"
#include "reports/contacts/ContactReportSql.h"
#include "reports/contacts/ReportFields.h"
#include "reports/writer/ReportRun.h"

/// Writes the people one item per line: a heading and a table of labels and values for each. `held` counts
/// people. The empty person 1 is never written.
ReportResult Contact_Rep_HTML(const ContactReport &report, Progress &progress);
/// Writes the people as one table, with a column for each item. With an ordering a person appears under each
/// of their characteristics or groups, but is counted once.
ReportResult Contact_Rep_Tabular_HTML(const ContactReport &report, Progress &progress);

/// The fields that a report asks for about each person in `people`.
struct ContactFields {
    ContactFields(const ContactReport &asked, const Recordset &people);
    bool Has(ContactItem::Flag flag) const { return report.flags[static_cast<size_t>(flag)] != 0; }

    const ContactReport &report;
    std::vector<ReportField> personal;
    std::vector<ReportField> work;
};
/// A person's name in the form that the report asks for.
QString ContactName(int nameOpt, const Recordset::Row &row);
/// The people of a report in its order; nullopt after a failure, which has been reported. Only inside
/// Reported.
std::optional<Recordset> OpenContacts(const ContactReport &report);
