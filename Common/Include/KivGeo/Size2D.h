// GeoSize2D: an extent in the plane, in centimetres like all lengths of a marker.

#ifndef KIVGEO_SIZE2D_H
#define KIVGEO_SIZE2D_H

namespace KivSystem {

/// A width and a height. As a translation it stands for the way (width, height).
class GeoSize2D
{
public:
    constexpr GeoSize2D() = default;
    constexpr GeoSize2D(double sizeWidth, double sizeHeight) : width(sizeWidth), height(sizeHeight)
    {}

    double width = 0;
    double height = 0;
};

/// Exact comparison.
constexpr bool operator==(const GeoSize2D &a, const GeoSize2D &b)
{
    return a.width == b.width && a.height == b.height;
}

constexpr bool operator!=(const GeoSize2D &a, const GeoSize2D &b)
{
    return !(a == b);
}

} // namespace KivSystem

#endif
