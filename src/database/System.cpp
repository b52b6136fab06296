#include "database/System.h"

#include "core/Session.h"
#include "database/GlobalCode.h"
#include "database/MiscODBC.h"

#include <array>

namespace
{
constexpr size_t valueCount = 21;
std::array<QString, valueCount> g_values;
} // namespace

void LoadSystemValues()
{
    g_values = {};
    const std::optional<Recordset> rows = TryOpenRecordset(QStringLiteral("SELECT * FROM System"));
    if (!rows)
        return;
    for (const auto &row : *rows) {
        const qint64 index = row.Long(u"Ref");
        if (index >= 0 && index < static_cast<qint64>(valueCount))
            g_values[static_cast<size_t>(index)] = row.Text(u"SystemValue");
    }
}

QString SystemValue(int index)
{
    return g_values.at(static_cast<size_t>(index));
}

void SetSystemValue(int index, const QString &text)
{
    g_values.at(static_cast<size_t>(index)) = text;
    TryExecute(u"DELETE FROM System WHERE Ref = " % SqlNumber(index));
    TryExecute(u"INSERT INTO System (Ref, SystemValue) VALUES (" % SqlNumber(index) % u",'" %
               SqlSafeText(text) % u"')");
}
