#pragma once

#include <array>

class ListModel;

/// What a contact report can contain, with the numbers under which the ticks are kept in the settings file.
namespace ContactItem
{
enum Flag {
    Gender = 0,
    DateOfBirth = 1,
    Address = 2,
    City = 3,
    County = 4,
    Postcode = 5,
    Country = 6,
    Telephone = 7,
    Organisation = 8,
    Ethnic = 9,
    Emergency = 10,
    Notes = 11,
    Characteristics = 12,
    CoursesAttended = 13,
    Groups = 14,
    CoursesStaffed = 15,
    References = 16,
    Fax = 17,
    Email = 18,
    Website = 19,
    Position = 20,
    OrgAddress = 21,
    OrgCity = 22,
    OrgCounty = 23,
    OrgPostcode = 24,
    OrgCountry = 25,
    OrgTelephone = 26,
    OrgFax = 27,
    OrgEmail = 28,
    OrgWebsite = 29,
    OrgTelOut = 30,
    OrgNotes = 31,
    OrgReference = 32
};
} // namespace ContactItem

/// The same for a report on organisations.
namespace OrgItem
{
enum Flag {
    Address = 0,
    City = 1,
    County = 2,
    Postcode = 3,
    Country = 4,
    Telephone = 5,
    Fax = 6,
    Email = 7,
    Website = 8,
    Contacts = 9,
    TelOut = 10,
    Reference = 11
};
} // namespace OrgItem

/// 1 = ticked, by the numbers above.
using ContactFlags = std::array<int, 34>;
using OrgFlags = std::array<int, 13>;

/// Fills the list of what a contact report can contain, ticked according to gContactData.
void FillChoiceList(ListModel &basic);
/// The flags of the ticks, which are also stored in gContactData.
ContactFlags SetUpChoiceParameters(const ListModel &basic);
/// The same two for organisations and gOrgData.
void FillOrgChoiceList(ListModel &orgDetails);
OrgFlags SetUpOrgParameters(const ListModel &orgDetails);
