#include "database/statements/System.h"

#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "platform/connection/OneStep.h"
#include "platform/desktop/Dialogs.h"

#include <array>

namespace
{
constexpr size_t valueCount = 21;
std::array<QString, valueCount> g_values;

bool Replace(int index, const QString &text)
{
    return TryExecute(u"DELETE FROM System WHERE Ref = " % SqlNumber(index)) &&
           TryExecute(u"INSERT INTO System (Ref, SystemValue) VALUES (" % SqlNumber(index) % u",'" %
                      SqlSafeText(text) % u"')");
}
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

bool SetSystemValue(int index, const QString &text)
{
    return SetSystemValues({{index, text}});
}

bool SetSystemValues(const std::vector<NumberedValue> &values)
{
    OneStep step(gConnection, QStringLiteral("System"));
    bool isStored = step.HasBegun();
    for (const auto &[index, text] : values)
        isStored = isStored && Replace(index, text);
    if (!isStored || !step.Keep())
        return false;
    for (const auto &[index, text] : values)
        g_values.at(static_cast<size_t>(index)) = text;
    return true;
}

void TellNotStored(const QString &title)
{
    const EngineErrors &errors = gConnection.Errors();
    const QString why = errors.isEmpty() ? QString() : QString(u'\n' % errors.first().description);
    Dialogs::MsgBox(
        u"The changes could not be stored. All workstations continue with what the database has." % why,
        title, Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation);
}
