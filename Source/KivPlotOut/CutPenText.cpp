// The information of a piece, drawn with the pen.

#include "CutProcessor.h"

#include "CutConfig.h"
#include "FontTable.h"

#include <QTransform>

namespace KivSystem {
namespace NC {
namespace {

// The last table stays open behind its processor.
std::shared_ptr<FontTable> openFontTable()
{
    static std::shared_ptr<FontTable> last;
    last = std::make_shared<FontTable>(QString::fromLatin1(kFontTableFile));
    return last;
}

// Where a line starts. A line is aligned along x even when it is turned: cutters and the documents
// that are written for them are used to it.
QPointF startOf(const QDomElement &text, double width)
{
    QPointF start(text.attribute(QStringLiteral("x")).toDouble(),
        text.attribute(QStringLiteral("y")).toDouble());
    const QString alignment = text.attribute(QStringLiteral("horzAlign"));
    if (alignment == QLatin1String("middle")) {
        start.rx() -= width / 2;
    } else if (alignment == QLatin1String("end")) {
        start.rx() -= width;
    }
    return start;
}

} // namespace

void CutProcessor::exportPieceInfo(const QDomElement &text, const QDomElement &item, QString &out)
{
    for (QDomElement line = text; !line.isNull();
         line = line.nextSiblingElement(QStringLiteral("text"))) {
        exportInfo(line, item, out);
    }
    out.clear();
}

// `pendown` opens a stroke behind its first point and stands behind its last one again; `penup`
// stands in front of a stroke only. Both are written so on purpose.
void CutProcessor::exportInfo(
    const QDomElement &text, const QDomElement &item, const QString &format)
{
    const QString line = text.text().trimmed();
    const double fontSize = text.attribute(QStringLiteral("fontSize")).toDouble();
    const double height = FontTable::charHeight(fontSize);
    const QPointF start = startOf(text, FontTable::textLineWidth(line, fontSize));
    QTransform transform;
    transform.rotate(text.attribute(QStringLiteral("angle")).toDouble());
    if (!fontTable) {
        fontTable = openFontTable();
    }
    const bool wrap = isWrapped(item);
    const QString penUp = item.attribute(QStringLiteral("penup"));
    const QString penDown = item.attribute(QStringLiteral("pendown"));

    QPointF cursor;
    for (const QChar character : line) {
        double advance = 0;
        const auto polylines = fontTable->charToPolylines(character, height, &advance);
        const QPointF origin = transform.map(cursor);
        for (const QListEx<QPointF> &polyline : polylines) {
            stream << penUp;
            bool isFirst = true;
            for (const QPointF &point : polyline) {
                const QPointF place = transform.map(point) + origin + start;
                exportPoint(GeoPoint2D(place.x(), place.y()), format, wrap);
                if (isFirst) {
                    stream << penDown;
                    isFirst = false;
                }
            }
            stream << penDown;
        }
        cursor.rx() += advance;
    }
}

} // namespace NC
} // namespace KivSystem
