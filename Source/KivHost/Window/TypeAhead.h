// TypeAhead: in a list, typed letters look for an entry.
#ifndef KIVHOST_TYPEAHEAD_H
#define KIVHOST_TYPEAHEAD_H

class QWidget;

namespace KivSystem {

/// Letters that are typed while `list` has the focus are its own, also those that are keys of the
/// window's menus.
void keepTypedLetters(QWidget &list);

} // namespace KivSystem

#endif
