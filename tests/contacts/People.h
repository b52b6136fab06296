#pragma once

#include "contacts/ContactRecord.h"
#include "contacts/ContactRecordODBC.h"
#include "controls/ListModel.h"
#include "support/TestDatabase.h"

#include <QStringList>

/// A valid person; a test changes what matters to it.
inline ContactRecord Person(const QString &forename, const QString &surname)
{
    ContactRecord record;
    record.forename = forename;
    record.surname = surname;
    record.addr1 = QStringLiteral("1 Mill Lane");
    record.dob = 19800229;
    return record;
}

/// Every field of its own, so that two that are mixed up show.
inline ContactRecord FullPerson()
{
    ContactRecord r = Person(QStringLiteral("Anna"), QStringLiteral("Bell"));
    r.designation = 2;
    r.addr2 = QStringLiteral("addr2");
    r.addr3 = QStringLiteral("addr3");
    r.addr4 = QStringLiteral("addr4");
    r.county = 3;
    r.postcode = QStringLiteral("AB1 2CD");
    r.city = 4;
    r.country = 5;
    r.telEve = QStringLiteral("eve");
    r.telDay = QStringLiteral("day");
    r.telExt = QStringLiteral("ext");
    r.fax = QStringLiteral("fax");
    r.email = QStringLiteral("a@b.example");
    r.url = QStringLiteral("b.example");
    r.ethnicGroup = 6;
    r.sex = 1;
    r.notes = QStringLiteral("no nuts");
    r.organRef = 7;
    r.contactContactRef = 8;
    r.jobTitle = QStringLiteral("Tutor");
    r.referenceId = QStringLiteral("R-1");
    r.altRef = {QStringLiteral("a1"), QStringLiteral("a2"), QStringLiteral("a3"), QStringLiteral("a4")};
    return r;
}

/// The fields as one list of texts, in the order of the arguments of add and update.
inline QStringList Fields(const ContactRecord &r)
{
    const auto number = [](int value) { return QString::number(value); };
    return {number(r.designation),
            r.forename,
            r.surname,
            r.addr1,
            r.addr2,
            r.addr3,
            r.addr4,
            number(r.dob),
            number(r.county),
            r.postcode,
            number(r.city),
            number(r.country),
            r.telEve,
            r.telDay,
            r.telExt,
            r.fax,
            r.email,
            r.url,
            number(r.ethnicGroup),
            number(r.sex),
            r.notes,
            number(r.organRef),
            number(r.contactContactRef),
            r.jobTitle,
            r.referenceId,
            r.altRef[0],
            r.altRef[1],
            r.altRef[2],
            r.altRef[3]};
}

/// A record screen without a screen.
class FakeContactView final : public ContactView
{
public:
    void ShowLoading(const QString &notice) override { calls.append(notice); }
    void ShowDeleted(const QString &placeholder) override { calls.append(placeholder); }
    void ShowRecord(const ContactRecord &shown) override
    {
        record = shown;
        calls.append(QStringLiteral("record"));
    }
    ListModel &AvailCriteria() override { return available; }
    ListModel &UsedCriteria() override { return used; }
    void ShowLoaded() override { calls.append(QStringLiteral("loaded")); }

    QStringList calls;
    ContactRecord record;
    ListModel available;
    ListModel used;
};

inline QStringList Texts(const ListModel &list)
{
    QStringList texts;
    for (int row = 0; row < list.Count(); ++row)
        texts.append(list.At(row).text);
    return texts;
}

inline QStringList Keys(const ListModel &list)
{
    QStringList keys;
    for (int row = 0; row < list.Count(); ++row)
        keys.append(list.At(row).key);
    return keys;
}

/// Runs a statement of a test's own set-up.
inline void Sql(const QString &statement)
{
    TestDatabase::Run({statement});
}

/// The number of rows that a condition finds ("Contacts WHERE ...").
inline int Rows(const QString &fromWhere)
{
    return static_cast<int>(TestDatabase::Rows(u"SELECT * FROM " % fromWhere).size());
}
