#include "contacts/lists/ContactListODBC.h"

#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/Sentinel.h"

#include <array>
#include <charconv>
#include <string>

namespace
{
/// `more` are further columns (", Cust_Email"), which come after those of PeopleColumn.
Recordset OpenPeople(const QString &more = {})
{
    return OpenRecordset(u"SELECT ContactRef, Cust_Surname, Cust_Forename, ReferenceID" % more %
                         u" FROM Contacts ORDER BY Cust_Surname,Cust_Forename ASC");
}

/// The columns of OpenPeople: looked up by number, since the list holds a hundred thousand people.
enum PeopleColumn { Reference, Surname, Forename, ReferenceId, FirstDetail };

/// What the lists of people show, with one piece of memory a text: with a hundred thousand rows that is
/// what the time goes to.
class PersonReader final
{
public:
    void Read(const Recordset::Row &row)
    {
        m_text.clear();
        if (gShowIDs != 0 && row.HasText(ReferenceId)) {
            m_text += u'[';
            row.AppendText(ReferenceId, m_text);
            m_text += u"] ";
        }
        hasSurname = row.HasText(Surname);
        hasForename = row.HasText(Forename);
        row.AppendText(Surname, m_text);
        m_text += u", ";
        row.AppendText(Forename, m_text);
    }
    /// "surname, forename" of the row read last, with the site's reference in front where that is shown.
    QString Label() const { return QString::fromStdU16String(m_text); }
    static QString Key(const Recordset::Row &row)
    {
        std::array<char, 24> key{'?'};
        const auto end = std::to_chars(key.data() + 1, key.data() + key.size(), row.Long(Reference)).ptr;
        return QString::fromLatin1(key.data(), end - key.data());
    }

    bool hasSurname = false;
    bool hasForename = false;

private:
    std::u16string m_text;
};

/// The columns of OpenItems.
enum ItemColumn { ItemReference, ItemName, ItemKey };

Recordset OpenItems(const QString &nameColumn, const QString &keyColumn, const QString &table)
{
    return OpenRecordset(u"SELECT ReferenceID," % nameColumn % u", " % keyColumn % u" FROM " % table %
                         u" ORDER BY " % nameColumn % u" ASC");
}

QString ItemLabel(const Recordset::Row &row)
{
    return FormatRefLabel(row.Text(ItemReference), row.Text(ItemName));
}

QString SameItem(const QString &name, const QString &table, const QString &nameColumn,
                 const QString &referenceId)
{
    return u"SELECT * FROM " % table % u" WHERE " % nameColumn % u"= '" % name % u"' AND ReferenceID = '" %
           referenceId % u"'";
}
} // namespace

void ADO_Contact_Fill(ListModel &list, const QList<PersonDetail> &details)
{
    Reported("ADO_Contact_Fill", [&] {
        const PersonDetails more(details);
        const Recordset people = OpenPeople(more.Columns());
        std::vector<ListItem> items;
        items.reserve(static_cast<size_t>(people.RowCount()));
        PersonReader person;
        for (const Recordset::Row row : people) {
            person.Read(row);
            if (person.hasSurname && person.hasForename)
                items.push_back({PersonReader::Key(row), person.Label(), more.Of(row, FirstDetail)});
        }
        list.Fill(std::move(items));
    });
}

void ADO_Contact_FillListC(ComboModel &list, bool withSelectRow)
{
    Reported("ADO_Contact_FillListC", [&] {
        const Recordset people = OpenPeople();
        std::vector<ComboItem> items;
        items.reserve(static_cast<size_t>(people.RowCount()));
        PersonReader person;
        for (const Recordset::Row row : people) {
            const int key = static_cast<int>(row.Long(Reference));
            person.Read(row);
            if (key == 1 && !person.hasSurname) {
                if (withSelectRow)
                    items.push_back({SelectOrTypeNewText(), key});
            } else if (person.hasSurname || person.hasForename) {
                items.push_back({person.Label(), key});
            }
        }
        list.Fill(std::move(items));
        list.SetCurrent(0);
    });
}

void ADO_Contact_FillList(ComboModel &list, const QString &nameColumn, const QString &keyColumn,
                          const QString &table, bool withSelectRow)
{
    Reported("ADO_Contact_FillList", [&] {
        list.Clear();
        const Recordset rows = OpenItems(nameColumn, keyColumn, table);
        std::vector<ComboItem> items;
        items.reserve(static_cast<size_t>(rows.RowCount()));
        for (const Recordset::Row row : rows) {
            const int key = static_cast<int>(row.Long(ItemKey));
            const bool selectRow = withSelectRow && key == 1 && !row.HasText(ItemName);
            items.push_back({selectRow ? SelectOrTypeNewText() : ItemLabel(row), key});
        }
        list.Fill(std::move(items));
        list.SetCurrent(0);
    });
}

bool ADO_Contact_FillList2(ListModel &list, const QString &nameColumn, const QString &keyColumn,
                           const QString &table)
{
    return Reported("ADO_Contact_FillList2", false, [&] {
        list.Clear();
        const Recordset rows = OpenItems(nameColumn, keyColumn, table);
        std::vector<ListItem> items;
        items.reserve(static_cast<size_t>(rows.RowCount()));
        for (const Recordset::Row row : rows) {
            if (row.HasText(ItemName))
                items.push_back({u'?' % row.Text(ItemKey), ItemLabel(row)});
        }
        list.Fill(std::move(items));
        list.SelectFirst();
        return true;
    });
}

bool ShowCharacteristics(ListModel &available, ListModel &used, const QString &held)
{
    used.Clear();
    if (!ADO_Contact_FillList2(available, QStringLiteral("Name"), QStringLiteral("ConcessionRef"),
                               QStringLiteral("Concessions")))
        return false;
    QStringList keys;
    for (const Recordset::Row row : OpenRecordset(held))
        keys.append(u'?' % row.Text(u"ConcessionRef"));
    available.MoveKeys(keys, used);
    available.SelectFirst();
    used.SelectFirst();
    return true;
}

int ADO_Contact_AddItem(const QString &name, const QString &table, const QString &nameColumn,
                        const QString &keyColumn, const QString &referenceId, const QString &extra)
{
    const QString sameItem = SameItem(name, table, nameColumn, referenceId);
    const QString moreColumns = extra.isEmpty() ? QString() : QString(u',' % extra);
    const QString moreValues = extra.isEmpty() ? QString() : QStringLiteral(",'Not Known'");
    return AddRow("ADO_Contact_AddItem", sameItem,
                  u"INSERT INTO " % table % u" (ReferenceID, " % nameColumn % moreColumns % u") VALUES ('" %
                      referenceId % u"','" % name % u'\'' % moreValues % u')',
                  sameItem, keyColumn);
}

int ADO_Contact_UpdateItem(int key, const QString &name, const QString &table, const QString &nameColumn,
                           const QString &keyColumn, const QString &referenceId)
{
    if (IsSentinel(table, key))
        return -1;
    return UpdateRow("ADO_Contact_UpdateItem",
                     SameItem(name, table, nameColumn, referenceId) % u" AND " % keyColumn % u" <> " %
                         SqlNumber(key),
                     u"UPDATE " % table % u" SET " % nameColumn % u" = '" % name % u"', ReferenceID = '" %
                         referenceId % u"' WHERE " % keyColumn % u" = " % SqlNumber(key),
                     key);
}

ReadRow<RefLabel> ADO_ViewItem(int key, const QString &keyColumn, const QString &nameColumn,
                               const QString &table)
{
    return ReadOne<RefLabel>("ADO_ViewItem",
                             u"SELECT ReferenceID," % nameColumn % u" FROM " % table % u" WHERE " %
                                 keyColumn % u" = " % SqlNumber(key),
                             [&nameColumn](const Recordset::Row &row) {
                                 return RefLabel{row.Text(u"ReferenceID"), row.Text(nameColumn)};
                             });
}

bool ADO_Contact_DeleteDesignation(int key)
{
    if (IsSentinel(key))
        return false;
    return RunWithKey("ADO_Contact_DeleteDesignation",
                      {u"UPDATE Contacts SET Cust_Designation = 1 WHERE Cust_Designation = ",
                       u"DELETE FROM Designation WHERE Designation_ID = "},
                      key);
}

bool ADO_Contact_DeleteCity(int key)
{
    if (IsSentinel(key))
        return false;
    return RunWithKey("ADO_Contact_DeleteCity",
                      {u"UPDATE Contacts SET Cust_City = 1 WHERE Cust_City = ",
                       u"UPDATE Organisations SET City = 1 WHERE City = ",
                       u"DELETE FROM City WHERE City_ID = "},
                      key);
}

bool ADO_Contact_DeleteCounty(int key)
{
    if (IsSentinel(key))
        return false;
    return RunWithKey("ADO_Contact_DeleteCounty",
                      {u"UPDATE Contacts SET Cust_County = 1 WHERE Cust_County = ",
                       u"UPDATE Organisations SET County = 1 WHERE County = ",
                       u"DELETE FROM County WHERE County_ID = "},
                      key);
}

bool ADO_Contact_DeleteCountry(int key)
{
    if (IsSentinel(key))
        return false;
    return RunWithKey("ADO_Contact_DeleteCountry",
                      {u"UPDATE Contacts SET Cust_Country = 1 WHERE Cust_Country = ",
                       u"UPDATE Organisations SET Country = 1 WHERE Country = ",
                       u"DELETE FROM Country WHERE Country_ID = "},
                      key);
}

bool ADO_Contact_DeleteEthnic(int key)
{
    if (IsSentinel(key))
        return false;
    return RunWithKey("ADO_Contact_DeleteEthnic",
                      {u"UPDATE Contacts SET Cust_Ethnicgroup = 1 WHERE Cust_Ethnicgroup = ",
                       u"DELETE FROM EthnicGroup WHERE Ethnic_ID = "},
                      key);
}
