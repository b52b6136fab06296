#include "contacts/ContactListODBC.h"
#include "contacts/ContactModule.h"
#include "contacts/People.h"
#include "controls/ComboModel.h"
#include "core/Session.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"
#include "support/TestDatabase.h"

#include <QTest>

namespace
{
const QString exists = QStringLiteral("Item already exists in database.");

QStringList Texts(const ComboModel &list)
{
    QStringList texts;
    for (int row = 0; row < list.Count(); ++row)
        texts.append(list.At(row).text);
    return texts;
}
} // namespace

class TestContactLists : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void PeopleInAList();
    void PeopleInADropDown();
    void Vocabularies_data();
    void Vocabularies();
    void Sentinel();
    void References();
    void SafeTexts();
    void ExtraColumn();
    void Deletes_data();
    void Deletes();

private:
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
};

void TestContactLists::init()
{
    m_database = std::make_unique<TestDatabase>();
    m_dialogs = std::make_unique<ScriptedDialogs>();
    gShowIDs = 0;
}

void TestContactLists::cleanup()
{
    gShowIDs = 0;
    m_dialogs.reset();
    m_database.reset();
}

void TestContactLists::PeopleInAList()
{
    ContactRecord zoe = Person("Zoe", "bell");
    zoe.referenceId = QStringLiteral("Z9");
    const int second = Contact_Add(zoe);
    const int first = Contact_Add(Person("Anna", "Bell"));
    Contact_Add(Person("", "Nameless"));
    Contact_Add(Person("Nameless", ""));
    Sql("INSERT INTO Contacts (Cust_Surname) VALUES ('Half')");

    ListModel list;
    list.Add({"?77", "left over"});
    Contact_FillListView(ContactSection::Contacts, list);
    QCOMPARE(Texts(list), QStringList({"Bell, Anna", "bell, Zoe"}));
    QCOMPARE(Keys(list), QStringList({u'?' % SqlNumber(first), u'?' % SqlNumber(second)}));

    gShowIDs = 1;
    ADO_Contact_Fill(list);
    QCOMPARE(Texts(list), QStringList({"Bell, Anna", "[Z9] bell, Zoe"}));
}

void TestContactLists::PeopleInADropDown()
{
    const int anna = Contact_Add(Person("Anna", "Bell"));
    Contact_Add(Person("", "Half"));
    Contact_Add(Person("", ""));

    ComboModel list;
    Contact_FillList(ContactSection::Contacts, list, true);
    QCOMPARE(Texts(list), QStringList({SelectOrTypeNewText(), "Bell, Anna", "Half, "}));
    QCOMPARE(list.CurrentData(), 1);
    Contact_FillList(ContactSection::Contacts, list, false);
    QCOMPARE(Texts(list), QStringList({"Bell, Anna", "Half, "}));
    QCOMPARE(list.CurrentData(), anna);
}

void TestContactLists::Vocabularies_data()
{
    QTest::addColumn<ContactSection>("code");
    for (const ContactSectionInfo &section : ContactSections()) {
        if (section.code != ContactSection::Characteristics)
            QTest::newRow(qPrintable(section.caption)) << section.code;
    }
}

/// One story for every vocabulary: add, add again, see, rename, and no second one of the same name.
void TestContactLists::Vocabularies()
{
    QFETCH(ContactSection, code);
    const int key = Contact_AddItem(code, "Yorkshire", "");
    QVERIFY(key > 0);
    m_dialogs->Expect("Add Item", exists);
    QCOMPARE(Contact_AddItem(code, "Yorkshire", ""), 0);
    const int other = Contact_AddItem(code, "Yorkshire", "Y");
    QVERIFY(other > key);

    QCOMPARE(Contact_UpdateItem(code, key, "Yorkshire", ""), key);
    m_dialogs->Expect("Update Item", exists);
    QCOMPARE(Contact_UpdateItem(code, key, "Yorkshire", "Y"), 0);
    QCOMPARE(Contact_UpdateItem(code, key, "Kent", "K"), key);
    const RefLabel item = Contact_ViewItem(code, key);
    QCOMPARE(item.name, QStringLiteral("Kent"));
    QCOMPARE(item.reference, QStringLiteral("K"));
    QCOMPARE(Contact_ViewItem(code, 4711).name, QString());

    ListModel list;
    Contact_FillListView(code, list);
    const int kent = list.Find(u'?' % SqlNumber(key));
    QCOMPARE(list.At(kent).text, QStringLiteral("Kent"));
    QVERIFY(kent < list.Find(u'?' % SqlNumber(other)));
    QCOMPARE(list.SelectedRows(), std::vector<int>{0});
}

void TestContactLists::Sentinel()
{
    Contact_AddItem(ContactSection::Cities, "York", "");
    ComboModel choices;
    Contact_FillList(ContactSection::Cities, choices, true);
    QCOMPARE(choices.At(0).text, SelectOrTypeNewText());
    QCOMPARE(choices.CurrentData(), 1);
    Contact_FillList(ContactSection::Cities, choices, false);
    QCOMPARE(choices.At(0).text, QString());
    QCOMPARE(choices.CurrentData(), 1);
    ListModel list;
    Contact_FillListView(ContactSection::Cities, list);
    QVERIFY(!list.Contains("?1"));
}

void TestContactLists::References()
{
    gShowIDs = 1;
    const int york = Contact_AddItem(ContactSection::Cities, "York", "YK");
    ComboModel list;
    Contact_FillList(ContactSection::Cities, list, true);
    list.ChooseData(york);
    QCOMPARE(list.CurrentText(), QStringLiteral("[YK] York"));
}

void TestContactLists::SafeTexts()
{
    const QString name = QStringLiteral("'; DELETE FROM City; -- %1 O'Neil");
    const int key = Contact_AddItem(ContactSection::Cities, name, "it's");
    QVERIFY(key > 1);
    QCOMPARE(Contact_ViewItem(ContactSection::Cities, key).name, name);
    QCOMPARE(Contact_UpdateItem(ContactSection::Cities, key, u"x" % name, "it's"), key);
    QCOMPARE(Contact_ViewItem(ContactSection::Cities, key).name, QString(u"x" % name));
}

void TestContactLists::ExtraColumn()
{
    const int key = ADO_Contact_AddItem("Acme", "Organisations", "OrganName", "OrganRef", "A1", "Addr1");
    QCOMPARE(Rows(u"Organisations WHERE OrganName = 'Acme' AND Addr1 = 'Not Known' AND OrganRef = " %
                  SqlNumber(key)),
             1);
}

void TestContactLists::Deletes_data()
{
    QTest::addColumn<ContactSection>("code");
    QTest::addColumn<QStringList>("statements");
    QTest::newRow("title") << ContactSection::Titles
                           << QStringList{
                                  "UPDATE Contacts SET Cust_Designation = 1 WHERE Cust_Designation = ",
                                  "DELETE FROM Designation WHERE Designation_ID = "};
    QTest::newRow("city") << ContactSection::Cities
                          << QStringList{"UPDATE Contacts SET Cust_City = 1 WHERE Cust_City = ",
                                         "UPDATE Organisations SET City = 1 WHERE City = ",
                                         "DELETE FROM City WHERE City_ID = "};
    QTest::newRow("county") << ContactSection::Counties
                            << QStringList{"UPDATE Contacts SET Cust_County = 1 WHERE Cust_County = ",
                                           "UPDATE Organisations SET County = 1 WHERE County = ",
                                           "DELETE FROM County WHERE County_ID = "};
    QTest::newRow("country") << ContactSection::Countries
                             << QStringList{"UPDATE Contacts SET Cust_Country = 1 WHERE Cust_Country = ",
                                            "UPDATE Organisations SET Country = 1 WHERE Country = ",
                                            "DELETE FROM Country WHERE Country_ID = "};
    QTest::newRow("ethnic type") << ContactSection::EthnicTypes
                                 << QStringList{
                                        "UPDATE Contacts SET Cust_Ethnicgroup = 1 WHERE Cust_Ethnicgroup = ",
                                        "DELETE FROM EthnicGroup WHERE Ethnic_ID = "};
    QTest::newRow("characteristic") << ContactSection::Characteristics
                                    << QStringList{"DELETE FROM OrganChars WHERE ConcessionRef = ",
                                                   "DELETE FROM ContactConcession WHERE ConcessionRef = ",
                                                   "DELETE FROM Concessions WHERE ConcessionRef = "};
}

void TestContactLists::Deletes()
{
    QFETCH(ContactSection, code);
    QFETCH(QStringList, statements);
    const int key = code == ContactSection::Characteristics ? Concession_Add("Gone", 0, 0, "")
                                                            : Contact_AddItem(code, "Gone", "");
    ContactRecord record = Person("Anna", "Bell");
    for (int *reference :
         {&record.designation, &record.city, &record.county, &record.country, &record.ethnicGroup})
        *reference = key;
    const int anna = Contact_Add(record);

    StatementLog log;
    QVERIFY(Contact_DeleteItem(code, key));
    QCOMPARE(log.Statements(), statements.replaceInStrings(QRegularExpression("$"), SqlNumber(key)));

    FakeContactView view;
    Contact_Show(view, anna);
    const QHash<ContactSection, int> stored{{ContactSection::Titles, view.record.designation},
                                            {ContactSection::Cities, view.record.city},
                                            {ContactSection::Counties, view.record.county},
                                            {ContactSection::Countries, view.record.country},
                                            {ContactSection::EthnicTypes, view.record.ethnicGroup}};
    QCOMPARE(stored.value(code, 1), 1);
    ListModel list;
    Contact_FillListView(code, list);
    QVERIFY(!list.Contains(u'?' % SqlNumber(key)));
}

QTEST_GUILESS_MAIN(TestContactLists)
#include "test_contact_lists.moc"
