#include "Clipping.h"

#include "KivGeo/Rectangle.h"

#include <polyclipping/clipper.hpp>

#include <cmath>

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

std::vector<Contour> outerContours(const Paths &paths)
{
    std::vector<Contour> contours;
    for (const Path &path : paths) {
        if (!ClipperLib::Orientation(path)) {
            continue; // a hole
        }
        Contour contour;
        for (const IntPoint &point : path) {
            contour.emplace_back(static_cast<double>(point.X) * kClippingUnit,
                static_cast<double>(point.Y) * kClippingUnit);
        }
        contours.push_back(std::move(contour));
    }
    return contours;
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
    const Paths paths = toPaths(outlines);
    Paths widened = paths;
    if (gapX > 0 || gapY > 0) {
        const Path box{
            toUnits(-gapX, -gapY), toUnits(gapX, -gapY), toUnits(gapX, gapY), toUnits(-gapX, gapY)};
        for (const Path &path : paths) {
            Paths swept;
            ClipperLib::MinkowskiSum(box, path, swept, true);
            widened.insert(widened.end(), swept.begin(), swept.end());
        }
    }
    return outerContours(combined(widened, {}, ClipperLib::ctUnion));
}

std::vector<Contour> remainder(const std::vector<Contour> &subject,
    const std::vector<Contour> &others, const GeoRectangle &cloth)
{
    const Path rectangle{toUnits(cloth.left(), cloth.bottom()),
        toUnits(cloth.right(), cloth.bottom()), toUnits(cloth.right(), cloth.top()),
        toUnits(cloth.left(), cloth.top())};
    const Paths onCloth = combined(toPaths(subject), {rectangle}, ClipperLib::ctIntersection);
    return outerContours(combined(onCloth, toPaths(others), ClipperLib::ctDifference));
}

} // namespace KivSystem
