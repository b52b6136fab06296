#pragma once

#include <QString>

#include <array>

/// The fields of one row of `Contacts`. References hold 1 where nothing was chosen.
struct ContactRecord {
    int designation = 1;
    QString forename;
    QString surname;
    QString addr1;
    QString addr2;
    QString addr3;
    QString addr4;
    int dob = 0; ///< date-int; 0 = unknown
    int county = 1;
    QString postcode;
    int city = 1;
    int country = 1;
    QString telEve;
    QString telDay;
    QString telExt;
    QString fax;
    QString email;
    QString url;
    int ethnicGroup = 1;
    int sex = 0; ///< 0 = not specified, 1 = female, 2 = male
    QString notes;
    int organRef = 1;
    int contactContactRef = 1; ///< the emergency contact
    QString jobTitle;
    QString referenceId;
    std::array<QString, 4> altRef;

    bool operator==(const ContactRecord &) const = default;
};
