#include "Support.h"

#include "KivGeo/Polygon2D.h"

#include <cmath>
#include <functional>
#include <stdexcept>

namespace KivSystem {
namespace {

using Polygon = GeoPolygon2D<GeoPoint2D>;

const Polygon square{{0, 0}, {2, 0}, {2, 2}, {0, 2}};
const Polygon notched{{0, 0}, {4, 0}, {4, 4}, {2, 2}, {0, 4}}; // a square with a V in its top

TEST(Polygon2D, MeasuresOfTheUsualAndTheDegenerateOutlines)
{
    struct Case
    {
        const char *name;
        Polygon polygon;
        double signedArea;
        double perimeter;
        GeoPoint2D centroid;
    };
    const Case cases[] = {
        {"empty", {}, 0, 0, {0, 0}},
        {"point", {{3, 4}}, 0, 0, {3, 4}},
        {"edge there and back", {{0, 0}, {3, 4}}, 0, 10, {1.5, 2}},
        {"points on a slanted line", {{1.1, 3.3}, {1.3, 3.9}, {0.4, 1.2}, {0.7, 2.1}}, 0,
            1.8 * std::sqrt(10.0), {0.875, 2.625}},
        {"square", square, 4, 8, {1, 1}},
        {"square clockwise", square.reversed(), -4, 8, {1, 1}},
        {"square with its first point repeated", {{0, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}}, 4, 8,
            {1, 1}},
        {"notched", notched, 12, 12 + 4 * std::sqrt(2.0), {2, 14.0 / 9}},
        {"bow tie", {{0, 0}, {2, 2}, {2, 0}, {0, 2}}, 0, 4 + 4 * std::sqrt(2.0), {1, 1}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_NEAR(c.polygon.signedArea(), c.signedArea, 1e-15);
        EXPECT_NEAR(c.polygon.area(), std::abs(c.signedArea), 1e-15);
        EXPECT_NEAR(c.polygon.perimeter(), c.perimeter, 1e-14);
        EXPECT_TRUE(isNear(c.polygon.centroid(), c.centroid.x, c.centroid.y, 1e-15));
    }
    EXPECT_TRUE(square.isCounterClockwise());
    EXPECT_FALSE(square.reversed().isCounterClockwise());
}

TEST(Polygon2D, MeasuresKeepTheirDigitsFarFromTheOrigin)
{
    const double far = std::ldexp(1.0, 40); // about 1e12: plain products would lose the area
    const Polygon moved = notched.translated(far, -far);
    EXPECT_EQ(moved.signedArea(), 12);
    EXPECT_TRUE(isNear(moved.centroid(), far + 2, -far + 14.0 / 9, 1e-3));
    EXPECT_TRUE(moved.contains({far + 2, -far + 1}));
    EXPECT_FALSE(moved.contains({far + 2, -far + 3}));
}

TEST(Polygon2D, BoundingRectangleIsZeroWhenEmptyAndElseHoldsJustThePoints)
{
    EXPECT_TRUE(Polygon().boundingRect().equals(GeoRectangle(), 0));
    EXPECT_TRUE((Polygon{{5, 6}}.boundingRect().equals({5, 5, 6, 6}, 0)));
    EXPECT_TRUE((Polygon{{5, 9}, {-3, 8}, {4, 7}}.boundingRect().equals({-3, 5, 7, 9}, 0)));
}

TEST(Polygon2D, PointsOnTheBoundaryAreInsideAndDoublyEnclosedOnesOutside)
{
    struct Case
    {
        const char *name;
        const Polygon &polygon;
        GeoPoint2D point;
        bool inside;
    };
    const Polygon none;
    const Polygon edge{{0, 0}, {4, 2}};
    const Polygon star{{0, 10}, {-6, -8}, {9, 3}, {-9, 3}, {6, -8}};
    const Case cases[] = {
        {"middle", notched, {1, 1}, true},
        {"in the notch", notched, {2, 3}, false},
        {"on the slope of the notch", notched, {1, 3}, true},
        {"bottom of the notch", notched, {2, 2}, true},
        {"level with the bottom of the notch", notched, {1, 2}, true},
        {"left, level with a corner", notched, {-1, 4}, false},
        {"left, level with an edge", notched, {-1, 0}, false},
        {"right, level with an edge", notched, {5, 0}, false},
        {"between the horns", notched, {2, 4}, false},
        {"corner", notched, {4, 4}, true},
        {"on the closing edge", notched, {0, 3}, true},
        {"above the closing edge", notched, {0, 5}, false},
        {"ray of the star", star, {0, 6}, true},
        {"centre of the star", star, {0, 0}, false},
        {"on an edge alone", edge, {2, 1}, true},
        {"on the line of an edge", edge, {6, 3}, false},
        {"in nothing", none, {0, 0}, false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.polygon.contains(c.point), c.inside);
        EXPECT_EQ(c.polygon.reversed().contains(c.point), c.inside);
    }
}

TEST(Polygon2D, TransformationsMovePointsAndKeepTheirOtherMembers)
{
    using Numbered = GeoPolygon2D<NumberedPoint>;
    const std::pair<double, double> quarter(0, 1);
    struct Case
    {
        const char *name;
        std::function<void(Numbered &)> change;
        std::function<Numbered(const Numbered &)> changed;
        double x; // where (3, 1) goes
        double y;
    };
    const GeoPoint2D c(2, 2);
    const Case cases[] = {
        {"translate", [](Numbered &p) { p.translate(1, 2); },
            [](const Numbered &p) { return p.translated(1, 2); }, 4, 3},
        {"translate by a point", [&](Numbered &p) { p.translate(c); },
            [&](const Numbered &p) { return p.translated(c); }, 5, 3},
        {"translate by a size", [](Numbered &p) { p.translate(GeoSize2D(1, 2)); },
            [](const Numbered &p) { return p.translated(GeoSize2D(1, 2)); }, 4, 3},
        {"rotate", [](Numbered &p) { p.rotate(90); },
            [](const Numbered &p) { return p.rotated(90); }, -1, 3},
        {"rotate about a centre", [&](Numbered &p) { p.rotate(quarter, c); },
            [&](const Numbered &p) { return p.rotated(quarter, c); }, 3, 3},
        {"scale", [&](Numbered &p) { p.scale(2, -1, c); },
            [&](const Numbered &p) { return p.scaled(2, -1, c); }, 4, 3},
        {"apply",
            [](Numbered &p) {
                p.apply({2, 3, 5, 7, 11, 13});
            },
            [](const Numbered &p) {
                return p.applied({2, 3, 5, 7, 11, 13});
            },
            22, 29},
    };
    for (const Case &t : cases) {
        SCOPED_TRACE(t.name);
        const Numbered start{{9, 9, 41}, {3, 1, 42}};
        Numbered polygon = start;
        t.change(polygon);
        EXPECT_TRUE(isExactly(polygon[1], t.x, t.y));
        EXPECT_EQ(polygon[0].number, 41);
        EXPECT_EQ(polygon[1].number, 42);
        EXPECT_TRUE(t.changed(start).equals(polygon, 0));
        EXPECT_EQ(t.changed(start).last().number, 42);
        EXPECT_TRUE(isExactly(start[1], 3, 1));
    }
    const Numbered reversed = Numbered{{9, 9, 41}, {3, 1, 42}}.reverse();
    EXPECT_EQ(reversed.first().number, 42);
    EXPECT_TRUE(isExactly(reversed.last(), 9, 9));
}

TEST(Polygon2D, ItsOwnPointAsWayOrCentreIsReadBeforeItMoves)
{
    Polygon polygon{{1, 1}, {3, 1}};
    polygon.translate(polygon[0]);
    EXPECT_TRUE(polygon.equals({{2, 2}, {4, 2}}, 0));
    polygon.rotate(90, polygon[0]).scale(3, 3, polygon.first());
    EXPECT_TRUE(polygon.equals({{2, 2}, {2, 8}}, 0));
}

TEST(Polygon2D, IndexesOutsideAreRefusedWithTheRangeThatIsAllowed)
{
    struct Case
    {
        std::function<void()> access;
        const char *message;
    };
    Polygon polygon = square;
    Polygon none;
    const Case cases[] = {
        {[&] { polygon[4].x = 1; }, "GeoPolygon2D: index 4 is not in 0 to 3"},
        {[&] { polygon[-1].x = 1; }, "GeoPolygon2D: index -1 is not in 0 to 3"},
        {[&] { EXPECT_EQ(square[4].x, 0); }, "GeoPolygon2D: index 4 is not in 0 to 3"},
        {[&] { none[0].x = 1; }, "GeoPolygon2D: the polygon has no points"},
        {[&] { none.first().x = 1; }, "GeoPolygon2D: the polygon has no points"},
        {[&] { none.last().x = 1; }, "GeoPolygon2D: the polygon has no points"},
    };
    for (const Case &c : cases) {
        try {
            c.access();
            ADD_FAILURE() << "nothing thrown instead of: " << c.message;
        } catch (const std::out_of_range &error) {
            EXPECT_STREQ(error.what(), c.message);
        }
    }
    polygon[3].x = -1;
    EXPECT_TRUE(isExactly(polygon.last(), -1, 2));
}

TEST(Polygon2D, GrowsByItsOwnPointsAndComparesInPlace)
{
    Polygon polygon;
    polygon.reserve(-1);
    polygon.append({1, 2});
    for (int count = 1; count < 100; ++count) {
        polygon.append(polygon.first());
    }
    EXPECT_EQ(polygon.size(), 100);
    EXPECT_TRUE(isExactly(polygon.last(), 1, 2));
    polygon.clear();
    EXPECT_TRUE(polygon.isEmpty());

    EXPECT_TRUE(square.equals(square.translated(0.25, -0.25), 0.25));
    EXPECT_FALSE(square.equals(square.translated(0.25, -0.5), 0.25));
    EXPECT_FALSE(square.equals({{2, 0}, {2, 2}, {0, 2}, {0, 0}}, 1)); // begins elsewhere
    EXPECT_FALSE(square.equals({{0, 0}, {2, 0}, {2, 2}}, 9));
}

} // namespace
} // namespace KivSystem
