#include "exchange/csv/CsvBoxes.h"

#include "platform/desktop/Dialogs.h"

namespace
{
bool Tell(const QString &title, const QString &text)
{
    Dialogs::MsgBox(text, title, Dialogs::Buttons::Ok, Dialogs::Icon::Information);
    return false;
}
} // namespace

bool TellOfImport(const QString &text)
{
    return Tell(QStringLiteral("CSV Import"), text);
}

bool TellOfExport(const QString &text)
{
    return Tell(QStringLiteral("CSV Export"), text);
}
