#include "CutDocument/CutRoute.h"

#include "CutDocument/CutRouteMoves.h"
#include "CutDocument/CutRouteTable.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <tuple>

namespace KivSystem {

namespace {

/// For every node so many others are looked at as its neighbours.
std::size_t neighbourCount = getenv("NB") ? size_t(atoi(getenv("NB"))) : 8;

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
    const RouteTable table(nodes, start);
    if (nodes.empty() || !table.isFinite()) {
        return storedRoute(nodes);
    }
    StopTree tree(table);
    const RouteImprover::Neighbours neighbours = nearNodes(table, tree, neighbourCount);
    const std::vector<Route> starts = {
        nearestRoute(table, tree), storedRoute(nodes), sweptRoute(table)};
    RouteImprover improver(table, neighbours);
    Route best;
    double bestLength = std::numeric_limits<double>::infinity();
    for (const Route &route : starts) {
        improver.load(route);
        improver.chooseStops();
        improver.settle();
        improver.chooseStops();
        const double length = improver.length();
        if (getenv("V"))
            fprintf(stderr, "  start %g\n", length);
        if (length < bestLength - table.tolerance()) {
            bestLength = length;
            best = improver.route();
        }
    }
    improver.load(best);
    std::size_t budget = getenv("SH") ? size_t(atoi(getenv("SH"))) : 20;
    improver.shake(budget * nodes.size());
    improver.chooseStops();
    improver.settle();
    improver.chooseStops();
    return improver.route();
}

} // namespace KivSystem
