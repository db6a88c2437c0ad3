// GeoPoint2D: a point of doubles in the plane, the base of every point class of a marker.
//
// Coordinates are in centimetres, x to the right and y upwards. Angles are in degrees and turn
// counter-clockwise. Every operation comes twice: translate, rotate and scale change the point and
// return it; translated, rotated and scaled leave it and return a changed copy.
//
//     const GeoPoint2D corner(3, 1);
//     corner.rotated(90);             // exactly (-1, 3)
//     corner.rotated(90, {2, 1});     // exactly (2, 2)

#ifndef KIVGEO_POINT2D_H
#define KIVGEO_POINT2D_H

#include <utility>

namespace KivSystem {

class GeoSize2D;

class GeoPoint2D
{
public:
    // The constructors are constexpr so that constants of this class are there before any dynamic
    // initialiser of any library runs.
    constexpr GeoPoint2D() = default;
    constexpr GeoPoint2D(double pointX, double pointY) : x(pointX), y(pointY) {}
    GeoPoint2D(const GeoPoint2D &) = default;
    GeoPoint2D(GeoPoint2D &&) = default;
    GeoPoint2D &operator=(const GeoPoint2D &) = default;
    GeoPoint2D &operator=(GeoPoint2D &&) = default;
    virtual ~GeoPoint2D();

    /// The point (0, 0). Safe to call from initialisers of static objects.
    static const GeoPoint2D &origin();

    /// The zero point; the same object as origin().
    static const GeoPoint2D Point2D_Nul;

    /// Cosine and sine of an angle in degrees, the pair that rotate() takes. Exact at multiples of
    /// 90 degrees of any size, also negative ones; NaN for an angle that is not finite.
    static std::pair<double, double> cosineAndSine(double degrees);

    /// Adds to both coordinates.
    GeoPoint2D &translate(double dx, double dy);
    GeoPoint2D &translate(const GeoPoint2D &way);
    GeoPoint2D &translate(const GeoSize2D &way);
    GeoPoint2D translated(double dx, double dy) const;
    GeoPoint2D translated(const GeoPoint2D &way) const;
    GeoPoint2D translated(const GeoSize2D &way) const;

    /// Turns counter-clockwise about a centre. Multiples of 90 degrees bring no rounding but that
    /// of the distance to the centre.
    GeoPoint2D &rotate(double degrees, const GeoPoint2D &center = origin());
    GeoPoint2D rotated(double degrees, const GeoPoint2D &center = origin()) const;

    /// Turns by the angle that has this (cosine, sine). The pair is taken as it is: one that is
    /// not of unit length scales the distance to the centre by its length.
    GeoPoint2D &rotate(
        const std::pair<double, double> &cosineSine, const GeoPoint2D &center = origin());
    GeoPoint2D rotated(
        const std::pair<double, double> &cosineSine, const GeoPoint2D &center = origin()) const;

    /// Multiplies the way from the centre by a factor for each axis; a negative factor mirrors.
    GeoPoint2D &scale(double factorX, double factorY, const GeoPoint2D &center = origin());
    GeoPoint2D scaled(double factorX, double factorY, const GeoPoint2D &center = origin()) const;

    /// Whether each coordinate by itself differs by no more than the tolerance (in cm, the bound
    /// included). A coordinate or tolerance that is NaN, an infinite coordinate and a negative
    /// tolerance are never equal.
    bool equals(const GeoPoint2D &other, double tolerance) const;
    bool equals(double otherX, double otherY, double tolerance) const;

    double x = 0;
    double y = 0;
};

} // namespace KivSystem

#endif
