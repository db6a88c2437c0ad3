// The path language of a cut document: "M 10.5,3 L 12 3;L 12,7" is a line through three points.

#ifndef KIVPLOTOUT_CUTSHAPEPATH_H
#define KIVPLOTOUT_CUTSHAPEPATH_H

#include "KivGeo/Point2D.h"

#include <vector>

class QString;

namespace KivSystem {
namespace NC {

/// Appends the points of a path. The letters M and L part the text alike; blanks, commas and
/// semicolons part the numbers, whose decimal sign is a point; a bad number is 0. A part that does
/// not hold exactly two numbers is passed over.
void parseShapePath(const QString &text, std::vector<GeoPoint2D> &points);

} // namespace NC
} // namespace KivSystem

#endif
