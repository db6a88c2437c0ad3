#include "KivMarker/ShareGlobales.h"

namespace KivSystem {

CDbMarkerShareGlobales *CDbMarkerShareGlobales::instance()
{
    static CDbMarkerShareGlobales shared;
    return &shared;
}

} // namespace KivSystem
