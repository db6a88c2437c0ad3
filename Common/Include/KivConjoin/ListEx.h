/// QListEx: the list type of the application's older interfaces.

#ifndef KIVCONJOIN_LISTEX_H
#define KIVCONJOIN_LISTEX_H

#include <QList>

namespace KivSystem {

/// A list with the interface of QList.
template <class T>
using QListEx = QList<T>;

} // namespace KivSystem

#endif
