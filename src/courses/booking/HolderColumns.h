#pragma once

#include "courses/booking/Holders.h"

#include <vector>

class ListModel;

/// The second column of lists of resources that could be booked: "Free" or who holds them at given hours.
class HolderColumns final
{
public:
    /// `available` has rows keyed by a mark and the reference; the column is its first sub-item.
    void Add(ListModel &available, Holders::Of what);
    /// Shows who holds the resources at these hours; the bookings of `apartFrom` do not count, of its staff
    /// those in `role`, or all where there is none.
    void Show(const EventHours &hours, EventRef apartFrom, RoleTypeRef role = {}) const;

private:
    struct Column {
        ListModel *list;
        Holders::Of what;
    };
    std::vector<Column> m_columns;
};
