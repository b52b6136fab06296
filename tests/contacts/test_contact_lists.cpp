#include "contacts/People.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/ContactListODBC.h"
#include "contacts/lists/VocabularyModule.h"
#include "contacts/record/ContactModule.h"
#include "contacts/record/ContactRecordODBC.h"
#include "controls/ComboModel.h"
#include "organisations/Companies.h"
#include "organisations/lists/OrganisationLinkODBC.h"
#include "organisations/record/AwardBoardODBC.h"
#include "organisations/record/OrganisationModule.h"
#include "organisations/record/OrganisationRecordODBC.h"

#include <QTest>

namespace
{
const QString exists = "Item already exists in database.";

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
    void init() { m = std::make_unique<LogicFixture>(); }
    void cleanup() { m.reset(); }
    void PeopleInAList();
    void PeopleInADropDown();
    void Vocabularies_data();
    void Vocabularies();
    void DeletesMoveToTheSentinel();
    void TheSentinelStays();

private:
    std::unique_ptr<LogicFixture> m;
};

void TestContactLists::PeopleInAList()
{
    ContactRecord zoe = Person("Zoe", "bell");
    zoe.referenceId = "Z9";
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
    const int york = Contact_AddItem(ContactSection::Cities, "York", "YK");
    Sql(u"UPDATE Contacts SET Cust_TelDay = '', Cust_TelEve = '01904', Cust_City = " % SqlNumber(york) %
        u", Cust_Email = 'z@x.org' WHERE ContactRef = " % SqlNumber(second));
    Sql(u"UPDATE Contacts SET Cust_TelDay = '020', Cust_TelEve = '0' WHERE ContactRef = " % SqlNumber(first));
    ADO_Contact_Fill(list, {PersonDetail::Telephone, PersonDetail::Town, PersonDetail::Organisation});
    QCOMPARE(list.At(0).subItems, QStringList({"020", "", ""}));
    QCOMPARE(list.At(1).subItems, QStringList({"01904", "York", ""}));
    Contact_FillListView(ContactSection::Cities, list);
    QCOMPARE(Texts(list), QStringList("[YK] York"));
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
    m->dialogs.Expect("Add Item", exists);
    QCOMPARE(Contact_AddItem(code, "Yorkshire", ""), 0);
    const int other = Contact_AddItem(code, "Yorkshire", "Y");
    QVERIFY(other > key);

    QCOMPARE(Contact_UpdateItem(code, key, "Yorkshire", ""), key);
    m->dialogs.Expect("Update Item", exists);
    QCOMPARE(Contact_UpdateItem(code, key, "Yorkshire", "Y"), 0);
    QCOMPARE(Contact_UpdateItem(code, key, "Kent", "K"), key);
    const RefLabel item = *Contact_ViewItem(code, key);
    QCOMPARE(item.name, u"Kent"_qs);
    QCOMPARE(item.reference, u"K"_qs);
    QVERIFY(Contact_ViewItem(code, 4711).IsMissing());

    // The row that stands for none is a choice, and no row to keep.
    const bool hasSentinel = Rows(ContactSectionOf(code).table) == 3;
    ComboModel choices;
    for (const bool withSelectRow : {true, false}) {
        Contact_FillList(code, choices, withSelectRow);
        QCOMPARE(choices.CurrentText(), !hasSentinel    ? u"Kent"_qs
                                        : withSelectRow ? SelectOrTypeNewText()
                                                        : QString());
        QCOMPARE(choices.CurrentData(), hasSentinel ? 1 : key);
    }
    ListModel list;
    Contact_FillListView(code, list);
    QCOMPARE(list.Count(), 2);
    const int kent = list.Find(u'?' % SqlNumber(key));
    QCOMPARE(list.At(kent).text, u"Kent"_qs);
    QVERIFY(kent < list.Find(u'?' % SqlNumber(other)));
    QCOMPARE(list.SelectedRows(), std::vector<int>{0});
}

/// The row that stands for nothing is neither renamed nor deleted, by whatever way a screen comes to it.
void TestContactLists::TheSentinelStays()
{
    using Code = ContactSection;
    for (const Code code :
         {Code::Contacts, Code::Titles, Code::Cities, Code::Counties, Code::Countries, Code::EthnicTypes}) {
        QVERIFY(!Contact_DeleteItem(code, 1));
        if (code != Code::Contacts)
            QCOMPARE(Contact_UpdateItem(code, 1, "Named", "N"), -1);
        const ContactSectionInfo &section = ContactSectionOf(code);
        QCOMPARE(Rows(section.table % u" WHERE " % section.keyColumn % u" = 1 AND ReferenceID = ''"), 1);
    }
    QCOMPARE(Update(1, Person("Anna", "Bell")), -1);
    QVERIFY(!ADO_Contact_UpdateJobTitle(ContactRef(1), "Boss"));
    QVERIFY(!Organisation_Delete(OrganRef(1)) && !ADO_Organisations_SetAwardFlag(OrganRef(1), true));
    QVERIFY(!ADO_Organisation_AddContact(ContactRef(1), OrganRef(2)) &&
            !ADO_Organisation_AddVenue(VenueRef(1), OrganRef(2)));
    OrganisationRecord named;
    named.name = "Named";
    QCOMPARE(Update(1, named), -1);
    QCOMPARE(Rows("Organisations WHERE OrganRef = 1 AND OrganName = '' AND Board = 0"), 1);
    QCOMPARE(Rows("Contacts WHERE ContactRef = 1 AND Cust_Surname = '' AND OrganRef = 1"), 1);
    QCOMPARE(Rows("Venues WHERE VenueRef = 1 AND OrganRef = 1"), 1);
    // Row 1 of what has no sentinel is a row like any other.
    const int type = Contact_AddItem(Code::GroupTypes, "Family", "");
    QCOMPARE(Contact_UpdateItem(Code::GroupTypes, type, "Kin", ""), type);
}

/// Who had a row of a vocabulary has the sentinel when it goes, and so has an organisation.
void TestContactLists::DeletesMoveToTheSentinel()
{
    const std::pair<ContactSection, int ContactRecord::*> vocabularies[] = {
        {ContactSection::Titles, &ContactRecord::designation},
        {ContactSection::Cities, &ContactRecord::city},
        {ContactSection::Counties, &ContactRecord::county},
        {ContactSection::Countries, &ContactRecord::country},
        {ContactSection::EthnicTypes, &ContactRecord::ethnicGroup}};
    ContactRecord record = Person("Anna", "Bell");
    for (const auto &[code, column] : vocabularies)
        record.*column = Contact_AddItem(code, "Gone", "");
    const int anna = Contact_Add(record);
    Sql(u"INSERT INTO Organisations (OrganName, City, County, Country) VALUES ('Acme'," %
        SqlNumber(record.city) % u',' % SqlNumber(record.county) % u',' % SqlNumber(record.country) % u')');
    for (const auto &[code, column] : vocabularies) {
        QVERIFY(Contact_DeleteItem(code, record.*column));
        QCOMPARE(Stored(anna).*column, 1);
        QVERIFY(Contact_ViewItem(code, record.*column).IsMissing());
    }
    QCOMPARE(Rows("Organisations WHERE OrganName = 'Acme' AND City = 1 AND County = 1 AND Country = 1"), 1);

    const int member = Concession_Add("Member", 0, 0, "");
    Sql(u"INSERT INTO ContactConcession (ContactRef,ConcessionRef) VALUES (7," % SqlNumber(member) % u')');
    Sql(u"INSERT INTO OrganChars (OrganRef,ConcessionRef) VALUES (7," % SqlNumber(member) % u')');
    QVERIFY(Contact_DeleteItem(ContactSection::Characteristics, member));
    QCOMPARE(Rows("ContactConcession") + Rows("OrganChars") + Rows("Concessions"), 0);
}

QTEST_GUILESS_MAIN(TestContactLists)
#include "test_contact_lists.moc"
