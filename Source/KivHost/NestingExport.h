// What the host tells its user about a marker before the nesting format writes it.

#ifndef KIVHOST_NESTINGEXPORT_H
#define KIVHOST_NESTINGEXPORT_H

#include <QStringList>

namespace KivSystem {

class DocumentMak;

/// The tag of the format that hands pieces to a nesting program.
inline QString nestingFormatTag()
{
    return QStringLiteral("dxf_nester");
}

/// A sentence about a marker whose file will hold less than one may expect; empty for others.
QString nestingRemark(const DocumentMak &document);

/// A sentence for each group in stand-by that the file does not hold, after an export.
QStringList nestingLosses(const DocumentMak &document);

/// Why the nesting format must not be asked, as one sentence; empty when it may. It fuses the
/// groups in stand-by and can do so once in a process: a second export would end the program, so
/// that one that was made is noted.
QString findNestingFault(const DocumentMak &document);
void noteNestingExport(const DocumentMak &document);

} // namespace KivSystem

#endif
