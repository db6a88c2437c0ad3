#include "Support.h"

#include "KivGeo/Size2D.h"

#include <cmath>
#include <limits>

namespace KivSystem {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

TEST(Point2D, QuarterTurnsAreExactAboutTheOriginAndAboutACentre)
{
    struct Case
    {
        double degrees;
        GeoPoint2D aboutOrigin; // of (3, 1.1)
        GeoPoint2D aboutCentre; // of (3, 1) about (2, 0.5)
    };
    const Case cases[] = {
        {0, {3, 1.1}, {3, 1}},
        {90, {-1.1, 3}, {1.5, 1.5}},
        {180, {-3, -1.1}, {1, 0}},
        {270, {1.1, -3}, {2.5, -0.5}},
        {360, {3, 1.1}, {3, 1}},
        {-90, {1.1, -3}, {2.5, -0.5}},
        {-180, {-3, -1.1}, {1, 0}},
        {-450, {1.1, -3}, {2.5, -0.5}},
        {360e9 + 90, {-1.1, 3}, {1.5, 1.5}},
        {-360e9 - 180, {-3, -1.1}, {1, 0}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.degrees);
        EXPECT_TRUE(
            isExactly(GeoPoint2D(3, 1.1).rotated(c.degrees), c.aboutOrigin.x, c.aboutOrigin.y));
        EXPECT_TRUE(isExactly(
            GeoPoint2D(3, 1).rotated(c.degrees, {2, 0.5}), c.aboutCentre.x, c.aboutCentre.y));
        GeoPoint2D changed(3, 1);
        EXPECT_EQ(&changed.rotate(c.degrees, {2, 0.5}), &changed);
        EXPECT_TRUE(isExactly(changed, c.aboutCentre.x, c.aboutCentre.y));
    }
}

TEST(Point2D, QuarterTurnsGiveNoNegativeZero)
{
    for (int degrees = -720; degrees <= 720; degrees += 90) {
        SCOPED_TRACE(degrees);
        const auto [cosine, sine] = GeoPoint2D::cosineAndSine(degrees);
        EXPECT_FALSE(cosine == 0 && std::signbit(cosine));
        EXPECT_FALSE(sine == 0 && std::signbit(sine));
        const GeoPoint2D point = GeoPoint2D(-7, 0).rotated(degrees);
        EXPECT_FALSE(point.x == 0 && std::signbit(point.x));
        EXPECT_FALSE(point.y == 0 && std::signbit(point.y));
    }
}

TEST(Point2D, OtherAnglesTurnCounterClockwiseInEveryQuadrant)
{
    for (const double degrees : {1e-9, 30.0, 45.0, 60.5, 89.999, 135.0, 200.0, 225.0, 300.0, 315.0,
             359.0, -1.0, -135.0, -300.0, 765.25}) {
        SCOPED_TRACE(degrees);
        const double radians = degrees * std::acos(-1.0) / 180;
        EXPECT_TRUE(isNear(GeoPoint2D(2, 0).rotated(degrees), 2 * std::cos(radians),
            2 * std::sin(radians), 1e-14));
    }
    EXPECT_TRUE(std::isnan(GeoPoint2D(1, 0).rotated(infinite).x));
}

TEST(Point2D, CosineSinePairTurnsAndAPairOfAnotherLengthScalesToo)
{
    EXPECT_TRUE(isNear(GeoPoint2D(10, 5).rotated({0.6, 0.8}), 2, 11, 1e-14));
    EXPECT_TRUE(isExactly(GeoPoint2D(3, 1).rotated({0.0, 2.0}, {1, 1}), 1, 5));
    GeoPoint2D changed(3, 1);
    changed.rotate({0.0, -1.0}, {1, 1});
    EXPECT_TRUE(isExactly(changed, 1, -1));
}

TEST(Point2D, EveryWayOfTranslatingAddsToBothCoordinates)
{
    const GeoPoint2D start(1.5, -2);
    EXPECT_TRUE(isExactly(start.translated(2, 3), 3.5, 1));
    EXPECT_TRUE(isExactly(start.translated(GeoPoint2D(2, 3)), 3.5, 1));
    EXPECT_TRUE(isExactly(start.translated(GeoSize2D(2, 3)), 3.5, 1));
    GeoPoint2D changed = start;
    changed.translate(2, 3).translate(GeoPoint2D(10, 20)).translate(GeoSize2D(-100, -200));
    EXPECT_TRUE(isExactly(changed, -86.5, -179));
    EXPECT_TRUE(isExactly(start, 1.5, -2));
}

TEST(Point2D, ScalingTakesAFactorForEachAxisAndACentre)
{
    EXPECT_TRUE(isExactly(GeoPoint2D(3, 4).scaled(2, -0.5), 6, -2));
    GeoPoint2D changed(3, 4);
    EXPECT_EQ(&changed.scale(-1, 3, {1, 2}), &changed);
    EXPECT_TRUE(isExactly(changed, -1, 8));
}

TEST(Point2D, ItsOwnPlaceAsWayOrCentreIsReadBeforeItChanges)
{
    GeoPoint2D point(3, 4);
    point.translate(point);
    EXPECT_TRUE(isExactly(point, 6, 8));
    point.rotate(33, point).scale(5, 7, point);
    EXPECT_TRUE(isExactly(point, 6, 8));
}

TEST(Point2D, EqualityHoldsUpToTheToleranceOnEachAxis)
{
    struct Case
    {
        GeoPoint2D other; // compared with (1, 2)
        double tolerance;
        bool equal;
    };
    const double above = std::nextafter(1.25, 2);
    const Case cases[] = {
        {{1, 2}, 0, true},
        {{1.25, 2}, 0.25, true},
        {{above, 2}, 0.25, false},
        {{0.75, 1.75}, 0.25, true}, // each axis by itself, though the distance is longer
        {{1, 2.5}, 0.25, false},
        {{1.25, 2.5}, 0.25, false},
        {{1, 2}, -0.25, false},
        {{1, 2}, nan, false},
        {{nan, 2}, 1, false},
        {{1, nan}, infinite, false},
        {{1e300, -1e300}, infinite, true},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.other) + " within " + std::to_string(c.tolerance));
        EXPECT_EQ(GeoPoint2D(1, 2).equals(c.other, c.tolerance), c.equal);
        EXPECT_EQ(c.other.equals(1, 2, c.tolerance), c.equal);
    }
    EXPECT_FALSE(GeoPoint2D(nan, nan).equals(nan, nan, infinite));
}

// The zero point is data of the library that programs may get a copy of: both names must mean one.
TEST(Point2D, TheZeroPointIsTheOrigin)
{
    EXPECT_EQ(&GeoPoint2D::origin(), &GeoPoint2D::Point2D_Nul);
    EXPECT_TRUE(isExactly(GeoPoint2D::Point2D_Nul, 0, 0));
}

} // namespace
} // namespace KivSystem
