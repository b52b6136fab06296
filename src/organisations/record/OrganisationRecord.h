#pragma once

#include <QString>

/// The fields of one row of `Organisations`. References hold 1 where nothing was chosen.
struct OrganisationRecord {
    QString name;
    QString referenceId;
    QString addr1;
    QString addr2;
    QString addr3;
    QString addr4;
    int county = 1;
    QString postcode;
    int city = 1;
    int country = 1;
    QString telOut;
    QString telDay;
    QString fax;
    QString email;
    QString url;
    QString notes;
    bool board = false; ///< also an award board

    bool operator==(const OrganisationRecord &) const = default;
};
