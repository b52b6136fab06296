#pragma once

#include "contacts/ContactRecord.h"
#include "controls/ListModel.h"

#include <QWidget>

class QPlainTextEdit;
class QPushButton;
class UsedAvailable;

/// The "Notes and Characteristics" tab of a person.
class ContactNotesPage final : public QWidget
{
    Q_OBJECT

public:
    explicit ContactNotesPage(QWidget *parent = nullptr);

    void FillLists();
    void Load(const ContactRecord &record);
    void Store(ContactRecord &record) const;
    /// False if the person may have fewer of them now than the page shows.
    bool StoreCharacteristics(int contactRef) const;
    void Clear();
    void SetLocked(bool locked);

    ListModel &AvailCriteria() { return m_available; }
    ListModel &UsedCriteria() { return m_used; }

private:
    void NewCharacteristic();

    ListModel m_available;
    ListModel m_used;
    QPlainTextEdit *m_notes;
    QPushButton *m_newBtn;
    UsedAvailable *m_moves;
    QString m_storedNotes;
};
