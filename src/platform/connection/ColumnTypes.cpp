#include "platform/connection/ColumnTypes.h"

#include <array>

namespace
{
struct DeclaredType {
    QStringView name;
    ColumnType type;
};

constexpr std::array declaredTypes{
    DeclaredType{u"SMALLINT", ColumnType::SmallInt}, DeclaredType{u"BIT", ColumnType::SmallInt},
    DeclaredType{u"INTEGER", ColumnType::Integer},   DeclaredType{u"INT", ColumnType::Integer},
    DeclaredType{u"BIGINT", ColumnType::Integer},    DeclaredType{u"DOUBLE", ColumnType::Double},
    DeclaredType{u"FLOAT", ColumnType::Double},      DeclaredType{u"REAL", ColumnType::Double},
    DeclaredType{u"CHAR", ColumnType::Char},
};
} // namespace

RecordsetColumn ColumnOfDeclaredType(const QString &declared)
{
    const qsizetype open = declared.indexOf(u'(');
    const QStringView full = declared;
    const QStringView name = (open < 0 ? full : full.first(open)).trimmed();
    const QStringView firstWord = name.contains(u' ') ? name.first(name.indexOf(u' ')) : name;
    RecordsetColumn column;
    for (const DeclaredType &type : declaredTypes) {
        if (firstWord.compare(type.name, Qt::CaseInsensitive) == 0)
            column.type = type.type;
    }
    if (column.type != ColumnType::VarWChar && column.type != ColumnType::Char)
        return column;
    const qsizetype close = declared.indexOf(u')', open + 1);
    column.definedSize = open < 0 || close < 0 ? ColumnTypes::unlimitedSize
                                               : full.sliced(open + 1, close - open - 1).trimmed().toInt();
    return column;
}
