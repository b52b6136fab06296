#pragma once

#include <QString>
#include <QStringList>

/// What the user must know of single lines of an imported file: collected while it runs, told once.
class ImportNotes final
{
public:
    /// A line that was skipped for what it holds: "Line 5, field 'DOB': 'x' is no date ...".
    void LineRefused(int line, const QString &field, const QString &value, const QString &why);
    void LineWithUnclosedQuote(int line);
    /// A value that did not fit its column; the line was imported.
    void ValueCut(int line, const QString &field, qsizetype length, int size);

    bool IsEmpty() const { return m_refused.count == 0 && m_cut.count == 0; }
    /// The whole text of the box, with the first lines of each kind and how many there are.
    QString Text(const QString &fileName) const;

private:
    struct Kind {
        int count = 0;
        QStringList first{};
        void Add(const QString &text);
        QString Text(const QString &heading) const;
    };
    Kind m_refused;
    Kind m_cut;
};
