#pragma once

#include "database/statements/System.h"
#include "database/values/Keys.h"
#include "support/TestDatabase.h"

/// A training provider for tests: people, characteristics and courses, put straight into the tables.
namespace School
{
inline int LastKey(const QString &table, const QString &key)
{
    return TestDatabase::Value(u"SELECT MAX(" % key % u") AS K FROM " % table).toInt();
}

inline ContactRef AddPerson(const QString &forename, const QString &surname)
{
    TestDatabase::Run({u"INSERT INTO Contacts (Cust_Forename,Cust_Surname,Cust_City,Cust_County,Cust_Country,"
                       u"Cust_Designation,Cust_Ethnicgroup,OrganRef,ContactContactRef) VALUES ('" %
                       SqlSafeText(forename) % u"','" % SqlSafeText(surname) % u"',1,1,1,1,1,1,1)"});
    return ContactRef(LastKey("Contacts", "ContactRef"));
}

inline CourseRef AddCourse(const QString &title, double fee, int limit = 0)
{
    TestDatabase::Run({u"INSERT INTO Courses (Title,Description,Fee,Limit,ReferenceID) VALUES ('" %
                       SqlSafeText(title) % u"',''," % SqlNumber(fee) % u',' % SqlNumber(limit) % u",'')"});
    return CourseRef(LastKey("Courses", "CourseRef"));
}

/// Gives a person a characteristic with a percentage and an amount.
inline void AddCharacteristic(ContactRef contactRef, const QString &name, double percentage,
                              double hardDiscount)
{
    TestDatabase::Run({u"INSERT INTO Concessions (ReferenceID,Name,Percentage,HardDiscount) VALUES ('','" %
                       SqlSafeText(name) % u"'," % SqlNumber(percentage) % u',' % SqlNumber(hardDiscount) %
                       u')'});
    TestDatabase::Run({u"INSERT INTO ContactConcession (ContactRef,ConcessionRef) VALUES (" %
                       SqlNumber(contactRef) % u',' % SqlNumber(LastKey("Concessions", "ConcessionRef")) %
                       u')'});
}

inline void SetTax(const QString &name, const QString &rate)
{
    SetSystemValue(SystemRef::TaxName, name);
    SetSystemValue(SystemRef::TaxRate, rate);
}
} // namespace School
