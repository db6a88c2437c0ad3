#include "KivMarker/AutoMarkerOptions.h"
#include "KivMarker/GeneralPlotOptions.h"
#include "KivMarker/MarkerOptions.h"

namespace KivSystem {

CDbMarkerOptions CDbMarkerOptions::mDefaultOptions;
CDbGeneralPlotOptions CDbGeneralPlotOptions::mGeneralPlotOptions;

CAutoMarkerOptions *CAutoMarkerOptions::instance()
{
    static CAutoMarkerOptions options;
    return &options;
}

} // namespace KivSystem
