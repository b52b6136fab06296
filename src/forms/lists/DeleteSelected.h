#pragma once

#include <QString>

#include <functional>

class ListModel;
struct ListItem;

enum class Deletion { Done, Kept, Failed };

/// Walks the selected rows of a list of the maintenance screens: asks about each, and takes those out of the
/// list that `erase` deletes. What the user keeps is no longer selected. A deletion that failed ends the
/// walk.
/// `word` is what the question calls a row.
void DeleteSelected(ListModel &list, const std::function<Deletion(const ListItem &)> &erase,
                    const QString &word = QStringLiteral("item"));
