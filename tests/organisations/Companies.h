#pragma once

#include "contacts/People.h"
#include "contacts/lists/VocabularyModule.h"
#include "controls/ListModel.h"
#include "organisations/record/OrganisationRecordODBC.h"
#include "organisations/record/OrganisationVersion.h"

/// A valid organisation; a test changes what matters to it.
inline OrganisationRecord Company(const QString &name, const QString &referenceId = {})
{
    OrganisationRecord record;
    record.name = name;
    record.referenceId = referenceId;
    record.addr1 = u"1 " % name % u" Street";
    return record;
}

/// A person who works at an organisation.
inline int Employee(const QString &forename, const QString &surname, int organRef)
{
    ContactRecord record = Person(forename, surname);
    record.organRef = organRef;
    return Contact_Add(record);
}

inline int OrganisationOf(int contactRef)
{
    return TestDatabase::Value(u"SELECT OrganRef FROM Contacts WHERE ContactRef = " % SqlNumber(contactRef))
        .toInt();
}

inline int Venue(const QString &name, int organRef)
{
    TestDatabase::Run({u"INSERT INTO Venues (Description,OrganRef,ReferenceID) VALUES ('" % name % u"'," %
                       SqlNumber(organRef) % u",'')"});
    return TestDatabase::Value(u"SELECT VenueRef FROM Venues WHERE Description = '" % name % u"'").toInt();
}

inline int Facility(const QString &name, int organRef)
{
    TestDatabase::Run({u"INSERT INTO Facilities (Name,OrganRef,ReferenceID) VALUES ('" % name % u"'," %
                       SqlNumber(organRef) % u",'')"});
    return TestDatabase::Value(u"SELECT FacilityRef FROM Facilities WHERE Name = '" % name % u"'").toInt();
}

inline QString PlaceKey(int reference)
{
    return u'!' % SqlNumber(reference);
}

/// Writes an organisation as a screen does that holds nothing but the record.
inline int Update(int organRef, OrganisationRecord record)
{
    StoredOrganisation none;
    FieldValues unknown;
    return Organisation_Update(OrganRef(organRef), record, none.Lists(), unknown);
}
