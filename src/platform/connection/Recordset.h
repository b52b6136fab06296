#pragma once

#include <QString>
#include <QStringView>

#include <memory>
#include <string>
#include <vector>

/// The data-type numbers that columns report. They decide how export and import write a value.
enum class ColumnType {
    Empty = 0,
    SmallInt = 2,
    Integer = 3,
    Double = 5,
    Char = 129,
    VarChar = 200,
    VarWChar = 202,
};

struct RecordsetColumn {
    QString name;
    ColumnType type = ColumnType::VarWChar;
    int definedSize = 0; ///< characters a text column takes; 0 for numbers
};

using Columns = std::vector<RecordsetColumn>;

/// A snapshot of a query's result: every row is read when it opens, so that nested reads and writes on the
/// same connection cannot disturb it. Values are packed: a cell of 16 bytes each, with all texts in one
/// buffer. Copies share the data. Column names compare without regard to case; of two columns with the same
/// name the first wins.
class Recordset final
{
public:
    class Row;
    class Iterator;
    class Builder;

    Recordset();

    int RowCount() const;
    bool IsEmpty() const { return RowCount() == 0; }
    Row At(int row) const;
    /// The first row. The recordset must not be empty.
    Row First() const;
    Iterator begin() const;
    Iterator end() const;

    int ColumnCount() const;
    const RecordsetColumn &Column(int column) const;
    /// The first column of that name, or -1.
    int ColumnIndex(QStringView name) const;

    /// A copy with its rows in another order: `rows` names each of them once.
    Recordset InOrder(const std::vector<int> &rows) const;

private:
    struct Data;
    explicit Recordset(std::shared_ptr<const Data> data);
    std::shared_ptr<const Data> m_data;
};

/// One row. A column that does not exist reads as NULL. NULL reads as "", 0 or 0.0.
class Recordset::Row final
{
public:
    QString Text(QStringView column) const { return Text(IndexOf(column)); }
    qint64 Long(QStringView column) const { return Long(IndexOf(column)); }
    double Double(QStringView column) const { return Double(IndexOf(column)); }
    bool IsNull(QStringView column) const { return IsNull(IndexOf(column)); }

    QString Text(int column) const;
    bool HasText(int column) const; ///< the text is not ""
    bool IsAscii(int column) const; ///< all of the text is; true for NULL and numbers
    /// Appends the text to `out` without creating a string in between, for lists of very many rows.
    void AppendText(int column, std::u16string &out) const;
    qint64 Long(int column) const;
    double Double(int column) const;
    bool IsNull(int column) const;

private:
    friend class Recordset;
    friend class Recordset::Iterator;
    Row(const Data *data, int row)
        : m_data(data)
        , m_row(row)
    {
    }
    int IndexOf(QStringView column) const;
    const Data *m_data;
    int m_row;
};

class Recordset::Iterator final
{
public:
    Row operator*() const { return Row(m_data, m_row); }
    Iterator &operator++()
    {
        ++m_row;
        return *this;
    }
    bool operator!=(const Iterator &other) const { return m_row != other.m_row; }

private:
    friend class Recordset;
    Iterator(const Data *data, int row)
        : m_data(data)
        , m_row(row)
    {
    }
    const Data *m_data;
    int m_row;
};

/// How an engine fills a recordset: one call per cell, row by row. The columns are shared, so that a
/// statement that runs again does not have to describe them again.
class Recordset::Builder final
{
public:
    explicit Builder(std::shared_ptr<const Columns> columns);
    ~Builder();
    void AddNull();
    void AddLong(qint64 value);
    void AddDouble(double value);
    void AddText(QStringView value);
    /// UTF-8, `size` in bytes.
    void AddUtf8(const char *value, int size);
    Recordset Finish();

private:
    std::shared_ptr<Data> m_data;
};
