#include "KivGeo/Point2D.h"

#include "KivGeo/Size2D.h"

#include <cmath>

namespace KivSystem {

// Constant-initialised, see the constructors: origin() answers to other initialisers too.
const GeoPoint2D GeoPoint2D::Point2D_Nul(0, 0);

GeoPoint2D::~GeoPoint2D() = default;

const GeoPoint2D &GeoPoint2D::origin()
{
    return Point2D_Nul;
}

std::pair<double, double> GeoPoint2D::cosineAndSine(double degrees)
{
    // The way to the nearest quarter turn is exact, and 0 for a quarter turn itself. What is left
    // of the turn is a change of places and signs.
    constexpr double degree = 3.14159265358979323846 / 180;
    int quarters = 0;
    const double rest = std::remquo(degrees, 90.0, &quarters) * degree;
    const double cosine = std::cos(rest);
    const double sine = std::sin(rest) + 0.0; // no negative zero, also in the differences below
    switch (((quarters % 4) + 4) % 4) {
    case 0:
        return {cosine, sine};
    case 1:
        return {0 - sine, cosine};
    case 2:
        return {0 - cosine, 0 - sine};
    default:
        return {sine, 0 - cosine};
    }
}

GeoPoint2D &GeoPoint2D::translate(double dx, double dy)
{
    x += dx;
    y += dy;
    return *this;
}

GeoPoint2D &GeoPoint2D::translate(const GeoPoint2D &way)
{
    return translate(way.x, way.y);
}

GeoPoint2D &GeoPoint2D::translate(const GeoSize2D &way)
{
    return translate(way.width, way.height);
}

GeoPoint2D GeoPoint2D::translated(double dx, double dy) const
{
    return {x + dx, y + dy};
}

GeoPoint2D GeoPoint2D::translated(const GeoPoint2D &way) const
{
    return translated(way.x, way.y);
}

GeoPoint2D GeoPoint2D::translated(const GeoSize2D &way) const
{
    return translated(way.width, way.height);
}

GeoPoint2D &GeoPoint2D::rotate(double degrees, const GeoPoint2D &center)
{
    return rotate(cosineAndSine(degrees), center);
}

GeoPoint2D GeoPoint2D::rotated(double degrees, const GeoPoint2D &center) const
{
    return rotated(cosineAndSine(degrees), center);
}

GeoPoint2D &GeoPoint2D::rotate(
    const std::pair<double, double> &cosineSine, const GeoPoint2D &center)
{
    const GeoPoint2D turned = rotated(cosineSine, center);
    x = turned.x;
    y = turned.y;
    return *this;
}

GeoPoint2D GeoPoint2D::rotated(
    const std::pair<double, double> &cosineSine, const GeoPoint2D &center) const
{
    const auto [cosine, sine] = cosineSine;
    const double dx = x - center.x;
    const double dy = y - center.y;
    return {center.x + (dx * cosine - dy * sine), center.y + (dx * sine + dy * cosine)};
}

GeoPoint2D &GeoPoint2D::scale(double factorX, double factorY, const GeoPoint2D &center)
{
    const GeoPoint2D changed = scaled(factorX, factorY, center);
    x = changed.x;
    y = changed.y;
    return *this;
}

GeoPoint2D GeoPoint2D::scaled(double factorX, double factorY, const GeoPoint2D &center) const
{
    return {center.x + (x - center.x) * factorX, center.y + (y - center.y) * factorY};
}

bool GeoPoint2D::equals(const GeoPoint2D &other, double tolerance) const
{
    return equals(other.x, other.y, tolerance);
}

bool GeoPoint2D::equals(double otherX, double otherY, double tolerance) const
{
    return std::abs(x - otherX) <= tolerance && std::abs(y - otherY) <= tolerance;
}

} // namespace KivSystem
