// CutReduction: fewer points where an outline has more than it needs, more where they lie too far
// apart.

#ifndef KIVMARKER_CUTREDUCTION_H
#define KIVMARKER_CUTREDUCTION_H

#include "CutDocument/CutPlan.h"

namespace KivSystem {

struct CutSettings;

/// As a part of the area.
constexpr double kLargestAreaChange = 0.05;

/// Leaves out points, if the settings ask for it, as long as none that is left out lies further
/// from the outline than the tolerance (Douglas and Peucker). Points that are to be kept stay, and
/// so does the start. A tolerance that would make the outline cross itself, or change its area by
/// more than kLargestAreaChange, is halved until it does not; at last the outline stays as it is.
void reduceOutline(CutOutline &outline, const CutSettings &settings);

/// Adds points, if the settings ask for it, on edges that are longer than the distance asked for.
void divideLongEdges(CutOutline &outline, const CutSettings &settings);

/// Both for an open line; its ends stay.
CutPath conditionedLine(CutPath line, const CutSettings &settings);

} // namespace KivSystem

#endif
