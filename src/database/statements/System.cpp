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

/// What the value with that number is called on the screens.
QString NameOf(int index)
{
    using namespace SystemRef;
    switch (index) {
    case DatabaseName:
        return QStringLiteral("Database Name");
    case CurrencySymbol:
        return QStringLiteral("Currency Symbol");
    case TaxName:
        return QStringLiteral("Tax Label");
    case TaxRate:
        return QStringLiteral("Tax Rate in %");
    default:
        return index < VoucherName ? QString(u"Alt Ref ID " % QString::number(index - AltRefLabel + 1))
                                   : QString(u"Voucher " % QString::number(index - VoucherName + 1));
    }
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

void TellNotStored(const std::vector<NumberedValue> &values, const QString &title)
{
    QString text = QStringLiteral("These values could not be stored:\n");
    for (const NumberedValue &value : values)
        text += u"    " % NameOf(value.index) % u": '" % value.text % u"'\n";
    const EngineErrors &errors = gConnection.Errors();
    const QString why = errors.isEmpty() ? QString() : QString(u'\n' % errors.first().description);
    Dialogs::MsgBox(text % u"All workstations continue with what the database has." % why, title,
                    Dialogs::Buttons::Ok, Dialogs::Icon::Exclamation);
}
