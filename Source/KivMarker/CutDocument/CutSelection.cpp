#include "CutDocument/CutSelection.h"

#include "KivMarker/Drawing.h"
#include "KivMarker/Polygon.h"

#include <limits>

namespace KivSystem {
namespace {

std::vector<LaidPiece> laidPieces(const CDbGrPolysObject &group, double offset)
{
    std::vector<LaidPiece> pieces;
    if (group.groupPlace() == PlacedOnMarker) {
        for (const CDbPolygon *polygon = group.firstPolygon; polygon != nullptr;
             polygon = polygon->nextPolygon) {
            if (polygon->currentContour() != nullptr) {
                pieces.push_back({polygon, offset});
            }
        }
    }
    return pieces;
}

} // namespace

std::vector<SelectedBlock> selectBlocks(
    const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric)
{
    const double none = std::numeric_limits<double>::infinity();
    const std::vector<LaidLayer> laid = drawing.laidLayers(&fabric);
    auto next = laid.begin(); // the next layer that occupies cloth
    std::vector<SelectedBlock> blocks;
    double start = 0;
    for (int number = 1; number <= fabric.layerCount(); ++number) {
        const auto layer = static_cast<short>(number);
        double length = 0;
        if (next != laid.end() && next->layer == layer) {
            start = next->start;
            length = next->length;
            ++next;
        }
        const GeoRectangle cloth(start, start + length, 0, fabric.getFabricLayerWidth(layer));
        for (const auto &group : fabric.findLayer(layer)->groups) {
            SelectedBlock block;
            block.pieces = laidPieces(*group, start);
            block.cloth = cloth;
            block.nextLayer = next != laid.end() ? next->start : none;
            if (!block.pieces.empty()) {
                blocks.push_back(std::move(block));
            }
        }
        if (length > 0) {
            start += length; // of a layer behind that occupies nothing
        }
    }
    return blocks;
}

} // namespace KivSystem
