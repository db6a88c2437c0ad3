// What the search for a short route works on: all stops of all nodes in one array, and a tree that
// finds the stops near a place.

#ifndef KIVMARKER_CUTDOCUMENT_CUTROUTETABLE_H
#define KIVMARKER_CUTDOCUMENT_CUTROUTETABLE_H

#include "CutDocument/CutRoute.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace KivSystem {

/// The stops of all nodes, one node after the other, and behind them the start as a node of its
/// own with one stop. Indices of nodes and stops are 0-based.
class RouteTable
{
public:
    /// The node and the stop there is not; as the target of a way it stands for the open end.
    static constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

    struct Stop
    {
        double entryX = 0;
        double entryY = 0;
        double exitX = 0;
        double exitY = 0;
        double inner = 0;
        std::size_t node = 0;
        /// The stop of the same node from this one's exit to its entry; this stop itself if there
        /// is none. The mirror of the mirror is always the stop again.
        std::size_t mirror = 0;
    };

    /// Throws std::invalid_argument for a node without stops.
    RouteTable(const std::vector<RouteNode> &nodes, const GeoPoint2D &start);

    /// The number of nodes without the start.
    std::size_t nodeCount() const { return first_.size() - 2; }
    /// The number of stops without the start.
    std::size_t stopCount() const { return stops_.size() - 1; }
    std::size_t startNode() const { return nodeCount(); }

    /// The stops of a node are those from firstStop() to before endStop().
    std::size_t firstStop(std::size_t node) const { return first_[node]; }
    std::size_t endStop(std::size_t node) const { return first_[node + 1]; }
    const Stop &stop(std::size_t index) const { return stops_[index]; }

    /// The way from the exit of a stop to the entry of another; none as target costs nothing.
    double way(std::size_t from, std::size_t to) const
    {
        return to == none ? 0 : std::sqrt(squareOfWay(from, to));
    }

    /// The square of the way between two stops that there are.
    double squareOfWay(std::size_t from, std::size_t to) const
    {
        const double dx = stops_[to].entryX - stops_[from].exitX;
        const double dy = stops_[to].entryY - stops_[from].exitY;
        return dx * dx + dy * dy;
    }

    /// The stop of the node with the shortest way from one stop and on to another.
    std::size_t bestStop(std::size_t from, std::size_t node, std::size_t to) const;

    /// At least so long is any way from the stop to the node, from the node to the stop, from one
    /// node to the other: the way from or to the box around the entries and exits of a node. None
    /// is as near as can be.
    double leastWay(std::size_t from, std::size_t node) const;
    double leastWayBack(std::size_t node, std::size_t to) const;
    double leastBetween(std::size_t left, std::size_t right) const;

    /// Whether every stop of the node ends where it begins.
    bool isClosed(std::size_t node) const { return boxes_[node].isClosed; }
    /// Whether there is a node with more than one stop.
    bool hasChoice() const { return stopCount() > nodeCount(); }
    /// Whether every stop has a mirror with the same inner way, so that a part of a route is as
    /// long backwards as forwards.
    bool isReversible() const { return isReversible_; }
    /// Whether every number is finite.
    bool isFinite() const { return isFinite_; }
    /// A difference of lengths that is taken for rounding.
    double tolerance() const { return tolerance_; }

private:
    struct Box
    {
        double minX;
        double minY;
        double maxX;
        double maxY;
        bool isClosed;

        double wayTo(double x, double y) const;
    };

    void findMirrors(std::size_t node);
    void addBox(std::size_t node);
    void measure();

    std::vector<Stop> stops_;
    std::vector<std::size_t> first_;
    std::vector<Box> boxes_;
    bool isReversible_ = true;
    bool isFinite_ = true;
    double tolerance_ = 0;
};

/// The entries of all stops of a table in a tree of boxes, each halved across its longer side.
/// The table must outlive the tree.
class StopTree
{
public:
    /// A node and the square of its distance.
    using Near = std::pair<double, std::size_t>;

    explicit StopTree(const RouteTable &table);

    /// Takes all stops of the node out.
    void remove(std::size_t node);

    /// The stop with the entry nearest to the place, the lowest of equally near ones; none when
    /// the tree is empty.
    std::size_t nearest(double x, double y) const;

    /// Merges the nodes near the place into a list of at most count nodes ordered by distance;
    /// each node appears once, with its shortest distance, and the node self is left out.
    void mergeNear(
        double x, double y, std::size_t self, std::size_t count, std::vector<Near> &near) const;

private:
    struct Box
    {
        double minX;
        double minY;
        double maxX;
        double maxY;
        std::size_t begin;
        std::size_t end;
        std::size_t alive;
        std::size_t lowest;
        std::size_t parent;
        /// The first of the two halves, which lie side by side; none for a leaf.
        std::size_t halves;

        double squareTo(double x, double y) const;
    };

    void addBox(std::size_t begin, std::size_t end, std::size_t parent, std::size_t at);
    void split(std::size_t at);
    double squareTo(std::size_t stop, double x, double y) const;
    void nearestIn(std::size_t at, double x, double y, Near &best) const;
    void mergeNearIn(std::size_t at, double x, double y, std::size_t self, std::size_t count,
        std::vector<Near> &near) const;

    const RouteTable &table_;
    std::vector<Box> boxes_;
    std::vector<std::size_t> items_;
    std::vector<std::size_t> leafOf_;
};

/// For every node the nodes nearest to it, at most count, ordered by distance (not squared).
std::vector<std::vector<StopTree::Near>> nearNodes(
    const RouteTable &table, const StopTree &tree, std::size_t count);

} // namespace KivSystem

#endif
