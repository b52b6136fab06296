#include "database/connection/BlankTemplate.h"
#include "platform/connection/Connection.h"
#include "schema/SchemaScripts.h"
#include "support/Files.h"

#include <QTemporaryDir>
#include <QTest>

namespace
{
QString TextOf(const QString &file)
{
    return QString::fromUtf8(ContentOf(QStringLiteral(VELTRANE_DATA_DIR "/") + file));
}
} // namespace

/// The description of the tables, the scripts made from it for servers, and the template that the build made.
class TestSchema final : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    Schema m_schema;
    Connection m_template;

private slots:
    void initTestCase()
    {
        QString error;
        const auto schema = ReadSchema(TextOf("system/schema.sql"), error);
        QVERIFY2(schema, qPrintable(error));
        m_schema = *schema;
        const QString file = m_dir.filePath("new.mdb");
        QVERIFY(QFile::copy(QCoreApplication::applicationDirPath() % u"/system/blank", file));
        QVERIFY(m_template.Open(u"DBQ=" % file %
                                u";Driver={Microsoft Access Driver (*.mdb)};DriverId=25;"
                                u"MaxBufferSize=8192;Threads=20;PWD=" %
                                TemplatePassword));
    }

    void ServerScriptsAgreeWithTheSchema()
    {
        const char *hint = "run: cmake --build --preset dev --target server_schemas";
        QCOMPARE(m_schema.tables.size(), 54);
        QVERIFY2(TextOf("server/schema-sqlserver.sql") == SqlServerScript(m_schema), hint);
        QVERIFY2(TextOf("server/schema-postgresql.sql") == PostgreSqlScript(m_schema), hint);
    }

    /// SQL Server refuses an index over a text without a limit, and older ones a row whose key is over 900
    /// bytes: the rest of such an index is stored beside its key.
    void IndexKeysFitSqlServer()
    {
        for (const Schema::Index &index : m_schema.indexes) {
            for (const QString &name : index.columns) {
                const Schema::Column *column = m_schema.Find(index.table)->Find(name);
                QVERIFY2(column->kind != Schema::Kind::Text || (column->size > 0 && column->size <= 450),
                         qPrintable(index.Name()));
            }
        }
        QVERIFY(SqlServerScript(m_schema).contains(
            "CREATE INDEX [IX_Contacts_Cust_Surname] ON [Contacts] ([Cust_Surname]) "
            "INCLUDE ([Cust_Forename]);"));
    }

    /// References lead every delete and every join, so each has an index that begins with it.
    void ReferencesAreIndexed()
    {
        for (const Schema::Table &table : m_schema.tables) {
            for (const Schema::Column &column : table.columns) {
                if (column.kind != Schema::Kind::Long || !column.name.endsWith(u"Ref") ||
                    table.name == u"System")
                    continue;
                const bool led = std::any_of(
                    m_schema.indexes.begin(), m_schema.indexes.end(), [&](const Schema::Index &index) {
                        return index.table == table.name && index.columns.first() == column.name;
                    });
                QVERIFY2(led, qPrintable(table.name + u'.' + column.name));
            }
        }
    }

    /// Joins on a sentinel must find row 1, and the first row that a user adds is never taken for it.
    void HasTheSentinelRows()
    {
        const QStringList tables{"Contacts", "Organisations", "Designation", "City",     "County",
                                 "Country",  "Venues",        "EthnicGroup", "ExamName", "ExamType"};
        for (const QString &table : tables) {
            const auto rows = m_template.OpenRecordset(u"SELECT * FROM " % table);
            QVERIFY2(rows && rows->RowCount() == 1, qPrintable(table));
            QCOMPARE(rows->First().Long(0), 1);
            for (const Schema::Column &column : m_schema.Find(table)->columns) {
                const bool isReference = column.name.endsWith(u"Ref") ||
                                         QStringList({"City", "County", "Country"}).contains(column.name);
                if (isReference && column.kind == Schema::Kind::Long)
                    QCOMPARE(rows->First().Long(column.name), 1);
            }
        }
    }

    /// An import looks for each line by all its values at once: many share a town, few a name. The hint at
    /// people on file comes between keys, and a booking is tested for each resource of each event.
    void LooksWhereLeastIs()
    {
        const std::pair<QString, QString> plans[] = {
            {"ContactRef FROM Contacts WHERE Cust_Forename = 'a' AND Cust_Surname = 'b' AND Cust_City = 4 "
             "AND OrganRef = 1",
             "IX_Contacts_Cust_Surname_Cust_Forename"},
            {"OrganRef FROM Organisations WHERE OrganName = 'x' AND City = 5 AND County = 4 AND Country = 1",
             "IX_Organisations_OrganName"},
            {"TOP 4 ContactRef FROM Contacts WHERE Cust_Surname = 'b' AND Cust_Forename LIKE 'a%' ORDER BY "
             "Cust_Surname,Cust_Forename ASC",
             "IX_Contacts_Cust_Surname_Cust_Forename"},
            {"TOP 4 ContactRef FROM Contacts WHERE Cust_Email = 'a' ORDER BY Cust_Surname,Cust_Forename ASC",
             "IX_Contacts_Cust_Email"},
            {"* FROM StaffEmployed WHERE EDate = 1 AND ContactRef  = 2", "IX_StaffEmployed_ContactRef_EDate"},
            {"* FROM VenuesEmployed WHERE EDate = 1 AND VenueRef = 2", "IX_VenuesEmployed_VenueRef_EDate"},
            {"* FROM FacilitiesEmployed WHERE EDate = 1 AND FacilityRef = 2",
             "IX_FacilitiesEmployed_FacilityRef_EDate"},
        };
        for (const auto &[query, index] : plans) {
            const auto plan = m_template.OpenRecordset(u"EXPLAIN QUERY PLAN SELECT " % query);
            QVERIFY(plan && !plan->IsEmpty());
            const QString detail = plan->First().Text(u"detail");
            QVERIFY2(detail.contains(index), qPrintable(detail));
        }
    }
};

QTEST_GUILESS_MAIN(TestSchema)
#include "test_schema.moc"
