// The stages of a cut document, each by itself.

#include "Clipping.h"
#include "CutDocument/CutBlocks.h"
#include "CutDocument/CutCorners.h"
#include "CutDocument/CutFrames.h"
#include "CutDocument/CutNotches.h"
#include "CutDocument/CutOrder.h"
#include "CutDocument/CutReduction.h"
#include "CutDocument/CutRequest.h"
#include "CutDocument/CutWaste.h"
#include "KivMarker/Point.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace KivSystem {
namespace {

using testing::ElementsAre;

CDbMarkerPointObject notch(
    double x, double y, MarkerPointType type, float dx, float dy, float width = 0)
{
    CDbMarkerPointObject point(x, y, type);
    point.notchDx = dx;
    point.notchDy = dy;
    point.notchWidth = width;
    return point;
}

std::string text(const CutPath &path)
{
    std::string result;
    for (const GeoPoint2D &point : path) {
        result += (result.empty() ? "" : " ") + QString::number(point.x).toStdString() + "," +
                  QString::number(point.y).toStdString();
    }
    return result;
}

std::string text(const CutOutline &outline)
{
    return text(placesOf(outline));
}

CutOutline outlineOf(const CutPath &path)
{
    CutOutline outline;
    for (const GeoPoint2D &place : path) {
        CutPoint point;
        point.x = place.x;
        point.y = place.y;
        outline.points.push_back(point);
    }
    return outline;
}

CutObject rectangle(double left, double bottom, double length, double width)
{
    CutObject object;
    object.name = QStringLiteral("at %1").arg(left);
    object.outlines.push_back(outlineOf({{left, bottom}, {left + length, bottom},
        {left + length, bottom + width}, {left, bottom + width}}));
    markCorners(object.outlines.front());
    return object;
}

// ---- notches ----

struct NotchCase
{
    const char *name;
    CDbMarkerPointObject mark;
    double length;
    const char *outline;
    std::vector<std::string> paths;
};

class NotchKinds : public testing::TestWithParam<NotchCase>
{};

// A square of 10 with the mark in the middle of its lower edge, or where the case puts it.
TEST_P(NotchKinds, BecomePathsThatStartOnTheOutline)
{
    const NotchCase &test = GetParam();
    CDbVectorsObjectTable contour{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    std::vector<CDbMarkerPointObject> points = contour.points();
    points.insert(points.begin() + 1, test.mark);
    const CutOutline outline = notchedOutline(CDbVectorsObjectTable(points), 100, test.length);
    EXPECT_EQ(text(outline), test.outline);
    std::vector<std::string> paths;
    for (const int index : notchOrder(outline)) {
        paths.push_back(text(outline.notches[static_cast<std::size_t>(index)]));
    }
    EXPECT_EQ(paths, test.paths);
}

constexpr char kPlainSquare[] = "100,0 105,0 110,0 110,10 100,10";

INSTANTIATE_TEST_SUITE_P(All, NotchKinds,
    testing::Values(
        NotchCase{"Simple", notch(5, 0, SimpleNotch, 0, 3), 1, kPlainSquare, {"105,0 105,1"}},
        NotchCase{"AsLongAsTheMarkerHasIt", notch(5, 0, SimpleNotch, 0, 3), -1, kPlainSquare,
            {"105,0 105,3"}},
        NotchCase{"NoneForTheLengthZero", notch(5, 0, SimpleNotch, 0, 3), 0, kPlainSquare, {}},
        NotchCase{"WithoutVectorIntoThePiece", notch(5, 0, SimpleNotch, 0, 0), 2, kPlainSquare,
            {"105,0 105,2"}},
        NotchCase{"Double", notch(5, 0, DoubleNotch, 0, 1), 2,
            "100,0 104,0 105,0 106,0 110,0 110,10 100,10", {"104,0 104,2", "106,0 106,2"}},
        NotchCase{"V", notch(5, 0, VNotch, 0, 1), 2, "100,0 104,0 105,0 106,0 110,0 110,10 100,10",
            {"104,0 105,2 106,0"}},
        NotchCase{
            "User", notch(5, 0, UserNotch, 0, 1, 4), 2, kPlainSquare, {"105,0 105,2 107,2 103,2"}},
        // Half a notch before the mark and behind it lie round a corner and across the start.
        NotchCase{"DoubleRoundTheCorner", notch(9, 0, DoubleNotch, 0, 1), 4,
            "100,0 107,0 109,0 110,0 110,1 110,10 100,10", {"107,0 107,4", "110,1 110,5"}},
        NotchCase{"DoubleAcrossTheStart", notch(1, 0, DoubleNotch, 0, 1), 4,
            "100,0 101,0 103,0 110,0 110,10 100,10 100,1", {"103,0 103,4", "100,1 100,5"}},
        NotchCase{"OnAnotherVertex", notch(8, 0, DoubleNotch, 0, 1), 4,
            "100,0 106,0 108,0 110,0 110,10 100,10", {"106,0 106,4", "110,0 110,4"}}),
    [](const auto &given) { return given.param.name; });

TEST(Notches, AtTheStartComesLastAndTwoAtOnePlaceAreOnePath)
{
    CDbVectorsObjectTable contour;
    contour.append(notch(0, 0, SimpleNotch, 1, 1));
    contour.append({10, 0});
    contour.append(notch(10, 10, SimpleNotch, 0, -1));
    contour.append(notch(10, 10, UserNotch, -1, 0));
    contour.append({0, 10});
    contour.append({0, 0});
    const CutOutline outline = notchedOutline(contour, 0, 2);
    EXPECT_EQ(text(outline), "0,0 10,0 10,10 0,10");
    const std::vector<int> order = notchOrder(outline);
    ASSERT_EQ(order.size(), 2U);
    EXPECT_EQ(text(outline.notches[static_cast<std::size_t>(order[0])]), "10,10 10,8 10,10 8,10");
    EXPECT_EQ(outline.notches[static_cast<std::size_t>(order[1])][0].x, 0);
}

// ---- corners and points ----

TEST(Corners, AreSharpBelowEightyDegreesAndCornersFromThirty)
{
    // Corners of 90, 45 and 135 degrees, and a place where the direction changes by 11.
    CutOutline outline = outlineOf({{0, 0}, {10, 0}, {20, 2}, {30, 0}, {20, 10}, {0, 10}});
    markCorners(outline);
    std::string marks;
    for (const CutPoint &point : outline.points) {
        marks += point.lift ? 'L' : point.corner ? 'c' : '-';
        EXPECT_EQ(point.keep, point.lift);
    }
    EXPECT_EQ(marks, "c--Lcc");
}

CutSettings reducing(double tolerance)
{
    CutSettings settings;
    settings.reducePoints = true;
    settings.reducePointsTolerance = tolerance;
    return settings;
}

TEST(Reduction, LeavesOutWhatLiesWithinTheToleranceAndKeepsWhatIsToBeKept)
{
    CutOutline outline =
        outlineOf({{0, 0}, {4, 0.05}, {5, 0.06}, {6, -0.05}, {10, 0}, {10, 5}, {10, 10}, {0, 10}});
    outline.points[2].keep = true;
    reduceOutline(outline, reducing(0.1));
    EXPECT_EQ(text(outline), "0,0 5,0.06 10,0 10,10 0,10");

    // A strip of which a third would be gone.
    CutOutline strip = outlineOf({{0, 0}, {20, 0}, {40, 0.9}, {20, 0.9}, {0, 0.9}});
    reduceOutline(strip, reducing(1));
    EXPECT_EQ(text(strip), "0,0 20,0 40,0.9 0,0.9");

    // Nothing would be left of it.
    CutOutline sliver = outlineOf({{0, 0}, {5, 0.05}, {10, 0}, {5, -0.05}});
    reduceOutline(sliver, reducing(1));
    EXPECT_EQ(sliver.points.size(), 4U);

    EXPECT_EQ(text(conditionedLine({{0, 0}, {1, 0.01}, {2, 0}}, reducing(0.1))), "0,0 2,0");
}

TEST(Reduction, PutsPointsOnLongEdgesTheClosingOneToo)
{
    CutSettings settings;
    settings.cutInterPoints = true;
    settings.cutInterPointsFreq = 4;
    CutOutline outline = outlineOf({{0, 0}, {10, 0}, {10, 4}, {0, 4}});
    divideLongEdges(outline, settings);
    EXPECT_EQ(outline.points.size(), 4U + 2 + 2);
    for (std::size_t i = 0; i < outline.points.size(); ++i) {
        EXPECT_LE(distance(outline.points[i].place(),
                      outline.points[(i + 1) % outline.points.size()].place()),
            4);
    }
    EXPECT_EQ(text(conditionedLine({{0, 0}, {8, 0}}, settings)), "0,0 4,0 8,0");
}

// ---- rough outlines ----

TEST(Clipping, WidensByTheGapAndStaysOnTheClothAndOutOfOthers)
{
    const std::vector<Contour> square{{{0, 0}, {10, 0}, {10, 10}, {0, 10}}};
    const std::vector<Contour> wide = widenedUnion(square, 2, 1);
    ASSERT_EQ(wide.size(), 1U);
    EXPECT_THAT(
        text(wide[0]), testing::AllOf(testing::HasSubstr("12,11"), testing::HasSubstr("-2,-1")));

    const Region rest = remainder(
        wide, {{{11, 0}, {20, 0}, {20, 20}, {11, 20}}}, square, GeoRectangle(0, 30, 0, 30));
    ASSERT_EQ(rest.outer.size(), 1U);
    double right = 0;
    double area = 0;
    for (std::size_t i = 0; i < rest.outer[0].size(); ++i) {
        const GeoPoint2D &a = rest.outer[0][i];
        const GeoPoint2D &b = rest.outer[0][(i + 1) % rest.outer[0].size()];
        right = std::max(right, a.x);
        area += (a.x * b.y - b.x * a.y) / 2;
    }
    EXPECT_DOUBLE_EQ(right, 11); // above the other there is nothing: it reaches beyond
    EXPECT_NEAR(area, 11 * 11, 1e-6);

    // A gap along the length alone, clockwise outlines, and two that become one.
    EXPECT_EQ(
        widenedUnion(
            {{{0, 10}, {10, 10}, {10, 0}, {0, 0}}, {{11, 0}, {20, 0}, {20, 10}, {11, 10}}}, 0.5, 0)
            .size(),
        1U);
}

TEST(Clipping, KeepsTheGapOfAnOutlineOfManyPointsAndTellsOfHoles)
{
    Contour circle;
    constexpr int points = 4000;
    for (int i = 0; i < points; ++i) {
        const double angle = 6.283185307179586 * i / points;
        circle.emplace_back(15 * std::cos(angle), 15 * std::sin(angle));
    }
    const std::vector<Contour> wide = widenedUnion({circle}, 1, 1);
    ASSERT_EQ(wide.size(), 1U);
    double right = 0;
    for (const GeoPoint2D &point : wide[0]) {
        right = std::max(right, point.x);
        EXPECT_GE(std::hypot(point.x, point.y), 16 - 1e-6);
    }
    EXPECT_GE(right, 16);
    EXPECT_LE(right, 16 + kSimplified + 1e-6);

    // A C whose mouth the gap closes, with something inside.
    const std::vector<Contour> c{{{0, 0}, {10, 0}, {10, 4}, {8, 4}, {8, 2}, {2, 2}, {2, 8}, {8, 8},
        {8, 5}, {10, 5}, {10, 10}, {0, 10}}};
    const Region region = remainder(widenedUnion(c, 1, 1), {{{5, 5}, {6, 5}, {6, 6}, {5, 6}}}, c,
        GeoRectangle(-20, 20, -20, 20));
    EXPECT_EQ(region.outer.size(), 1U);
    EXPECT_EQ(region.holes.size(), 1U);
}

// ---- frames ----

CutRequest framing(double length, double threshold, double scale = 1)
{
    CutRequest request;
    request.settings.cutCommandM69 = true;
    request.settings.cutLength = length;
    request.settings.cutThresholdAdvance = threshold;
    request.machineScaleX = scale;
    return request;
}

TEST(Frames, HoldEachPieceAsAWholeAndItsStartBeforeTheThreshold)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(0, 500);
    std::uniform_real_distribution<double> size(1, 50);
    for (int round = 0; round < 50; ++round) {
        CutPlan plan;
        for (int i = 0; i < 40; ++i) {
            plan.objects.push_back(rectangle(place(random), 0, size(random), 5));
        }
        QStringList messages;
        ASSERT_TRUE(assignFrames(plan, framing(60, 30), messages));
        int last = 0;
        for (const CutObject &object : plan.objects) {
            const CutFrame &frame = plan.frames[static_cast<std::size_t>(object.frame)];
            EXPECT_GE(object.reach({}).left(), frame.start);
            EXPECT_LE(object.reach({}).left(), frame.start + 30 + 1e-5);
            EXPECT_LE(object.reach({}).right(), frame.end + 1e-5);
            EXPECT_LE(last, object.frame);
            last = object.frame;
        }
        EXPECT_EQ(last + 1, static_cast<int>(plan.frames.size()));
    }
}

TEST(Frames, ThePieceThatIsTooLongIsNamedInTheScaleOfTheCutter)
{
    CutPlan plan;
    plan.objects = {rectangle(0, 0, 100, 5)};
    QStringList messages;
    EXPECT_TRUE(assignFrames(plan, framing(100, 0), messages));
    EXPECT_FALSE(assignFrames(plan, framing(100, 0, 1.01), messages));
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].startsWith("at 0 is 100.000 cm long")) << messages[0].toStdString();
}

TEST(Frames, LeaveOutWhatTheCutterDoesNotReach)
{
    CutPlan plan;
    plan.objects = {rectangle(0, 0, 50, 5), rectangle(60, 0, 50, 5)};
    plan.holes = {{10, 1}, {90, 1}};
    plan.wasteCuts = {{30, {30, 0}, {30, 5}, true}, {100, {100, 0}, {100, 5}, true}};
    QStringList messages;
    ASSERT_TRUE(assignFrames(plan, framing(80, 80), messages));
    markAdvances(plan, messages);
    EXPECT_EQ(plan.frames.size(), 2U);
    EXPECT_TRUE(plan.objects[0].advanceBehind);
    EXPECT_FALSE(plan.objects[1].advanceBehind);
    EXPECT_EQ(text(plan.holes), "10,1");
    ASSERT_EQ(plan.wasteCuts.size(), 1U);
    EXPECT_EQ(plan.wasteCuts[0].x, 100);
    EXPECT_EQ(messages.size(), 2);
}

// ---- order ----

TEST(Order, StaysWithinTheFramesAndMayTurnOutlinesButNeverStartsAtANotch)
{
    std::vector<CutObject> objects;
    for (const double left : {0.0, 40.0, 20.0, 60.0}) {
        objects.push_back(rectangle(left, 5, 10, 10));
        objects.back().frame = left < 50 ? 0 : 1;
        CutOutline &outline = objects.back().outlines.front();
        outline.points[2].notch = 0; // where a tool that stays above would like to start
        outline.notches = {{outline.points[2].place(), {left + 5, 10}}};
    }
    CutRequest request;
    request.order = CuttingOrder::Optimised;
    request.settings.cutOrderCrans = NotchNone;
    orderObjects(objects, {}, request);
    std::vector<double> lefts;
    for (const CutObject &object : objects) {
        lefts.push_back(object.reach({}).left());
        EXPECT_LT(object.outlines.front().points.front().notch, 0);
        EXPECT_EQ(object.outlines.front().points.size(), 4U);
    }
    EXPECT_THAT(lefts, ElementsAre(0, 20, 40, 60));
    // From (0, 5) to (20, 5) the shortest way starts at the lower right of the first.
    EXPECT_EQ(objects[1].outlines.front().points.front().y, 5);

    request.order = CuttingOrder::Stored;
    std::vector<CutObject> stored{rectangle(40, 0, 10, 10), rectangle(0, 0, 10, 10)};
    orderObjects(stored, {}, request);
    EXPECT_EQ(stored.front().reach({}).left(), 40);
}

TEST(Order, ChainsHolesAndLinesTowardsTheOutline)
{
    CutObject object = rectangle(0, 0, 20, 20);
    object.drills = {{{1, 1}, false}, {{15, 15}, true}, {{8, 8}, false}};
    object.internals = {{{2, 2}, {3, 3}}, {{6, 6}, {5, 5}}};
    std::vector<CutObject> objects{object};
    CutRequest request;
    request.order = CuttingOrder::Shortened;
    request.settings.cutInternalOrder = CutLineBeforeOutline;
    orderObjects(objects, {}, request);
    EXPECT_EQ(text(objects[0].internals[0]), "6,6 5,5");
    EXPECT_EQ(text(objects[0].internals[1]), "3,3 2,2");
    EXPECT_TRUE(objects[0].drills[1].user || objects[0].drills[0].user);
    EXPECT_EQ(objects[0].drills[2].place.x, 8);
}

// ---- waste ----

TEST(Waste, IsCutFromTheEdgesUpToThePiecesAndAcrossTheEnd)
{
    CutSettings settings;
    settings.cutFabricEdgeSpacing = 10;
    settings.cutFabricEdgeLength = 4;
    const CutObject low = rectangle(5, 3, 10, 90);   // leaves 3 below and 7 above at x = 10
    const CutObject edge = rectangle(25, 0, 10, 50); // touches the lower edge at x = 30
    QStringList messages;
    std::vector<std::string> cuts;
    for (const WasteCut &cut :
        wasteCuts({GeoRectangle(0, 40, 0, 100)}, {&low, &edge}, settings, messages)) {
        cuts.push_back(text({cut.from, cut.to}));
    }
    EXPECT_THAT(cuts, ElementsAre("30,100 30,96", "20,100 20,96", "10,100 10,96", "10,0 10,2.8",
                          "20,0 20,4", "40,0 40,100"));

    settings.cutFabricEdgeLength = 50; // from both sides: right across where nothing lies
    const auto across = wasteCuts({GeoRectangle(0, 40, 0, 100)}, {&low, &edge}, settings, messages);
    EXPECT_FALSE(across[3].fromEdge);
    EXPECT_EQ(text({across[3].from, across[3].to}), "20,0 20,100");

    settings.cutFabricEdgeSpacing = 0.0001;
    EXPECT_TRUE(wasteCuts({GeoRectangle(0, 40, 0, 100)}, {&low}, settings, messages).empty());
    EXPECT_EQ(messages.size(), 1);
}

} // namespace
} // namespace KivSystem
