#include "KivMarker/Layer.h"

#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Fabric.h"
#include "KivMarker/Polygon.h"

#include <algorithm>

namespace KivSystem {

bool CDbLayerObjectTable::isPlacementInTheFabric(const CDbFabricObject *fabric, short *error) const
{
    if (fabric == nullptr) {
        setErrorCode(error, k_error_missing);
        return false;
    }
    setErrorCode(error, k_no_error);
    for (int number = 1; number <= size(); ++number) {
        const FabricLayer *layer = fabric->findLayer(static_cast<short>(number));
        if (layer != nullptr &&
            std::any_of(layer->groups.begin(), layer->groups.end(), [](const auto &group) {
                return group->groupPlace() == PlacedOnMarker && group->firstPolygon != nullptr;
            })) {
            return true;
        }
    }
    return false;
}

short CDbLayerObjectTable::getLayerIndexInGiveRank(short rank, bool usedOnly) const
{
    for (int position = 0; position < size(); ++position) {
        if (rankAt(position) == rank) {
            return usedOnly && at(position)->layerUnused ? short(0)
                                                         : static_cast<short>(position + 1);
        }
    }
    return 0;
}

int CDbLayerObjectTable::rankAt(int position) const
{
    return at(position)->layerRank != 0 ? at(position)->layerRank : position + 1;
}

short CDbLayerObjectTable::lastDefinesLayerIndex(bool usedOnly) const
{
    int last = -1;
    for (int position = 0; position < size(); ++position) {
        const bool counts = !usedOnly || !at(position)->layerUnused;
        if (counts && (last < 0 || rankAt(position) > rankAt(last))) {
            last = position;
        }
    }
    return static_cast<short>(last + 1);
}

} // namespace KivSystem
