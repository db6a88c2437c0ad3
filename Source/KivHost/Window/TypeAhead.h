// TypeAhead: which keys belong to a part of the window, and which to its menus. In a list, typed
// letters look for an entry.
#ifndef KIVHOST_TYPEAHEAD_H
#define KIVHOST_TYPEAHEAD_H

class QWidget;

namespace KivSystem {

/// Letters that are typed while `list` has the focus are its own, also those that are keys of the
/// window's menus.
void keepTypedLetters(QWidget &list);

/// In a field for text, Ctrl+E and Ctrl+K, which would move in it or delete, are keys of the menus.
void leaveControlKeys(QWidget &field);

} // namespace KivSystem

#endif
