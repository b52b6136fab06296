#include "reports/contacts/ReportChoices.h"

#include "controls/ListModel.h"
#include "core/session/Session.h"

#include <algorithm>

namespace
{
struct Line {
    const char *text;
    int flag;
};

constexpr Line contactLines[] = {
    {"Reference IDs", ContactItem::References},
    {"Gender", ContactItem::Gender},
    {"Date of Birth", ContactItem::DateOfBirth},
    {"Personal Data:  Address", ContactItem::Address},
    {"Personal Data:  City", ContactItem::City},
    {"Personal Data:  State/County", ContactItem::County},
    {"Personal Data:  Zip/Postcode", ContactItem::Postcode},
    {"Personal Data:  Country", ContactItem::Country},
    {"Personal Data:  Telephone Number", ContactItem::Telephone},
    {"Personal Data:  Fax Number", ContactItem::Fax},
    {"Personal Data:  Email Address", ContactItem::Email},
    {"Personal Data:  Website URL", ContactItem::Website},
    {"Personal Data:  Ethnic Type", ContactItem::Ethnic},
    {"Personal Data:  Emergency Contact", ContactItem::Emergency},
    {"Personal Data:  Notes", ContactItem::Notes},
    {"Personal Data:  Characteristics", ContactItem::Characteristics},
    {"Personal Data:  Groups", ContactItem::Groups},
    {"Personal Data:  Courses Attended", ContactItem::CoursesAttended},
    {"Personal Data:  Courses Taught or Contributed to", ContactItem::CoursesStaffed},
    {"Status, Position or Job Title", ContactItem::Position},
    {"Organisation Name", ContactItem::Organisation},
    {"Organisation:  Reference ID", ContactItem::OrgReference},
    {"Organisation:  Address", ContactItem::OrgAddress},
    {"Organisation:  City", ContactItem::OrgCity},
    {"Organisation:  State/County", ContactItem::OrgCounty},
    {"Organisation:  Zip/Postcode", ContactItem::OrgPostcode},
    {"Organisation:  Country", ContactItem::OrgCountry},
    {"Organisation:  Telephone Number", ContactItem::OrgTelephone},
    {"Organisation:  Out-of-hours Telephone Number", ContactItem::OrgTelOut},
    {"Organisation:  Fax Number", ContactItem::OrgFax},
    {"Organisation:  Email Address", ContactItem::OrgEmail},
    {"Organisation:  Website URL", ContactItem::OrgWebsite},
    {"Organisation:  Notes", ContactItem::OrgNotes},
};

constexpr Line orgLines[] = {
    {"Reference ID", OrgItem::Reference},
    {"Address", OrgItem::Address},
    {"City", OrgItem::City},
    {"State/County", OrgItem::County},
    {"Zip/Postcode", OrgItem::Postcode},
    {"Country", OrgItem::Country},
    {"Telephone Number", OrgItem::Telephone},
    {"Out-of-hours Telephone Number", OrgItem::TelOut},
    {"Fax Number", OrgItem::Fax},
    {"Email Address", OrgItem::Email},
    {"Website URL", OrgItem::Website},
    {"Contacts associated with this organisation", OrgItem::Contacts},
};

template <size_t lineCount, size_t kept>
void FillLines(const Line (&lines)[lineCount], const std::array<int, kept> &ticks, ListModel &list)
{
    list.SetCheckable(true);
    std::vector<ListItem> items;
    for (const Line &line : lines) {
        ListItem item{u'?' % QString::number(line.flag), QString::fromLatin1(line.text)};
        item.checked = ticks[static_cast<size_t>(line.flag)] != 0;
        items.push_back(std::move(item));
    }
    list.Fill(std::move(items));
    list.SelectFirst();
}

template <typename Flags, size_t kept>
Flags ReadLines(const ListModel &list, std::array<int, kept> &ticks)
{
    Flags flags{};
    for (const int row : list.CheckedRows())
        flags[static_cast<size_t>(KeyNumber(list.At(row).key))] = 1;
    std::copy_n(flags.begin(), kept, ticks.begin());
    return flags;
}
} // namespace

void FillChoiceList(ListModel &basic)
{
    FillLines(contactLines, gContactData, basic);
}

ContactFlags SetUpChoiceParameters(const ListModel &basic)
{
    return ReadLines<ContactFlags>(basic, gContactData);
}

void FillOrgChoiceList(ListModel &orgDetails)
{
    FillLines(orgLines, gOrgData, orgDetails);
}

OrgFlags SetUpOrgParameters(const ListModel &orgDetails)
{
    return ReadLines<OrgFlags>(orgDetails, gOrgData);
}
