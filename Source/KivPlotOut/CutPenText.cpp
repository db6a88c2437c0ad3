// The information of a piece, drawn with the pen.

#include "CutProcessor.h"

namespace KivSystem {
namespace NC {

void CutProcessor::exportPieceInfo(const QDomElement &text, const QDomElement &item, QString &out)
{
    for (QDomElement line = text; !line.isNull();
         line = line.nextSiblingElement(QStringLiteral("text"))) {
        exportInfo(line, item, out);
    }
    out.clear();
}

void CutProcessor::exportInfo(
    const QDomElement & /*text*/, const QDomElement & /*item*/, const QString & /*format*/)
{
    // No strokes are drawn yet.
}

} // namespace NC
} // namespace KivSystem
