#include "Support.h"

#include "KivGeo/Affine.h"
#include "KivGeo/Rectangle.h"
#include "KivGeo/Size2D.h"

#include <limits>

namespace KivSystem {
namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

testing::AssertionResult hasSides(
    const GeoRectangle &rectangle, double left, double right, double bottom, double top)
{
    if (rectangle.left() == left && rectangle.right() == right && rectangle.bottom() == bottom &&
        rectangle.top() == top) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << rectangle.left() << ", " << rectangle.right() << ", "
                                       << rectangle.bottom() << ", " << rectangle.top();
}

TEST(Rectangle, SidesAreKeptAsGivenAlsoTheWrongWayRound)
{
    GeoRectangle box(9, 9, 9, 9);
    box.setRect(5, 1, 7, 4);
    EXPECT_TRUE(hasSides(box, 5, 1, 7, 4));
    EXPECT_EQ(box.size(), GeoSize2D(-4, -3));
    EXPECT_TRUE(isExactly(box.leftBottom(), 5, 7));
    EXPECT_TRUE(isExactly(box.rightBottom(), 1, 7));
    EXPECT_TRUE(isExactly(box.leftTop(), 5, 4));
    EXPECT_TRUE(isExactly(box.rightTop(), 1, 4));
    EXPECT_TRUE(isExactly(box.center(), 3, 5.5));
    EXPECT_TRUE(hasSides(box.normalized(), 1, 5, 4, 7));
    EXPECT_TRUE(hasSides(GeoRectangle(), 0, 0, 0, 0));
}

TEST(Rectangle, TransformationsGiveTheBoundsOfTheMovedCorners)
{
    const GeoRectangle box(1, 5, 2, 4);
    EXPECT_TRUE(hasSides(box.translated(GeoPoint2D(1, -2)), 2, 6, 0, 2));
    EXPECT_TRUE(hasSides(box.translated(GeoSize2D(1, -2)), 2, 6, 0, 2));
    EXPECT_TRUE(hasSides(box.rotated(90), -4, -2, 1, 5));
    EXPECT_TRUE(hasSides(box.rotated({0.0, -1.0}, box.center()), 2, 4, 1, 5));
    EXPECT_TRUE(hasSides(box.scaled(-2, 3), -10, -2, 6, 12));
    EXPECT_TRUE(hasSides(box.scaled(0.5, -1, {1, 2}), 1, 3, 0, 2));
    EXPECT_TRUE(isNear(GeoRectangle(-1, 1, -1, 1).rotated(45).rightTop(), 1.4142135623730951,
        1.4142135623730951, 1e-15));

    GeoRectangle changed = box;
    changed.translate(1, 1).rotate(90, changed.leftBottom()).scale(2, 1);
    EXPECT_TRUE(hasSides(changed, 0, 4, 3, 7));
}

TEST(Rectangle, UnionHoldsBothAndBeginsWithADefaultOne)
{
    const GeoRectangle box(5, 6, 5, 6);
    EXPECT_TRUE(hasSides(GeoRectangle().united(box).united(GeoRectangle()), 5, 6, 5, 6));
    EXPECT_TRUE(hasSides(box.united({9, 8, 1, 1}), 5, 9, 1, 6)); // a flat one adds its extent
    EXPECT_TRUE(hasSides(box.united({-1, -1, 0, 0}), -1, 6, 0, 6));
}

TEST(Rectangle, EdgesBelongToItAndToleranceWidensIt)
{
    struct Case
    {
        GeoPoint2D point; // against 0..4 by 0..2
        double tolerance;
        bool inside;
    };
    const Case cases[] = {
        {{2, 1}, 0, true},
        {{4, 2}, 0, true},
        {{0, 0}, 0, true},
        {{4.25, 1}, 0, false},
        {{4.25, 1}, 0.25, true},
        {{4.25, 2.5}, 0.25, false},
        {{-0.25, -0.25}, 0.25, true},
        {{2, -0.5}, 0.25, false},
        {{4, 1}, -0.25, false},
        {{3.75, 1}, -0.25, true},
        {{nan, 1}, 1, false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.point) + " within " + std::to_string(c.tolerance));
        EXPECT_EQ(GeoRectangle(0, 4, 0, 2).contains(c.point, c.tolerance), c.inside);
        EXPECT_EQ(GeoRectangle(4, 0, 2, 0).contains(c.point, c.tolerance), c.inside);
    }
}

TEST(Rectangle, RectanglesThatTouchIntersect)
{
    const GeoRectangle box(0, 4, 0, 2);
    for (const GeoRectangle &other : {GeoRectangle(4, 5, 2, 3), GeoRectangle(1, 2, 1, 1),
             GeoRectangle(-1, 9, -1, 9), GeoRectangle(9, 3, 1, -5)}) {
        EXPECT_TRUE(box.intersects(other));
        EXPECT_TRUE(other.intersects(box));
    }
    for (const GeoRectangle &other : {GeoRectangle(4.5, 5, 0, 2), GeoRectangle(0, 4, 2.5, 3),
             GeoRectangle(-2, -1, 0, 2), GeoRectangle(0, 4, -2, -1)}) {
        EXPECT_FALSE(box.intersects(other));
        EXPECT_FALSE(other.intersects(box));
    }
}

TEST(Rectangle, EmptyMeansWithoutAreaAndEqualityLooksAtAllSides)
{
    for (const GeoRectangle &flat : {GeoRectangle(), GeoRectangle(1, 5, 2, 2),
             GeoRectangle(1, 1, 2, 3), GeoRectangle(nan, 1, 0, 1), GeoRectangle(0, 1, 0, nan)}) {
        EXPECT_TRUE(flat.isEmpty());
    }
    EXPECT_FALSE(GeoRectangle(5, 1, 7, 4).isEmpty());

    const GeoRectangle box(1, 2, 3, 4);
    EXPECT_TRUE(box.equals({1.5, 1.5, 3.5, 3.5}, 0.5));
    for (const GeoRectangle &other : {GeoRectangle(0, 2, 3, 4), GeoRectangle(1, 3, 3, 4),
             GeoRectangle(1, 2, 2, 4), GeoRectangle(1, 2, 3, 5), GeoRectangle(1, 2, nan, 4)}) {
        EXPECT_FALSE(box.equals(other, 0.5));
    }
}

TEST(Affine, SixNumbersStandInTheOrderOfAPageDescription)
{
    EXPECT_TRUE(isExactly(GeoAffine(2, 3, 5, 7, 11, 13).applyToPoint({1, 10}), 63, 86));
    EXPECT_TRUE(isExactly(GeoAffine().applyToPoint({1.1, -2.2}), 1.1, -2.2));
    EXPECT_TRUE(isExactly(GeoAffine::mirrorX().applyToPoint({1, 2}), 1, -2));
    EXPECT_TRUE(isExactly(GeoAffine::mirrorY().applyToPoint({1, 2}), -1, 2));
    EXPECT_TRUE(isExactly(GeoAffine::translation(3, 4).applyToPoint({1, 2}), 4, 6));
    EXPECT_TRUE(isExactly(GeoAffine::scaling(3, 4, {1, 1}).applyToPoint({2, 2}), 4, 5));
}

TEST(Affine, RotationIsThatOfAPoint)
{
    for (const double degrees : {0.0, 90.0, 180.0, -90.0, 33.0, 361.5}) {
        SCOPED_TRACE(degrees);
        const GeoPoint2D turned = GeoPoint2D(4, 7).rotated(degrees, {1, 2});
        EXPECT_TRUE(isNear(
            GeoAffine::rotation(degrees, {1, 2}).applyToPoint({4, 7}), turned.x, turned.y, 1e-14));
    }
    EXPECT_TRUE(GeoAffine::rotation(90).equals({0, 1, -1, 0, 0, 0}, 0));
    EXPECT_TRUE(GeoAffine::rotation(-180, {1, 2}).equals({-1, 0, 0, -1, 2, 4}, 0));
}

TEST(Affine, CompositionTakesTheOtherMapFirst)
{
    const GeoAffine first(2, 3, 5, 7, 11, 13);
    const GeoAffine second(1, -1, 4, 2, -3, 6);
    const GeoPoint2D expected = first.applyToPoint(second.applyToPoint({10, 20}));
    EXPECT_TRUE(isExactly(first.multiplied(second).applyToPoint({10, 20}), expected.x, expected.y));
    GeoAffine changed = first;
    EXPECT_EQ(&changed.multiply(second), &changed);
    EXPECT_TRUE(changed.equals(first.multiplied(second), 0));
    changed = first;
    EXPECT_TRUE(changed.multiply(changed).equals(first.multiplied(first), 0));
}

TEST(Affine, InverseLeadsBackAndSingularMapsHaveNone)
{
    for (const GeoAffine &map : {GeoAffine(2, 3, 5, 7, 11, 13), GeoAffine::rotation(33, {4, 5}),
             GeoAffine(1e-9, 0, 0, 1e9, 5, 5), GeoAffine(1, 1, 1, 1 + 1e-9, 0, 0)}) {
        const auto back = map.inverted();
        ASSERT_TRUE(back.has_value());
        EXPECT_TRUE(map.multiplied(*back).equals(GeoAffine(), 1e-6));
    }
    for (const GeoAffine &map : {GeoAffine(0, 0, 0, 0, 1, 1), GeoAffine(1, 2, 2, 4, 0, 0),
             GeoAffine(0.1, 0.2, 0.3, 0.6, 0, 0), GeoAffine(5, 0, 0, 0, 0, 0),
             GeoAffine(nan, 0, 0, 1, 0, 0), GeoAffine(1, 0, 0, 1, infinite, 0),
             GeoAffine(1e300, 0, 0, 1e300, 0, 0)}) {
        EXPECT_FALSE(map.inverted().has_value()) << map.a() << ' ' << map.e();
    }
}

TEST(Affine, EqualityLooksAtAllSixNumbers)
{
    const double base[] = {1, 2, 3, 4, 5, 6};
    for (std::size_t changed = 0; changed < 6; ++changed) {
        double n[] = {1, 2, 3, 4, 5, 6};
        n[changed] += 0.5;
        const GeoAffine other(n[0], n[1], n[2], n[3], n[4], n[5]);
        const GeoAffine map(base[0], base[1], base[2], base[3], base[4], base[5]);
        EXPECT_TRUE(map.equals(other, 0.5)) << changed;
        EXPECT_FALSE(map.equals(other, 0.25)) << changed;
    }
}

} // namespace
} // namespace KivSystem
