#include "database/statements/Sentinel.h"

#include <algorithm>

bool IsSentinel(QStringView table, qint64 key)
{
    static constexpr QStringView tables[] = {u"Contacts", u"Organisations", u"Designation", u"City",
                                             u"County",   u"Country",       u"EthnicGroup", u"ExamName",
                                             u"ExamType", u"Venues"};
    return IsSentinel(key) && std::find(std::begin(tables), std::end(tables), table) != std::end(tables);
}
