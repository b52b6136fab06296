#pragma once

#include <QStringList>

#include <vector>

/// The order of the rows whose cells these are, as their positions: cells that all hold amounts or all hold
/// days ("9/3/2026") are sorted by their values, an empty one coming first, any others by their texts. Rows
/// that are equal keep their order.
std::vector<int> CellOrder(const QStringList &cells, Qt::SortOrder order);
