#include "IllustratorLayers.h"

#include "Failures.h"

#include "KivMarker/Drawing.h"
#include "KivMarker/MarkerOptions.h"

namespace KivSystem {
namespace KivIllustrator {

std::vector<short> layersByRank(const CDbMarkerDrawing &drawing, bool usedOnly)
{
    short error = 0;
    const int count = drawing.getLayersQty(&error);
    KIV_CHECK_OPERATION(error == 0);
    const CDbLayerObjectTable &table = drawing.getLayerObjectTable();
    std::vector<short> layers;
    for (int rank = 1; rank <= count; ++rank) {
        const short layer = table.getLayerIndexInGiveRank(static_cast<short>(rank), usedOnly);
        if (layer != 0) {
            layers.push_back(layer);
        }
    }
    return layers;
}

void checkLayers(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric)
{
    short error = 0;
    const int count = drawing.getLayersQty(&error);
    KIV_CHECK_OPERATION(error == 0);
    KIV_CHECK_OPERATION(count == fabric.layerCount());
}

double spaceOfLayers()
{
    return static_cast<double>(CDbMarkerOptions::mDefaultOptions.spaceLayers());
}

bool counts(double length)
{
    return length > kEmptyLayerLength;
}

} // namespace KivIllustrator
} // namespace KivSystem
