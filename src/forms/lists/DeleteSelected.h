#pragma once

#include <QString>

#include <functional>

class ListModel;
struct ListItem;

enum class Deletion { Done, Kept, Failed };

/// Asks "Okay to delete `what`", and says in a second line what goes with it, if anything. No is the default.
bool MayDelete(const QString &what, const QString &goesWith = {});

/// Goes through the selected rows of a list on a maintenance screen: asks about each, and removes those that
/// `erase` deletes. Rows that the user keeps are no longer selected. A failed deletion ends it. `word` is
/// what the question calls a row; `goesWith` gives the second line of the question.
void DeleteSelected(ListModel &list, const std::function<Deletion(const ListItem &)> &erase,
                    const QString &word = QStringLiteral("item"),
                    const std::function<QString(const ListItem &)> &goesWith = {});
