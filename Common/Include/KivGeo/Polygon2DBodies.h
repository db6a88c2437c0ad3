// The longer bodies of GeoPolygon2D. Include Polygon2D.h instead.

#ifndef KIVGEO_POLYGON2DBODIES_H
#define KIVGEO_POLYGON2DBODIES_H

#include "KivGeo/Polygon2D.h"

#include <cmath>

namespace KivSystem {

template <class Point>
std::size_t GeoPolygon2D<Point>::checked(int index) const
{
    if (isEmpty()) {
        throw std::out_of_range("GeoPolygon2D: the polygon has no points");
    }
    if (index < 0 || index >= size()) {
        throw std::out_of_range("GeoPolygon2D: index " + std::to_string(index) +
                                " is not in 0 to " + std::to_string(size() - 1));
    }
    return static_cast<std::size_t>(index);
}

template <class Point>
template <class Visitor>
void GeoPolygon2D<Point>::forEachEdge(Visitor visitor) const
{
    if (isEmpty()) {
        return;
    }
    const Point *from = &m_points.back();
    for (const Point &to : m_points) {
        visitor(*from, to);
        from = &to;
    }
}

template <class Point>
double GeoPolygon2D<Point>::signedArea() const
{
    // Taken from the first point: the products of large coordinates would cancel to noise.
    double twice = 0;
    forEachEdge([&](const GeoPoint2D &from, const GeoPoint2D &to) {
        const GeoPoint2D &base = m_points.front();
        twice += (from.x - base.x) * (to.y - base.y) - (to.x - base.x) * (from.y - base.y);
    });
    return twice / 2;
}

template <class Point>
double GeoPolygon2D<Point>::perimeter() const
{
    double sum = 0;
    forEachEdge([&](const GeoPoint2D &from, const GeoPoint2D &to) {
        sum += std::hypot(to.x - from.x, to.y - from.y);
    });
    return sum;
}

template <class Point>
GeoRectangle GeoPolygon2D<Point>::boundingRect() const
{
    if (isEmpty()) {
        return {};
    }
    const GeoPoint2D &base = m_points.front();
    double left = base.x;
    double right = base.x;
    double bottom = base.y;
    double top = base.y;
    for (const GeoPoint2D &point : m_points) {
        left = std::min(left, point.x);
        right = std::max(right, point.x);
        bottom = std::min(bottom, point.y);
        top = std::max(top, point.y);
    }
    return {left, right, bottom, top};
}

template <class Point>
GeoPoint2D GeoPolygon2D<Point>::centroid() const
{
    if (isEmpty()) {
        return {};
    }
    const GeoPoint2D base = m_points.front();
    GeoPoint2D moment;
    GeoPoint2D sum;
    double twice = 0;
    forEachEdge([&](const GeoPoint2D &from, const GeoPoint2D &to) {
        const GeoPoint2D p = from.translated(-base.x, -base.y);
        const GeoPoint2D q = to.translated(-base.x, -base.y);
        const double cross = p.x * q.y - q.x * p.y;
        twice += cross;
        moment.translate((p.x + q.x) * cross, (p.y + q.y) * cross);
        sum.translate(q);
    });

    // Points on one slanted line give an area of rounding noise, and a moment of the same kind:
    // their quotient could lie anywhere.
    constexpr double noise = 1e-12;
    const GeoRectangle box = boundingRect();
    const double extent = box.width() * box.width() + box.height() * box.height();
    if (std::abs(twice) <= noise * extent) {
        return base.translated(sum.scaled(1.0 / size(), 1.0 / size()));
    }
    return base.translated(moment.x / (3 * twice), moment.y / (3 * twice));
}

template <class Point>
bool GeoPolygon2D<Point>::contains(const GeoPoint2D &point) const
{
    bool inside = false;
    bool onEdge = false;
    forEachEdge([&](const GeoPoint2D &from, const GeoPoint2D &to) {
        const double side =
            (to.x - from.x) * (point.y - from.y) - (point.x - from.x) * (to.y - from.y);
        onEdge =
            onEdge ||
            (side == 0 && std::min(from.x, to.x) <= point.x && point.x <= std::max(from.x, to.x) &&
                std::min(from.y, to.y) <= point.y && point.y <= std::max(from.y, to.y));
        // An edge holds its lower end but not its upper one, so that a corner counts once.
        if ((from.y <= point.y) != (to.y <= point.y)) {
            const bool upwards = to.y > from.y;
            inside = inside != (upwards == (side > 0));
        }
    });
    return onEdge || inside;
}

template <class Point>
bool GeoPolygon2D<Point>::equals(const GeoPolygon2D &other, double tolerance) const
{
    return std::equal(begin(), end(), other.begin(), other.end(),
        [tolerance](const GeoPoint2D &a, const GeoPoint2D &b) { return a.equals(b, tolerance); });
}

template <class Point>
template <class Change>
GeoPolygon2D<Point> &GeoPolygon2D<Point>::changePoints(Change change)
{
    static_assert(std::is_base_of_v<GeoPoint2D, Point>, "Point must derive from GeoPoint2D");
    for (GeoPoint2D &point : m_points) {
        change(point);
    }
    return *this;
}

template <class Point>
GeoPolygon2D<Point> &GeoPolygon2D<Point>::translate(double dx, double dy)
{
    return changePoints([=](GeoPoint2D &point) { point.translate(dx, dy); });
}

template <class Point>
GeoPolygon2D<Point> &GeoPolygon2D<Point>::rotate(double degrees, const GeoPoint2D &center)
{
    return rotate(GeoPoint2D::cosineAndSine(degrees), center);
}

// The centre is copied below: it may be a point of this very polygon.

template <class Point>
GeoPolygon2D<Point> &GeoPolygon2D<Point>::rotate(
    const std::pair<double, double> &cosineSine, const GeoPoint2D &center)
{
    return changePoints([=](GeoPoint2D &point) { point.rotate(cosineSine, center); });
}

template <class Point>
GeoPolygon2D<Point> &GeoPolygon2D<Point>::scale(
    double factorX, double factorY, const GeoPoint2D &center)
{
    return changePoints([=](GeoPoint2D &point) { point.scale(factorX, factorY, center); });
}

template <class Point>
GeoPolygon2D<Point> &GeoPolygon2D<Point>::apply(const GeoAffine &map)
{
    return changePoints([&map](GeoPoint2D &point) {
        const GeoPoint2D image = map.applyToPoint(point);
        point.x = image.x;
        point.y = image.y;
    });
}

template <class Point>
GeoPolygon2D<Point> &GeoPolygon2D<Point>::reverse()
{
    std::reverse(m_points.begin(), m_points.end());
    return *this;
}

} // namespace KivSystem

#endif
