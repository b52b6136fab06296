#include "contacts/lists/ConcessionModule.h"

#include "contacts/lists/ConcessionODBC.h"
#include "contacts/lists/VocabularyModule.h"
#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/statements/MiscODBC.h"

namespace
{
const QString concessionExists = QStringLiteral("Concession already exists in database.");
} // namespace

int Concession_Add(const QString &name, double percentage, double hardDiscount, const QString &referenceId)
{
    return TellDuplicate(
        ADO_Contact_AddConcession(SqlSafeText(name), percentage, hardDiscount, SqlSafeText(referenceId)),
        concessionExists, QStringLiteral("Add Concession"));
}

int Concession_Check(ConcessionRef concessionRef, const QString &title)
{
    const ContactSectionInfo &section = ContactSectionOf(ContactSection::Characteristics);
    return LivingKey(section.table, section.keyColumn, concessionRef.number, QStringLiteral("characteristic"),
                     title);
}

int Concession_Update(ConcessionRef concessionRef, const QString &name, double percentage,
                      double hardDiscount, const QString &referenceId)
{
    const QString title = QStringLiteral("Update Concession");
    const int living = Concession_Check(concessionRef, title);
    if (living < 1)
        return living;
    return TellDuplicate(ADO_Contact_UpdateConcession(concessionRef, SqlSafeText(name), percentage,
                                                      hardDiscount, SqlSafeText(referenceId)),
                         concessionExists, title);
}

bool Concession_LeaveOutDeleted(ListModel &used)
{
    const ContactSectionInfo &section = ContactSectionOf(ContactSection::Characteristics);
    return LeaveOutDeleted(used, section.table, section.keyColumn, section.caption);
}

bool Concession_Store(ContactRef contactRef, const ListModel &used)
{
    return Reported("Concession_Store", false, [&] {
        // In one piece: a crash after the wipe would lose the characteristics.
        WriteGroup group(gConnection);
        bool stored = ADO_Contact_ConcessionWipe(contactRef);
        for (int row = 0; stored && row < used.Count(); ++row)
            stored = ADO_Contact_AddContactConcession(contactRef, ConcessionRef(KeyNumber(used.At(row).key)));
        EndRows(group);
        return stored;
    });
}
