#pragma once

#include "platform/connection/Recordset.h"

#include <QHash>
#include <QList>
#include <QStringList>

/// What a list of people can show beside the name.
enum class PersonDetail { Telephone, Town, Email, Organisation };

/// Every detail, in the order in which lists show them.
const QList<PersonDetail> &AllPersonDetails();
/// The title of its column.
QString PersonDetailTitle(PersonDetail detail);

/// Reads the details that a list shows, and no others, along with the people. Towns and organisations are
/// read once and shared by all rows.
class PersonDetails final
{
public:
    /// Only inside Reported. Reads `City` and `Organisations` if they are asked for.
    explicit PersonDetails(const QList<PersonDetail> &details);

    /// What to append to the columns of a query on `Contacts`: ", Cust_Email"; "" without details.
    QString Columns() const { return m_columns; }
    /// The sub-items of a person; the appended columns start at the number `first`.
    QStringList Of(const Recordset::Row &row, int first) const;

private:
    QList<PersonDetail> m_details;
    QString m_columns;
    QHash<int, QString> m_towns;
    QHash<int, QString> m_organisations;
};
