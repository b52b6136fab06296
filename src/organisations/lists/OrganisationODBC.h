#pragma once

#include "database/statements/ReadRow.h"
#include "database/values/Keys.h"

#include <QString>

/// Data functions of organisations and of what hangs on them; tables `Organisations` and `OrganChars`.

/// What a person's record shows of the organisation.
struct ContactOrganisation {
    QString addr1;
    QString addr2;
    QString addr3;
    QString addr4;
    QString postcode;
    QString telOut;
    QString telDay;
    QString fax;
    QString email;
    QString url;
    QString city;
    QString county;
    QString country;
};

/// Reads the address of an organisation, for showing it beside a person.
ReadRow<ContactOrganisation> ADO_Organisation_ShowContactOrganisation(OrganRef organRef);
/// True if the organisation has a characteristic that the person lacks; false on an error.
bool ADO_Organisation_CheckCharswithContact(OrganRef organRef, ContactRef contactRef);
/// Gives the person all characteristics of the organisation; others that the person has stay. Writes
/// `ContactConcession`. False on an error.
bool ADO_Organisation_AddSingleContactConcession(OrganRef organRef, ContactRef contactRef);
/// Takes all characteristics from an organisation. False on an error.
bool ADO_Organisation_ConcessionWipe(OrganRef organRef);
/// Gives an organisation a characteristic that it does not have yet. False on an error.
bool ADO_Organisation_AddConcession(OrganRef organRef, ConcessionRef concessionRef);
