#include "schema/Schema.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{
const QString namePattern = QStringLiteral("[A-Za-z_][A-Za-z0-9_]*");

bool SameName(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QStringList Parts(const QString &list)
{
    QStringList parts = list.split(u',');
    for (QString &part : parts)
        part = part.trimmed();
    return parts;
}

std::optional<Schema::Column> ReadColumn(const QString &text)
{
    static const QRegularExpression pattern(u"^(" % namePattern %
                                            u") ([a-z]+)(?:\\((\\d+)\\))?(?: (null)| default (\\d+))?$");
    static const QHash<QString, Schema::Kind> kinds = {
        {QStringLiteral("key"), Schema::Kind::Key},       {QStringLiteral("long"), Schema::Kind::Long},
        {QStringLiteral("date"), Schema::Kind::Long},     {QStringLiteral("time"), Schema::Kind::Long},
        {QStringLiteral("double"), Schema::Kind::Double}, {QStringLiteral("text"), Schema::Kind::Text},
        {QStringLiteral("flag"), Schema::Kind::Flag},     {QStringLiteral("bit"), Schema::Kind::Bit},
    };
    const QRegularExpressionMatch match = pattern.match(text);
    const auto kind = kinds.find(match.captured(2));
    if (!match.hasMatch() || kind == kinds.end())
        return std::nullopt;
    const int size = match.captured(3).toInt();
    if (size > 0 && *kind != Schema::Kind::Text)
        return std::nullopt;
    const bool isEmptyText = *kind == Schema::Kind::Text && !match.hasCaptured(4);
    return Schema::Column{match.captured(1), *kind, size,
                          isEmptyText ? QStringLiteral("''") : match.captured(5)};
}

bool HasColumns(const Schema::Table *table, const QStringList &columns)
{
    return table && std::all_of(columns.begin(), columns.end(),
                                [&](const QString &column) { return table->Find(column) != nullptr; });
}

/// Adds what one statement says to the schema; false if it is wrong.
class Reader final
{
public:
    explicit Reader(Schema &schema)
        : m_schema(schema)
    {
    }

    bool Take(const QString &statement)
    {
        static const QRegularExpression table(u"^CREATE TABLE (" % namePattern % u") \\( ?(.*?) ?\\)$");
        static const QRegularExpression index(u"^CREATE INDEX ON (" % namePattern % u") \\( ?(.*?) ?\\)$");
        static const QRegularExpression row(u"^INSERT INTO (" % namePattern %
                                            u") \\(([^)]*)\\) VALUES \\( ?(.*?) ?\\)$");
        if (const auto match = table.match(statement); match.hasMatch())
            return TakeTable(match.captured(1), Parts(match.captured(2)));
        if (const auto match = index.match(statement); match.hasMatch())
            return TakeIndex({match.captured(1), Parts(match.captured(2))});
        if (const auto match = row.match(statement); match.hasMatch())
            return TakeRow({match.captured(1), Parts(match.captured(2)), Parts(match.captured(3))});
        return false;
    }

private:
    bool TakeTable(const QString &name, const QStringList &columns)
    {
        Schema::Table table{name, {}};
        for (const QString &text : columns) {
            const std::optional<Schema::Column> column = ReadColumn(text);
            if (!column || table.Find(column->name))
                return false;
            table.columns.append(*column);
        }
        if (m_schema.Find(name))
            return false;
        m_schema.tables.append(table);
        return true;
    }

    bool TakeIndex(const Schema::Index &index)
    {
        const bool isNew =
            std::none_of(m_schema.indexes.begin(), m_schema.indexes.end(),
                         [&](const auto &other) { return SameName(other.Name(), index.Name()); });
        m_schema.indexes.append(index);
        return isNew && HasColumns(m_schema.Find(index.table), index.columns);
    }

    bool TakeRow(const Schema::Row &row)
    {
        m_schema.rows.append(row);
        return row.columns.size() == row.values.size() && HasColumns(m_schema.Find(row.table), row.columns);
    }

    Schema &m_schema;
};
} // namespace

bool Schema::Table::HasKey() const
{
    return std::any_of(columns.begin(), columns.end(),
                       [](const Column &column) { return column.kind == Kind::Key; });
}

const Schema::Column *Schema::Table::Find(const QString &column) const
{
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const Column &other) { return SameName(other.name, column); });
    return found == columns.end() ? nullptr : &*found;
}

QString Schema::Index::Name() const
{
    return u"IX_" % table % u'_' % columns.join(u'_');
}

const Schema::Table *Schema::Find(const QString &table) const
{
    const auto found = std::find_if(tables.begin(), tables.end(),
                                    [&](const Table &other) { return SameName(other.name, table); });
    return found == tables.end() ? nullptr : &*found;
}

std::optional<Schema> ReadSchema(const QString &description, QString &error)
{
    static const QRegularExpression comment(QStringLiteral("--[^\n]*"));
    QString text = description;
    text.remove(comment);

    Schema schema;
    Reader reader(schema);
    for (const QString &part : text.split(u';')) {
        const QString statement = part.simplified();
        if (!statement.isEmpty() && !reader.Take(statement)) {
            error = u"not a statement of a schema: " % statement;
            return std::nullopt;
        }
    }
    return schema;
}
