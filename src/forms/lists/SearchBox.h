#pragma once

class ListView;
class QLineEdit;

/// Typing in `box` searches `list`: from the second character on, the first row from the current one down
/// whose text begins with the entry, regardless of case, is selected and scrolled into view. If there is none
/// below, the search continues from the top.
void BindSearchBox(QLineEdit *box, ListView *list);
