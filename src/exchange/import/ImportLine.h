#pragma once

#include "exchange/import/ImportColumn.h"

#include <vector>

/// The values of a line of the file, column by column, and the SQL texts made from them.
class LineValues final
{
public:
    void Add(const ImportColumn &column, const QString &value) { m_cells.push_back({&column, value}); }
    void Clear() { m_cells.clear(); }
    bool IsEmpty() const { return m_cells.empty(); }

    QString Columns() const;      ///< "A,B"
    QString Values() const;       ///< "1,'b'"
    QString Updates() const;      ///< "A = 1,B = 'b'"
    QString FullTest() const;     ///< "A = 1 AND B = 'b'", for every column
    QString IdentityTest() const; ///< the same for the columns by which a record is recognised
    QString Display() const;      ///< the values of the required columns, to show to the user

private:
    struct Cell {
        const ImportColumn *column;
        QString value;
    };
    static bool Every(const Cell &) { return true; }
    static bool Identifies(const Cell &cell);
    static void AddValue(QString &text, const Cell &cell);
    static void AddPair(QString &text, const Cell &cell);
    QString Joined(QStringView separator, void (*add)(QString &, const Cell &),
                   bool (*isWanted)(const Cell &) = Every) const;

    std::vector<Cell> m_cells;
};

/// The query for the keys of the records that `test` finds.
QString SelectKey(const QString &keyColumn, const QString &table, const QString &test);
