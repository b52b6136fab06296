#include "organisations/record/OrganisationModule.h"

#include "contacts/record/ContactRecordODBC.h"
#include "controls/ListModel.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "organisations/lists/OrganisationLinkODBC.h"
#include "organisations/record/AwardBoardODBC.h"
#include "organisations/record/OrganisationRecordODBC.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"

namespace
{
bool Agrees(const QString &question, const QString &title)
{
    return Dialogs::MsgBox(question, title, Dialogs::Buttons::YesNo, Dialogs::Icon::Question) ==
           Dialogs::Answer::Yes;
}
} // namespace

ReadRow<OrganisationFile> Organisation_Show(OrganRef organRef, const OrganisationLists &lists)
{
    return ADO_Organisation_ShowOrganisation(organRef, lists);
}

QString Organisation_PeopleText(OrganRef organRef)
{
    const auto people = ADO_Organisation_OwnContacts(organRef);
    if (!people || people->isEmpty())
        return {};
    return people->size() == 1 ? QStringLiteral("1 person")
                               : QString(QString::number(people->size()) % u" people");
}

bool Organisation_Delete(OrganRef organRef)
{
    return ADO_Organisation_Delete(organRef);
}

void Organisation_TakeContacts(const ListModel &people, ListModel &contacts, Progress &progress)
{
    contacts.Clear();
    progress.Begin(people.Count());
    for (int row = 0; row < people.Count(); ++row) {
        const ListItem &person = people.At(row);
        const int added = contacts.Add({person.key, person.text});
        if (progress.IsCancelled())
            continue;
        if (!ADO_Organisation_UpdateContact(ContactRef(KeyNumber(person.key)), contacts, added))
            contacts.Remove(added);
        progress.SetValue(row + 1);
    }
}

void Organisation_RemoveContacts(ListModel &contacts)
{
    for (const QString &key : contacts.SelectedKeys()) {
        // The title is that of the roles; users know it from there and here.
        if (Agrees(u"Remove Contact " % contacts.At(contacts.Find(key)).text % u" from this Organisation?",
                   QStringLiteral("Remove Role")))
            contacts.RemoveKey(key);
        else
            contacts.Select(contacts.Find(key), false);
    }
}

bool Organisation_UpdateJobTitles(ListModel &contacts, const QString &title)
{
    if (!Agrees(u"Okay to update Contact(s) to Job Title '" % title % u"'?",
                QStringLiteral("Update Job Title(s)")))
        return false;
    for (const QString &key : contacts.SelectedKeys()) {
        const int row = contacts.Find(key);
        const ContactRef contactRef(KeyNumber(key));
        if (!ADO_Contact_UpdateJobTitle(contactRef, SqlSafeText(title)))
            return false;
        // It shows what is stored: somebody who is gone leaves the list instead.
        if (!ADO_Organisation_UpdateContact(contactRef, contacts, row))
            contacts.Remove(row);
    }
    return true;
}

void Organisation_RefreshContacts(ListModel &contacts)
{
    for (int row = contacts.Count() - 1; row >= 0; --row) {
        if (!ADO_Organisation_UpdateContact(ContactRef(KeyNumber(contacts.At(row).key)), contacts, row))
            contacts.Remove(row);
    }
}

bool Organisations_StoreAwardFlags(const ListModel &list, Progress &progress)
{
    return Reported("Organisations_StoreAwardFlags", false, [&] {
        WriteGroup group(gConnection);
        progress.Begin(list.Count());
        for (int row = 0; row < list.Count() && !progress.IsCancelled(); ++row) {
            if (!ADO_Organisations_SetAwardFlag(OrganRef(KeyNumber(list.At(row).key)), list.At(row).checked))
                return false;
            EndRow(group);
            progress.SetValue(row + 1);
        }
        EndRows(group);
        return progress.Value() == progress.Maximum();
    });
}
