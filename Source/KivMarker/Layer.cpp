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

} // namespace KivSystem
