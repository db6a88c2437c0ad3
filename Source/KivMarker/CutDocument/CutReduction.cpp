#include "CutDocument/CutReduction.h"

#include "KivMarker/CutSettings.h"

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/register/point.hpp>

#include <algorithm>

BOOST_GEOMETRY_REGISTER_POINT_2D(KivSystem::CutPoint, double, cs::cartesian, x, y)
BOOST_GEOMETRY_REGISTER_POINT_2D(KivSystem::GeoPoint2D, double, cs::cartesian, x, y)

namespace KivSystem {
namespace {

template <class Point>
using Line = boost::geometry::model::linestring<Point>;

template <class Point>
Line<Point> simplified(const Line<Point> &line, double tolerance)
{
    Line<Point> result;
    boost::geometry::simplify(line, result, tolerance);
    return result;
}

std::size_t farthestFrom(const std::vector<CutPoint> &points, std::size_t start)
{
    const GeoPoint2D place = points[start].place();
    const auto farthest = std::max_element(
        points.begin(), points.end(), [&place](const CutPoint &a, const CutPoint &b) {
            return distance(place, a.place()) < distance(place, b.place());
        });
    return static_cast<std::size_t>(farthest - points.begin());
}

// The points between which the outline is simplified piece by piece, the start and at least one
// other among them.
std::vector<std::size_t> anchors(const std::vector<CutPoint> &points)
{
    std::vector<std::size_t> found{0};
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (points[i].keep) {
            found.push_back(i);
        }
    }
    if (found.size() == 1) {
        found.push_back(farthestFrom(points, 0));
    }
    return found;
}

std::vector<CutPoint> reduced(const std::vector<CutPoint> &points, double tolerance)
{
    const std::vector<std::size_t> fixed = anchors(points);
    std::vector<CutPoint> result;
    for (std::size_t i = 0; i < fixed.size(); ++i) {
        const std::size_t end = i + 1 < fixed.size() ? fixed[i + 1] : points.size();
        Line<CutPoint> stretch;
        for (std::size_t k = fixed[i]; k <= end; ++k) {
            stretch.push_back(points[k % points.size()]);
        }
        stretch = simplified(stretch, tolerance);
        result.insert(result.end(), stretch.begin(), stretch.end() - 1);
    }
    return result;
}

using Ring = boost::geometry::model::ring<GeoPoint2D>;

Ring ringOf(const std::vector<CutPoint> &points)
{
    Ring ring;
    for (const CutPoint &point : points) {
        ring.push_back(point.place());
    }
    ring.push_back(ring.front());
    return ring;
}

bool isLikeBefore(const std::vector<CutPoint> &points, const Ring &before, bool crossedBefore)
{
    constexpr std::size_t triangle = 3;
    if (points.size() < triangle) {
        return false;
    }
    const Ring ring = ringOf(points);
    const double area = std::abs(boost::geometry::area(before));
    const double change = std::abs(std::abs(boost::geometry::area(ring)) - area);
    return change <= kLargestAreaChange * area &&
           (crossedBefore || !boost::geometry::intersects(ring));
}

CutPoint pointOn(const CutPoint &, double x, double y)
{
    CutPoint point;
    point.x = x;
    point.y = y;
    return point;
}

GeoPoint2D pointOn(const GeoPoint2D &, double x, double y)
{
    return {x, y};
}

// Puts as many points, evenly, on the way from one point to the next as the distance asks for.
template <class Point>
void addIntermediate(
    std::vector<Point> &result, const Point &from, const Point &to, double largestDistance)
{
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    const double parts = std::ceil(length / largestDistance);
    for (double part = 1; part < parts; ++part) {
        const double share = part / parts;
        result.push_back(pointOn(from, from.x + share * (to.x - from.x), //
            from.y + share * (to.y - from.y)));
    }
}

template <class Point>
std::vector<Point> withIntermediate(const std::vector<Point> &points, double distance, bool closed)
{
    std::vector<Point> result;
    for (std::size_t i = 0; i < points.size(); ++i) {
        result.push_back(points[i]);
        if (closed || i + 1 < points.size()) {
            addIntermediate(result, points[i], points[(i + 1) % points.size()], distance);
        }
    }
    return result;
}

bool addsPoints(const CutSettings &settings)
{
    return settings.cutInterPoints && settings.cutInterPointsFreq > 0;
}

} // namespace

void reduceOutline(CutOutline &outline, const CutSettings &settings)
{
    constexpr int halvings = 8;
    if (!settings.reducePoints || outline.points.empty()) {
        return;
    }
    const Ring before = ringOf(outline.points);
    const bool crosses = boost::geometry::intersects(before);
    double tolerance = settings.reducePointsTolerance;
    for (int i = 0; i <= halvings; ++i, tolerance /= 2) {
        std::vector<CutPoint> points = reduced(outline.points, tolerance);
        if (isLikeBefore(points, before, crosses)) {
            outline.points = std::move(points);
            return;
        }
    }
}

void divideLongEdges(CutOutline &outline, const CutSettings &settings)
{
    if (addsPoints(settings)) {
        outline.points = withIntermediate(outline.points, settings.cutInterPointsFreq, true);
    }
}

CutPath conditionedLine(CutPath line, const CutSettings &settings)
{
    if (settings.reducePoints && line.size() > 2) {
        const Line<GeoPoint2D> reducedLine =
            simplified(Line<GeoPoint2D>(line.begin(), line.end()), settings.reducePointsTolerance);
        line.assign(reducedLine.begin(), reducedLine.end());
    }
    if (addsPoints(settings)) {
        line = withIntermediate(line, settings.cutInterPointsFreq, false);
    }
    return line;
}

} // namespace KivSystem
