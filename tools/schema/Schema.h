#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// The schema of a database as data/system/schema.sql describes it.
struct Schema {
    enum class Kind { Key, Long, Double, Text, Flag, Bit };

    struct Column {
        QString name;
        Kind kind = Kind::Long;
        int size = 0;              ///< characters of a text with a defined size; 0 = no limit
        QString defaultValue = {}; ///< as in SQL; "" for NULL
    };
    struct Table {
        QString name;
        QList<Column> columns;

        bool HasKey() const;
        const Column *Find(const QString &column) const;
    };
    struct Index {
        QString table;
        QStringList columns;
        QString Name() const;
    };
    struct Row {
        QString table;
        QStringList columns;
        QStringList values; ///< as in the description, including quotes
    };

    QList<Table> tables;
    QList<Index> indexes;
    QList<Row> rows;

    const Table *Find(const QString &table) const;
};

/// Reads a description. Nullopt, with the statement in `error`, if it is wrong: an unknown kind, a column
/// that its table lacks, a name that is used twice.
std::optional<Schema> ReadSchema(const QString &description, QString &error);
