// The order in which a cutter visits its objects, chosen so that the way with the tool up is short.
//
// An object is a node with one or more stops. A stop is one way to cut the object whole: a closed
// outline may be begun in any of its corners (entry and exit are that corner), an open line from
// either end (entry is the one end, exit the other), a group of lines in several orders. A route
// visits every node once with one of its stops. What it costs is the way from a starting point to
// the first entry, from every exit to the next entry and the way inside the stops; after the last
// exit nothing is added, for the tool need not return.
//
//     const std::vector<RouteNode> nodes = {{{{0, 5}, {9, 5}}, {{9, 5}, {0, 5}}}, {{{9, 0}, {9,
//     0}}}}; const Route route = shortenedRoute(nodes, {0, 0});   // object 0 from its left end,
//     then 1 routeLength(nodes, route, {0, 0});                   // 5 + 5
//
// All lengths are in centimetres, all indices 0-based. The same nodes always give the same route:
// nothing is random and nothing depends on addresses or on the clock.

#ifndef KIVMARKER_CUTDOCUMENT_CUTROUTE_H
#define KIVMARKER_CUTDOCUMENT_CUTROUTE_H

#include "KivGeo/Point2D.h"

#include <vector>

namespace KivSystem {

/// One way to cut an object: where the tool comes down first, where it comes up last, and the
/// length of the way with the tool up in between (not negative).
struct RouteStop
{
    GeoPoint2D entry;
    GeoPoint2D exit;
    double inner = 0;
};

/// The ways to cut one object, at least one; the first is the one as stored.
using RouteNode = std::vector<RouteStop>;

/// A visit: the index of the node and the index of the stop in that node.
struct RouteStep
{
    int node;
    int stop;
};

/// The visits in the order of cutting.
using Route = std::vector<RouteStep>;

/// The way with the tool up from the start through all steps of the route, without a way back.
/// Throws std::out_of_range for a step that names no stop.
double routeLength(
    const std::vector<RouteNode> &nodes, const Route &route, const GeoPoint2D &start);

/// The nodes as they come, each with its first stop.
Route storedRoute(const std::vector<RouteNode> &nodes);

/// From the start always on to the node with the nearest entry among all stops of the nodes not
/// visited yet. Of equally near entries the one of the lower node is taken, in the same node the
/// stop with the shorter inner way. Throws std::invalid_argument for a node without stops; with a
/// coordinate or inner way that is not finite the stored route comes back. Takes time of about
/// n log n for n stops.
Route nearestNeighbourRoute(const std::vector<RouteNode> &nodes, const GeoPoint2D &start);

/// A route improved by local search, never longer than storedRoute() and nearestNeighbourRoute().
/// Time grows about in proportion to the nodes, and with the square of the stops of a node.
/// Throws std::invalid_argument for a node without stops. With a coordinate or inner way that is
/// not finite there is nothing to compare, and the stored route comes back.
Route shortenedRoute(const std::vector<RouteNode> &nodes, const GeoPoint2D &start);

} // namespace KivSystem

#endif
