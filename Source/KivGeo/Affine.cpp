#include "KivGeo/Affine.h"

#include <cmath>
#include <limits>

namespace KivSystem {

GeoAffine::GeoAffine(double a, double b, double c, double d, double e, double f)
    : m_a(a)
    , m_b(b)
    , m_c(c)
    , m_d(d)
    , m_e(e)
    , m_f(f)
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
    return {m_a * point.x + m_c * point.y + m_e, m_b * point.x + m_d * point.y + m_f};
}

GeoAffine &GeoAffine::multiply(const GeoAffine &other)
{
    return *this = multiplied(other);
}

GeoAffine GeoAffine::multiplied(const GeoAffine &other) const
{
    const GeoPoint2D shift = applyToPoint({other.m_e, other.m_f});
    return {m_a * other.m_a + m_c * other.m_b, m_b * other.m_a + m_d * other.m_b,
        m_a * other.m_c + m_c * other.m_d, m_b * other.m_c + m_d * other.m_d, shift.x, shift.y};
}

std::optional<GeoAffine> GeoAffine::inverted() const
{
    // Factors like 0.1 and 0.3 have no exact products, so that a singular matrix of them gives a
    // determinant of a few units in the last place rather than 0.
    const double det = determinant();
    const double noise =
        2 * std::numeric_limits<double>::epsilon() * (std::abs(m_a * m_d) + std::abs(m_b * m_c));
    if (!(std::abs(det) > noise)) {
        return std::nullopt;
    }
    const GeoAffine linear(m_d / det, -m_b / det, -m_c / det, m_a / det, 0, 0);
    const GeoPoint2D shift = linear.applyToPoint({-m_e, -m_f});
    const GeoAffine back(linear.m_a, linear.m_b, linear.m_c, linear.m_d, shift.x, shift.y);
    for (const double number : {back.m_a, back.m_b, back.m_c, back.m_d, back.m_e, back.m_f}) {
        if (!std::isfinite(number)) {
            return std::nullopt;
        }
    }
    return back;
}

bool GeoAffine::equals(const GeoAffine &other, double tolerance) const
{
    return GeoPoint2D(m_a, m_b).equals(other.m_a, other.m_b, tolerance) &&
           GeoPoint2D(m_c, m_d).equals(other.m_c, other.m_d, tolerance) &&
           GeoPoint2D(m_e, m_f).equals(other.m_e, other.m_f, tolerance);
}

} // namespace KivSystem
