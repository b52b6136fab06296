#pragma once

#include <functional>

class ListView;
class QLineEdit;

/// Typing in `box` searches `list`: from the second character on, the first row from the current one down
/// whose text begins with the entry, regardless of case, is selected and scrolled into view. If there is none
/// below, the search continues from the top. Of "[reference] name" the name is compared as well. Where no row
/// begins so, the box says it.
///
/// Ctrl+F leads to the box from anywhere in its form, and Down from the box into the list. Enter runs `enter`
/// if rows are selected, unless what was typed found nobody.
void BindSearchBox(QLineEdit *box, ListView *list, const std::function<void()> &enter);
