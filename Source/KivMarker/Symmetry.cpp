#include "Clipping.h"
#include "KivMarker/Point.h"

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
    // What holds for the image holds for the outline, which is the image's own image.
    return liesWithin(image, outline, kSymmetryTolerance);
}

} // namespace KivSystem
