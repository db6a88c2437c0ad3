// A place inside a closed outline where a label stands well.
//
// An outline is the row of its corners in cm, in either direction, the last joined to the first
// without being repeated. What is inside is told by the even-odd rule, so that an outline that
// crosses itself has an inside as well.
//
//     interiorPlace({{0, 0}, {6, 0}, {6, 4}, {0, 4}});        // (3, 2)
//     clearance({{0, 0}, {6, 0}, {6, 4}, {0, 4}}, {3, 2});    // 2

#ifndef KIVMARKER_CUTDOCUMENT_INTERIORPLACE_H
#define KIVMARKER_CUTDOCUMENT_INTERIORPLACE_H

#include "KivGeo/Point2D.h"

#include <vector>

namespace KivSystem {

/// The centroid, if it lies inside and about 80 percent as far from the border as a place can;
/// otherwise about the place inside that is farthest from the border. The same outline always gives
/// the same place. An outline that encloses nothing gives the mean of its points, an empty one
/// (0, 0).
GeoPoint2D interiorPlace(const std::vector<GeoPoint2D> &outline);

/// The distance of a point to the border in cm: positive inside, negative outside, minus infinity
/// for an empty outline.
double clearance(const std::vector<GeoPoint2D> &outline, const GeoPoint2D &point);

} // namespace KivSystem

#endif
