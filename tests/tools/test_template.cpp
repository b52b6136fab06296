#include "database/BlankTemplate.h"
#include "platform/Connection.h"
#include "schema/Schema.h"
#include "support/Files.h"

#include <QTemporaryDir>
#include <QTest>

namespace
{
QString TextFor(const QString &file, const QString &password)
{
    return u"DBQ=" % file % u";Driver={Microsoft Access Driver (*.mdb)};DriverId=25;MaxBufferSize=8192;" %
           u"Threads=20;PWD=" % password;
}
} // namespace

/// The template that the build made, opened through the file engine.
class TestTemplate final : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_file = m_dir.filePath(u"new.mdb"_qs);
    Schema m_schema;
    Connection m_connection;

private slots:
    void initTestCase()
    {
        QString error;
        const QByteArray description = ContentOf(QStringLiteral(VELTRANE_DATA_DIR "/system/schema.sql"));
        const auto schema = ReadSchema(QString::fromUtf8(description), error);
        QVERIFY2(schema, qPrintable(error));
        m_schema = *schema;
        QVERIFY(QFile::copy(QCoreApplication::applicationDirPath() % u"/system/blank", m_file));
    }

    void OpensOnlyWithItsPassword()
    {
        for (const auto *wrong : {"", "Marigold", "marigold "}) {
            QVERIFY(!m_connection.Open(TextFor(m_file, QString::fromLatin1(wrong))));
            QCOMPARE(m_connection.Errors().first().number, -1905);
        }
        QVERIFY(m_connection.Open(TextFor(m_file, TemplatePassword)));
    }

    /// Joins on a sentinel must find row 1, and the first row that a user adds is never taken for it.
    void HasTheSentinelRows()
    {
        const QStringList tables{"Contacts", "Organisations", "Designation", "City",     "County",
                                 "Country",  "Venues",        "EthnicGroup", "ExamName", "ExamType"};
        for (const QString &table : tables) {
            const Schema::Table *described = m_schema.Find(table);
            const auto rows = m_connection.OpenRecordset(u"SELECT * FROM " % table);
            QVERIFY2(rows && rows->RowCount() == 1, qPrintable(table));
            QCOMPARE(rows->First().Long(0), 1);
            for (const Schema::Column &column : described->columns) {
                const bool isReference = column.name.endsWith(u"Ref"_qs) ||
                                         QStringList({"City", "County", "Country"}).contains(column.name);
                if (isReference && column.kind == Schema::Kind::Long)
                    QCOMPARE(rows->First().Long(column.name), 1);
            }
        }
        const auto people = m_connection.OpenRecordset(
            u"SELECT Contacts.ContactRef FROM (((((Contacts INNER JOIN City ON Contacts.Cust_City = "
            "City.City_ID) "
            "INNER JOIN County ON Contacts.Cust_County = County.County_ID) "
            "INNER JOIN Country ON Contacts.Cust_Country = Country.Country_ID) "
            "INNER JOIN Designation ON Contacts.Cust_Designation = Designation.Designation_ID) "
            "INNER JOIN EthnicGroup ON Contacts.Cust_EthnicGroup = EthnicGroup.Ethnic_ID) "
            "INNER JOIN Organisations ON Contacts.OrganRef = Organisations.OrganRef "
            "WHERE Cust_Surname = '' AND City.City = '' AND Organisations.OrganName = ''"_qs);
        QVERIFY(people && people->RowCount() == 1);
    }

    void StartsAtThePresentLevelWithoutUsers()
    {
        QCOMPARE(
            m_connection.OpenRecordset(u"SELECT DBVersion FROM Version"_qs)->First().Double(u"DBVersion"),
            3.0);
        QVERIFY(m_connection.OpenRecordset(u"SELECT * FROM Users"_qs)->IsEmpty());
        QVERIFY(m_connection.OpenRecordset(u"SELECT * FROM System"_qs)->IsEmpty());
    }

    /// What outlives a person, such as a payment, must not fall to the next one added.
    void NeverUsesAKeyTwice()
    {
        const auto add = [this] {
            m_connection.Execute(u"INSERT INTO City (City) VALUES ('Leeds')"_qs);
            const QString find = u"SELECT City_ID FROM City WHERE City = 'LEEDS'"_qs;
            return m_connection.OpenRecordset(find)->First().Long(u"City_ID");
        };
        QCOMPARE(add(), 2);
        QVERIFY(m_connection.Execute(u"DELETE FROM City WHERE City_ID = 2"_qs));
        QCOMPARE(add(), 3);
    }

    /// An import looks for each line by all its values at once: many share a town, few a name.
    void LooksForNamesFirst()
    {
        const QList<std::pair<QString, QString>> plans{
            {"SELECT ContactRef FROM Contacts WHERE Cust_Forename = 'a' AND Cust_Surname = 'b' AND Cust_City "
             "= 4 "
             "AND OrganRef = 1",
             "IX_Contacts_Cust_Surname_Cust_Forename"},
            {"SELECT OrganRef FROM Organisations WHERE OrganName = 'x' AND City = 5 AND County = 4 "
             "AND Country = 1",
             "IX_Organisations_OrganName"},
        };
        for (const auto &[query, index] : plans) {
            const auto plan = m_connection.OpenRecordset(u"EXPLAIN QUERY PLAN " % query);
            QVERIFY(plan && !plan->IsEmpty());
            QVERIFY2(plan->First().Text(u"detail").contains(index),
                     qPrintable(plan->First().Text(u"detail")));
        }
    }

    void HoldsLongTextsWhole()
    {
        const QString text(10'000, QChar(0x00E9));
        QVERIFY(m_connection.Execute(u"INSERT INTO Courses (Title, Description, Limit) VALUES ('" % text %
                                     u"','" % text % u"',5)"));
        const auto rows = m_connection.OpenRecordset(u"SELECT * FROM Courses WHERE Limit = 5"_qs);
        QCOMPARE(rows->First().Text(u"Title"), text);
        QCOMPARE(rows->First().Text(u"Description"), text);
    }
};

QTEST_GUILESS_MAIN(TestTemplate)
#include "test_template.moc"
