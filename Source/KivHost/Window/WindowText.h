// WindowText: the words of the window. They go through Qt's translation, but are kept out of the
// translated files, which hold what the plug-in and the core library say.
#ifndef KIVHOST_WINDOWTEXT_H
#define KIVHOST_WINDOWTEXT_H

#include <QCoreApplication>
#include <QString>

namespace KivSystem {

inline QString windowText(const char *english)
{
    return QCoreApplication::translate("KivHost", english);
}

} // namespace KivSystem

#endif
