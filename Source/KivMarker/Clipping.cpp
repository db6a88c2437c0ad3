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

// No point that is left out lies further from the contour than the tolerance.
Contour simplified(const Contour &contour, double tolerance)
{
    boost::geometry::model::ring<GeoPoint2D> ring(contour.begin(), contour.end());
    ring.push_back(contour.front());
    boost::geometry::model::ring<GeoPoint2D> result;
    boost::geometry::simplify(ring, result, tolerance);
    constexpr std::size_t closedTriangle = 4;
    return result.size() >= closedTriangle ? Contour(result.begin(), result.end() - 1) : contour;
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

} // namespace

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
