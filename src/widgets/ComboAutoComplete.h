#pragma once

class QComboBox;

namespace cintal {

// Type-ahead for an editable combo box, called with each key pressed: the
// typed part stays before the cursor and the rest of the first item that
// begins with it is proposed, selected. Returns the key to hand on to the
// box; 0 swallows it.
int ComboAutoComplete(QComboBox* combo, int keyAscii, bool strict);

} // namespace cintal
