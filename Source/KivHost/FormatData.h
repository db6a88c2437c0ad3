// FormatData: the files that a format needs beside the plug-in.
#ifndef KIVHOST_FORMATDATA_H
#define KIVHOST_FORMATDATA_H

class QDir;
class QString;

namespace KivSystem {

/// Why the format with that tag could write nothing: a file below the directory of the plug-ins
/// that is not there or is no XML, named with the place of the fault. Empty when all is well. The
/// formats themselves say nothing of it.
QString findFormatDataFault(const QString &tag, const QDir &pluginsDirectory);

} // namespace KivSystem

#endif
