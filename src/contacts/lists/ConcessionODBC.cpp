#include "contacts/lists/ConcessionODBC.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"

namespace
{
QString SameConcession(const QString &name, const QString &referenceId)
{
    return u"SELECT * FROM Concessions WHERE Name = '" % name % u"' AND ReferenceID = '" % referenceId % u"'";
}

ReadRow<double> ReadFigure(const char *routineName, QStringView column, ConcessionRef concessionRef)
{
    return ReadOne<double>(routineName,
                           u"SELECT " % column % u" FROM Concessions WHERE ConcessionRef = " %
                               SqlNumber(concessionRef),
                           [column](const Recordset::Row &row) { return row.Double(column); });
}
} // namespace

int ADO_Contact_AddConcession(const QString &name, double percentage, double hardDiscount,
                              const QString &referenceId)
{
    const QString sameConcession = SameConcession(name, referenceId);
    return AddRow("ADO_Contact_AddConcession", sameConcession,
                  u"INSERT INTO Concessions (ReferenceID, Name, Percentage, HardDiscount) VALUES ('" %
                      referenceId % u"','" % name % u"'," % SqlNumber(percentage) % u',' %
                      SqlNumber(hardDiscount) % u')',
                  sameConcession, u"ConcessionRef");
}

int ADO_Contact_UpdateConcession(ConcessionRef concessionRef, const QString &name, double percentage,
                                 double hardDiscount, const QString &referenceId)
{
    return UpdateRow("ADO_Contact_UpdateConcession",
                     SameConcession(name, referenceId) % u" AND ConcessionRef <> " % SqlNumber(concessionRef),
                     u"UPDATE Concessions SET Name = '" % name % u"',Percentage = " % SqlNumber(percentage) %
                         u",HardDiscount = " % SqlNumber(hardDiscount) % u",ReferenceID = '" % referenceId %
                         u"' WHERE ConcessionRef = " % SqlNumber(concessionRef),
                     concessionRef.number);
}

ReadRow<double> ADO_Contact_GetConcessionPercent(ConcessionRef concessionRef)
{
    return ReadFigure("ADO_Contact_GetConcessionPercent", u"Percentage", concessionRef);
}

ReadRow<double> ADO_Contact_GetConcesionDiscount(ConcessionRef concessionRef)
{
    return ReadFigure("ADO_Contact_GetConcesionDiscount", u"HardDiscount", concessionRef);
}

bool ADO_Contact_DeleteConcession(ConcessionRef concessionRef)
{
    return RunWithKey("ADO_Contact_DeleteConcession",
                      {u"DELETE FROM OrganChars WHERE ConcessionRef = ",
                       u"DELETE FROM ContactConcession WHERE ConcessionRef = ",
                       u"DELETE FROM Concessions WHERE ConcessionRef = "},
                      concessionRef.number);
}

bool ADO_Contact_ConcessionWipe(ContactRef contactRef)
{
    return RunWithKey("ADO_Contact_ConcessionWipe", {u"DELETE FROM ContactConcession WHERE ContactRef = "},
                      contactRef.number);
}

bool ADO_Contact_AddContactConcession(ContactRef contactRef, ConcessionRef concessionRef)
{
    return Reported("ADO_Contact_AddContactConcession", false, [&] {
        // Guarded with the people, so that the save of one waits for nobody on its way.
        return InOneStep(QStringLiteral("Contacts"), [&] {
            if (!HasRow(u"SELECT * FROM ContactConcession WHERE ConcessionRef = " % SqlNumber(concessionRef) %
                        u" AND ContactRef = " % SqlNumber(contactRef)))
                Execute(u"INSERT INTO ContactConcession (ContactRef,ConcessionRef) VALUES (" %
                        SqlNumber(contactRef) % u',' % SqlNumber(concessionRef) % u')');
            return true;
        });
    });
}

bool ADO_Contact_AddConcessionList(ConcessionRef concessionRef, const ListModel &list, Progress &progress)
{
    return Reported("ADO_Contact_AddConcessionList", false, [&] {
        const bool held =
            HasRow(u"SELECT * FROM ContactConcession WHERE ConcessionRef = " % SqlNumber(concessionRef));
        // The wipe wants a person and gets the characteristic, so that Yes empties whoever has that number:
        // sites have lived with it for years, and it stays.
        if (held && Dialogs::MsgBox(QStringLiteral("Remove all previous contacts added to this type?"),
                                    QStringLiteral("Contact Update"), Dialogs::Buttons::YesNo,
                                    Dialogs::Icon::Question, Dialogs::Answer::No) == Dialogs::Answer::Yes)
            ADO_Contact_ConcessionWipe(ContactRef(concessionRef.number));

        progress.Begin(list.Count());
        WriteGroup group(gConnection);
        int served = 0;
        for (int row = 0; row < list.Count() && !progress.IsCancelled(); ++row) {
            // A failure was reported; the next person may well take it.
            if (ADO_Contact_AddContactConcession(ContactRef(KeyNumber(list.At(row).key)), concessionRef))
                ++served;
            EndRow(group);
            progress.SetValue(row + 1);
        }
        EndRows(group);
        return served == list.Count();
    });
}

void ADO_Contact_Fill_Concession(ConcessionRef concessionRef, ListModel &list, Progress &progress,
                                 const QList<PersonDetail> &details)
{
    Reported("ADO_Contact_Fill_Concession", [&] {
        list.Clear();
        const Recordset holders = OpenRecordset(
            u"SELECT ContactRef FROM ContactConcession WHERE ConcessionRef = " % SqlNumber(concessionRef));
        constexpr int firstDetail = 3;
        const PersonDetails more(details);
        std::vector<ListItem> items;
        progress.Begin(holders.RowCount());
        for (const Recordset::Row holder : holders) {
            if (progress.IsCancelled())
                break;
            progress.SetValue(progress.Value() + 1);
            const QString contactRef = holder.Text(u"ContactRef");
            const Recordset contact = OpenRecordset(u"SELECT Cust_Surname, Cust_Forename, ReferenceID" %
                                                    more.Columns() % u" FROM Contacts WHERE ContactRef = " %
                                                    contactRef % u" ORDER BY Cust_Surname,Cust_Forename ASC");
            if (contact.IsEmpty())
                continue;
            const Recordset::Row row = contact.First();
            items.push_back({u'?' % contactRef,
                             FormatRefLabel(row.Text(u"ReferenceID"),
                                            row.Text(u"Cust_Surname") % u", " % row.Text(u"Cust_Forename")),
                             more.Of(row, firstDetail)});
        }
        list.Fill(std::move(items));
    });
}

void ADO_Contact_ShowChar(TreeModel &tree)
{
    Reported("ADO_Contact_ShowChar", [&] {
        tree.Clear();
        const Recordset concessions =
            OpenRecordset(QStringLiteral("SELECT ConcessionRef,Name FROM Concessions ORDER BY Name ASC"));
        for (const Recordset::Row row : concessions) {
            TreeNode node;
            node.key = u'!' % row.Text(u"ConcessionRef");
            node.text = row.Text(u"Name");
            node.tick = TreeTick::Off;
            tree.Add(QString(), std::move(node));
        }
    });
}
