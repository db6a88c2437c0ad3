// GeoAffine: an affine map of the plane, with the six numbers in the order of SVG's matrix() and
// of PostScript's concat:
//
//     x' = a * x + c * y + e
//     y' = b * x + d * y + f
//
// (a, b) is thus the image of the unit vector along x, (c, d) that of the one along y, and (e, f)
// the image of the origin. rotation(90) is GeoAffine(0, 1, -1, 0, 0, 0).

#ifndef KIVGEO_AFFINE_H
#define KIVGEO_AFFINE_H

#include "KivGeo/Point2D.h"

#include <optional>

namespace KivSystem {

class GeoAffine
{
public:
    /// The identity.
    GeoAffine() = default;
    GeoAffine(double a, double b, double c, double d, double e, double f);

    static GeoAffine translation(double dx, double dy);
    /// Counter-clockwise, in degrees; exact at multiples of 90.
    static GeoAffine rotation(double degrees, const GeoPoint2D &center = GeoPoint2D::origin());
    static GeoAffine scaling(
        double factorX, double factorY, const GeoPoint2D &center = GeoPoint2D::origin());
    /// Mirror at the horizontal axis y = 0: changes the sign of y.
    static GeoAffine mirrorX();
    /// Mirror at the vertical axis x = 0: changes the sign of x.
    static GeoAffine mirrorY();

    double a() const { return m_a; }
    double b() const { return m_b; }
    double c() const { return m_c; }
    double d() const { return m_d; }
    double e() const { return m_e; }
    double f() const { return m_f; }

    GeoPoint2D applyToPoint(const GeoPoint2D &point) const;

    /// Composition in document order, as in the list transform="THIS OTHER" of an SVG element: the
    /// other map comes first in effect,
    ///     first.multiplied(second).applyToPoint(p) == first.applyToPoint(second.applyToPoint(p))
    /// up to rounding.
    GeoAffine &multiply(const GeoAffine &other);
    GeoAffine multiplied(const GeoAffine &other) const;

    /// a * d - b * c: the factor of areas, negative for a map that mirrors.
    double determinant() const { return m_a * m_d - m_b * m_c; }

    /// The map back. Empty for a singular map, that is one whose determinant is zero within the
    /// rounding of its two products, and for one whose numbers, or those of its inverse, are not
    /// finite.
    std::optional<GeoAffine> inverted() const;

    /// Whether each of the six numbers differs by no more than the tolerance, the bound included;
    /// never with NaN.
    bool equals(const GeoAffine &other, double tolerance) const;

private:
    double m_a = 1;
    double m_b = 0;
    double m_c = 0;
    double m_d = 1;
    double m_e = 0;
    double m_f = 0;
};

} // namespace KivSystem

#endif
