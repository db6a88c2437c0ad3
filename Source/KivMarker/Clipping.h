// Clipping: union, difference and widening of outlines, behind which the Clipper library stands.
//
// Clipper counts in whole numbers; a unit here is kClippingUnit. Results are outer contours,
// without holes, counter-clockwise, their first point not repeated.

#ifndef KIVMARKER_CLIPPING_H
#define KIVMARKER_CLIPPING_H

#include "KivGeo/Point2D.h"

#include <vector>

namespace KivSystem {

class GeoRectangle;

using Contour = std::vector<GeoPoint2D>;

constexpr double kClippingUnit = 1e-6; // cm

/// The union of the outlines, each widened by `gapX` to either side along x and by `gapY` along y
/// (none of them below zero).
std::vector<Contour> widenedUnion(const std::vector<Contour> &outlines, double gapX, double gapY);

/// What of `subject` lies on the cloth and outside of `others`.
std::vector<Contour> remainder(const std::vector<Contour> &subject,
    const std::vector<Contour> &others, const GeoRectangle &cloth);

} // namespace KivSystem

#endif
