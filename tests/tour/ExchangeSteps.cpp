#include "tour/Keyboard.h"
#include "tour/TourPlan.h"

#include <QFile>

namespace
{
const QString exporter = QStringLiteral("frmExportWiz");

void Export(Keyboard &keys, TourPlan &plan, const QString &file)
{
    keys.Command(QStringLiteral("F"), 0, QStringLiteral("E"));
    keys.On(exporter, QStringLiteral("export the contacts"), [&keys] {
        keys.ExpectRow(QStringLiteral("ExportList"), QStringLiteral("Contacts"));
        keys.Tap(QStringLiteral("Return"));
        // Nobody's date of birth is known; the file would say that it is today.
        keys.Press(QStringLiteral("AllBtn"));
        keys.Go(QStringLiteral("ExportSel"));
        keys.ToRow(QStringLiteral("Date of Birth"));
        keys.Tap(QStringLiteral("Space"));
    });
    keys.See(exporter, QStringLiteral("fields to export"),
             [&keys] { keys.Press(QStringLiteral("cmdNav_2")); });
    keys.On(exporter, QStringLiteral("the file"),
            [&keys, file] { keys.Fill(QStringLiteral("Filename"), file); });
    keys.See(exporter, QStringLiteral("file to export to"),
             [&keys] { keys.Press(QStringLiteral("cmdNav_2")); });
    keys.Box(
        QStringLiteral("CSV Export"),
        [&plan] {
            return QString(u"Export complete:\n" % QString::number(plan.people) %
                           u" Records where exported.");
        },
        QStringLiteral("OK"));
    keys.See(exporter, QStringLiteral("exported"), [&keys, &plan, file] {
        QFile csv(file);
        keys.Expect(csv.open(QIODevice::ReadOnly) && csv.readAll().count('\n') == plan.people + 1,
                    QStringLiteral("the file does not hold a line for everybody"));
        keys.Press(QStringLiteral("cmdNav_3"));
    });
}

} // namespace

void AddExchange(Keyboard &keys, TourPlan &plan)
{
    Export(keys, plan, plan.programFolder % u"/contacts.csv");
}
