#include "Clipping.h"

#include "KivGeo/Rectangle.h"

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/register/point.hpp>
#include <polyclipping/clipper.hpp>

#include <algorithm>
#include <cmath>

BOOST_GEOMETRY_REGISTER_POINT_2D(KivSystem::GeoPoint2D, double, cs::cartesian, x, y)

namespace KivSystem {
namespace {

using ClipperLib::Clipper;
using ClipperLib::IntPoint;
using ClipperLib::Path;
using ClipperLib::Paths;

IntPoint toUnits(double x, double y)
{
    return {std::llround(x / kClippingUnit), std::llround(y / kClippingUnit)};
}

// Counter-clockwise, so that outlines of either direction add up.
Path toPath(const Contour &contour)
{
    Path path;
    path.reserve(contour.size());
    for (const GeoPoint2D &point : contour) {
        path.push_back(toUnits(point.x, point.y));
    }
    if (!ClipperLib::Orientation(path)) {
        ClipperLib::ReversePath(path);
    }
    return path;
}

Paths toPaths(const std::vector<Contour> &contours)
{
    Paths paths;
    for (const Contour &contour : contours) {
        paths.push_back(toPath(contour));
    }
    return paths;
}

Region regionOf(const Paths &paths)
{
    Region region;
    for (const Path &path : paths) {
        Contour contour;
        for (const IntPoint &point : path) {
            contour.emplace_back(static_cast<double>(point.X) * kClippingUnit,
                static_cast<double>(point.Y) * kClippingUnit);
        }
        (ClipperLib::Orientation(path) ? region.outer : region.holes).push_back(std::move(contour));
    }
    return region;
}

Paths combined(const Paths &subject, const Paths &clip, ClipperLib::ClipType type)
{
    Clipper clipper;
    clipper.AddPaths(subject, ClipperLib::ptSubject, true);
    clipper.AddPaths(clip, ClipperLib::ptClip, true);
    Paths result;
    clipper.Execute(type, result, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    return result;
}

Paths offset(const Paths &paths, double distance)
{
    constexpr double miterLimit = 3;
    ClipperLib::ClipperOffset offsetter(miterLimit);
    offsetter.AddPaths(paths, ClipperLib::jtMiter, ClipperLib::etClosedPolygon);
    Paths result;
    offsetter.Execute(result, distance / kClippingUnit);
    return result;
}

// Gives each corner that came through the clipping, or was moved by no more than the tolerance, its
// given coordinates again.
class CornerMemory
{
public:
    CornerMemory(const std::vector<Contour> &outlines, double tolerance) : m_tolerance(tolerance)
    {
        for (const Contour &outline : outlines) {
            m_corners.insert(m_corners.end(), outline.begin(), outline.end());
        }
        std::sort(m_corners.begin(), m_corners.end(),
            [](const GeoPoint2D &a, const GeoPoint2D &b) { return a.x < b.x; });
    }

    void restore(Contour &contour) const
    {
        for (GeoPoint2D &point : contour) {
            double nearest = m_tolerance;
            const double x = point.x;
            const double y = point.y;
            auto corner = std::lower_bound(m_corners.begin(), m_corners.end(), x - m_tolerance,
                [](const GeoPoint2D &a, double value) { return a.x < value; });
            for (; corner != m_corners.end() && corner->x <= x + m_tolerance; ++corner) {
                const double distance = std::hypot(corner->x - x, corner->y - y);
                if (distance <= nearest) {
                    nearest = distance;
                    point = *corner;
                }
            }
        }
    }

private:
    double m_tolerance;
    std::vector<GeoPoint2D> m_corners;
};

double areaOf(const Paths &paths)
{
    double area = 0;
    for (const Path &path : paths) {
        area += ClipperLib::Area(path);
    }
    return area * kClippingUnit * kClippingUnit;
}

} // namespace

Contour simplified(const Contour &outline, double tolerance)
{
    boost::geometry::model::ring<GeoPoint2D> ring(outline.begin(), outline.end());
    ring.push_back(outline.front());
    boost::geometry::model::ring<GeoPoint2D> result;
    boost::geometry::simplify(ring, result, tolerance);
    constexpr std::size_t closedTriangle = 4;
    return result.size() >= closedTriangle ? Contour(result.begin(), result.end() - 1) : outline;
}

Region joined(const std::vector<Contour> &outlines, double tolerance)
{
    Paths paths = combined(toPaths(outlines), {}, ClipperLib::ctUnion);
    Region region = regionOf(paths);
    const bool apart = region.outer.size() > 1 && tolerance > 0;
    if (apart) {
        // Widened by half the tolerance they meet, and made narrower again they stay together.
        region = regionOf(offset(offset(paths, tolerance / 2), -tolerance / 2));
    }
    constexpr double miterReach = 3; // a sharp corner moves by up to so many times the offset
    const double rounding = 2 * kClippingUnit;
    const CornerMemory memory(outlines, apart ? miterReach * tolerance : rounding);
    std::for_each(region.outer.begin(), region.outer.end(),
        [&memory](Contour &contour) { memory.restore(contour); });
    return region;
}

Contour widened(const Contour &outline, double distance)
{
    const Region region = regionOf(offset({toPath(outline)}, distance));
    return region.outer.empty() ? outline : region.outer.front();
}

double differenceArea(const Contour &left, const Contour &right)
{
    return areaOf(combined({toPath(left)}, {toPath(right)}, ClipperLib::ctXor));
}

std::vector<Contour> widenedUnion(const std::vector<Contour> &outlines, double gapX, double gapY)
{
    Paths widened = toPaths(outlines);
    if (gapX > 0 || gapY > 0) {
        const double tolerance = kSimplified * std::max(gapX, gapY);
        for (const Contour &outline : outlines) {
            const bool fine = outline.size() <= kFinePoints;
            const double x = gapX + (fine ? 0 : tolerance);
            const double y = gapY + (fine ? 0 : tolerance);
            const Path path = toPath(fine ? outline : simplified(outline, tolerance));
            const Path box{toUnits(-x, -y), toUnits(x, -y), toUnits(x, y), toUnits(-x, y)};
            Paths swept;
            ClipperLib::MinkowskiSum(box, path, swept, true);
            widened.insert(widened.end(), swept.begin(), swept.end());
        }
    }
    return regionOf(combined(widened, {}, ClipperLib::ctUnion)).outer;
}

Region remainder(const std::vector<Contour> &subject, const std::vector<Contour> &others,
    const std::vector<Contour> &kept, const GeoRectangle &cloth)
{
    const Path rectangle{toUnits(cloth.left(), cloth.bottom()),
        toUnits(cloth.right(), cloth.bottom()), toUnits(cloth.right(), cloth.top()),
        toUnits(cloth.left(), cloth.top())};
    const Paths free = combined(toPaths(subject), toPaths(others), ClipperLib::ctDifference);
    const Paths all = combined(free, toPaths(kept), ClipperLib::ctUnion);
    return regionOf(combined(all, {rectangle}, ClipperLib::ctIntersection));
}

} // namespace KivSystem
