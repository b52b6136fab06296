#pragma once

#include "exchange/import/ImportFault.h"

#include <QStringList>

/// What the user must know about single lines of an imported file: collected during the run, and shown once
/// at the end.
class ImportNotes final
{
public:
    /// Notes a line that was skipped because of its contents. Does nothing without faults.
    void LineSkipped(const std::vector<ImportFault> &faults);
    /// Notes what was not imported unchanged from a line that was imported.
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
