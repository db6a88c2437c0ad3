// CutSelection: which groups of a fabric are cut, and where on the cloth they lie.

#ifndef KIVMARKER_CUTSELECTION_H
#define KIVMARKER_CUTSELECTION_H

#include "CutDocument/CutPlan.h"

#include <vector>

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;

/// A group on the marker: a block of one piece or of several.
struct SelectedBlock
{
    std::vector<LaidPiece> pieces;
    GeoRectangle cloth;   ///< its layer, as laid: to where the layer is occupied
    double nextLayer = 0; ///< x at which the next layer starts; infinity for the last
};

/// The groups on the marker, layer behind layer along the length, within a layer as stored. Groups
/// in stand-by take no part. A layer whose pieces all lie before its start occupies no length, but
/// its pieces are there.
std::vector<SelectedBlock> selectBlocks(
    const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric);

} // namespace KivSystem

#endif
