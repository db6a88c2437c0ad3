// Clipping: union, difference and widening of outlines, behind which the Clipper library stands.
//
// Clipper counts in whole numbers; a unit here is kClippingUnit. Results are outer contours,
// counter-clockwise, their first point not repeated; holes are told where they are asked for.

#ifndef KIVMARKER_CLIPPING_H
#define KIVMARKER_CLIPPING_H

#include "KivGeo/Point2D.h"

#include <vector>

namespace KivSystem {

class GeoRectangle;

using Contour = std::vector<GeoPoint2D>;

constexpr double kClippingUnit = 1e-6; // cm
constexpr std::size_t kFinePoints = 200;
constexpr double kSimplified = 0.01;

struct Region
{
    std::vector<Contour> outer;
    std::vector<Contour> holes; ///< clockwise
};

/// The union of the outlines, each widened by `gapX` to either side along x and by `gapY` along y
/// (none of them below zero). An outline of more than kFinePoints points is simplified first and
/// widened by as much more as that may take away, kSimplified of the larger gap.
std::vector<Contour> widenedUnion(const std::vector<Contour> &outlines, double gapX, double gapY);

/// The contours of the union of the outlines. With a `tolerance` above 0, outlines that are no
/// further apart are joined where that makes one contour of several. With `fillHoles` what they
/// enclose belongs to them. Corners of the outlines come back as they were given, to the last
/// digit.
Region joined(const std::vector<Contour> &outlines, double tolerance, bool fillHoles);

/// The outline `distance` cm wider all round, its outer corners rounded; where that falls apart,
/// the largest part.
Contour widened(const Contour &outline, double distance);

/// The outline without points whose omission moves it by no more than `tolerance` cm.
Contour simplified(const Contour &outline, double tolerance);

/// Whether nothing of `inner` is further than the tolerance, in cm, from what `outer` encloses.
bool liesWithin(const Contour &inner, const Contour &outer, double tolerance);

/// What of `subject` lies outside of `others`, and all of `kept`, as far as it lies on the cloth.
Region remainder(const std::vector<Contour> &subject, const std::vector<Contour> &others,
    const std::vector<Contour> &kept, const GeoRectangle &cloth);

} // namespace KivSystem

#endif
