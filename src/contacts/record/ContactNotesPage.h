#pragma once

#include "contacts/lists/NotesPage.h"
#include "contacts/record/ContactRecord.h"

/// The "Notes and Characteristics" tab of a person.
class ContactNotesPage final : public NotesPage
{
    Q_OBJECT

public:
    explicit ContactNotesPage(QWidget *parent = nullptr);

    void FillLists();
    void Load(const ContactRecord &record);
    void Store(ContactRecord &record) const;

private:
    void NewCharacteristic();
};
