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
    constexpr double miterLimit = 2;   // of no use for round corners
    constexpr double roundness = 0.01; // how far the points of an arc may be off, of the distance
    ClipperLib::ClipperOffset offsetter(miterLimit, roundness * std::abs(distance) / kClippingUnit);
    offsetter.AddPaths(paths, ClipperLib::jtRound, ClipperLib::etClosedPolygon);
    Paths result;
    offsetter.Execute(result, distance / kClippingUnit);
    return result;
}

// The loops of an outline that crosses itself, what is inside being told by the even-odd rule.
Paths loopsOf(const Contour &contour)
{
    Paths loops;
    ClipperLib::SimplifyPolygon(toPath(contour), loops, ClipperLib::pftEvenOdd);
    return loops;
}

Paths loopsOf(const std::vector<Contour> &contours)
{
    Paths all;
    for (const Contour &contour : contours) {
        const Paths loops = loopsOf(contour);
        all.insert(all.end(), loops.begin(), loops.end());
    }
    return all;
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
        restorePoints(contour);
        const auto isSame = [](const GeoPoint2D &a, const GeoPoint2D &b) {
            return a.x == b.x && a.y == b.y;
        };
        contour.erase(std::unique(contour.begin(), contour.end(), isSame), contour.end());
        while (contour.size() > 1 && isSame(contour.front(), contour.back())) {
            contour.pop_back();
        }
    }

private:
    void restorePoints(Contour &contour) const
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

    double m_tolerance;
    std::vector<GeoPoint2D> m_corners;
};

// The nearest point to `point` of the segment between two corners.
GeoPoint2D nearestOn(const IntPoint &from, const IntPoint &to, const IntPoint &point)
{
    const auto dx = static_cast<double>(to.X - from.X);
    const auto dy = static_cast<double>(to.Y - from.Y);
    const double length = dx * dx + dy * dy;
    const double along =
        static_cast<double>(point.X - from.X) * dx + static_cast<double>(point.Y - from.Y) * dy;
    const double share = length > 0 ? std::clamp(along / length, 0.0, 1.0) : 0;
    return {static_cast<double>(from.X) + share * dx, static_cast<double>(from.Y) + share * dy};
}

// A small square over each place where a corner of one path comes within `reach` of another path.
Paths bridges(const Path &path, const Path &other, double reach)
{
    Paths squares;
    for (const IntPoint &corner : path) {
        for (std::size_t index = 0; index < other.size(); ++index) {
            const GeoPoint2D near =
                nearestOn(other[index], other[(index + 1) % other.size()], corner);
            const double distance = std::hypot(
                near.x - static_cast<double>(corner.X), near.y - static_cast<double>(corner.Y));
            if (distance <= reach) {
                const auto half = static_cast<ClipperLib::cInt>(reach);
                squares.push_back(
                    {{corner.X - half, corner.Y - half}, {corner.X + half, corner.Y - half},
                        {corner.X + half, corner.Y + half}, {corner.X - half, corner.Y + half}});
                break;
            }
        }
    }
    return squares;
}

bool areNear(const Path &left, const Path &right, double reach)
{
    const auto bounds = [](const Path &path) {
        ClipperLib::IntRect rect{path[0].X, path[0].Y, path[0].X, path[0].Y};
        for (const IntPoint &point : path) {
            rect.left = std::min(rect.left, point.X);
            rect.right = std::max(rect.right, point.X);
            rect.top = std::min(rect.top, point.Y);
            rect.bottom = std::max(rect.bottom, point.Y);
        }
        return rect;
    };
    const ClipperLib::IntRect a = bounds(left);
    const ClipperLib::IntRect b = bounds(right);
    const auto gap = static_cast<ClipperLib::cInt>(reach);
    return a.left <= b.right + gap && b.left <= a.right + gap && a.top <= b.bottom + gap &&
           b.top <= a.bottom + gap;
}

// Joins what stands tip before edge, or tip before tip.
Paths bridged(const Paths &paths, double tolerance)
{
    constexpr double rounding = 2; // units
    const double reach = tolerance / kClippingUnit + rounding;
    Paths all = paths;
    for (std::size_t first = 0; first < paths.size(); ++first) {
        for (std::size_t second = 0; second < paths.size(); ++second) {
            if (first != second && areNear(paths[first], paths[second], reach)) {
                const Paths squares = bridges(paths[first], paths[second], reach);
                all.insert(all.end(), squares.begin(), squares.end());
            }
        }
    }
    return all.size() > paths.size() ? combined(all, {}, ClipperLib::ctUnion) : paths;
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

Region joined(const std::vector<Contour> &outlines, double tolerance, bool fillHoles)
{
    Paths paths = combined(loopsOf(outlines), {}, ClipperLib::ctUnion);
    const bool apart = regionOf(paths).outer.size() > 1 && tolerance > 0;
    if (apart) {
        // Widened they meet, and made narrower again they stay together, but for tips.
        paths = bridged(offset(offset(paths, tolerance), -tolerance), tolerance);
    }
    Region region = regionOf(paths);
    if (fillHoles) { // also what lies within a hole without touching its border
        region = regionOf(combined(toPaths(region.outer), {}, ClipperLib::ctUnion));
    }
    constexpr double reach = 2; // the points of an arc lie nearer to their corner than that
    const double rounding = 2 * kClippingUnit;
    const CornerMemory memory(outlines, apart ? reach * tolerance : rounding);
    for (Contour &contour : region.outer) {
        memory.restore(contour);
        if (apart) {
            contour = simplified(contour, tolerance); // the dents where the gaps end
        }
    }
    return region;
}

Contour widened(const Contour &outline, double distance)
{
    const Paths parts = offset(loopsOf(outline), distance);
    const auto largest = std::max_element(parts.begin(), parts.end(),
        [](const Path &a, const Path &b) { return ClipperLib::Area(a) < ClipperLib::Area(b); });
    return largest != parts.end() ? regionOf({*largest}).outer.front() : outline;
}

bool liesWithin(const Contour &inner, const Contour &outer, double tolerance)
{
    return combined(loopsOf(inner), offset(loopsOf(outer), tolerance), ClipperLib::ctDifference)
        .empty();
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
