#include "contacts/record/ContactRecordODBC.h"

#include "attributes/CustomAttribODBC.h"
#include "contacts/groups/GroupODBC.h"
#include "contacts/lists/ContactListODBC.h"
#include "contacts/roles/RoleODBC.h"
#include "controls/ListModel.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/Sentinel.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"

namespace
{
QString SamePerson(const ContactRecord &record)
{
    return u"SELECT ContactRef FROM Contacts WHERE Cust_Forename = '" % record.forename %
           u"' AND Cust_Surname = '" % record.surname % u"' AND Cust_Addr1 = '" % record.addr1 %
           u"' AND ReferenceID = '" % record.referenceId % u"'";
}

QString InsertContact(const ContactRecord &r)
{
    return u"INSERT INTO Contacts (Cust_Forename, Cust_Surname, Cust_Addr1,Cust_Addr2,Cust_Addr3,Cust_Addr4 "
           u", "
           u"Cust_City,Cust_Country, Cust_TelDay, Cust_TelEve, Cust_TelExt, Cust_Fax, Cust_Email, Cust_URL, "
           u"Cust_Designation , Cust_Postcode,Cust_County,Cust_Ethnicgroup, Cust_DOB, Cust_Sex, Cust_Notes, "
           u"OrganRef,ContactContactRef, JobTitle, ReferenceID, AltRef1, AltRef2, AltRef3, AltRef4) VALUES "
           u"('" %
           r.forename % u"','" % r.surname % u"','" % r.addr1 % u"','" % r.addr2 % u"','" % r.addr3 % u"','" %
           r.addr4 % u"'," % SqlNumber(r.city) % u',' % SqlNumber(r.country) % u",'" % r.telDay % u"','" %
           r.telEve % u"','" % r.telExt % u"','" % r.fax % u"','" % r.email % u"','" % r.url % u"'," %
           SqlNumber(r.designation) % u",'" % r.postcode % u"'," % SqlNumber(r.county) % u',' %
           SqlNumber(r.ethnicGroup) % u',' % SqlNumber(r.dob) % u',' % SqlNumber(r.sex) % u",'" % r.notes %
           u"'," % SqlNumber(r.organRef) % u',' % SqlNumber(r.contactContactRef) % u",'" % r.jobTitle %
           u"','" % r.referenceId % u"','" % r.altRef[0] % u"','" % r.altRef[1] % u"','" % r.altRef[2] %
           u"','" % r.altRef[3] % u"')";
}

/// An unknown date of birth stays as it is stored, NULL or 0: nobody can have changed it to that.
QString DobToKeep(int dob)
{
    return dob == 0 ? QStringLiteral("Cust_DOB") : SqlNumber(dob);
}

QString UpdateContact(ContactRef contactRef, const ContactRecord &r)
{
    return u"UPDATE Contacts SET Cust_Sex = " % SqlNumber(r.sex) % u", Cust_Forename = '" % r.forename %
           u"', Cust_Surname = '" % r.surname % u"', Cust_Addr1 = '" % r.addr1 % u"', Cust_Addr2 = '" %
           r.addr2 % u"', Cust_Addr3 = '" % r.addr3 % u"', Cust_Addr4 = '" % r.addr4 % u"', Cust_City = " %
           SqlNumber(r.city) % u", Cust_Country = " % SqlNumber(r.country) % u", Cust_TelDay = '" % r.telDay %
           u"', Cust_TelEve = '" % r.telEve % u"', Cust_TelExt = '" % r.telExt % u"', Cust_Fax = '" % r.fax %
           u"', Cust_Email = '" % r.email % u"', Cust_URL = '" % r.url % u"', Cust_Designation = " %
           SqlNumber(r.designation) % u", Cust_Postcode = '" % r.postcode % u"', Cust_County = " %
           SqlNumber(r.county) % u", Cust_Ethnicgroup = " % SqlNumber(r.ethnicGroup) % u", Cust_DOB = " %
           DobToKeep(r.dob) % u", Cust_Notes = '" % r.notes % u"', OrganRef = " % SqlNumber(r.organRef) %
           u", ContactContactRef = " % SqlNumber(r.contactContactRef) % u", JobTitle = '" % r.jobTitle %
           u"', ReferenceID = '" % r.referenceId % u"', AltRef1 = '" % r.altRef[0] % u"', AltRef2 = '" %
           r.altRef[1] % u"', AltRef3 = '" % r.altRef[2] % u"', AltRef4 = '" % r.altRef[3] %
           u"' WHERE ContactRef = " % SqlNumber(contactRef);
}

ContactRecord ReadContact(const Recordset::Row &row)
{
    const auto reference = [&row](QStringView column) {
        return row.IsNull(column) ? -1 : static_cast<int>(row.Long(column));
    };
    ContactRecord record;
    record.designation = reference(u"Cust_Designation");
    record.forename = row.Text(u"Cust_Forename");
    record.surname = row.Text(u"Cust_Surname");
    record.addr1 = row.Text(u"Cust_Addr1");
    record.addr2 = row.Text(u"Cust_Addr2");
    record.addr3 = row.Text(u"Cust_Addr3");
    record.addr4 = row.Text(u"Cust_Addr4");
    record.dob = static_cast<int>(row.Long(u"Cust_DOB"));
    record.county = reference(u"Cust_County");
    record.postcode = row.Text(u"Cust_Postcode");
    record.city = reference(u"Cust_City");
    record.country = reference(u"Cust_Country");
    record.telEve = row.Text(u"Cust_TelEve");
    record.telDay = row.Text(u"Cust_TelDay");
    record.telExt = row.Text(u"Cust_TelExt");
    record.fax = row.Text(u"Cust_Fax");
    record.email = row.Text(u"Cust_Email");
    record.url = row.Text(u"Cust_URL");
    record.ethnicGroup = reference(u"Cust_Ethnicgroup");
    record.sex = static_cast<int>(row.Long(u"Cust_Sex"));
    record.notes = row.Text(u"Cust_Notes");
    record.organRef = reference(u"OrganRef");
    record.contactContactRef = reference(u"ContactContactRef");
    record.jobTitle = row.Text(u"JobTitle");
    record.referenceId = row.Text(u"ReferenceID");
    record.altRef = {row.Text(u"AltRef1"), row.Text(u"AltRef2"), row.Text(u"AltRef3"), row.Text(u"AltRef4")};
    return record;
}

Recordset OpenContact(ContactRef contactRef)
{
    return OpenRecordset(u"SELECT * FROM Contacts WHERE ContactRef = " % SqlNumber(contactRef));
}

/// What a save of the person writes again. False where the lists are not whole.
bool ShowLists(ContactRef contactRef, const ContactLists &lists)
{
    return ShowCharacteristics(lists.availCriteria, lists.characteristics,
                               u"SELECT ConcessionRef FROM ContactConcession WHERE ContactRef = " %
                                   SqlNumber(contactRef)) &&
           ADO_CustomAttrib_Show(lists.attributes, AttribSection::Contacts) &&
           ADO_CustomAttrib_Get(lists.attributes, contactRef.number, AttribSection::Contacts) &&
           ADO_Contact_GetRoles(contactRef, lists.roles);
}
} // namespace

int ADO_Contact_AddContact(const ContactRecord &record)
{
    const QString samePerson = SamePerson(record);
    return AddRow("ADO_Contact_AddContact", samePerson, InsertContact(record), samePerson, u"ContactRef");
}

int ADO_Contact_UpdateContact(ContactRef contactRef, const ContactRecord &record)
{
    if (IsSentinel(contactRef))
        return -1;
    return UpdateRow("ADO_Contact_UpdateContact",
                     SamePerson(record) % u" AND ContactRef <> " % SqlNumber(contactRef),
                     UpdateContact(contactRef, record), contactRef.number);
}

std::optional<bool> ADO_Contact_CheckContact(ContactRef contactRef)
{
    return Reported("ADO_Contact_CheckContact", std::optional<bool>(), [&] {
        return HasRow(u"SELECT ContactRef FROM Contacts WHERE ContactRef = " % SqlNumber(contactRef));
    });
}

ReadRow<ContactFile> ADO_Contact_ShowContact(ContactRef contactRef, const ContactLists &lists,
                                             const ContactGroups &groups)
{
    return Reported("ADO_Contact_ShowContact", ReadRow<ContactFile>::Failed(), [&] {
        const Recordset contact = OpenContact(contactRef);
        if (contact.IsEmpty())
            return ReadRow<ContactFile>::Missing();
        ContactFile file{ReadContact(contact.First())};
        file.isWhole = ShowLists(contactRef, lists);
        if (file.isWhole) {
            groups.people.Fill(
                {{u'?' % SqlNumber(contactRef), file.record.surname % u", " % file.record.forename}});
            ADO_Contact_ShowGroup_Tree(contactRef, groups.groups);
        }
        return ReadRow<ContactFile>(file);
    });
}

bool ReadStoredContact(ContactRef contactRef, StoredContact &stored)
{
    const Recordset contact = OpenContact(contactRef);
    if (contact.IsEmpty())
        return false;
    stored.record = ReadContact(contact.First());
    // Lists that are not whole would look like rows that somebody removed.
    if (!ShowLists(contactRef, stored.Lists()))
        throw StatementGivenUp{};
    return true;
}

void ADO_Contact_FillContactInfo(ContactRef contactRef, ListModel &list)
{
    Reported("ADO_Contact_FillContactInfo", [&] {
        const QString key = u'?' % SqlNumber(contactRef);
        if (list.Contains(key))
            return;
        const Recordset contact = OpenRecordset(
            u"SELECT City.City,ContactRef, Cust_Surname, Cust_Forename, Cust_Addr1, Cust_City, Cust_Postcode "
            u"FROM Contacts INNER JOIN City ON Contacts.Cust_City = City.City_ID WHERE ContactRef = " %
            SqlNumber(contactRef));
        if (contact.IsEmpty())
            return;
        const Recordset::Row row = contact.First();
        list.Select(list.Add({key,
                              row.Text(u"Cust_Surname") % u", " % row.Text(u"Cust_Forename"),
                              {row.Text(u"Cust_Addr1"), row.Text(u"City"), row.Text(u"Cust_Postcode")}}));
    });
}

bool ADO_Contact_Delete(ContactRef contactRef)
{
    if (IsSentinel(contactRef))
        return false;
    return RunWithKey(
        "ADO_Contact_Delete",
        {u"DELETE FROM StudentsEnrolled WHERE ContactRef = ",
         u"DELETE FROM AttendanceRecord WHERE ContactRef = ",
         u"DELETE FROM StaffEmployed WHERE ContactRef = ", u"DELETE FROM CourseStaff WHERE ContactRef = ",
         u"DELETE FROM StudentExams WHERE ContactRef = ", u"DELETE FROM Groups WHERE ContactRef = ",
         u"DELETE FROM ContactConcession WHERE ContactRef = ",
         u"DELETE FROM ContactRoles WHERE ContactRef = ",
         u"UPDATE Contacts SET ContactContactRef = 1 WHERE ContactContactRef = ",
         u"DELETE FROM Contacts WHERE ContactRef = "},
        contactRef.number);
}

bool ADO_Contact_UpdateJobTitle(ContactRef contactRef, const QString &title)
{
    if (IsSentinel(contactRef))
        return false;
    return Reported("ADO_Contact_UpdateJobTitle", false, [&] {
        Execute(u"UPDATE Contacts SET JobTitle = '" % title % u"' WHERE ContactRef = " %
                SqlNumber(contactRef));
        return true;
    });
}
