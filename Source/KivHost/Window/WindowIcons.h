// WindowIcons: the pictures of the tool bar, drawn for the size and colours at hand.
#ifndef KIVHOST_WINDOWICONS_H
#define KIVHOST_WINDOWICONS_H

#include <QIcon>
#include <QString>

class QPalette;

namespace KivSystem {

/// The icon of the action with that object name; a null one for an action without a picture.
QIcon toolIcon(const QString &action, const QPalette &palette);

} // namespace KivSystem

#endif
