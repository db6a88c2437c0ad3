#include "CutDocument/CutSelection.h"

#include "KivMarker/Drawing.h"
#include "KivMarker/Polygon.h"

namespace KivSystem {

std::vector<SelectedBlock> selectBlocks(
    const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric)
{
    std::vector<SelectedBlock> blocks;
    for (const LaidLayer &layer : drawing.laidLayers(&fabric)) {
        for (const auto &group : fabric.findLayer(layer.layer)->groups) {
            if (group->groupPlace() != PlacedOnMarker || group->firstPolygon == nullptr) {
                continue;
            }
            SelectedBlock block;
            block.offset = layer.start;
            block.cloth = GeoRectangle(layer.start, layer.start + layer.length, 0,
                fabric.getFabricLayerWidth(layer.layer));
            for (const CDbPolygon *polygon = group->firstPolygon; polygon != nullptr;
                 polygon = polygon->nextPolygon) {
                if (polygon->currentContour() != nullptr) {
                    block.polygons.push_back(polygon);
                }
            }
            if (!block.polygons.empty()) {
                blocks.push_back(std::move(block));
            }
        }
    }
    return blocks;
}

} // namespace KivSystem
