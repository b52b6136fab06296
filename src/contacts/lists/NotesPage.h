#pragma once

#include "controls/ListModel.h"

#include <QWidget>

class QPlainTextEdit;
class QPushButton;
class UsedAvailable;

/// A tab with the notes about somebody and the characteristics that are applied.
class NotesPage : public QWidget
{
    Q_OBJECT

public:
    struct Texts {
        QString help;
        QString usedCaption; ///< of the characteristics that are applied
        QString newCaption;  ///< of the button that makes a new characteristic; "" = no such button
    };

    explicit NotesPage(const Texts &texts, QWidget *parent = nullptr);

    void SetNotes(const QString &notes);
    /// The notes as they came where nobody touched them.
    QString Notes() const;
    void Clear();
    void SetLocked(bool locked);

    ListModel &AvailCriteria() { return m_available; }
    ListModel &UsedCriteria() { return m_used; }

protected:
    QPushButton *m_newBtn = nullptr;
    ListModel m_available;
    ListModel m_used;

private:
    QPlainTextEdit *m_notes;
    UsedAvailable *m_moves;
    QString m_storedNotes;
};
