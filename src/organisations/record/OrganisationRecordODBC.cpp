#include "organisations/record/OrganisationRecordODBC.h"

#include "contacts/lists/ContactListODBC.h"
#include "controls/ListModel.h"
#include "courses/lists/CourseListODBC.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/Sentinel.h"
#include "database/values/GlobalCode.h"
#include "organisations/lists/OrganisationLinkODBC.h"

namespace
{
QString InsertOrganisation(const OrganisationRecord &r)
{
    return u"INSERT INTO Organisations (OrganName, ReferenceID, Addr1,Addr2,Addr3,Addr4 ,City,Country, "
           u"TelDay, TelOut, Fax, Email, URL, Postcode,County,Notes,Board) VALUES ('" %
           r.name % u"','" % r.referenceId % u"','" % r.addr1 % u"','" % r.addr2 % u"','" % r.addr3 % u"','" %
           r.addr4 % u"'," % SqlNumber(r.city) % u',' % SqlNumber(r.country) % u",'" % r.telDay % u"','" %
           r.telOut % u"','" % r.fax % u"','" % r.email % u"','" % r.url % u"','" % r.postcode % u"'," %
           SqlNumber(r.county) % u",'" % r.notes % u"'," % SqlNumber(r.board ? 1 : 0) % u')';
}

QString UpdateOrganisation(OrganRef organRef, const OrganisationRecord &r)
{
    return u"UPDATE Organisations SET OrganName = '" % r.name % u"', ReferenceID = '" % r.referenceId %
           u"', Addr1 = '" % r.addr1 % u"', Addr2 = '" % r.addr2 % u"', Addr3 = '" % r.addr3 %
           u"', Addr4 = '" % r.addr4 % u"', City = " % SqlNumber(r.city) % u", Country = " %
           SqlNumber(r.country) % u", TelDay = '" % r.telDay % u"', Telout = '" % r.telOut % u"', Fax = '" %
           r.fax % u"', Email = '" % r.email % u"', URL = '" % r.url % u"', Postcode = '" % r.postcode %
           u"', County = " % SqlNumber(r.county) % u", Notes = '" % r.notes % u"', Board = " %
           SqlNumber(r.board ? 1 : 0) % u" WHERE OrganRef = " % SqlNumber(organRef);
}

OrganisationRecord ReadOrganisation(const Recordset::Row &row)
{
    const auto reference = [&row](QStringView column) {
        return row.IsNull(column) ? -1 : static_cast<int>(row.Long(column));
    };
    OrganisationRecord record;
    record.name = row.Text(u"OrganName");
    record.referenceId = row.Text(u"ReferenceID");
    record.addr1 = row.Text(u"Addr1");
    record.addr2 = row.Text(u"Addr2");
    record.addr3 = row.Text(u"Addr3");
    record.addr4 = row.Text(u"Addr4");
    record.county = reference(u"County");
    record.postcode = row.Text(u"Postcode");
    record.city = reference(u"City");
    record.country = reference(u"Country");
    record.telOut = row.Text(u"TelOut");
    record.telDay = row.Text(u"TelDay");
    record.fax = row.Text(u"Fax");
    record.email = row.Text(u"Email");
    record.url = row.Text(u"URL");
    record.notes = row.Text(u"Notes");
    record.board = row.Long(u"Board") == 1;
    return record;
}

bool FillCharacteristics(ListModel &available)
{
    return ADO_Contact_FillList2(available, QStringLiteral("Name"), QStringLiteral("ConcessionRef"),
                                 QStringLiteral("Concessions"));
}

bool FillFacilities(ListModel &available)
{
    return ADO_Course_FillList2(available, QStringLiteral("Name"), QStringLiteral("FacilityRef"),
                                QStringLiteral("Facilities"));
}

bool FillVenues(ListModel &available)
{
    return ADO_Course_FillList2(available, QStringLiteral("Description"), QStringLiteral("VenueRef"),
                                QStringLiteral("Venues"));
}

Recordset OpenOrganisation(OrganRef organRef)
{
    return OpenRecordset(u"SELECT * FROM Organisations WHERE OrganRef = " % SqlNumber(organRef));
}

/// What a save of the organisation writes again. False where the lists are not whole.
bool ShowLists(OrganRef organRef, const OrganisationLists &lists)
{
    return ShowCharacteristics(lists.availCriteria, lists.usedCriteria,
                               u"SELECT ConcessionRef FROM OrganChars WHERE OrganRef = " %
                                   SqlNumber(organRef)) &&
           ADO_Organisation_ShowContacts(organRef, lists.contacts) && FillFacilities(lists.availFac) &&
           ADO_Organisation_ShowFacilities(lists.availFac, lists.usedFac, organRef) &&
           FillVenues(lists.availVenues) &&
           ADO_Organisation_ShowVenues(lists.availVenues, lists.usedVenues, organRef);
}
} // namespace

int ADO_Organisation_AddOrganisation(const OrganisationRecord &record)
{
    return AddRow("ADO_Organisation_AddOrganisation",
                  u"SELECT OrganRef FROM Organisations WHERE OrganName = '" % record.name %
                      u"' AND ReferenceID = '" % record.referenceId % u"'",
                  InsertOrganisation(record),
                  u"SELECT OrganRef FROM Organisations WHERE OrganName = '" % record.name %
                      u"' AND Addr1 = '" % record.addr1 % u"'",
                  u"OrganRef");
}

int ADO_Organisation_UpdateOrganisation(OrganRef organRef, const OrganisationRecord &record)
{
    if (IsSentinel(organRef))
        return -1;
    return UpdateRow("ADO_Organisation_UpdateOrganisation",
                     u"SELECT OrganRef FROM Organisations WHERE OrganName = '" % record.name %
                         u"' AND ReferenceID ='" % record.referenceId % u"' AND OrganRef <> " %
                         SqlNumber(organRef),
                     UpdateOrganisation(organRef, record), organRef.number);
}

std::optional<bool> ADO_Organisation_CheckOrganisation(OrganRef organRef)
{
    return Reported("ADO_Organisation_CheckOrganisation", std::optional<bool>(), [&] {
        return HasRow(u"SELECT OrganRef FROM Organisations WHERE OrganRef = " % SqlNumber(organRef));
    });
}

ReadRow<OrganisationFile> ADO_Organisation_ShowOrganisation(OrganRef organRef, const OrganisationLists &lists)
{
    return Reported("ADO_Organisation_ShowOrganisation", ReadRow<OrganisationFile>::Failed(), [&] {
        const Recordset organisation = OpenOrganisation(organRef);
        if (organisation.IsEmpty())
            return ReadRow<OrganisationFile>::Missing();
        OrganisationFile file{ReadOrganisation(organisation.First())};
        file.isWhole = ShowLists(organRef, lists);
        return ReadRow<OrganisationFile>(file);
    });
}

bool ReadStoredOrganisation(OrganRef organRef, StoredOrganisation &stored)
{
    const Recordset organisation = OpenOrganisation(organRef);
    if (organisation.IsEmpty())
        return false;
    stored.record = ReadOrganisation(organisation.First());
    // Lists that are not whole would look like rows that somebody removed.
    if (!ShowLists(organRef, stored.Lists()))
        throw StatementGivenUp{};
    return true;
}

bool ADO_Organisation_ShowAvailable(const OrganisationLists &lists)
{
    for (ListModel *list : {&lists.usedCriteria, &lists.contacts, &lists.usedFac, &lists.usedVenues})
        list->Clear();
    return FillCharacteristics(lists.availCriteria) && FillFacilities(lists.availFac) &&
           FillVenues(lists.availVenues);
}

bool ADO_Organisation_Delete(OrganRef organRef)
{
    if (IsSentinel(organRef))
        return false;
    return RunWithKey("ADO_Organisation_Delete",
                      {u"UPDATE Contacts SET OrganRef = 1 WHERE OrganRef = ",
                       u"UPDATE Venues SET OrganRef = 1 WHERE OrganRef = ",
                       u"UPDATE Facilities SET OrganRef = 1 WHERE OrganRef = ",
                       u"UPDATE Exam SET OrganRef = 1 WHERE OrganRef = ",
                       u"DELETE FROM Organisations WHERE OrganRef = "},
                      organRef.number);
}
