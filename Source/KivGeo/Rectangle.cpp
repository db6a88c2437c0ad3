#include "KivGeo/Rectangle.h"

#include "KivGeo/Polygon2D.h"
#include "KivGeo/Size2D.h"

#include <algorithm>

namespace KivSystem {

GeoRectangle::GeoRectangle(double left, double right, double bottom, double top)
    : m_left(left)
    , m_right(right)
    , m_bottom(bottom)
    , m_top(top)
{}

void GeoRectangle::setRect(double left, double right, double bottom, double top)
{
    *this = GeoRectangle(left, right, bottom, top);
}

GeoSize2D GeoRectangle::size() const
{
    return {width(), height()};
}

GeoPoint2D GeoRectangle::center() const
{
    return {m_left + width() / 2, m_bottom + height() / 2};
}

GeoRectangle GeoRectangle::normalized() const
{
    return {std::min(m_left, m_right), std::max(m_left, m_right), std::min(m_bottom, m_top),
        std::max(m_bottom, m_top)};
}

GeoRectangle &GeoRectangle::translate(double dx, double dy)
{
    return *this = translated(dx, dy);
}

GeoRectangle &GeoRectangle::translate(const GeoPoint2D &way)
{
    return translate(way.x, way.y);
}

GeoRectangle &GeoRectangle::translate(const GeoSize2D &way)
{
    return translate(way.width, way.height);
}

GeoRectangle GeoRectangle::translated(double dx, double dy) const
{
    return {m_left + dx, m_right + dx, m_bottom + dy, m_top + dy};
}

GeoRectangle GeoRectangle::translated(const GeoPoint2D &way) const
{
    return translated(way.x, way.y);
}

GeoRectangle GeoRectangle::translated(const GeoSize2D &way) const
{
    return translated(way.width, way.height);
}

GeoRectangle &GeoRectangle::rotate(double degrees, const GeoPoint2D &center)
{
    return *this = rotated(degrees, center);
}

GeoRectangle &GeoRectangle::rotate(
    const std::pair<double, double> &cosineSine, const GeoPoint2D &center)
{
    return *this = rotated(cosineSine, center);
}

GeoRectangle GeoRectangle::rotated(double degrees, const GeoPoint2D &center) const
{
    return rotated(GeoPoint2D::cosineAndSine(degrees), center);
}

GeoRectangle GeoRectangle::rotated(
    const std::pair<double, double> &cosineSine, const GeoPoint2D &center) const
{
    GeoPolygon2D<GeoPoint2D> corners{leftBottom(), rightBottom(), rightTop(), leftTop()};
    return corners.rotate(cosineSine, center).boundingRect();
}

GeoRectangle &GeoRectangle::scale(double factorX, double factorY, const GeoPoint2D &center)
{
    return *this = scaled(factorX, factorY, center);
}

GeoRectangle GeoRectangle::scaled(double factorX, double factorY, const GeoPoint2D &center) const
{
    GeoPoint2D low = leftBottom().scaled(factorX, factorY, center);
    GeoPoint2D high = rightTop().scaled(factorX, factorY, center);
    if (factorX < 0) {
        std::swap(low.x, high.x);
    }
    if (factorY < 0) {
        std::swap(low.y, high.y);
    }
    return {low.x, high.x, low.y, high.y};
}

GeoRectangle GeoRectangle::united(const GeoRectangle &other) const
{
    const GeoRectangle a = normalized();
    const GeoRectangle b = other.normalized();
    if (a.isNull()) {
        return b;
    }
    if (b.isNull()) {
        return a;
    }
    return {std::min(a.m_left, b.m_left), std::max(a.m_right, b.m_right),
        std::min(a.m_bottom, b.m_bottom), std::max(a.m_top, b.m_top)};
}

bool GeoRectangle::contains(const GeoPoint2D &point, double tolerance) const
{
    const GeoRectangle box = normalized();
    return point.x >= box.m_left - tolerance && point.x <= box.m_right + tolerance &&
           point.y >= box.m_bottom - tolerance && point.y <= box.m_top + tolerance;
}

bool GeoRectangle::intersects(const GeoRectangle &other) const
{
    const GeoRectangle a = normalized();
    const GeoRectangle b = other.normalized();
    return a.m_left <= b.m_right && b.m_left <= a.m_right && a.m_bottom <= b.m_top &&
           b.m_bottom <= a.m_top;
}

bool GeoRectangle::equals(const GeoRectangle &other, double tolerance) const
{
    return leftBottom().equals(other.leftBottom(), tolerance) &&
           rightTop().equals(other.rightTop(), tolerance);
}

bool GeoRectangle::isEmpty() const
{
    const GeoRectangle box = normalized();
    return !(box.width() > 0 && box.height() > 0);
}

bool GeoRectangle::isNull() const
{
    return m_left == 0 && m_right == 0 && m_bottom == 0 && m_top == 0;
}

} // namespace KivSystem
