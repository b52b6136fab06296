#include "contacts/record/ContactNotesPage.h"

#include "contacts/lists/VocabularyModule.h"
#include "contacts/lists/frmContactMainAddEdit.h"
#include "core/session/Session.h"

#include <QPushButton>

ContactNotesPage::ContactNotesPage(QWidget *parent)
    : NotesPage({QStringLiteral("Additonal notes about this person (e.g. emergency medical information, "
                                "dietary requirements etc.)."),
                 QStringLiteral("App&lied to this person:"), QStringLiteral("New C&haracteristic")},
                parent)
{
    connect(m_newBtn, &QPushButton::clicked, this, &ContactNotesPage::NewCharacteristic);
}

void ContactNotesPage::FillLists()
{
    Contact_FillListView(ContactSection::Characteristics, m_available);
}

void ContactNotesPage::Load(const ContactRecord &record)
{
    SetNotes(record.notes);
}

void ContactNotesPage::Store(ContactRecord &record) const
{
    record.notes = Notes();
}

void ContactNotesPage::NewCharacteristic()
{
    frmContactMainAddEdit form(ContactSection::Characteristics, this);
    form.SetCaptions(QStringLiteral("Characteristics"), QStringLiteral("Characteristics:"));
    const int added = form.Run();
    if (added > 0)
        m_used.Add({u'!' % SqlNumber(added), FormatRefLabel(form.Item().reference, form.Item().name)});
}
