// CutSelection: which groups of a fabric are cut, and where on the cloth they lie.

#ifndef KIVMARKER_CUTSELECTION_H
#define KIVMARKER_CUTSELECTION_H

#include "KivGeo/Rectangle.h"

#include <vector>

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;
class CDbPolygon;

/// A group on the marker: a block of one piece or of several.
struct SelectedBlock
{
    std::vector<const CDbPolygon *> polygons;
    double offset = 0;  ///< added to x: the start of its layer
    GeoRectangle cloth; ///< its layer, as laid
};

/// The groups on the marker, layer behind layer along the length, within a layer as stored. Groups
/// in stand-by and layers with nothing on them take no part.
std::vector<SelectedBlock> selectBlocks(
    const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric);

} // namespace KivSystem

#endif
