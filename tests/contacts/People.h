#pragma once

#include "contacts/record/ContactRecord.h"
#include "contacts/record/ContactRecordODBC.h"
#include "contacts/record/ContactVersion.h"
#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "core/session/Session.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"

#include <QStringList>

/// What a test of the logic starts with: an empty database and a script of boxes.
struct LogicFixture {
    LogicFixture() { gShowIDs = 0; }

    TestDatabase database;
    ScriptedDialogs dialogs;
};

const QString engineFailure =
    QStringLiteral("A number of errors have been detected, please seek technical support.");

/// The title under which this engine tells of a failure.
inline QString FailureTitle()
{
    gConnection.OpenRecordset("SELECT no_such_thing FROM Contacts");
    return gConnection.Errors().first().source;
}

/// A valid person; a test changes what matters to it.
inline ContactRecord Person(const QString &forename, const QString &surname)
{
    ContactRecord record;
    record.forename = forename;
    record.surname = surname;
    record.addr1 = "1 Mill Lane";
    record.dob = 19800229;
    return record;
}

inline std::vector<int *> NumberFields(ContactRecord &r)
{
    return {&r.designation, &r.dob,      &r.county,           &r.city, &r.country, &r.sex,
            &r.ethnicGroup, &r.organRef, &r.contactContactRef};
}

inline std::vector<QString *> TextFields(ContactRecord &r)
{
    return {&r.forename, &r.surname,     &r.addr1,     &r.addr2,     &r.addr3,     &r.addr4,    &r.postcode,
            &r.telEve,   &r.telDay,      &r.telExt,    &r.fax,       &r.email,     &r.url,      &r.notes,
            &r.jobTitle, &r.referenceId, &r.altRef[0], &r.altRef[1], &r.altRef[2], &r.altRef[3]};
}

/// Every field with a value of its own, so that two that are mixed up show.
inline ContactRecord FullPerson()
{
    ContactRecord person;
    int number = 2;
    for (int *field : NumberFields(person))
        *field = number++;
    for (QString *field : TextFields(person))
        *field = u"text " % QString::number(number++);
    return person;
}

/// All fields as one list of texts.
inline QStringList Fields(ContactRecord person)
{
    QStringList texts;
    for (const int *field : NumberFields(person))
        texts += QString::number(*field);
    for (const QString *field : TextFields(person))
        texts += *field;
    return texts;
}

/// What a person's screen is filled with.
struct ShownContact : StoredContact {
    explicit ShownContact(int contactRef)
        : file(ADO_Contact_ShowContact(ContactRef(contactRef), Lists(), {groupList, groupTree}))
    {
    }
    ListModel groupList;
    TreeModel groupTree;
    ReadRow<ContactFile> file;
};

inline QString Key(int reference)
{
    return u'?' % QString::number(reference);
}

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

inline ContactRecord Stored(int contactRef)
{
    return ShownContact(contactRef).file->record;
}

/// Writes a person as a screen does that holds nothing but the record.
inline int Update(int contactRef, ContactRecord record)
{
    StoredContact none;
    FieldValues unknown;
    return Contact_Update(ContactRef(contactRef), record, none.Lists(), unknown);
}
