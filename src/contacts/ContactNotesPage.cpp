#include "contacts/ContactNotesPage.h"

#include "contacts/ConcessionODBC.h"
#include "contacts/ContactModule.h"
#include "contacts/frmContactMainAddEdit.h"
#include "core/Session.h"
#include "database/Security.h"
#include "forms/FieldLock.h"
#include "forms/FormBuilder.h"

namespace
{
constexpr int mayAddAndChange = 3;
}

ContactNotesPage::ContactNotesPage(QWidget *parent)
    : QWidget(parent)
{
    FormBuilder form(this);
    form.Line(QStringLiteral("NotesHelp"),
              QStringLiteral("Additonal notes about this person (e.g. emergency medical information, dietary "
                             "requirements etc.)."));
    m_notes = form.Notes(QStringLiteral("Notes"), QStringLiteral("N&otes:"));
    form.BeginGroup(QStringLiteral("Characteristics"));
    FormBuilder::PairNames names;
    names.available = QStringLiteral("AvailCriteria");
    names.availableCaption = QStringLiteral("Ava&ilable:");
    names.used = QStringLiteral("UsedCriteria");
    names.usedCaption = QStringLiteral("App&lied to this person:");
    const FormBuilder::Pair pair = form.UsedAvailablePair(names, m_available, m_used);
    pair.available->SetEmptyText(QStringLiteral("No further characteristics."));
    pair.used->SetEmptyText(QStringLiteral("No characteristics applied."));
    m_moves = pair.moves;
    m_newBtn = form.Button(QStringLiteral("NewCBtn"), QStringLiteral("New C&haracteristic"));
    form.EndGroup();
    connect(m_newBtn, &QPushButton::clicked, this, &ContactNotesPage::NewCharacteristic);
}

void ContactNotesPage::FillLists()
{
    Contact_FillListView(ContactSection::Characteristics, m_available);
}

void ContactNotesPage::Load(const ContactRecord &record)
{
    m_storedNotes = record.notes;
    m_notes->setPlainText(record.notes);
    m_notes->document()->setModified(false);
}

void ContactNotesPage::Store(ContactRecord &record) const
{
    // The box has line ends and blanks of its own, so what nobody touched goes back as it came.
    record.notes = m_notes->document()->isModified() ? m_notes->toPlainText() : m_storedNotes;
}

bool ContactNotesPage::StoreCharacteristics(int contactRef) const
{
    bool stored = ADO_Contact_ConcessionWipe(contactRef);
    for (int row = 0; stored && row < m_used.Count(); ++row)
        stored = ADO_Contact_AddContactConcession(contactRef, KeyNumber(m_used.At(row).key));
    return stored;
}

void ContactNotesPage::Clear()
{
    Load({});
    m_moves->Clear();
}

void ContactNotesPage::SetLocked(bool locked)
{
    LockFields(m_notes, locked);
    m_moves->Allow(!locked);
    const int right = ContactSectionOf(ContactSection::Characteristics).right;
    m_newBtn->setEnabled(!locked && UserRight(right) >= mayAddAndChange);
}

void ContactNotesPage::NewCharacteristic()
{
    frmContactMainAddEdit form(ContactSection::Characteristics, this);
    form.SetCaptions(QStringLiteral("Characteristics"), QStringLiteral("Characteristics:"));
    gDialogResult = 0;
    form.exec();
    if (gDialogResult < 1)
        return;
    m_used.Add(
        {u'!' % QString::number(gDialogResult), FormatRefLabel(form.Item().reference, form.Item().name)});
    gDialogResult = 0;
}
