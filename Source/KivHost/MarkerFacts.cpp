#include "MarkerFacts.h"

#include "KivMarker/Drawing.h"

namespace KivSystem {

LayerFacts layerFacts(const CDbFabricObject &fabric, short layer)
{
    LayerFacts facts;
    double area = 0;
    fabric.calculateTheValuesToDisplayInALayer(
        layer, nullptr, &facts.garments, &facts.toPlace, &facts.placed, &facts.length, &area);
    facts.width = fabric.getFabricLayerWidth(layer);
    facts.efficiency = fabric.returnPlacementEfficiencyFactor(facts.width, facts.length, area);
    forEachPolygon(fabric, layer, [&facts](const CDbGrPolysObject &group, const CDbPolygon &) {
        facts.standBy += group.groupPlace() == PlacedInStandBy ? 1 : 0;
    });
    return facts;
}

QString sizeText(const CDbStyleObject *style, short number)
{
    const int position = style != nullptr ? style->sizePosition(number) : -1;
    if (position >= 0) {
        const StyleSize &size = style->sizes()[static_cast<std::size_t>(position)];
        return size.special.isEmpty() ? size.name
                                      : QStringLiteral("%1 %2").arg(size.name, size.special);
    }
    return QString::number(number);
}

std::vector<PieceFacts> pieceFacts(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric)
{
    std::vector<PieceFacts> pieces;
    for (const CDbPieceObject *piece = fabric.firstPiece(); piece; piece = piece->getNextPiece()) {
        PieceFacts facts;
        facts.piece = piece;
        const CDbStyleObject *style = drawing.getStyle(static_cast<short>(piece->getStyleNo() - 1));
        facts.style = style ? style->getStyleName() : QString();
        forEachNumber(piece->getNumberOfSizes(), [&](short size) {
            facts.sizes.append(sizeText(style, piece->getPieceSize(size).sizeNumber));
        });
        for (const auto &[key, quantity] : piece->orderedQuantities()) {
            facts.ordered += quantity;
            facts.left += piece->getQtyPieceSizeLayer(key.size, key.left, key.layer);
        }
        pieces.push_back(facts);
    }
    const auto countPlaced = [&](const CDbGrPolysObject &group, const CDbPolygon &polygon) {
        if (group.groupPlace() == PlacedOnMarker && polygon.pieceIndex > 0) {
            ++pieces[static_cast<std::size_t>(polygon.pieceIndex - 1)].placed;
        }
    };
    forEachNumber(
        fabric.layerCount(), [&](short layer) { forEachPolygon(fabric, layer, countPlaced); });
    return pieces;
}

} // namespace KivSystem
