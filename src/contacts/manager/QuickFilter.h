#pragma once

#include "platform/connection/Recordset.h"

#include <QString>

#include <vector>

class ListModel;

/// Finds people by anything that a caller says on the telephone: the entry is somewhere in the name (either
/// way round), a telephone number, the e-mail address or the postcode. Everybody is read once, and a key is
/// then a search in memory.
class QuickFilter final
{
public:
    /// Reads everybody who has a name. False on an error. Reads `Contacts`.
    bool Read();
    /// Fills `found` with the first `most` of the people whom the entry finds: key "?" + reference, name,
    /// then telephone, e-mail and postcode. Case does not count, nor, in numbers and postcodes, what is
    /// written between the digits. How many are found altogether.
    int Find(const QString &entry, int most, ListModel &found) const;

private:
    void Append(const Recordset::Row &row);

    Recordset m_people;
    std::u16string m_text;       ///< of everybody, in capitals, a line for each field
    std::vector<size_t> m_begin; ///< where in it a person begins
    std::vector<int> m_rowOf;    ///< the person's row in m_people
};
