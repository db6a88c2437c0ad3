// GeoRectangle: a rectangle along the axes, given by the values of its four sides (cm).
//
//     GeoRectangle page;
//     page.setRect(0, length, 0, width);      // left, right, bottom, top
//
// The four values are kept as they are given: nothing puts left before right. Questions about the
// plane (contains, intersects, isEmpty, united) take the stretch between two opposite sides,
// whichever is the larger.

#ifndef KIVGEO_RECTANGLE_H
#define KIVGEO_RECTANGLE_H

#include "KivGeo/Point2D.h"

#include <utility>

namespace KivSystem {

class GeoSize2D;

class GeoRectangle
{
public:
    /// All four sides at zero.
    GeoRectangle() = default;
    GeoRectangle(double left, double right, double bottom, double top);

    void setRect(double left, double right, double bottom, double top);

    double left() const { return m_left; }
    double right() const { return m_right; }
    double bottom() const { return m_bottom; }
    double top() const { return m_top; }

    /// right - left and top - bottom, negative when the sides were given the other way round.
    double width() const { return m_right - m_left; }
    double height() const { return m_top - m_bottom; }
    GeoSize2D size() const;

    GeoPoint2D leftBottom() const { return {m_left, m_bottom}; }
    GeoPoint2D rightBottom() const { return {m_right, m_bottom}; }
    GeoPoint2D leftTop() const { return {m_left, m_top}; }
    GeoPoint2D rightTop() const { return {m_right, m_top}; }
    GeoPoint2D center() const;

    /// The same part of the plane with left <= right and bottom <= top.
    GeoRectangle normalized() const;

    GeoRectangle &translate(double dx, double dy);
    GeoRectangle &translate(const GeoPoint2D &way);
    GeoRectangle &translate(const GeoSize2D &way);
    GeoRectangle translated(double dx, double dy) const;
    GeoRectangle translated(const GeoPoint2D &way) const;
    GeoRectangle translated(const GeoSize2D &way) const;

    /// The bounding rectangle, normalised, of the four corners turned counter-clockwise by degrees
    /// or by a (cosine, sine) pair.
    GeoRectangle &rotate(double degrees, const GeoPoint2D &center = GeoPoint2D::origin());
    GeoRectangle &rotate(const std::pair<double, double> &cosineSine,
        const GeoPoint2D &center = GeoPoint2D::origin());
    GeoRectangle rotated(double degrees, const GeoPoint2D &center = GeoPoint2D::origin()) const;
    GeoRectangle rotated(const std::pair<double, double> &cosineSine,
        const GeoPoint2D &center = GeoPoint2D::origin()) const;

    /// Scales about a centre. A negative factor mirrors and exchanges the two sides, so that a
    /// normalised rectangle stays one.
    GeoRectangle &scale(
        double factorX, double factorY, const GeoPoint2D &center = GeoPoint2D::origin());
    GeoRectangle scaled(
        double factorX, double factorY, const GeoPoint2D &center = GeoPoint2D::origin()) const;

    /// The smallest normalised rectangle that holds both. A rectangle with all four sides at zero
    /// stands for nothing yet and adds nothing, so that a union can begin with a default one.
    GeoRectangle united(const GeoRectangle &other) const;

    /// Whether the point is inside, on an edge, or outside by no more than the tolerance on either
    /// axis. A negative tolerance asks for a distance from the edges.
    bool contains(const GeoPoint2D &point, double tolerance = 0) const;

    /// Whether the two have a point in common; touching edges and corners count.
    bool intersects(const GeoRectangle &other) const;

    /// Whether each side differs by no more than the tolerance, the bound included; never with NaN.
    bool equals(const GeoRectangle &other, double tolerance) const;

    /// Whether it has no area: no width, no height, or a value that is NaN.
    bool isEmpty() const;

private:
    bool isNull() const;

    double m_left = 0;
    double m_right = 0;
    double m_bottom = 0;
    double m_top = 0;
};

} // namespace KivSystem

#endif
