#include "KivGeo/Affine.h"

#include <cmath>
#include <limits>

namespace KivSystem {

GeoAffine::GeoAffine(double a, double b, double c, double d, double e, double f)
    : mA(a)
    , mB(b)
    , mC(c)
    , mD(d)
    , mE(e)
    , mF(f)
{}

GeoAffine GeoAffine::translation(double dx, double dy)
{
    return {1, 0, 0, 1, dx, dy};
}

GeoAffine GeoAffine::rotation(double degrees, const GeoPoint2D &center)
{
    const auto [cosine, sine] = GeoPoint2D::cosineAndSine(degrees);
    return {cosine, sine, 0 - sine, cosine, center.x - (cosine * center.x - sine * center.y),
        center.y - (sine * center.x + cosine * center.y)};
}

GeoAffine GeoAffine::scaling(double factorX, double factorY, const GeoPoint2D &center)
{
    return {factorX, 0, 0, factorY, center.x - factorX * center.x, center.y - factorY * center.y};
}

GeoAffine GeoAffine::mirrorX()
{
    return {1, 0, 0, -1, 0, 0};
}

GeoAffine GeoAffine::mirrorY()
{
    return {-1, 0, 0, 1, 0, 0};
}

GeoPoint2D GeoAffine::applyToPoint(const GeoPoint2D &point) const
{
    return {mA * point.x + mC * point.y + mE, mB * point.x + mD * point.y + mF};
}

GeoAffine &GeoAffine::multiply(const GeoAffine &other)
{
    return *this = multiplied(other);
}

GeoAffine GeoAffine::multiplied(const GeoAffine &other) const
{
    const GeoPoint2D shift = applyToPoint({other.mE, other.mF});
    return {mA * other.mA + mC * other.mB, mB * other.mA + mD * other.mB,
        mA * other.mC + mC * other.mD, mB * other.mC + mD * other.mD, shift.x, shift.y};
}

std::optional<GeoAffine> GeoAffine::inverted() const
{
    // Factors like 0.1 and 0.3 have no exact products, so that a singular matrix of them gives a
    // determinant of a few units in the last place rather than 0.
    const double det = determinant();
    const double noise =
        2 * std::numeric_limits<double>::epsilon() * (std::abs(mA * mD) + std::abs(mB * mC));
    if (!(std::abs(det) > noise)) {
        return std::nullopt;
    }
    const GeoAffine linear(mD / det, -mB / det, -mC / det, mA / det, 0, 0);
    const GeoPoint2D shift = linear.applyToPoint({-mE, -mF});
    const GeoAffine back(linear.mA, linear.mB, linear.mC, linear.mD, shift.x, shift.y);
    for (const double number : {back.mA, back.mB, back.mC, back.mD, back.mE, back.mF}) {
        if (!std::isfinite(number)) {
            return std::nullopt;
        }
    }
    return back;
}

bool GeoAffine::equals(const GeoAffine &other, double tolerance) const
{
    return GeoPoint2D(mA, mB).equals(other.mA, other.mB, tolerance) &&
           GeoPoint2D(mC, mD).equals(other.mC, other.mD, tolerance) &&
           GeoPoint2D(mE, mF).equals(other.mE, other.mF, tolerance);
}

} // namespace KivSystem
