// CutRequest: what is asked for, worked out once from the exporter's options and the settings.

#ifndef KIVMARKER_CUTREQUEST_H
#define KIVMARKER_CUTREQUEST_H

#include "KivMarker/CutSettings.h"
#include "KivMarker/SvgOptions.h"

namespace KivSystem {

/// How far the cutting order is worked on.
enum class CuttingOrder
{
    Stored,    ///< as the marker holds its groups
    Shortened, ///< the order is free, each outline starts where the marker starts it
    Optimised, ///< and each outline may start at another of its corners
};

struct CutRequest
{
    CutSettings settings; ///< those of the Eastman cutters stand in place of their ANSI fellows
    bool labelsOnly = false;
    bool checkRange = false;
    double scaleX = 1;
    double scaleY = 1;
    double machineScaleX = 1; ///< from the fabric to the cutter's own x, the exporter's part too
    double notchLength = -1;  ///< cm; below zero: as long as the marker has them
    bool drills = true;
    short drillSize = 0; ///< 0 for none
    CuttingOrder order = CuttingOrder::Stored;

    bool notchesDuringOutline() const { return settings.cutOrderCrans == NotchDuringOutline; }
};

/// `optimisedDrawing` tells that the drawing is the one of the Zentrim view: labels, which nobody
/// gives a caller, then come in the order of that drawing's cut file.
CutRequest cutRequest(
    const SvgOptions &options, const CutSettings &settings, bool optimisedDrawing);

} // namespace KivSystem

#endif
