// MarkerFacts: what a person wants to know of a marker: how long its layers are, how well they are
// used, how many of each piece are placed. The verbs print it and the window shows it.
#ifndef KIVHOST_MARKERFACTS_H
#define KIVHOST_MARKERFACTS_H

#include "KivMarker/Fabric.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace KivSystem {

class CDbMarkerDrawing;
class CDbStyleObject;

/// Lengths are centimetres.
struct LayerFacts
{
    double width = 0;
    double length = 0;
    double efficiency = 0; ///< percent
    short garments = 0;
    short placed = 0;
    short toPlace = 0; ///< those in stand-by among them
    int standBy = 0;   ///< polygons
};

struct PieceFacts
{
    const CDbPieceObject *piece = nullptr;
    QString style;
    QStringList sizes;
    qint64 ordered = 0;
    qint64 placed = 0;
    qint64 left = 0; ///< in the chart
};

/// Calls visit(number) for the numbers of layers or sizes, which count from 1.
template <class Visitor>
void forEachNumber(int count, Visitor visit)
{
    for (int number = 1; number <= count; ++number) {
        visit(static_cast<short>(number));
    }
}

/// Calls visit(group, polygon) for all that lies in a 1-based layer, which must exist.
template <class Visitor>
void forEachPolygon(const CDbFabricObject &fabric, short layer, Visitor visit)
{
    for (const auto &group : fabric.findLayer(layer)->groups) {
        for (const CDbPolygon *polygon = group->firstPolygon; polygon != nullptr;
             polygon = polygon->nextPolygon) {
            visit(*group, *polygon);
        }
    }
}

/// Of a 1-based layer, which must exist.
LayerFacts layerFacts(const CDbFabricObject &fabric, short layer);

/// "M long"; the number itself for a size that the style lacks. A null style has no sizes.
QString sizeText(const CDbStyleObject *style, short number);

/// Of all pieces of the fabric, in their order.
std::vector<PieceFacts> pieceFacts(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric);

} // namespace KivSystem

#endif
