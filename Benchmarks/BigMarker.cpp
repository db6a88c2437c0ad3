#include "BigMarker.h"

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/Polygon.h"

#include <cmath>

namespace KivSystem {
namespace {

constexpr int kPointsOfStylePiece = 100;
constexpr double kTurn = 6.283185307179586;

// A wavy disc about the origin.
PieceShape disc(double radius, int points)
{
    PieceShape shape;
    shape.contour.reserve(points);
    for (int index = 0; index < points; ++index) {
        const double angle = kTurn * index / points;
        const double reach = radius * (1 + 0.1 * std::sin(5 * angle));
        CDbMarkerPointObject point(reach * std::cos(angle), reach * std::sin(angle), CurvePoint);
        if (index % (points / 4) == 0) {
            point.pointType = SimpleNotch;
            point.notchDx = static_cast<float>(-0.5 * std::cos(angle));
            point.notchDy = static_cast<float>(-0.5 * std::sin(angle));
        }
        shape.contour.append(point);
    }
    return shape;
}

void placeOne(CDbFabricObject &fabric, short layer, short piece, double x, double y)
{
    auto polygon = std::make_unique<CDbPolygon>(piece, short(1), true);
    polygon->place(
        fabric.findPieceAccordingIndex(piece, nullptr)->getPieceSize(1), {x, y, 0, false});
    auto group = std::make_unique<CDbGrPolysObject>();
    group->addPolygon(std::move(polygon));
    fabric.addGroup(layer, std::move(group));
}

} // namespace

std::unique_ptr<DocumentMak> markerOfPieces(int pieces, int pointsOfPiece)
{
    auto drawing = std::make_unique<CDbMarkerDrawing>();
    drawing->addLayer(QStringLiteral("Layer"));
    CDbFabricObject *fabric = drawing->addFabric(QStringLiteral("Fabric"));
    fabric->findLayer(1)->width = 150;
    drawing->addStyle(QStringLiteral("Style"), QString(), {{1, QStringLiteral("S"), QString()}});
    for (int index = 0; index < pieces; ++index) {
        auto piece = std::make_unique<CDbPieceObject>(QStringLiteral("P%1").arg(index), short(1));
        piece->setSingle(true);
        piece->addSize(1, disc(6, pointsOfPiece));
        piece->setOrderedQuantity({1, 1, true}, 1);
        fabric->addPiece(std::move(piece));
        placeOne(*fabric, 1, static_cast<short>(index + 1), 7 + 14.0 * (index / 10),
            7 + 14.0 * (index % 10));
    }
    return std::make_unique<DocumentMak>(std::move(drawing));
}

std::unique_ptr<DocumentMak> markerOfStyles(const ReportShape &shape)
{
    auto drawing = std::make_unique<CDbMarkerDrawing>();
    for (int layer = 1; layer <= shape.layers; ++layer) {
        drawing->addLayer(QStringLiteral("Layer %1").arg(layer));
    }
    for (int fabric = 1; fabric <= shape.fabrics; ++fabric) {
        drawing->addFabric(QStringLiteral("Fabric %1").arg(fabric));
    }
    std::vector<StyleSize> sizes;
    for (int size = 1; size <= shape.sizes; ++size) {
        sizes.push_back({static_cast<short>(size), QString::number(30 + 2 * size), QString()});
    }
    for (int style = 1; style <= shape.styles; ++style) {
        drawing->addStyle(QStringLiteral("Style %1").arg(style), QString(), sizes);
    }
    for (CDbFabricObject *fabric : drawing->getFabricsTable()) {
        const short fabricNumber = drawing->getFabricsTable().findFabricIndex(fabric);
        for (short style = 1; style <= shape.styles; ++style) {
            auto piece = std::make_unique<CDbPieceObject>(QStringLiteral("Piece"), style);
            for (short size = 1; size <= shape.sizes; ++size) {
                piece->addSize(size, disc(6, kPointsOfStylePiece));
                for (short layer = 1; layer <= shape.layers; ++layer) {
                    piece->setOrderedQuantity({size, layer, true}, size);
                }
            }
            fabric->addPiece(std::move(piece));
            CDbStyleSizeObjectTable *table =
                drawing->findSizesList(static_cast<short>(style - 1), fabricNumber, nullptr);
            for (short layer = 1; layer <= shape.layers; ++layer) {
                fabric->findLayer(layer)->width = 150;
                placeOne(*fabric, layer, style, 7 + 14.0 * style, 7);
                for (short size = 1; size <= shape.sizes; ++size) {
                    table->setQuantity(layer, size, size);
                }
            }
        }
    }
    return std::make_unique<DocumentMak>(std::move(drawing));
}

} // namespace KivSystem
