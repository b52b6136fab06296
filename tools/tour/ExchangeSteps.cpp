#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "tour/Keyboard.h"
#include "tour/TourPlan.h"

#include <QFile>
#include <QLocale>

namespace
{
const QString exporter = QStringLiteral("frmExportWiz");
const QString importer = QStringLiteral("frmImportWiz");
const QString changedNumber = QStringLiteral("0800 000");

/// Every cell of what an export contains, and of the vocabularies that an import may add to. A gender that
/// was never entered counts as "not specified".
QString Snapshot()
{
    QString text;
    for (const auto *table :
         {"Contacts", "Organisations", "City", "County", "Country", "Designation", "EthnicGroup"}) {
        const auto rows = TryOpenRecordset(u"SELECT * FROM " % QLatin1String(table));
        for (int row = 0; rows && row < rows->RowCount(); ++row) {
            for (int column = 0; column < rows->ColumnCount(); ++column) {
                const QString cell = rows->At(row).Text(column);
                text += (cell == u"0" ? QString() : cell) % u'\t';
            }
            text += u'\n';
        }
    }
    return text;
}

void Export(Keyboard &keys, TourPlan &plan, const QString &file)
{
    keys.Command(QStringLiteral("F"), 0, QStringLiteral("E"));
    keys.On(exporter, QStringLiteral("export the contacts"), [&keys] {
        keys.ExpectRow(QStringLiteral("ExportList"), QStringLiteral("Contacts"));
        keys.Tap(QStringLiteral("Return"));
        keys.Press(QStringLiteral("AllBtn"));
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

/// Gives a person whose record was saved earlier another telephone number, which is not in the file.
void ChangeNumber(Keyboard &keys, TourPlan &plan)
{
    keys.Command(QStringLiteral("C"), 0, QStringLiteral("C"));
    keys.On(QStringLiteral("frmContact"), QStringLiteral("the record to change"), [&keys, &plan] {
        keys.Press(QStringLiteral("ClearCBtn"));
        keys.Fill(QStringLiteral("SearchBox"), plan.members.at(0));
        keys.Press(QStringLiteral("AddCBtn"));
        keys.Press(QStringLiteral("ViewBtn"));
    });
    keys.On(QStringLiteral("frmAddContact"), QStringLiteral("another number"), [&keys] {
        keys.Press(QStringLiteral("EditBtn"));
        keys.Fill(QStringLiteral("Telday"), changedNumber);
        keys.Press(QStringLiteral("ExitBtn"));
    });
    keys.Box(QStringLiteral("Warning"),
             QStringLiteral("Some of the data has changed.\nOkay to update before exiting?"),
             QStringLiteral("Yes"));
}

/// The people whom the file would change: the one with the new number.
QString Differing()
{
    return u"SELECT Cust_Forename, Cust_Surname, Cust_Addr1 FROM Contacts WHERE Cust_TelDay = '" %
           changedNumber % u"' ORDER BY Cust_Surname, Cust_Forename";
}

/// The question about the first of them, as the import words it.
QString Question()
{
    const auto rows = TryOpenRecordset(Differing());
    QStringList values;
    for (int column = 0; rows && !rows->IsEmpty() && column < 3; ++column)
        values.append(u'\'' % SqlSafeText(rows->First().Text(column)) % u'\'');
    return values.join(u',') % u" already exists.\nOkay to update?";
}

/// Opens the import, names the file and goes on to the fields.
void OpenFile(Keyboard &keys, const QString &file)
{
    keys.Command(QStringLiteral("F"), 0, QStringLiteral("I"));
    keys.On(importer, QStringLiteral("import again"), [&keys, file] {
        keys.Tap(QStringLiteral("Return"));
        keys.Fill(QStringLiteral("Filename"), file);
        keys.Press(QStringLiteral("cmdNav_2"));
    });
}

void ExpectImported(Keyboard &keys, TourPlan &plan, const QString &what)
{
    const auto summary = [&plan] {
        return QString(u"Import complete:\n0 Records where imported.\n" % QString::number(plan.found) %
                       u" Records where updated.\n" % QString::number(plan.people - plan.found) %
                       u" Records where skipped.");
    };
    keys.Box(QStringLiteral("CSV Import"), summary, QStringLiteral("OK"));
    keys.See(importer, what, [&keys, &plan] {
        const QStringList before = plan.exported.split(u'\n');
        const QStringList now = Snapshot().split(u'\n');
        for (qsizetype line = 0; line < qMax(before.size(), now.size()); ++line)
            keys.Expect(before.value(line) == now.value(line),
                        u"the data was\n  " % before.value(line) % u"\n  and is\n  " % now.value(line));
        keys.Press(QStringLiteral("cmdNav_3"));
    });
}

void ImportTwice(Keyboard &keys, TourPlan &plan, const QString &file)
{
    OpenFile(keys, file);
    keys.See(importer, QStringLiteral("fields of the export"), [&keys, &plan] {
        keys.Expect(Snapshot() != plan.exported, QStringLiteral("the number was not changed"));
        plan.found = RowsOf(Differing());
        keys.Press(QStringLiteral("CheckBtn"));
    });
    keys.SeeAt(QStringLiteral("frmCheckFile"), QStringLiteral("ExitBtn"), QStringLiteral("file checked"),
               [&keys, &plan] {
                   const QLocale locale;
                   const QString result = locale.toString(plan.people) % u" lines: 0 new, " %
                                          locale.toString(plan.found) % u" changed, " %
                                          locale.toString(plan.people - plan.found) % u" the same, 0 faulty.";
                   keys.ExpectText(QStringLiteral("Notice"), result);
                   keys.Tap(QStringLiteral("Escape"));
               });
    keys.On(importer, QStringLiteral("run"), [&keys] { keys.Press(QStringLiteral("cmdNav_2")); });
    keys.Box(QStringLiteral("CSV Import"), Question, QStringLiteral("Yes to All"));
    ExpectImported(keys, plan, QStringLiteral("imported again"));

    // Now every line is in the database unchanged.
    OpenFile(keys, file);
    keys.On(importer, QStringLiteral("run once more"), [&keys, &plan] {
        plan.found = 0;
        keys.Press(QStringLiteral("cmdNav_2"));
    });
    ExpectImported(keys, plan, QStringLiteral("nothing new"));
}
} // namespace

void AddExchange(Keyboard &keys, TourPlan &plan)
{
    const QString file = plan.programFolder % u"/contacts.csv";
    keys.On(QStringLiteral("frmMain"), QStringLiteral("what is there"),
            [&plan] { plan.exported = Snapshot(); });
    Export(keys, plan, file);
    ChangeNumber(keys, plan);
    ImportTwice(keys, plan, file);
}
