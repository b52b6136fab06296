#pragma once

#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "exchange/export/ExportState.h"
#include "exchange/import/ImportState.h"
#include "support/Files.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"

#include <QTemporaryDir>

/// A fresh database, a folder for files and a user: what a test of import or export works with, through the
/// shipped map and in the steps of the wizards.
class Exchange final
{
public:
    static CsvMap ShippedMap() { return CsvMap(QStringLiteral(SYSTEM_DATA "/csvmap.dat")); }
    static QString Sample() { return QStringLiteral(DEMO_DATA "/people.csv"); }

    static QString Summary(int imported, int updated, int skipped)
    {
        return u"Import complete:\n" % QString::number(imported) % u" Records where imported.\n" %
               QString::number(updated) % u" Records where updated.\n" % QString::number(skipped) %
               u" Records where skipped.";
    }
    static QString Exported(int count)
    {
        return u"Export complete:\n" % QString::number(count) % u" Records where exported.";
    }

    QString Path(const QString &name) const { return m_folder.filePath(name); }
    /// A new file of that content.
    QString File(const QByteArray &bytes)
    {
        const QString name = Path(QStringLiteral("in%1.csv").arg(++m_files));
        WriteFile(name, bytes);
        return name;
    }
    static bool Choose(ImportState &state, const QString &file, int dataSet = 0)
    {
        state.ImportList.SelectOnly(dataSet);
        return state.ChooseDataSet() && state.ChooseFile(file) && state.CheckMapping();
    }
    bool Import(const QString &file, int dataSet = 0)
    {
        ImportState state(ShippedMap());
        return Choose(state, file, dataSet) && state.Run(progress);
    }
    bool ImportBytes(const QByteArray &bytes, int dataSet = 0) { return Import(File(bytes), dataSet); }
    /// All fields of the data set.
    bool Export(const QString &file, Progress &run, int dataSet = 0)
    {
        ExportState state(ShippedMap());
        state.ExportList.SelectOnly(dataSet);
        return state.ChooseDataSet() && state.ChooseFields() && state.Run(file, run);
    }
    static void AddPeople(int count, int from = 0)
    {
        WriteGroup group(gConnection);
        for (int person = from; person < from + count; ++person)
            gConnection.Execute(
                u"INSERT INTO Contacts (Cust_Forename, Cust_Surname, Cust_Addr1, Cust_City, Cust_County, "
                u"Cust_Country, Cust_Designation, Cust_Ethnicgroup, OrganRef, Cust_Notes) VALUES ('Ann', "
                u"'Ash " %
                QString::number(person) % u"', '1 High Street', 1, 1, 1, 1, 1, 1, 'to be rung after six')");
        group.Finish();
    }
    static int Count(const QString &table)
    {
        return TestDatabase::Value(u"SELECT COUNT(*) FROM " % table).toInt();
    }

    TestDatabase database;
    ScriptedDialogs user;
    Progress progress;

private:
    QTemporaryDir m_folder;
    int m_files = 0;
};

/// A run in which `act` happens at a row.
class RunWith final
{
public:
    RunWith(int row, std::function<void(Progress &)> act)
        : run(
              [this, row, act = std::move(act)](int done, int) {
                  if (done == row)
                      act(run);
              },
              0)
    {
    }
    RunWith(const RunWith &) = delete;
    RunWith &operator=(const RunWith &) = delete;

    Progress run;
};
