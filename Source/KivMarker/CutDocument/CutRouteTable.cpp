#include "CutDocument/CutRouteTable.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace KivSystem {

namespace {

/// Boxes with no more stops than this are not halved.
constexpr std::size_t leafSize = 8;

/// From so many places of a node its neighbours are looked for; an outline of many points has
/// enough of them in a sample.
constexpr std::size_t samplesPerNode = 12;

/// Lengths that differ by less than this part of the extent are equal.
constexpr double relativeTolerance = 1e-10;

} // namespace

RouteTable::RouteTable(const std::vector<RouteNode> &nodes, const GeoPoint2D &start)
{
    first_.reserve(nodes.size() + 2);
    first_.push_back(0);
    for (const RouteNode &node : nodes) {
        if (node.empty()) {
            throw std::invalid_argument("A node of a cut route has no stop");
        }
        for (const RouteStop &stop : node) {
            stops_.push_back({stop.entry.x, stop.entry.y, stop.exit.x, stop.exit.y, stop.inner,
                first_.size() - 1, stops_.size()});
        }
        first_.push_back(stops_.size());
        findMirrors(first_.size() - 2);
        addBox(first_.size() - 2);
    }
    stops_.push_back({start.x, start.y, start.x, start.y, 0, nodes.size(), stops_.size()});
    first_.push_back(stops_.size());
    addBox(nodes.size());
    measure();
}

void RouteTable::findMirrors(std::size_t node)
{
    // Stops sorted by their ends: those from A to B and those from B to A form two runs, which are
    // paired one by one.
    using Ends = std::array<double, 5>;
    std::vector<std::pair<Ends, std::size_t>> open;
    for (std::size_t index = firstStop(node); index < endStop(node); ++index) {
        const Stop &stop = stops_[index];
        if (stop.entryX != stop.exitX || stop.entryY != stop.exitY) {
            open.push_back({{stop.entryX, stop.entryY, stop.exitX, stop.exitY, stop.inner}, index});
        }
    }
    const auto isFiniteEnds = [](const std::pair<Ends, std::size_t> &item) {
        return std::all_of(item.first.begin(), item.first.end(),
            [](double number) { return std::isfinite(number); });
    };
    if (!std::all_of(open.begin(), open.end(), isFiniteEnds)) {
        return;
    }
    std::sort(open.begin(), open.end());
    for (const auto &[ends, index] : open) {
        if (stops_[index].mirror != index) {
            continue;
        }
        const Ends turned = {ends[2], ends[3], ends[0], ends[1], ends[4]};
        auto other =
            std::lower_bound(open.begin(), open.end(), std::make_pair(turned, std::size_t(0)));
        while (other != open.end() && other->first == turned &&
               stops_[other->second].mirror != other->second) {
            ++other;
        }
        if (other == open.end() || other->first != turned) {
            isReversible_ = false;
            continue;
        }
        stops_[index].mirror = other->second;
        stops_[other->second].mirror = index;
    }
}

void RouteTable::measure()
{
    double extent = 0;
    const Stop &start = stops_.back();
    for (const Stop &stop : stops_) {
        for (const double number : {stop.entryX - start.exitX, stop.entryY - start.exitY,
                 stop.exitX - start.exitX, stop.exitY - start.exitY, stop.inner}) {
            // The squares of the numbers have to be finite, too.
            isFinite_ = isFinite_ && std::isfinite(number * number);
            extent = std::max(extent, std::fabs(number));
        }
    }
    tolerance_ = extent * relativeTolerance;
}

std::size_t RouteTable::bestStop(std::size_t from, std::size_t node, std::size_t to) const
{
    std::size_t best = firstStop(node);
    if (endStop(node) == best + 1) {
        return best;
    }
    double bestWay = std::numeric_limits<double>::infinity();
    for (std::size_t index = firstStop(node); index < endStop(node); ++index) {
        const double length = way(from, index) + stops_[index].inner + way(index, to);
        if (length < bestWay) {
            bestWay = length;
            best = index;
        }
    }
    return best;
}

void RouteTable::addBox(std::size_t node)
{
    const Stop &first = stops_[firstStop(node)];
    Box box = {first.entryX, first.entryY, first.entryX, first.entryY, true};
    for (std::size_t index = firstStop(node); index < endStop(node); ++index) {
        const Stop &stop = stops_[index];
        box.minX = std::min({box.minX, stop.entryX, stop.exitX});
        box.minY = std::min({box.minY, stop.entryY, stop.exitY});
        box.maxX = std::max({box.maxX, stop.entryX, stop.exitX});
        box.maxY = std::max({box.maxY, stop.entryY, stop.exitY});
        box.isClosed = box.isClosed && stop.entryX == stop.exitX && stop.entryY == stop.exitY;
    }
    boxes_.push_back(box);
}

double RouteTable::Box::wayTo(double x, double y) const
{
    const double dx = std::max({minX - x, 0.0, x - maxX});
    const double dy = std::max({minY - y, 0.0, y - maxY});
    return std::sqrt(dx * dx + dy * dy);
}

double RouteTable::leastWay(std::size_t from, std::size_t node) const
{
    return boxes_[node].wayTo(stops_[from].exitX, stops_[from].exitY);
}

double RouteTable::leastWayBack(std::size_t node, std::size_t to) const
{
    return to == none ? 0 : boxes_[node].wayTo(stops_[to].entryX, stops_[to].entryY);
}

double RouteTable::leastBetween(std::size_t left, std::size_t right) const
{
    const Box &a = boxes_[left];
    const Box &b = boxes_[right];
    const double dx = std::max({a.minX - b.maxX, 0.0, b.minX - a.maxX});
    const double dy = std::max({a.minY - b.maxY, 0.0, b.minY - a.maxY});
    return std::sqrt(dx * dx + dy * dy);
}

double StopTree::Box::squareTo(double x, double y) const
{
    const double dx = std::max({minX - x, 0.0, x - maxX});
    const double dy = std::max({minY - y, 0.0, y - maxY});
    return dx * dx + dy * dy;
}

StopTree::StopTree(const RouteTable &table)
    : table_(table)
    , items_(table.stopCount())
    , leafOf_(table.stopCount())
{
    for (std::size_t index = 0; index < items_.size(); ++index) {
        items_[index] = index;
    }
    if (items_.empty()) {
        return;
    }
    boxes_.resize(1);
    addBox(0, items_.size(), RouteTable::none, 0);
    for (std::size_t at = 0; at < boxes_.size(); ++at) {
        split(at);
    }
}

void StopTree::addBox(std::size_t begin, std::size_t end, std::size_t parent, std::size_t at)
{
    constexpr double far = std::numeric_limits<double>::infinity();
    Box box = {
        far, far, -far, -far, begin, end, end - begin, RouteTable::none, parent, RouteTable::none};
    for (std::size_t item = begin; item < end; ++item) {
        const RouteTable::Stop &stop = table_.stop(items_[item]);
        box.minX = std::min(box.minX, stop.entryX);
        box.minY = std::min(box.minY, stop.entryY);
        box.maxX = std::max(box.maxX, stop.entryX);
        box.maxY = std::max(box.maxY, stop.entryY);
        box.lowest = std::min(box.lowest, items_[item]);
    }
    boxes_[at] = box;
}

void StopTree::split(std::size_t at)
{
    const Box box = boxes_[at];
    if (box.end - box.begin <= leafSize) {
        const auto first = items_.begin() + static_cast<std::ptrdiff_t>(box.begin);
        std::sort(first, first + static_cast<std::ptrdiff_t>(box.end - box.begin));
        for (std::size_t item = box.begin; item < box.end; ++item) {
            leafOf_[items_[item]] = at;
        }
        return;
    }
    // Stops at the same place are told apart by their index, so the lower half of them is found
    // first and the other is never looked into for a tie.
    const bool acrossX = box.maxX - box.minX >= box.maxY - box.minY;
    const auto isBefore = [this, acrossX](std::size_t left, std::size_t right) {
        const RouteTable::Stop &a = table_.stop(left);
        const RouteTable::Stop &b = table_.stop(right);
        const double main = acrossX ? a.entryX - b.entryX : a.entryY - b.entryY;
        return main != 0 ? main < 0 : left < right;
    };
    const std::size_t middle = box.begin + (box.end - box.begin) / 2;
    const auto begin = items_.begin();
    const auto offset = [](std::size_t item) { return static_cast<std::ptrdiff_t>(item); };
    std::nth_element(
        begin + offset(box.begin), begin + offset(middle), begin + offset(box.end), isBefore);
    const std::size_t halves = boxes_.size();
    boxes_[at].halves = halves;
    boxes_.resize(halves + 2);
    addBox(box.begin, middle, at, halves);
    addBox(middle, box.end, at, halves + 1);
}

void StopTree::remove(std::size_t node)
{
    for (std::size_t stop = table_.firstStop(node); stop < table_.endStop(node); ++stop) {
        if (leafOf_[stop] == RouteTable::none) {
            continue;
        }
        for (std::size_t at = leafOf_[stop]; at != RouteTable::none; at = boxes_[at].parent) {
            --boxes_[at].alive;
        }
        leafOf_[stop] = RouteTable::none;
    }
}

double StopTree::squareTo(std::size_t stop, double x, double y) const
{
    const double dx = table_.stop(stop).entryX - x;
    const double dy = table_.stop(stop).entryY - y;
    return dx * dx + dy * dy;
}

std::size_t StopTree::nearest(double x, double y) const
{
    Near best(std::numeric_limits<double>::infinity(), RouteTable::none);
    if (!boxes_.empty()) {
        nearestIn(0, x, y, best);
    }
    return best.second;
}

void StopTree::nearestIn(std::size_t at, double x, double y, Near &best) const
{
    const Box &box = boxes_[at];
    if (box.alive == 0 || !(Near(box.squareTo(x, y), box.lowest) < best)) {
        return;
    }
    if (box.halves == RouteTable::none) {
        for (std::size_t item = box.begin; item < box.end; ++item) {
            const std::size_t stop = items_[item];
            if (leafOf_[stop] != RouteTable::none) {
                best = std::min(best, Near(squareTo(stop, x, y), stop));
            }
        }
        return;
    }
    const bool swapped = boxes_[box.halves + 1].squareTo(x, y) < boxes_[box.halves].squareTo(x, y);
    nearestIn(box.halves + (swapped ? 1 : 0), x, y, best);
    nearestIn(box.halves + (swapped ? 0 : 1), x, y, best);
}

void StopTree::mergeNear(
    double x, double y, std::size_t self, std::size_t count, std::vector<Near> &near) const
{
    if (!boxes_.empty() && count > 0) {
        mergeNearIn(0, x, y, self, count, near);
    }
}

void StopTree::mergeNearIn(std::size_t at, double x, double y, std::size_t self, std::size_t count,
    std::vector<Near> &near) const
{
    const Box &box = boxes_[at];
    if (near.size() == count && box.squareTo(x, y) >= near.back().first) {
        return;
    }
    if (box.halves != RouteTable::none) {
        const bool swapped =
            boxes_[box.halves + 1].squareTo(x, y) < boxes_[box.halves].squareTo(x, y);
        mergeNearIn(box.halves + (swapped ? 1 : 0), x, y, self, count, near);
        mergeNearIn(box.halves + (swapped ? 0 : 1), x, y, self, count, near);
        return;
    }
    for (std::size_t item = box.begin; item < box.end; ++item) {
        const Near found(squareTo(items_[item], x, y), table_.stop(items_[item]).node);
        if (found.second == self || (near.size() == count && !(found < near.back()))) {
            continue;
        }
        const auto known = std::find_if(near.begin(), near.end(),
            [&found](const Near &other) { return other.second == found.second; });
        if (known != near.end()) {
            if (!(found < *known)) {
                continue;
            }
            near.erase(known);
        } else if (near.size() == count) {
            near.pop_back();
        }
        near.insert(std::upper_bound(near.begin(), near.end(), found), found);
    }
}

std::vector<std::vector<StopTree::Near>> nearNodes(
    const RouteTable &table, const StopTree &tree, std::size_t count)
{
    std::vector<std::vector<StopTree::Near>> all(table.nodeCount());
    for (std::size_t node = 0; node < all.size(); ++node) {
        const std::size_t first = table.firstStop(node);
        const std::size_t stops = table.endStop(node) - first;
        const std::size_t samples = std::min(stops, samplesPerNode);
        std::vector<StopTree::Near> &near = all[node];
        near.reserve(count + 1);
        for (std::size_t sample = 0; sample < samples; ++sample) {
            const RouteTable::Stop &stop = table.stop(first + sample * stops / samples);
            tree.mergeNear(stop.exitX, stop.exitY, node, count, near);
            if (stop.mirror == first + sample * stops / samples &&
                (stop.entryX != stop.exitX || stop.entryY != stop.exitY)) {
                tree.mergeNear(stop.entryX, stop.entryY, node, count, near);
            }
        }
        for (StopTree::Near &item : near) {
            item.first = std::sqrt(item.first);
        }
    }
    return all;
}

} // namespace KivSystem
