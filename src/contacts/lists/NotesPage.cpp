#include "contacts/lists/NotesPage.h"

#include "contacts/lists/VocabularyModule.h"
#include "database/statements/Security.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"

NotesPage::NotesPage(const Texts &texts, QWidget *parent)
    : QWidget(parent)
{
    FormBuilder form(this);
    form.Line(QStringLiteral("NotesHelp"), texts.help);
    m_notes = form.Notes(QStringLiteral("Notes"), QStringLiteral("No&tes:"));
    form.BeginGroup(QStringLiteral("Characteristics"));
    FormBuilder::PairNames names;
    names.available = QStringLiteral("AvailCriteria");
    names.availableCaption = QStringLiteral("Ava&ilable:");
    names.used = QStringLiteral("UsedCriteria");
    names.usedCaption = texts.usedCaption;
    const FormBuilder::Pair pair = form.UsedAvailablePair(names, m_available, m_used);
    pair.available->SetEmptyText(QStringLiteral("No further characteristics."));
    pair.used->SetEmptyText(QStringLiteral("No characteristics applied."));
    m_moves = pair.moves;
    if (!texts.newCaption.isEmpty())
        m_newBtn = form.Button(QStringLiteral("NewCBtn"), texts.newCaption);
    form.EndGroup();
}

void NotesPage::SetNotes(const QString &notes)
{
    m_storedNotes = notes;
    m_notes->setPlainText(notes);
    m_notes->document()->setModified(false);
}

QString NotesPage::Notes() const
{
    // The box has line ends and blanks of its own.
    return m_notes->document()->isModified() ? m_notes->toPlainText() : m_storedNotes;
}

void NotesPage::Clear()
{
    SetNotes({});
    m_moves->Empty();
}

void NotesPage::SetLocked(bool locked)
{
    LockFields(m_notes, locked);
    m_moves->Allow(!locked);
    if (m_newBtn)
        m_newBtn->setEnabled(!locked && UserMay(Right::Characteristics, Level::Edit));
}
