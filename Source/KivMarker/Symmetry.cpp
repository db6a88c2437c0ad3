#include "Clipping.h"
#include "CutDocument/InteriorPlace.h"
#include "KivMarker/Point.h"

#include <algorithm>
#include <cmath>

namespace KivSystem {

bool CDbVectorsObjectTable::isSymmetrical(const CDbMarkerPointObject &centre, bool vertical) const
{
    if (isEmpty()) {
        return false;
    }
    const Contour outline(begin(), end());
    Contour image = outline;
    for (GeoPoint2D &point : image) {
        if (vertical) {
            point.x = 2 * centre.x - point.x;
        } else {
            point.y = 2 * centre.y - point.y;
        }
    }
    // The points find thin spikes, the area finds edges that run elsewhere between the same points.
    const bool pointsLieOn =
        std::all_of(image.begin(), image.end(), [&outline](const GeoPoint2D &point) {
            return std::abs(clearance(outline, point)) <= kSymmetryTolerance;
        });
    return pointsLieOn && differenceArea(outline, image) <= kSymmetryTolerance * perimeter();
}

} // namespace KivSystem
