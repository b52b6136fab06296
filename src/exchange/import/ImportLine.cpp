#include "exchange/import/ImportLine.h"

using Role = ImportColumn::Role;

bool LineValues::Identifies(const Cell &cell)
{
    return cell.column->ColumnRole() != Role::Plain;
}

void LineValues::AddValue(QString &text, const Cell &cell)
{
    text.append(cell.value);
}

void LineValues::AddPair(QString &text, const Cell &cell)
{
    text.append(cell.column->Assignment()).append(cell.value);
}

QString LineValues::Joined(QStringView separator, void (*add)(QString &, const Cell &),
                           bool (*isWanted)(const Cell &)) const
{
    constexpr qsizetype ordinary = 48; // characters of a column with its value
    QString text;
    text.reserve(static_cast<qsizetype>(m_cells.size()) * ordinary);
    for (const Cell &cell : m_cells) {
        if (!isWanted(cell))
            continue;
        if (!text.isEmpty())
            text.append(separator);
        add(text, cell);
    }
    return text;
}

QString LineValues::Columns() const
{
    return Joined(u",", [](QString &text, const Cell &cell) { text.append(cell.column->Target()); });
}

QString LineValues::Values() const
{
    return Joined(u",", AddValue);
}

QString LineValues::Updates() const
{
    return Joined(u",", AddPair);
}

QString LineValues::FullTest() const
{
    return Joined(u" AND ", AddPair);
}

QString LineValues::IdentityTest() const
{
    return Joined(u" AND ", AddPair, Identifies);
}

QString LineValues::Display() const
{
    return Joined(u",", AddValue,
                  [](const Cell &cell) { return cell.column->ColumnRole() == Role::Required; });
}

QString SelectKey(const QString &keyColumn, const QString &table, const QString &test)
{
    return u"SELECT " % keyColumn % u" FROM " % table % u" WHERE " % test;
}
