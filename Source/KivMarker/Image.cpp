#include "KivMarker/Image.h"

namespace KivSystem {

GeoPoint2D CDbImage::getVector(Corner corner) const
{
    const bool right = corner == RightBottom || corner == RightTop;
    const bool top = corner == RightTop || corner == LeftTop;
    const GeoPoint2D leftBottom(x, y);
    return leftBottom.translated(right ? width : 0, top ? height : 0).rotated(rotation, leftBottom);
}

} // namespace KivSystem
