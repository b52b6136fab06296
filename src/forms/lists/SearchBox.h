#pragma once

class ListView;
class QLineEdit;

/// Typing in `box` moves in `list`: from the second character on, the first row from the current one down
/// whose text begins with the entry, case aside, is selected and scrolled into view. Where there is none
/// below, the walk goes on from the top.
void BindSearchBox(QLineEdit *box, ListView *list);
