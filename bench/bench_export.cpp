#include "Bench.h"

#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "exchange/export/ExportState.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "platform/engines/FileText.h"
#include "support/TestDatabase.h"

#include <QFile>

#include <sqlite3.h>

#include <cstdio>
#include <memory>

namespace
{
constexpr int people = 50'000;
constexpr int birthDate = 20; // columns of the data set's query
constexpr int sex = 21;

void AddPeople()
{
    for (int town = 0; town < 400; ++town)
        gConnection.Execute(u"INSERT INTO City (City) VALUES ('Town " % QString::number(town) % u"')");
    WriteGroup group(gConnection);
    for (int i = 0; i < people; ++i)
        gConnection.Execute(
            u"INSERT INTO Contacts (Cust_Forename, Cust_Surname, Cust_Addr1, Cust_Addr2, Cust_City, "
            u"Cust_County, Cust_Country, Cust_Designation, Cust_Ethnicgroup, OrganRef, Cust_Postcode, "
            u"Cust_TelDay, Cust_Email, Cust_DOB, Cust_Sex, ReferenceID, Cust_Notes) VALUES ('Forename" %
            QString::number(i % 211) % u"', 'Surname" % QString::number(i) % u"', '" %
            QString::number(i % 300) % u" High Street', 'The Old Granary', " % QString::number(2 + i % 400) %
            u", 1, 1, 1, 1, 1, 'AB" % QString::number(i % 90) % u" 1CD', '01632 960" %
            QString::number(i % 1000) % u"', 'surname" % QString::number(i) % u"@example.org', " %
            QString::number(19500101 + i % 28 + 10000 * (i % 50)) % u", " % QString::number(i % 3) % u", 'R" %
            QString::number(i) % u"', 'Asked for the prospectus, and to be rung after six.')");
    Bench::Require(group.Finish(), "the people cannot be stored");
}

QString Query()
{
    return CsvMap::ValueOf(CsvMap::Installed().Entries("English", 1), u'$');
}

/// The loop over the query by hand, writing the same bytes.
class Twin final
{
public:
    explicit Twin(const QString &file)
    {
        Bench::Require(sqlite3_open(file.toUtf8().constData(), &m_handle) == SQLITE_OK &&
                           InstallTextComparison(m_handle),
                       "the twin cannot open");
    }
    ~Twin() { sqlite3_close(m_handle); }
    Twin(const Twin &) = delete;
    Twin &operator=(const Twin &) = delete;

    void Write(const QByteArray &sql, const QByteArray &header, const QString &fileName)
    {
        sqlite3_stmt *statement = nullptr;
        Bench::Require(sqlite3_prepare_v2(m_handle, sql.constData(), -1, &statement, nullptr) == SQLITE_OK,
                       sqlite3_errmsg(m_handle));
        std::FILE *out = std::fopen(fileName.toUtf8().constData(), "wb");
        Bench::Require(out, "the twin cannot write");
        std::fwrite(header.constData(), 1, static_cast<size_t>(header.size()), out);
        const int columns = sqlite3_column_count(statement);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int column = 1; column < columns; ++column) {
                if (column > 1)
                    std::fputc(',', out);
                WriteCell(statement, column, out);
            }
            std::fputs("\r\n", out);
        }
        std::fclose(out);
        sqlite3_finalize(statement);
    }

private:
    static void WriteCell(sqlite3_stmt *statement, int column, std::FILE *out)
    {
        if (column == birthDate) {
            const int date = sqlite3_column_int(statement, column);
            std::fprintf(out, "\"%02d/%02d/%04d\"", date % 100, date / 100 % 100, date / 10000);
        } else if (column == sex) {
            const int value = sqlite3_column_int(statement, column);
            std::fputs(value == 0 ? "\"Not Specified\"" : value == 1 ? "\"Female\"" : "\"Male\"", out);
        } else {
            std::fputc('"', out);
            const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
            for (; text && *text; ++text) {
                if (*text == '"')
                    std::fputc('"', out);
                std::fputc(*text, out);
            }
            std::fputc('"', out);
        }
    }

    sqlite3 *m_handle = nullptr;
};

QByteArray Bytes(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const Bench::Registration exported("export: 50,000 people, all 28 fields", [] {
    auto database = std::make_shared<TestDatabase>();
    AddPeople();
    const QString ours = database->Directory() + "/ours.csv";
    const QString twins = database->Directory() + "/twins.csv";
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 2;
    benchmark.ours = [database, ours] {
        QString told;
        Dialogs::Installed().msgBox = [&told](const QString &text, auto...) {
            told = text;
            return Dialogs::Answer::Ok;
        };
        ExportState state(CsvMap::Installed());
        Bench::Require(state.ChooseDataSet() && state.ChooseFields(), told);
        bool written = false;
        const double took = Bench::Milliseconds([&] {
            Progress progress;
            written = state.Run(ours, progress);
        });
        Bench::Require(written, told);
        return took;
    };
    benchmark.twin = [database, ours, twins] {
        const QByteArray header = Bytes(ours).left(Bytes(ours).indexOf('\n') + 1);
        const double took = Bench::Milliseconds([&] {
            Twin twin(gDBQFilename);
            twin.Write(Query().toUtf8(), header, twins);
        });
        Bench::Require(Bytes(ours) == Bytes(twins), "the twin writes other bytes");
        return took;
    };
    return benchmark;
});
} // namespace
