#include "CutDocument/CutCorners.h"

#include "CutDocument/CutPlan.h"

#include <boost/math/constants/constants.hpp>

namespace KivSystem {
namespace {

// Change of direction at `at`, from 0 for straight on to pi for back again.
double turn(const CutPoint &before, const CutPoint &at, const CutPoint &behind)
{
    const double inX = at.x - before.x;
    const double inY = at.y - before.y;
    const double outX = behind.x - at.x;
    const double outY = behind.y - at.y;
    return std::abs(std::atan2(inX * outY - inY * outX, inX * outX + inY * outY));
}

} // namespace

void markCorners(CutOutline &outline)
{
    constexpr double degree = boost::math::constants::degree<double>();
    constexpr double straightAngle = 180;
    const std::size_t count = outline.points.size();
    for (std::size_t i = 0; i < count; ++i) {
        CutPoint &point = outline.points[i];
        const double angle =
            turn(outline.points[(i + count - 1) % count], point, outline.points[(i + 1) % count]);
        point.corner = point.corner || angle >= kCornerTurn * degree;
        if (angle > (straightAngle - kSharpCorner) * degree) {
            point.lift = true;
            point.keep = true;
        }
    }
}

} // namespace KivSystem
