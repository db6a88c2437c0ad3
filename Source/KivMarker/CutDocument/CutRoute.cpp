#include "CutDocument/CutRoute.h"

#include "CutDocument/CutRouteMoves.h"
#include "CutDocument/CutRouteTable.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace KivSystem {

namespace {

/// For every node so many others are looked at as its neighbours.
constexpr std::size_t neighbourCount = 7;

/// Routes of no more nodes than this are improved from every start there is; of longer ones only
/// from those not longer than an improved one by more than this factor, for improving from a poor
/// start takes long and seldom wins.
constexpr std::size_t fewNodes = 300;
constexpr double worthImproving = 1.2;

/// After so many rounds the search ends even if another would gain a little.
constexpr int mostRounds = 8;

double distance(const GeoPoint2D &from, const GeoPoint2D &to)
{
    return std::hypot(to.x - from.x, to.y - from.y);
}

/// Consumes the tree.
Route nearestRoute(const RouteTable &table, StopTree &tree)
{
    Route route;
    route.reserve(table.nodeCount());
    std::size_t last = table.firstStop(table.startNode());
    while (route.size() < table.nodeCount()) {
        const RouteTable::Stop &from = table.stop(last);
        std::size_t best = tree.nearest(from.exitX, from.exitY);
        const std::size_t node = table.stop(best).node;
        for (std::size_t stop = best + 1; stop < table.endStop(node); ++stop) {
            if (table.stop(stop).entryX == table.stop(best).entryX &&
                table.stop(stop).entryY == table.stop(best).entryY &&
                table.stop(stop).inner < table.stop(best).inner) {
                best = stop;
            }
        }
        route.push_back({static_cast<int>(node), static_cast<int>(best - table.firstStop(node))});
        tree.remove(node);
        last = best;
    }
    return route;
}

/// The nodes in columns, up in one and down in the next, each with its first stop.
Route sweptRoute(const RouteTable &table)
{
    const std::size_t count = table.nodeCount();
    const auto entry = [&table](std::size_t node) -> const RouteTable::Stop & {
        return table.stop(table.firstStop(node));
    };
    double minX = entry(0).entryX;
    double maxX = minX;
    double minY = entry(0).entryY;
    double maxY = minY;
    for (std::size_t node = 1; node < count; ++node) {
        minX = std::min(minX, entry(node).entryX);
        maxX = std::max(maxX, entry(node).entryX);
        minY = std::min(minY, entry(node).entryY);
        maxY = std::max(maxY, entry(node).entryY);
    }
    // This width makes the way through evenly spread nodes shortest: a wider column costs more
    // from side to side, a narrower one more up and down.
    const double width =
        std::max(std::sqrt(3 * (maxX - minX) * (maxY - minY) / static_cast<double>(count)),
            (maxX - minX) / static_cast<double>(count));
    struct Place
    {
        long column;
        double along;
        std::size_t node;
    };
    std::vector<Place> places;
    for (std::size_t node = 0; node < count; ++node) {
        const long column = width > 0 ? static_cast<long>((entry(node).entryX - minX) / width) : 0;
        places.push_back(
            {column, column % 2 == 0 ? entry(node).entryY : -entry(node).entryY, node});
    }
    std::sort(places.begin(), places.end(), [](const Place &left, const Place &right) {
        return std::tie(left.column, left.along, left.node) <
               std::tie(right.column, right.along, right.node);
    });
    Route route;
    for (const Place &place : places) {
        route.push_back({static_cast<int>(place.node), 0});
    }
    return route;
}

/// Chooses the stops and settles by turns until neither makes the route shorter. Returns the
/// length.
double settleWhole(const RouteTable &table, RouteImprover &improver)
{
    improver.chooseStops();
    double length = improver.length();
    for (int round = 0; round < mostRounds; ++round) {
        improver.settle();
        improver.chooseStops();
        const double before = length;
        length = improver.length();
        if (length >= before - table.tolerance()) {
            break;
        }
    }
    return length;
}

/// The shortest route that comes from improving the starts, without shaking.
Route settledRoute(
    const RouteTable &table, RouteImprover &improver, const std::vector<Route> &starts)
{
    Route best;
    double bestLength = std::numeric_limits<double>::infinity();
    for (const Route &start : starts) {
        improver.load(start);
        improver.chooseStops();
        if (table.nodeCount() > fewNodes && improver.length() > bestLength * worthImproving) {
            continue;
        }
        const double length = settleWhole(table, improver);
        if (best.empty() || length < bestLength - table.tolerance()) {
            bestLength = length;
            best = improver.route();
        }
    }
    return best;
}

/// The effort spent on shaking: in proportion to the nodes with something on top for few of them,
/// and less where a node has many stops and each shake takes longer.
std::size_t shakeCount(const RouteTable &table)
{
    const std::size_t stopsPerNode = table.stopCount() / table.nodeCount();
    return 12 * (1200 + 3 * table.nodeCount()) / (10 + 3 * stopsPerNode);
}

} // namespace

double routeLength(const std::vector<RouteNode> &nodes, const Route &route, const GeoPoint2D &start)
{
    double length = 0;
    const GeoPoint2D *place = &start;
    for (const RouteStep &step : route) {
        const RouteStop &stop =
            nodes.at(static_cast<std::size_t>(step.node)).at(static_cast<std::size_t>(step.stop));
        length += distance(*place, stop.entry) + stop.inner;
        place = &stop.exit;
    }
    return length;
}

Route storedRoute(const std::vector<RouteNode> &nodes)
{
    Route route;
    route.reserve(nodes.size());
    for (std::size_t node = 0; node < nodes.size(); ++node) {
        route.push_back({static_cast<int>(node), 0});
    }
    return route;
}

Route nearestNeighbourRoute(const std::vector<RouteNode> &nodes, const GeoPoint2D &start)
{
    const RouteTable table(nodes, start);
    if (!table.isFinite()) {
        return storedRoute(nodes);
    }
    StopTree tree(table);
    return nearestRoute(table, tree);
}

Route shortenedRoute(const std::vector<RouteNode> &nodes, const GeoPoint2D &start)
{
    Route stored = storedRoute(nodes);
    const RouteTable table(nodes, start);
    if (nodes.empty() || !table.isFinite()) {
        return stored;
    }
    StopTree tree(table);
    const RouteImprover::Neighbours neighbours = nearNodes(table, tree, neighbourCount);
    Route nearest = nearestRoute(table, tree);
    RouteImprover improver(table, neighbours);
    improver.load(settledRoute(table, improver, {nearest, stored, sweptRoute(table)}));
    improver.shake(shakeCount(table));
    settleWhole(table, improver);

    // The search sums its ways in another order; what is promised is said by routeLength().
    Route best = improver.route();
    for (const Route *other : {&nearest, &stored}) {
        if (routeLength(nodes, *other, start) < routeLength(nodes, best, start)) {
            best = *other;
        }
    }
    return best;
}

} // namespace KivSystem
