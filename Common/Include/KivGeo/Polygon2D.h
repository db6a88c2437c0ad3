// GeoPolygon2D<Point>: a row of points, held by value and in one block of memory, with the measures
// of the polygon that it encloses. The last point is joined to the first; it need not be repeated,
// and if it is, no measure changes except the mean that centroid() falls back on.
//
// Point is GeoPoint2D or a class derived from it. Transformations write x and y alone: whatever
// else a derived point carries stays with it. Lengths are in cm, areas in cm2, angles in degrees.
//
//     GeoPolygon2D<CDbMarkerPointObject> outline;
//     outline.append(point);
//     outline.rotate(90, outline.boundingRect().center());
//
// The destructor is not virtual: do not delete a derived class through a pointer to this one.

#ifndef KIVGEO_POLYGON2D_H
#define KIVGEO_POLYGON2D_H

#include "KivGeo/Affine.h"
#include "KivGeo/Point2D.h"
#include "KivGeo/Rectangle.h"
#include "KivGeo/Size2D.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace KivSystem {

template <class Point>
class GeoPolygon2D
{
public:
    using iterator = typename std::vector<Point>::iterator;
    using const_iterator = typename std::vector<Point>::const_iterator;

    GeoPolygon2D() = default;
    GeoPolygon2D(std::initializer_list<Point> points) : m_points(points) {}
    explicit GeoPolygon2D(std::vector<Point> points) : m_points(std::move(points)) {}

    int size() const { return static_cast<int>(m_points.size()); }
    bool isEmpty() const { return m_points.empty(); }
    /// Makes room for that many points in all; a count below the present one does nothing.
    void reserve(int count) { m_points.reserve(static_cast<std::size_t>(std::max(count, 0))); }
    void append(Point point) { m_points.push_back(std::move(point)); }
    void clear() { m_points.clear(); }

    /// Indexes are 0-based. These four throw std::out_of_range outside the polygon.
    Point &operator[](int index) { return m_points[checked(index)]; }
    const Point &operator[](int index) const { return m_points[checked(index)]; }
    const Point &first() const { return m_points[checked(0)]; }
    Point &first() { return m_points[checked(0)]; }
    const Point &last() const { return m_points[checked(size() - 1)]; }
    Point &last() { return m_points[checked(size() - 1)]; }

    iterator begin() { return m_points.begin(); }
    iterator end() { return m_points.end(); }
    const_iterator begin() const { return m_points.begin(); }
    const_iterator end() const { return m_points.end(); }
    const std::vector<Point> &points() const { return m_points; }

    /// Positive when the points run counter-clockwise, 0 with fewer than three points. Keeps its
    /// digits however far the polygon lies from the origin.
    double signedArea() const;
    double area() const { return std::abs(signedArea()); }
    bool isCounterClockwise() const { return signedArea() > 0; }

    /// The way round, the closing edge included: a polygon of two points counts its edge twice.
    double perimeter() const;

    /// The zero rectangle for an empty polygon.
    GeoRectangle boundingRect() const;

    /// The centre of the area. Of a polygon without area the mean of its points, and of an empty
    /// one the origin.
    GeoPoint2D centroid() const;

    /// Even-odd rule: what an outline that crosses itself encloses twice is outside. A point that
    /// lies exactly on an edge or a corner is inside.
    bool contains(const GeoPoint2D &point) const;

    /// The same number of points, and each equal in place to that of the other, within the
    /// tolerance. Two polygons that begin at different points are not equal.
    bool equals(const GeoPolygon2D &other, double tolerance) const;

    GeoPolygon2D &translate(double dx, double dy);
    GeoPolygon2D &translate(const GeoPoint2D &way) { return translate(way.x, way.y); }
    GeoPolygon2D &translate(const GeoSize2D &way) { return translate(way.width, way.height); }
    GeoPolygon2D translated(double dx, double dy) const
    {
        return std::move(copy().translate(dx, dy));
    }
    GeoPolygon2D translated(const GeoPoint2D &way) const
    {
        return std::move(copy().translate(way));
    }
    GeoPolygon2D translated(const GeoSize2D &way) const { return std::move(copy().translate(way)); }

    /// As GeoPoint2D::rotate: degrees counter-clockwise, or a (cosine, sine) pair.
    GeoPolygon2D &rotate(double degrees, const GeoPoint2D &center = GeoPoint2D::origin());
    GeoPolygon2D &rotate(const std::pair<double, double> &cosineSine,
        const GeoPoint2D &center = GeoPoint2D::origin());
    GeoPolygon2D rotated(double degrees, const GeoPoint2D &center = GeoPoint2D::origin()) const
    {
        return std::move(copy().rotate(degrees, center));
    }
    GeoPolygon2D rotated(const std::pair<double, double> &cosineSine,
        const GeoPoint2D &center = GeoPoint2D::origin()) const
    {
        return std::move(copy().rotate(cosineSine, center));
    }

    /// As GeoPoint2D::scale. The order of the points stays, so that one negative factor turns the
    /// sense of the outline round.
    GeoPolygon2D &scale(
        double factorX, double factorY, const GeoPoint2D &center = GeoPoint2D::origin());
    GeoPolygon2D scaled(
        double factorX, double factorY, const GeoPoint2D &center = GeoPoint2D::origin()) const
    {
        return std::move(copy().scale(factorX, factorY, center));
    }

    GeoPolygon2D &apply(const GeoAffine &map);
    GeoPolygon2D applied(const GeoAffine &map) const { return std::move(copy().apply(map)); }

    /// Turns the order of the points round; each takes all its members along.
    GeoPolygon2D &reverse();
    GeoPolygon2D reversed() const { return std::move(copy().reverse()); }

private:
    // A copy to change: what it returns of itself is moved out, not copied once more.
    GeoPolygon2D copy() const { return *this; }
    std::size_t checked(int index) const;

    // Takes each pair of neighbours, the last and the first included, as (from, to).
    template <class Visitor>
    void forEachEdge(Visitor visitor) const;

    // Takes each point as the base class, so that what a derived point adds is out of reach.
    template <class Change>
    GeoPolygon2D &changePoints(Change change);

    std::vector<Point> m_points;
};

} // namespace KivSystem

#include "KivGeo/Polygon2DBodies.h"

#endif
