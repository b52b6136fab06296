#include "exchange/csv/CsvMap.h"
#include "exchange/import/ImportState.h"
#include "support/Files.h"
#include "support/ScriptedDialogs.h"

#include <QTemporaryDir>
#include <QTest>

namespace
{
const QByteArray plainMap = "[English]\n[People]=!1\n[Firms]=!11\n[ENDEnglish]\n"
                            "[!1]\n[Key]=%Ref\n[Table]=#PEOPLE\n[Query]=$SELECT [a]=b\n"
                            "[Name]=*Nm\n[Town]=?Tn\n[END]\n"
                            "[!11]\n[Firm]=*Fm\n[END]\n";

CsvMap ShippedMap()
{
    return CsvMap(QStringLiteral(SYSTEM_DATA "/csvmap.dat"));
}

QStringList Names(const CsvMap &map, const QString &language = QStringLiteral("English"))
{
    QStringList names;
    for (const CsvDataSet &set : map.DataSets(language))
        names.append(set.name + '=' + QString::number(set.number));
    return names;
}

QStringList Texts(const CsvMap &map, int number)
{
    QStringList texts;
    for (const CsvMapEntry &entry : map.Entries(QStringLiteral("english"), number))
        texts.append(entry.text + ':' + entry.tag + entry.value);
    return texts;
}

/// The mapping of a header line as "field>target" for each mapped field.
QStringList Mapped(ImportState &state, const QString &folder, const QString &header, int dataSet = 0)
{
    const QString file = folder + "/header.csv";
    WriteFile(file, header.toUtf8() + "\nx\n");
    state.ImportList.SelectOnly(dataSet);
    if (!state.ChooseDataSet() || !state.ChooseFile(file))
        return {"not read"};
    QStringList mapped;
    for (int row = 0; row < state.ImportSel.Count(); ++row) {
        const ListItem &field = state.ImportSel.At(row);
        if (const TreeNode *target = state.TargetOf(row))
            mapped.append(field.text + '>' + target->key + (field.checked ? "" : " unchecked"));
    }
    return mapped;
}
} // namespace

class TestCsvMap final : public QObject
{
    Q_OBJECT

private slots:
    void ReadsDataSetsAndEntries();
    void PassesOverWhatItDoesNotUnderstand_data();
    void PassesOverWhatItDoesNotUnderstand();
    void FileThatIsNoMapOffersNothing();
    void ShippedMapMatchesByName();
    void TargetsMoveBetweenRows();
    void ChecksWhatIsMissing();
};

void TestCsvMap::ReadsDataSetsAndEntries()
{
    const CsvMap map = CsvMap::FromBytes(plainMap);
    QCOMPARE(Names(map), (QStringList{"People=1", "Firms=11"}));
    QCOMPARE(Names(map, "ENGLISH"), Names(map));
    QCOMPARE(Names(map, "French"), QStringList());
    QCOMPARE(Texts(map, 1),
             (QStringList{"Key:%Ref", "Table:#PEOPLE", "Query:$SELECT [a]=b", "Name:*Nm", "Town:?Tn"}));
    QCOMPARE(Texts(map, 11), QStringList{"Firm:*Fm"});
    QCOMPARE(Texts(map, 2), QStringList());
    QCOMPARE(CsvMap::ValueOf(map.Entries("English", 1), u'#'), QStringLiteral("PEOPLE"));
    QCOMPARE(CsvMap::ValueOf(map.Entries("English", 11), u'#'), QString());
}

void TestCsvMap::PassesOverWhatItDoesNotUnderstand_data()
{
    QTest::addColumn<QByteArray>("map");
    QTest::addColumn<QStringList>("sets");
    QTest::addColumn<QStringList>("entries"); // of data set 1
    using L = QStringList;
    QTest::newRow("blanks and letter case")
        << QByteArray("  [eNGLISH] \n [A]= !1 \n[endENGLISH]\n x [!1] y\n [B]= *c \n[end]\n[C]=?d")
        << L{"A=1"} << L{"B:*c"};
    QTest::newRow("block without an end")
        << QByteArray("[English]\n[A]=!1\n[!1]\n[B]=*c\n[C]=?d") << L{"A=1"} << L{"B:*c", "C:?d"};
    QTest::newRow("lines that are nothing")
        << QByteArray("[English]\n[A\nA]=!1\n[A]=1\n[A]=!x\n[A]=\n=!1\n[Z]=!1\n[ENDEnglish]\n[!1]\nB\n[B\n[B]"
                      "\n[B]=\n]=[\n[B]=*c\n[END]")
        << L{"Z=1"} << L{"B:*c"};
    QTest::newRow("block before its language")
        << QByteArray("[!1]\n[B]=*c\n[END]\n[English]\n[A]=!1\n") << L{"A=1"} << L{};
    QTest::newRow("half a line at the end, a million before")
        << QByteArray("[x]\n").repeated(1000000) + "[English]\n[A]=!1\n[ENDEnglish]\n[!1]\n[B]=*c\n[C]="
        << L{"A=1"} << L{"B:*c"};
}

void TestCsvMap::PassesOverWhatItDoesNotUnderstand()
{
    QFETCH(QByteArray, map);
    const CsvMap read = CsvMap::FromBytes(map);
    QTEST(Names(read), "sets");
    QTEST(Texts(read, 1), "entries");
}

void TestCsvMap::FileThatIsNoMapOffersNothing()
{
    for (const char *file : {"/no/such/csvmap.dat", "/tmp", "/bin/sh", DEMO_DATA "/people.csv"}) {
        ImportState state{CsvMap(file)};
        ScriptedDialogs user;
        user.Expect("CSV Import", "No selected/available items to import.");
        QVERIFY(!state.ChooseDataSet());
    }
}

void TestCsvMap::ShippedMapMatchesByName()
{
    const QTemporaryDir folder;
    ImportState state(ShippedMap());
    const auto mapped = [&](const char *header) { return Mapped(state, folder.path(), header).join(','); };
    // Special names before general ones, and the other way round.
    QCOMPARE(mapped("JOB TITLE,Title,Evening Telephone,Telephone,Ethnicity,City,E-mail address,Address 2"),
             "JOB TITLE>?JobTitle,Evening Telephone>?Cust_TelEve,Ethnicity>?Type,E-mail address>?Cust_Email,"
             "Address 2>?Cust_Addr2");
    QCOMPARE(mapped("Title,Job Title,Telephone,Telephone Extension,City,Ethnic group,Address 1,Address 2"),
             "Title>?Title,Job Title>?JobTitle,Telephone>?Cust_TelDay,Telephone Extension>?Cust_TelExt,"
             "City>?City,Ethnic group>?Type,Address 1>*Cust_Addr1,Address 2>?Cust_Addr2");
    QCOMPARE(mapped("Name,Contact preference,Country,Counts,Mobile"), "Country>?Country");
    // What the program writes with these names it can read again, every field to its own target.
    for (const int dataSet : {0, 1}) {
        Mapped(state, folder.path(), "x", dataSet);
        QStringList names;
        QStringList expected;
        for (const TreeNode *target : state.ImportKey.Nodes()) {
            names.append(target->text);
            expected.append(target->text + '>' + target->key);
        }
        QCOMPARE(Mapped(state, folder.path(), names.join(','), dataSet), expected);
    }
}

void TestCsvMap::TargetsMoveBetweenRows()
{
    const QTemporaryDir folder;
    ImportState state(CsvMap::FromBytes(plainMap));
    QCOMPARE(Mapped(state, folder.path(), "First,Name,Town"), (QStringList{"Name>*Nm", "Town>?Tn"}));
    QCOMPARE(state.ImportSel.At(1).key, QStringLiteral("*2-Nm"));
    QCOMPARE(state.ImportSel.At(1).subItems, QStringList{"Name"});
    state.SetTarget(0, state.ImportKey.Find("*Nm"));
    QCOMPARE(state.ImportSel.At(0).key, QStringLiteral("*1-Nm"));
    QCOMPARE(state.ImportSel.At(1).key, QStringLiteral("?2"));
    QCOMPARE(state.ImportSel.At(1).subItems, QStringList{""});
    state.ImportSel.SetChecked(1, true);
    QVERIFY2(!state.ImportSel.At(1).checked, "a field without a target cannot be ticked");
}

void TestCsvMap::ChecksWhatIsMissing()
{
    const QTemporaryDir folder;
    ImportState state(ShippedMap());
    ScriptedDialogs user;
    Mapped(state, folder.path(), "Surname,Fax,Else");
    user.Expect("CSV Import", "The following fields are required:\n    Forename\n    Address\n");
    QVERIFY(!state.CheckMapping());
    state.ImportSel.SetChecked(0, false);
    state.ImportSel.SetChecked(1, false);
    user.Expect("CSV Import", "No fields to import.");
    QVERIFY(!state.CheckMapping());
    Mapped(state, folder.path(), "Surname,Forename,Address");
    QVERIFY(state.CheckMapping());
}

QTEST_GUILESS_MAIN(TestCsvMap)
#include "test_csvmap.moc"
