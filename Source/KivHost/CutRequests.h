// CutRequests: cut documents as the formats ask for them, for verbs that show them.
#ifndef KIVHOST_CUTREQUESTS_H
#define KIVHOST_CUTREQUESTS_H

#include "KivMarker/SvgOptions.h"

#include <string>

namespace KivSystem {

class CDbMarkerDrawing;

/// The request that the format for "ansi", "eastman" or "labels" makes with the present settings.
SvgOptions cutRequestFor(const std::string &cutter, const CDbMarkerDrawing &drawing);

} // namespace KivSystem

#endif
