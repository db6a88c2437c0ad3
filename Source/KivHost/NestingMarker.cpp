#include "NestingMarker.h"

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/Polygon.h"
#include "NestingFiles.h"

#include <algorithm>

namespace KivSystem {

namespace {

constexpr short kLayer = 1;
constexpr short kSize = 1;
constexpr short kStyle = 1;
constexpr double kOutsideTolerance = 0.001; // share of the strip's height

std::unique_ptr<CDbPieceObject> makePiece(const NestingItem &item)
{
    auto piece = std::make_unique<CDbPieceObject>(QStringLiteral("Item %1").arg(item.id), kStyle);
    piece->setSingle(true);
    PlacementRules rules;
    rules.rotationStep = item.rotationStep;
    if (item.turnsFreely) { // any angle is a tilt of half a turn either way
        rules.rotationStep = 1;
        rules.fineRotation = 180;
    }
    piece->setOwnRules(rules);
    PieceShape shape;
    for (const GeoPoint2D &point : item.outline) {
        shape.contour.append(CDbMarkerPointObject(point.x, point.y));
    }
    piece->addSize(kSize, std::move(shape));
    piece->setOrderedQuantity({kSize, kLayer, true}, static_cast<short>(item.demand));
    return piece;
}

// How far the polygon reaches out of the strip, in cm; 0 or less when it does not.
double excess(const GeoRectangle &rect, double length, double height)
{
    return std::max({-rect.left(), -rect.bottom(), rect.right() - length, rect.top() - height});
}

void placePieces(CDbFabricObject &fabric, const NestingInstance &instance,
    const NestingLayout &layout, NestingMarker &marker)
{
    for (const NestingPlace &place : layout.places) {
        const auto index = static_cast<short>(place.item + 1);
        const CDbPieceObject *piece = fabric.findPieceAccordingIndex(index, nullptr);
        auto polygon = std::make_unique<CDbPolygon>(index, kSize, true);
        polygon->place(piece->getPieceSize(kSize), {place.x, place.y, place.rotation, false});

        const double out = excess(polygon->polygonRect, layout.length, instance.height);
        if (out > kOutsideTolerance * instance.height) {
            ++marker.outside;
            marker.farthestOutside = std::max(marker.farthestOutside, out);
        }
        auto group = std::make_unique<CDbGrPolysObject>();
        group->addPolygon(std::move(polygon));
        fabric.addGroup(kLayer, std::move(group));
        ++marker.placed;
    }
}

} // namespace

NestingMarker makeNestingMarker(const NestingInstance &instance, const NestingLayout *layout)
{
    NestingMarker marker;
    auto drawing = std::make_unique<CDbMarkerDrawing>();
    drawing->addLayer(QStringLiteral("Layer 1"));
    CDbFabricObject *fabric = drawing->addFabric(instance.name);
    fabric->findLayer(kLayer)->width = instance.height;
    drawing->addStyle(instance.name, QString(), {{kSize, QStringLiteral("1"), QString()}});
    drawing->findSizesList(0, 1, nullptr)->setQuantity(kLayer, kSize, 1);
    drawing->setSingleLayer(kLayer);
    for (const NestingItem &item : instance.items) {
        fabric->addPiece(makePiece(item));
        marker.pieces += item.demand;
    }
    if (layout != nullptr) {
        placePieces(*fabric, instance, *layout, marker);
    }
    marker.document = std::make_unique<DocumentMak>(std::move(drawing));
    return marker;
}

} // namespace KivSystem
