// What the tests of the geometry share: exact and near comparison of points, and a derived point.

#ifndef KIVGEO_TESTS_SUPPORT_H
#define KIVGEO_TESTS_SUPPORT_H

#include "KivGeo/Point2D.h"

#include <gtest/gtest.h>

namespace KivSystem {

inline void PrintTo(const GeoPoint2D &point, std::ostream *stream)
{
    *stream << '(' << point.x << ", " << point.y << ')';
}

inline testing::AssertionResult isNear(
    const GeoPoint2D &point, double x, double y, double tolerance)
{
    if (point.equals(x, y, tolerance)) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << testing::PrintToString(point) << " is not at "
                                       << testing::PrintToString(GeoPoint2D(x, y));
}

inline testing::AssertionResult isExactly(const GeoPoint2D &point, double x, double y)
{
    return isNear(point, x, y, 0);
}

/// A point that carries more than its place.
class NumberedPoint : public GeoPoint2D
{
public:
    NumberedPoint(double pointX, double pointY, int pointNumber)
        : GeoPoint2D(pointX, pointY)
        , number(pointNumber)
    {}

    int number;
};

} // namespace KivSystem

#endif
