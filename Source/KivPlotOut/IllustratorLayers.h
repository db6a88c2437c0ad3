// KivIllustrator: what all walks over the layers of a fabric need. The layers stand side by side
// along the length, in the order of their ranks.

#ifndef KIVPLOTOUT_ILLUSTRATORLAYERS_H
#define KIVPLOTOUT_ILLUSTRATORLAYERS_H

#include <vector>

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;

namespace KivIllustrator {

/// The 1-based layers by rank, with `usedOnly` without those that are set aside. Throws
/// AssertionError.
std::vector<short> layersByRank(const CDbMarkerDrawing &drawing, bool usedOnly);

/// Throws AssertionError unless the fabric has the layers of the drawing.
void checkLayers(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric);

/// The gap between two layers in cm.
double spaceOfLayers();

/// Whether a length in cm counts; a layer that occupies less holds nothing.
bool counts(double length);

} // namespace KivIllustrator
} // namespace KivSystem

#endif
