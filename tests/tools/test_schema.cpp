#include "schema/SchemaScripts.h"
#include "support/Files.h"

#include <QTest>

namespace
{
QString TextOf(const QString &file)
{
    return QString::fromUtf8(ContentOf(QStringLiteral(VELTRANE_DATA_DIR "/") + file));
}

Schema Shipped()
{
    QString error;
    return ReadSchema(TextOf(u"system/schema.sql"_qs), error).value_or(Schema{});
}
} // namespace

class TestSchema final : public QObject
{
    Q_OBJECT

private slots:
    void ServerScriptsAgreeWithTheSchema()
    {
        const QString hint = u"run: cmake --build --preset dev --target server_schemas"_qs;
        const Schema schema = Shipped();
        QCOMPARE(schema.tables.size(), 54);
        QVERIFY2(TextOf(u"server/schema-sqlserver.sql"_qs) == SqlServerScript(schema), qPrintable(hint));
        QVERIFY2(TextOf(u"server/schema-postgresql.sql"_qs) == PostgreSqlScript(schema), qPrintable(hint));
    }

    /// SQL Server refuses an index over a text without a limit, and older ones a row whose key is over 900
    /// bytes: the rest of such an index stands beside its key.
    void IndexKeysFitSqlServer()
    {
        const Schema schema = Shipped();
        const QString script = SqlServerScript(schema);
        for (const Schema::Index &index : schema.indexes) {
            for (const QString &name : index.columns) {
                const Schema::Column *column = schema.Find(index.table)->Find(name);
                QVERIFY2(column->kind != Schema::Kind::Text || (column->size > 0 && column->size <= 450),
                         qPrintable(index.Name()));
            }
        }
        QVERIFY(script.contains("CREATE INDEX [IX_Contacts_Cust_Surname] ON [Contacts] ([Cust_Surname]) "
                                "INCLUDE ([Cust_Forename]);"));
    }

    /// References lead every delete and every join, so each has an index that begins with it.
    void ReferencesAreIndexed()
    {
        const Schema schema = Shipped();
        for (const Schema::Table &table : schema.tables) {
            for (const Schema::Column &column : table.columns) {
                if (column.kind != Schema::Kind::Long || !column.name.endsWith(u"Ref"_qs) ||
                    table.name == u"System"_qs)
                    continue;
                const bool led = std::any_of(
                    schema.indexes.begin(), schema.indexes.end(), [&](const Schema::Index &index) {
                        return index.table == table.name && index.columns.first() == column.name;
                    });
                QVERIFY2(led, qPrintable(table.name + u'.' + column.name));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestSchema)
#include "test_schema.moc"
