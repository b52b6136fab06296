#include "tour/TourPlan.h"

#include "database/statements/MiscODBC.h"

int RowsOf(const QString &sql)
{
    const auto rows = TryOpenRecordset(sql);
    return rows ? rows->RowCount() : -1;
}

QString TextOf(const QString &sql)
{
    const auto rows = TryOpenRecordset(sql);
    return rows && !rows->IsEmpty() ? rows->First().Text(0) : QString();
}

QString KeyOf(const QString &person)
{
    const QString surname = person.section(QLatin1String(", "), 0, 0);
    const QString forename = person.section(QLatin1String(", "), 1);
    return TextOf(u"SELECT ContactRef FROM Contacts WHERE Cust_Surname = '" %
                  QString(surname).replace(u'\'', QLatin1String("''")) % u"' AND Cust_Forename = '" %
                  QString(forename).replace(u'\'', QLatin1String("''")) % u"'");
}
