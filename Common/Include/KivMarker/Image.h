/// Pictures that lie on a polygon: a print, an embroidery, a label.

#ifndef KIVMARKER_IMAGE_H
#define KIVMARKER_IMAGE_H

#include "KivGeo/Point2D.h"

#include <QString>

namespace KivSystem {

/// A rectangle in the marker, centimetres, and the picture that fills it. It is turned about its
/// left bottom corner.
class CDbImage
{
public:
    /// Counter-clockwise, as the rectangle lies before it is turned.
    enum Corner : int
    {
        LeftBottom = 0,
        RightBottom = 1,
        RightTop = 2,
        LeftTop = 3,
    };

    double x = 0; ///< of the left bottom corner
    double y = 0;
    double width = 0;
    double height = 0;
    double rotation = 0; ///< degrees, counter-clockwise; quarter turns are exact
    QString file;        ///< the picture's file; empty for a place that is only kept free

    GeoPoint2D getVector(Corner corner) const;
};

} // namespace KivSystem

#endif
