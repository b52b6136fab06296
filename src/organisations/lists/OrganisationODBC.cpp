#include "organisations/lists/OrganisationODBC.h"

#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"

namespace
{
Recordset OpenCharacteristics(OrganRef organRef)
{
    return OpenRecordset(u"SELECT ConcessionRef FROM OrganChars WHERE OrganRef = " % SqlNumber(organRef));
}
} // namespace

ReadRow<ContactOrganisation> ADO_Organisation_ShowContactOrganisation(OrganRef organRef)
{
    return ReadOne<ContactOrganisation>(
        "ADO_Organisation_ShowContactOrganisation",
        u"SELECT Country.Country, County.County, City.City, "
        u"Organisations.OrganName,Organisations.ReferenceID, Organisations.Addr1, Organisations.Addr2, "
        u"Organisations.Addr3, Organisations.Addr4, Organisations.TelDay, Organisations.TelOut, "
        u"Organisations.Fax, Organisations.Email, Organisations.URL, Organisations.Postcode FROM "
        u"((Organisations INNER JOIN City ON Organisations.City = City.City_ID) INNER JOIN Country ON "
        u"Organisations.Country = Country.Country_ID) INNER JOIN County ON Organisations.County = "
        u"County.County_ID Where OrganRef = " %
            SqlNumber(organRef),
        [](const Recordset::Row &row) {
            return ContactOrganisation{row.Text(u"Addr1"),  row.Text(u"Addr2"),    row.Text(u"Addr3"),
                                       row.Text(u"Addr4"),  row.Text(u"Postcode"), row.Text(u"TelOut"),
                                       row.Text(u"TelDay"), row.Text(u"Fax"),      row.Text(u"Email"),
                                       row.Text(u"URL"),    row.Text(u"City"),     row.Text(u"County"),
                                       row.Text(u"Country")};
        });
}

bool ADO_Organisation_CheckCharswithContact(OrganRef organRef, ContactRef contactRef)
{
    return Reported("ADO_Organisation_CheckCharswithContact", false, [&] {
        for (const Recordset::Row row : OpenCharacteristics(organRef)) {
            if (!HasRow(u"SELECT * FROM ContactConcession WHERE ContactRef = " % SqlNumber(contactRef) %
                        u" AND ConcessionRef = " % row.Text(u"ConcessionRef")))
                return true;
        }
        return false;
    });
}

bool ADO_Organisation_AddSingleContactConcession(OrganRef organRef, ContactRef contactRef)
{
    return Reported("ADO_Organisation_AddSingleContactConcession", false, [&] {
        return InOneStep(QStringLiteral("Contacts"), [&] {
            for (const Recordset::Row row : OpenCharacteristics(organRef)) {
                const QString concessionRef = row.Text(u"ConcessionRef");
                Execute(u"DELETE FROM ContactConcession WHERE ContactRef = " % SqlNumber(contactRef) %
                        u" AND ConcessionRef = " % concessionRef);
                Execute(u"INSERT INTO ContactConcession (ContactRef,ConcessionRef) VALUES (" %
                        SqlNumber(contactRef) % u',' % concessionRef % u')');
            }
            return true;
        });
    });
}

bool ADO_Organisation_ConcessionWipe(OrganRef organRef)
{
    return RunWithKey("ADO_Organisation_ConcessionWipe", {u"DELETE FROM OrganChars WHERE OrganRef = "},
                      organRef.number);
}

bool ADO_Organisation_AddConcession(OrganRef organRef, ConcessionRef concessionRef)
{
    return Reported("ADO_Organisation_AddConcession", false, [&] {
        // Guarded with the organisations, so that the save of one waits for nobody on its way.
        return InOneStep(QStringLiteral("Organisations"), [&] {
            if (!HasRow(u"SELECT * FROM OrganChars WHERE ConcessionRef = " % SqlNumber(concessionRef) %
                        u" AND OrganRef = " % SqlNumber(organRef)))
                Execute(u"INSERT INTO OrganChars (OrganRef,ConcessionRef) VALUES (" % SqlNumber(organRef) %
                        u',' % SqlNumber(concessionRef) % u')');
            return true;
        });
    });
}
