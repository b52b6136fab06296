#pragma once

#include "exchange/import/ImportFault.h"

#include <QStringList>

/// What the user must know of single lines of an imported file: collected while it runs, told once.
class ImportNotes final
{
public:
    /// A line that was skipped for what it holds. None is no note.
    void LineSkipped(const std::vector<ImportFault> &faults);
    /// What of a line that was taken did not go in as it stands.
    void ValuesLost(const std::vector<ImportFault> &losses);

    bool IsEmpty() const { return m_skipped.count == 0 && m_lost.count == 0; }
    /// The whole text of the box, with the first lines of each kind and how many there are.
    QString Text(const QString &fileName) const;

private:
    struct Kind {
        int count = 0;
        QStringList first{};
        void Add(const ImportFault &fault);
        QString Text(const QString &heading) const;
    };
    Kind m_skipped;
    Kind m_lost;
};
