#include "CutRequests.h"

#include "KivMarker/Drawing.h"
#include "KivMarker/ShareGlobales.h"

namespace KivSystem {

SvgOptions cutRequestFor(const std::string &cutter, const CDbMarkerDrawing &drawing)
{
    constexpr double percent = 100;
    const CDbMarkerShareGlobales &settings = *CDbMarkerShareGlobales::instance();
    SvgOptions options;
    if (cutter == "labels") {
        options.setExportType(SvgOptions::ExportLabels);
        return options;
    }
    options.setCaller(drawing.zentrimActif ? SvgOptions::CallerZentrim : SvgOptions::CallerExport);
    if (cutter == "eastman") {
        options.setExportType(SvgOptions::ExportEastman);
        options.setScaleX(settings.getEastCutScaleX() / percent);
        options.setScaleY(settings.getEastCutScaleY() / percent);
        options.setNotchLength(settings.getEastCutNotchSize());
        options.setDrillSize(static_cast<short>(settings.getEastCutAnglePunchHole()));
        options.setDrillType(settings.getEastCutTypeDrill());
    } else {
        options.setExportType(SvgOptions::ExportAnsi);
        options.setCheckRange(true);
        options.setNotchLength(settings.getCutNotchSize());
    }
    return options;
}

} // namespace KivSystem
