/// Placement: how the shape of a piece reaches the marker.

#ifndef KIVMARKER_PLACEMENT_H
#define KIVMARKER_PLACEMENT_H

#include "KivGeo/Affine.h"

namespace KivSystem {

/// How a piece's shape reaches the marker: scaled about its origin, then mirrored across its grain
/// (y to -y), then turned about its origin, then shifted. Notches and marks keep their size.
struct Placement
{
    double x = 0;        ///< centimetres along the length
    double y = 0;        ///< centimetres across the width
    double rotation = 0; ///< degrees, counter-clockwise; quarter turns are exact
    bool mirrored = false;
    double scaleX = 1; ///< factor along the grain, against shrinkage; above 0
    double scaleY = 1; ///< factor across the grain; above 0

    bool isScaled() const { return scaleX != 1 || scaleY != 1; }
    GeoAffine affine() const;
    /// The turn and the mirror image alone.
    GeoAffine direction() const;
};

} // namespace KivSystem

#endif
