// KIVCORE_EXPORT marks what libKivCore shows to its users, also to those built with hidden
// visibility: types that cross the library's border keep one type information.
#ifndef KIVCORE_EXPORT_H
#define KIVCORE_EXPORT_H

#include <QtGlobal>

#ifdef KivCore_EXPORTS
#define KIVCORE_EXPORT Q_DECL_EXPORT
#else
#define KIVCORE_EXPORT Q_DECL_IMPORT
#endif

#endif
