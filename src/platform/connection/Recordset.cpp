#include "platform/connection/Recordset.h"

#include "platform/sql/Numbers.h"
#include "platform/sql/SameName.h"

#include <algorithm>
#include <cmath>

namespace
{
enum class CellKind : quint32 { Null, Long, Double, Text };

struct Cell {
    union {
        qint64 whole;
        double real;
        quint64 offset; ///< of a text, into the buffer
    };
    CellKind kind;
    quint32 size; ///< of a text, in bytes
};
static_assert(sizeof(Cell) == 16);

int FindColumn(const Columns &columns, QStringView name)
{
    for (size_t i = 0; i < columns.size(); ++i) {
        if (SameName(columns[i].name, name))
            return static_cast<int>(i);
    }
    return -1;
}

/// Widens an ASCII text into `out`, which has room for as many characters; false if the text is not ASCII.
/// Nearly every text is short and ASCII, and the general decoder is slow with those.
bool WidenAscii(QUtf8StringView text, char16_t *out)
{
    unsigned char all = 0;
    for (const char c : text) {
        all |= static_cast<unsigned char>(c);
        *out++ = static_cast<unsigned char>(c);
    }
    return all < 0x80;
}

QString Decoded(QUtf8StringView text)
{
    QString result(text.size(), Qt::Uninitialized);
    return WidenAscii(text, reinterpret_cast<char16_t *>(result.data())) ? result : text.toString();
}
} // namespace

struct Recordset::Data {
    explicit Data(std::shared_ptr<const Columns> described)
        : columns(std::move(described))
    {
    }

    std::shared_ptr<const Columns> columns;
    std::vector<Cell> cells;
    std::vector<char> texts; ///< UTF-8

    int RowCount() const { return columns->empty() ? 0 : static_cast<int>(cells.size() / columns->size()); }
    const Cell *At(int row, int column) const
    {
        if (column < 0 || column >= static_cast<int>(columns->size()))
            return nullptr;
        return &cells[static_cast<size_t>(row) * columns->size() + static_cast<size_t>(column)];
    }
    QUtf8StringView TextOf(const Cell &cell) const
    {
        return {texts.data() + cell.offset, static_cast<qsizetype>(cell.size)};
    }
};

Recordset::Recordset()
{
    static const auto empty = std::make_shared<const Data>(std::make_shared<Columns>());
    m_data = empty;
}

Recordset::Recordset(std::shared_ptr<const Data> data)
    : m_data(std::move(data))
{
}

int Recordset::RowCount() const
{
    return m_data->RowCount();
}

Recordset::Row Recordset::At(int row) const
{
    return {m_data.get(), row};
}

Recordset::Row Recordset::First() const
{
    return At(0);
}

Recordset::Iterator Recordset::begin() const
{
    return {m_data.get(), 0};
}

Recordset::Iterator Recordset::end() const
{
    return {m_data.get(), RowCount()};
}

int Recordset::ColumnCount() const
{
    return static_cast<int>(m_data->columns->size());
}

const RecordsetColumn &Recordset::Column(int column) const
{
    return m_data->columns->at(static_cast<size_t>(column));
}

int Recordset::ColumnIndex(QStringView name) const
{
    return FindColumn(*m_data->columns, name);
}

Recordset Recordset::InOrder(const std::vector<int> &rows) const
{
    auto data = std::make_shared<Data>(m_data->columns);
    data->texts = m_data->texts;
    data->cells.reserve(m_data->cells.size());
    for (const int row : rows) {
        const Cell *first = m_data->At(row, 0);
        data->cells.insert(data->cells.end(), first, first + ColumnCount());
    }
    return Recordset(std::move(data));
}

int Recordset::Row::IndexOf(QStringView column) const
{
    return FindColumn(*m_data->columns, column);
}

QString Recordset::Row::Text(int column) const
{
    const Cell *cell = m_data->At(m_row, column);
    if (!cell)
        return {};
    switch (cell->kind) {
    case CellKind::Null:
        return {};
    case CellKind::Long:
        return QString::number(cell->whole);
    case CellKind::Double:
        return ShortestNumber(cell->real);
    case CellKind::Text:
        return Decoded(m_data->TextOf(*cell));
    }
    return {};
}

bool Recordset::Row::HasText(int column) const
{
    const Cell *cell = m_data->At(m_row, column);
    return cell && cell->kind != CellKind::Null && (cell->kind != CellKind::Text || cell->size > 0);
}

bool Recordset::Row::IsAscii(int column) const
{
    const Cell *cell = m_data->At(m_row, column);
    if (!cell || cell->kind != CellKind::Text)
        return true;
    const QUtf8StringView text = m_data->TextOf(*cell);
    return std::none_of(text.begin(), text.end(),
                        [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

void Recordset::Row::AppendText(int column, std::u16string &out) const
{
    const size_t before = out.size();
    const Cell *cell = m_data->At(m_row, column);
    if (cell && cell->kind == CellKind::Text) {
        out.resize(before + cell->size);
        if (WidenAscii(m_data->TextOf(*cell), out.data() + before))
            return;
        out.resize(before);
    }
    const QString text = Text(column);
    out.append(reinterpret_cast<const char16_t *>(text.utf16()), static_cast<size_t>(text.size()));
}

qint64 Recordset::Row::Long(int column) const
{
    const Cell *cell = m_data->At(m_row, column);
    if (!cell || cell->kind == CellKind::Null)
        return 0;
    return cell->kind == CellKind::Long ? cell->whole : std::llrint(Double(column));
}

double Recordset::Row::Double(int column) const
{
    const Cell *cell = m_data->At(m_row, column);
    if (!cell)
        return 0;
    switch (cell->kind) {
    case CellKind::Null:
        return 0;
    case CellKind::Long:
        return static_cast<double>(cell->whole);
    case CellKind::Double:
        return cell->real;
    case CellKind::Text:
        return m_data->TextOf(*cell).toString().toDouble();
    }
    return 0;
}

bool Recordset::Row::IsNull(int column) const
{
    const Cell *cell = m_data->At(m_row, column);
    return !cell || cell->kind == CellKind::Null;
}

Recordset::Builder::Builder(std::shared_ptr<const Columns> columns)
    : m_data(std::make_shared<Data>(std::move(columns)))
{
    // Most reads are of one row by its key.
    m_data->cells.reserve(m_data->columns->size());
}

Recordset::Builder::~Builder() = default;

void Recordset::Builder::AddNull()
{
    Cell cell{};
    cell.kind = CellKind::Null;
    m_data->cells.push_back(cell);
}

void Recordset::Builder::AddLong(qint64 value)
{
    Cell cell{};
    cell.whole = value;
    cell.kind = CellKind::Long;
    m_data->cells.push_back(cell);
}

void Recordset::Builder::AddDouble(double value)
{
    Cell cell{};
    cell.real = value;
    cell.kind = CellKind::Double;
    m_data->cells.push_back(cell);
}

void Recordset::Builder::AddText(QStringView value)
{
    const QByteArray utf8 = value.toUtf8();
    AddUtf8(utf8.constData(), static_cast<int>(utf8.size()));
}

void Recordset::Builder::AddUtf8(const char *value, int size)
{
    Cell cell{};
    cell.offset = m_data->texts.size();
    cell.kind = CellKind::Text;
    cell.size = static_cast<quint32>(size);
    m_data->cells.push_back(cell);
    m_data->texts.insert(m_data->texts.end(), value, value + size);
}

Recordset Recordset::Builder::Finish()
{
    return Recordset(std::move(m_data));
}
