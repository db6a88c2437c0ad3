// The order in which objects are cut: what every route must keep, and how short it has to be where
// the shortest is known.

#include "CutDocument/CutRoute.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace KivSystem {

namespace {

using Nodes = std::vector<RouteNode>;

const GeoPoint2D corner(0, 0);

RouteStop at(double x, double y)
{
    return {{x, y}, {x, y}, 0};
}

/// The numbers of this generator, unlike those of the distributions, are the same everywhere.
class Numbers
{
public:
    explicit Numbers(unsigned seed) : engine_(seed) {}
    double below(double limit) { return limit * static_cast<double>(engine_()) / 4294967296.0; }
    GeoPoint2D pointBelow(double limit)
    {
        const double x = below(limit);
        return {x, below(limit)};
    }

private:
    std::mt19937 engine_;
};

Nodes pointsInASquare(int count, unsigned seed)
{
    Numbers numbers(seed);
    Nodes nodes;
    for (int index = 0; index < count; ++index) {
        const GeoPoint2D point = numbers.pointBelow(100);
        nodes.push_back({at(point.x, point.y)});
    }
    return nodes;
}

Nodes outlinesInASquare(int count, int corners, unsigned seed)
{
    Numbers numbers(seed);
    Nodes nodes;
    const double radius = 45 / std::sqrt(count);
    for (int index = 0; index < count; ++index) {
        const GeoPoint2D center = numbers.pointBelow(100);
        RouteNode node;
        for (int point = 0; point < corners; ++point) {
            const double angle = 2 * 3.14159265358979 * point / corners;
            node.push_back(
                at(center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)));
        }
        nodes.push_back(node);
    }
    return nodes;
}

enum class Ends
{
    OneWay,
    BothWays,
    Mixed
};

/// Open lines. The mixed ones have one to three stops, some of them with a way inside.
Nodes linesInASquare(int count, Ends ends, unsigned seed)
{
    Numbers numbers(seed);
    Nodes nodes;
    for (int index = 0; index < count; ++index) {
        const GeoPoint2D begin = numbers.pointBelow(100);
        const GeoPoint2D end = begin.translated(numbers.below(20) - 10, numbers.below(20) - 10);
        RouteNode node = {{begin, end, 0}};
        if (ends == Ends::BothWays || (ends == Ends::Mixed && index % 3 != 0)) {
            node.push_back({end, begin, 0});
        }
        if (ends == Ends::Mixed && index % 2 == 0) {
            node.push_back({begin, begin, numbers.below(15)});
        }
        nodes.push_back(node);
    }
    return nodes;
}

double length(const Nodes &nodes, const Route &route)
{
    return routeLength(nodes, route, corner);
}

double shortened(const Nodes &nodes)
{
    return length(nodes, shortenedRoute(nodes, corner));
}

bool visitsEveryNodeOnce(const Nodes &nodes, const Route &route)
{
    std::vector<int> visited;
    for (const RouteStep &step : route) {
        visited.push_back(step.node);
    }
    std::sort(visited.begin(), visited.end());
    for (std::size_t index = 0; index < visited.size(); ++index) {
        if (visited[index] != static_cast<int>(index)) {
            return false;
        }
    }
    return visited.size() == nodes.size();
}

bool isSame(const Route &left, const Route &right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
        [](const RouteStep &a, const RouteStep &b) {
            return a.node == b.node && a.stop == b.stop;
        });
}

/// The shortest of all routes, found by going through them.
double shortest(const Nodes &nodes, std::vector<bool> &done, const GeoPoint2D &from)
{
    double best = std::numeric_limits<double>::infinity();
    for (std::size_t node = 0; node < nodes.size(); ++node) {
        if (done[node]) {
            continue;
        }
        done[node] = true;
        for (const RouteStop &stop : nodes[node]) {
            const double way = std::hypot(stop.entry.x - from.x, stop.entry.y - from.y);
            best = std::min(best, way + stop.inner + shortest(nodes, done, stop.exit));
        }
        done[node] = false;
    }
    return std::isfinite(best) ? best : 0;
}

struct NamedNodes
{
    std::string name;
    Nodes nodes;
};

std::vector<NamedNodes> manyKinds()
{
    std::vector<NamedNodes> kinds = {
        {"none", {}},
        {"one", {{at(3, 4)}}},
        {"all at one place", Nodes(60, RouteNode(7, at(5, 5)))},
        {"all at the start", Nodes(9, {at(0, 0)})},
        {"far from the start", {{at(1e9, 1e9)}, {at(1e9, 1e9 + 1)}, {at(1e9 + 1, 1e9)}}},
        {"outlines", outlinesInASquare(90, 9, 1)},
        {"outlines of many corners", outlinesInASquare(12, 150, 2)},
        {"points for which not every start is tried", pointsInASquare(700, 3)},
    };
    for (const int count : {2, 3, 4, 5, 8, 40, 130}) {
        const std::string size = std::to_string(count);
        const auto seed = static_cast<unsigned>(count);
        kinds.push_back({"points " + size, pointsInASquare(count, seed)});
        kinds.push_back({"one way " + size, linesInASquare(count, Ends::OneWay, seed)});
        kinds.push_back({"both ways " + size, linesInASquare(count, Ends::BothWays, seed)});
        kinds.push_back({"mixed " + size, linesInASquare(count, Ends::Mixed, seed)});
    }
    Nodes heaps;
    for (int index = 0; index < 200; ++index) {
        heaps.push_back({at(index % 10 * 10, 0)});
    }
    kinds.push_back({"heaps of equal points", heaps});
    return kinds;
}

} // namespace

TEST(CutRouteTests, LengthCountsTheWayFromTheStartBetweenTheStopsAndInsideThem)
{
    const Nodes nodes = {{at(100, 100), {{3, 4}, {3, 10}, 2}}, {{{6, 14}, {50, 50}, 0}}};
    EXPECT_DOUBLE_EQ(length(nodes, {{0, 1}, {1, 0}}), 5 + 2 + 5);
    EXPECT_DOUBLE_EQ(routeLength(nodes, {{1, 0}}, {6, 11}), 3);
    EXPECT_EQ(length(nodes, {}), 0);
    for (const RouteStep &wrong : {RouteStep{2, 0}, RouteStep{-1, 0}, RouteStep{1, 1}}) {
        EXPECT_THROW(length(nodes, {wrong}), std::out_of_range);
    }
}

TEST(CutRouteTests, EveryRouteVisitsEachNodeOnceAndIsNeverLongerThanTheSimpleOnes)
{
    for (const NamedNodes &kind : manyKinds()) {
        SCOPED_TRACE(kind.name);
        const Route nearest = nearestNeighbourRoute(kind.nodes, corner);
        const Route stored = storedRoute(kind.nodes);
        const Route route = shortenedRoute(kind.nodes, corner);
        EXPECT_TRUE(visitsEveryNodeOnce(kind.nodes, nearest));
        EXPECT_TRUE(visitsEveryNodeOnce(kind.nodes, stored));
        EXPECT_TRUE(visitsEveryNodeOnce(kind.nodes, route));
        EXPECT_LE(length(kind.nodes, route), length(kind.nodes, nearest));
        EXPECT_LE(length(kind.nodes, route), length(kind.nodes, stored));
        const Nodes copy = kind.nodes;
        EXPECT_TRUE(isSame(route, shortenedRoute(copy, corner)));
    }
}

TEST(CutRouteTests, NearestNeighbourIsTheNearestOfAllStopsLeft)
{
    for (const NamedNodes &kind : manyKinds()) {
        SCOPED_TRACE(kind.name);
        std::vector<bool> done(kind.nodes.size());
        GeoPoint2D place = corner;
        for (const RouteStep &step : nearestNeighbourRoute(kind.nodes, corner)) {
            double least = std::numeric_limits<double>::infinity();
            for (std::size_t node = 0; node < kind.nodes.size(); ++node) {
                for (const RouteStop &stop : kind.nodes[node]) {
                    const double way = std::hypot(stop.entry.x - place.x, stop.entry.y - place.y);
                    least = done[node] ? least : std::min(least, way);
                }
            }
            const auto node = static_cast<std::size_t>(step.node);
            const RouteStop &taken = kind.nodes[node][static_cast<std::size_t>(step.stop)];
            const double way = std::hypot(taken.entry.x - place.x, taken.entry.y - place.y);
            ASSERT_LE(way, least * (1 + 1e-12));
            done[node] = true;
            place = taken.exit;
        }
    }
}

TEST(CutRouteTests, EquallyNearNodesAreTakenAsTheyComeAndTheirStopsByTheWayInside)
{
    const Nodes nodes = {{at(0, 9)}, {at(-3, 0), {{3, 0}, {3, 0}, 5}, {{3, 0}, {4, 0}, 1}},
        {at(0, 3)}, {{{0, -3}, {0, -3}, 2}, at(0, -3)}};
    const Route route = nearestNeighbourRoute(nodes, corner);
    EXPECT_TRUE(isSame(route, {{1, 0}, {2, 0}, {0, 0}, {3, 1}}));
    EXPECT_TRUE(isSame(nearestNeighbourRoute(Nodes(40, {at(1, 1), at(1, 1)}), corner),
        storedRoute(Nodes(40, {at(1, 1)}))));
}

TEST(CutRouteTests, FewObjectsAreCutOnTheShortestWayThereIs)
{
    for (unsigned seed = 1; seed <= 25; ++seed) {
        for (const Nodes &nodes : {pointsInASquare(7, seed), outlinesInASquare(5, 4, seed),
                 linesInASquare(6, Ends::OneWay, seed), linesInASquare(5, Ends::BothWays, seed),
                 linesInASquare(5, Ends::Mixed, seed)}) {
            SCOPED_TRACE(seed);
            std::vector<bool> done(nodes.size());
            EXPECT_NEAR(shortened(nodes), shortest(nodes, done, corner), 1e-6);
        }
    }
}

TEST(CutRouteTests, KnownShortestWaysAreFoundOrNearlySo)
{
    Nodes line;
    Nodes grid;
    Nodes squares;
    Nodes ladder;
    for (int index = 0; index < 400; ++index) {
        const int shuffled = index * 171 % 400;
        const int row = shuffled / 20;
        const int column = shuffled % 20;
        line.push_back({at(shuffled, 0)});
        grid.push_back({at(column, row)});
        squares.push_back(
            {at(column, row), at(column + 1, row), at(column + 1, row + 1), at(column, row + 1)});
        ladder.push_back({{{0, double(shuffled)}, {50, double(shuffled)}, 0},
            {{50, double(shuffled)}, {0, double(shuffled)}, 0}});
    }
    EXPECT_NEAR(shortened(line), 399, 1e-6);
    EXPECT_NEAR(shortened(ladder), 399, 1e-6);
    EXPECT_LE(shortened(grid), 399 * 1.03);
    // Four squares at a time share the corner they are begun in.
    EXPECT_LE(shortened(squares), (std::sqrt(2) + 99 * 2) * 1.06);
}

TEST(CutRouteTests, FreeChoiceOfTheCornerSavesHalfTheWay)
{
    for (unsigned seed = 1; seed <= 3; ++seed) {
        const Nodes outlines = outlinesInASquare(150, 12, seed);
        Nodes points;
        for (const RouteNode &node : outlines) {
            points.push_back({node.front()});
        }
        const double nearest = length(points, nearestNeighbourRoute(points, corner));
        EXPECT_LE(shortened(points), 0.87 * nearest) << seed;
        EXPECT_LE(shortened(outlines), 0.55 * nearest) << seed;
    }
}

TEST(CutRouteTests, ARouteMayEndAnywhereAndWithAnyStop)
{
    // The last of the line is left by its far end, for no way back is counted.
    const Nodes nodes = {{{{10, 0}, {0, 0}, 0}, {{10, 0}, {99, 0}, 0}}, {at(9, 0)}};
    EXPECT_DOUBLE_EQ(shortened(nodes), 10);
    // A way inside is taken only where it saves more than it costs.
    const Nodes inside = {{{{1, 0}, {1, 0}, 0}, {{1, 0}, {5, 0}, 3}}, {at(5, 0)}};
    EXPECT_DOUBLE_EQ(shortened(inside), 4);
    const Nodes dear = {{{{1, 0}, {1, 0}, 0}, {{1, 0}, {5, 0}, 4.5}}, {at(5, 0)}};
    EXPECT_DOUBLE_EQ(shortened(dear), 5);
}

TEST(CutRouteTests, NumbersThatAreNotFiniteLeaveTheStoredRoute)
{
    for (const double wrong : {std::numeric_limits<double>::quiet_NaN(),
             std::numeric_limits<double>::infinity(), 1e300}) {
        Nodes nodes = pointsInASquare(30, 1);
        nodes[7].front().entry.x = wrong;
        EXPECT_TRUE(isSame(shortenedRoute(nodes, corner), storedRoute(nodes)));
        EXPECT_TRUE(isSame(nearestNeighbourRoute(nodes, corner), storedRoute(nodes)));
        EXPECT_TRUE(isSame(shortenedRoute({{at(1, 0)}, {at(0, 0)}}, {0, wrong}), {{0, 0}, {1, 0}}));
    }
}

TEST(CutRouteTests, ANodeWithoutStopsIsRefused)
{
    const Nodes nodes = {{at(0, 0)}, {}};
    EXPECT_THROW(nearestNeighbourRoute(nodes, corner), std::invalid_argument);
    EXPECT_THROW(shortenedRoute(nodes, corner), std::invalid_argument);
}

} // namespace KivSystem
