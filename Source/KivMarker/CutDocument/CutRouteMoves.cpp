#include "CutDocument/CutRouteMoves.h"

#include <algorithm>

namespace KivSystem {

namespace {

/// The longest part of a route that is turned, and the longest where a turn has to be measured by
/// a walk along it: routes of many nodes would else take time that grows with the square of their
/// number.
constexpr std::size_t longestTurnAtAll = 25000;
constexpr std::size_t longestIrreversibleTurn = 1000;

/// The longest part that is moved to another place as a whole.
constexpr std::size_t longestShift = 3;

/// The longest of the two parts that a shake swaps.
constexpr std::size_t longestShake = 50;

} // namespace

void RouteImprover::Move::addTurn(std::size_t first, std::size_t last)
{
    // A turn of one node is not nothing: its stop becomes the mirror.
    if (first <= last) {
        turns[turnCount++] = {first, last};
    }
}

void RouteImprover::Move::addStop(std::size_t node, std::size_t stop)
{
    stops[stopCount++] = {node, stop};
}

RouteImprover::RouteImprover(const RouteTable &table, const Neighbours &neighbours)
    : table_(table)
    , neighbours_(neighbours)
    , longestTurn_(table.isReversible() ? longestTurnAtAll : longestIrreversibleTurn)
    , order_(table.nodeCount() + 2, RouteTable::none)
    , position_(table.nodeCount() + 1)
    , stop_(table.nodeCount() + 1)
    , isTouched_(table.nodeCount() + 1)
{}

void RouteImprover::load(const Route &route)
{
    order_[0] = table_.startNode();
    position_[table_.startNode()] = 0;
    stop_[table_.startNode()] = table_.firstStop(table_.startNode());
    for (std::size_t step = 0; step < route.size(); ++step) {
        const auto node = static_cast<std::size_t>(route[step].node);
        order_[step + 1] = node;
        position_[node] = step + 1;
        stop_[node] = table_.firstStop(node) + static_cast<std::size_t>(route[step].stop);
    }
}

Route RouteImprover::route() const
{
    Route result;
    result.reserve(table_.nodeCount());
    for (std::size_t position = 1; position <= table_.nodeCount(); ++position) {
        const std::size_t node = order_[position];
        result.push_back(
            {static_cast<int>(node), static_cast<int>(stop_[node] - table_.firstStop(node))});
    }
    return result;
}

double RouteImprover::length() const
{
    double sum = 0;
    for (std::size_t position = 0; position <= table_.nodeCount(); ++position) {
        sum += innerOf(stopAt(position)) + wayAfter(position);
    }
    return sum;
}

std::size_t RouteImprover::stopAt(std::size_t position) const
{
    const std::size_t node = order_[position];
    return node == RouteTable::none ? RouteTable::none : stop_[node];
}

double RouteImprover::wayAfter(std::size_t position) const
{
    return table_.way(stopAt(position), stopAt(position + 1));
}

void RouteImprover::chooseStops()
{
    // By stop: the shortest way to the end of the object cut that way, and the stop before it.
    std::vector<double> reached(table_.stopCount() + 1);
    std::vector<std::size_t> before(table_.stopCount() + 1, RouteTable::none);
    for (std::size_t position = 1; position <= table_.nodeCount(); ++position) {
        const std::size_t last = order_[position - 1];
        const std::size_t node = order_[position];
        for (std::size_t to = table_.firstStop(node); to < table_.endStop(node); ++to) {
            double best = std::numeric_limits<double>::infinity();
            for (std::size_t from = table_.firstStop(last); from < table_.endStop(last); ++from) {
                // Roots are drawn for the few that are shorter, so squares are compared.
                const double room = best - reached[from];
                const double square = table_.squareOfWay(from, to);
                if (room > 0 && square < room * room) {
                    best = reached[from] + std::sqrt(square);
                    before[to] = from;
                }
            }
            reached[to] = best + innerOf(to);
        }
    }
    const std::size_t last = order_[table_.nodeCount()];
    const auto begin = reached.begin();
    std::size_t stop = static_cast<std::size_t>(
        std::min_element(begin + static_cast<std::ptrdiff_t>(table_.firstStop(last)),
            begin + static_cast<std::ptrdiff_t>(table_.endStop(last))) -
        begin);
    for (std::size_t position = table_.nodeCount(); position > 0; --position) {
        stop_[order_[position]] = stop;
        stop = before[stop];
    }
}

RouteImprover::Pair RouteImprover::bestPair(
    std::size_t from, std::size_t left, std::size_t right, std::size_t to, double limit) const
{
    Pair best;
    best.length = limit;
    // What cannot come below the limit even if the other stop lay on the straight way is left out.
    // That holds only where the tool comes up at the place it went down: cutting is no way.
    const bool leftIsClosed = table_.isClosed(left);
    const bool rightIsClosed = table_.isClosed(right);
    onward_.clear();
    double shortestOnward = limit;
    for (std::size_t second = table_.firstStop(right); second < table_.endStop(right); ++second) {
        const double length = innerOf(second) + table_.way(second, to);
        if (length < limit && (!leftIsClosed || table_.way(from, second) + length < limit)) {
            onward_.emplace_back(length, second);
            shortestOnward = std::min(shortestOnward, length);
        }
    }
    if (onward_.empty()) {
        return best;
    }
    for (std::size_t first = table_.firstStop(left); first < table_.endStop(left); ++first) {
        const double head = table_.way(from, first) + innerOf(first);
        if (head + shortestOnward >= best.length ||
            (rightIsClosed && head + table_.way(first, to) >= best.length)) {
            continue;
        }
        for (const auto &[tail, second] : onward_) {
            const double room = best.length - head - tail;
            const double square = table_.squareOfWay(first, second);
            if (room > 0 && square < room * room) {
                best = {head + std::sqrt(square) + tail, first, second};
            }
        }
    }
    return best;
}

double RouteImprover::leastPair(
    std::size_t from, std::size_t left, std::size_t right, std::size_t to) const
{
    return table_.leastWay(from, left) + table_.leastBetween(left, right) +
           table_.leastWayBack(right, to);
}

double RouteImprover::bestChain(std::size_t from, Chain &chain, std::size_t to) const
{
    const auto stopBefore = [&](std::size_t link) {
        return link == 0 ? from : chain.stops[link - 1];
    };
    const auto improve = [&](std::size_t link) {
        const std::size_t next = link + 1 == chain.size ? to : chain.stops[link + 1];
        chain.stops[link] = table_.bestStop(stopBefore(link), chain.nodes[link], next);
    };
    for (std::size_t link = 0; link < chain.size; ++link) {
        improve(link);
    }
    for (std::size_t link = chain.size - 1; link > 0; --link) {
        improve(link - 1);
    }
    double length = table_.way(chain.stops[chain.size - 1], to);
    for (std::size_t link = 0; link < chain.size; ++link) {
        length += table_.way(stopBefore(link), chain.stops[link]) + innerOf(chain.stops[link]);
    }
    return length;
}

void RouteImprover::tryStops(std::size_t position, Move &best) const
{
    const std::size_t node = order_[position];
    const std::size_t from = stopAt(position - 1);
    const std::size_t next = order_[position + 1];
    const double before = wayAfter(position - 1) + innerOf(stop_[node]) + wayAfter(position);
    Move move;
    if (next == RouteTable::none) {
        const std::size_t stop = table_.bestStop(from, node, RouteTable::none);
        move.delta = table_.way(from, stop) + innerOf(stop) - before;
        move.addStop(node, stop);
    } else {
        const double all = before + innerOf(stop_[next]) + wayAfter(position + 1);
        const Pair pair = bestPair(from, node, next, stopAt(position + 2), all + best.delta);
        if (pair.first == RouteTable::none) {
            return;
        }
        move.delta = pair.length - all;
        move.addStop(node, pair.first);
        move.addStop(next, pair.second);
    }
    if (move.delta < best.delta) {
        best = move;
    }
}

double RouteImprover::insideOfTurn(std::size_t first, std::size_t last) const
{
    if (table_.isReversible()) {
        return 0;
    }
    double change = 0;
    for (std::size_t position = first; position <= last; ++position) {
        const std::size_t stop = stopAt(position);
        change += innerOf(mirrorOf(stop)) - innerOf(stop);
        if (position < last) {
            const std::size_t next = stopAt(position + 1);
            change += table_.way(mirrorOf(next), mirrorOf(stop)) - table_.way(stop, next);
        }
    }
    return change;
}

void RouteImprover::tryTurn(std::size_t first, std::size_t last, Move &best) const
{
    if (first >= last || last - first > longestTurn_) {
        return;
    }
    Move move;
    move.delta = table_.way(stopAt(first - 1), mirrorOf(stopAt(last))) +
                 table_.way(mirrorOf(stopAt(first)), stopAt(last + 1)) - wayAfter(first - 1) -
                 wayAfter(last);
    if (move.delta < best.delta) {
        move.delta += insideOfTurn(first, last);
    }
    if (move.delta < best.delta) {
        move.addTurn(first, last);
        best = move;
    }
}

void RouteImprover::tryTurnWithStops(std::size_t first, std::size_t last, Move &best) const
{
    // The inner neighbours of the four nodes keep their stops, so there must be some.
    if (!table_.hasChoice() || first < 2 || first + 2 > last || last - first > longestTurn_ ||
        order_[last + 1] == RouteTable::none) {
        tryTurn(first, last, best);
        return;
    }
    const double before = wayAfter(first - 2) + wayAfter(first - 1) + wayAfter(first) +
                          wayAfter(last - 1) + wayAfter(last) + wayAfter(last + 1) +
                          innerOf(stopAt(first - 1)) + innerOf(stopAt(first)) +
                          innerOf(stopAt(last)) + innerOf(stopAt(last + 1));
    const std::size_t inLast = mirrorOf(stopAt(last - 1));
    const std::size_t inFirst = mirrorOf(stopAt(first + 1));
    // Most turns are refused by what the four ways must be at least.
    const double tailBound = leastPair(inFirst, order_[first], order_[last + 1], stopAt(last + 2));
    double room = before + best.delta - tailBound;
    if (leastPair(stopAt(first - 2), order_[first - 1], order_[last], inLast) >= room) {
        return;
    }
    const double inside = insideOfTurn(first + 1, last - 1);
    room -= inside;
    const Pair head = bestPair(stopAt(first - 2), order_[first - 1], order_[last], inLast, room);
    if (head.first == RouteTable::none) {
        return;
    }
    room += tailBound - head.length;
    const Pair tail = bestPair(inFirst, order_[first], order_[last + 1], stopAt(last + 2), room);
    if (tail.first == RouteTable::none) {
        return;
    }
    Move move;
    move.delta = head.length + tail.length + inside - before;
    if (move.delta < best.delta) {
        move.addTurn(first, last);
        move.addStop(order_[first - 1], head.first);
        move.addStop(order_[last], head.second);
        move.addStop(order_[first], tail.first);
        move.addStop(order_[last + 1], tail.second);
        best = move;
    }
}

void RouteImprover::tryTurns(std::size_t position, Move &best) const
{
    tryTurn(1, position, best);
    tryTurn(position, table_.nodeCount(), best);
    const double ahead = wayAfter(position);
    const double behind = wayAfter(position - 1);
    for (const auto &[distance, other] : neighbours_[order_[position]]) {
        const std::size_t place = position_[other];
        const std::size_t low = std::min(position, place);
        const std::size_t high = std::max(position, place);
        if (distance >= std::max(ahead, behind)) {
            break;
        }
        if (distance < ahead) {
            tryTurnWithStops(low + 1, high, best);
        }
        if (distance < behind) {
            tryTurnWithStops(low, high - 1, best);
        }
    }
}

void RouteImprover::tryShift(std::size_t first, std::size_t last, std::size_t after, bool turned,
    double gain, Move &best) const
{
    if ((after + 1 >= first && after <= last) || after > table_.nodeCount()) {
        return;
    }
    const std::size_t distance = after > last ? after - first : last - after;
    if (distance > longestTurn_) {
        return;
    }
    const std::size_t from = stopAt(after);
    const std::size_t to = stopAt(after + 1);
    const std::size_t head = order_[turned ? last : first];
    const std::size_t tail = order_[turned ? first : last];
    double least = table_.leastWay(from, head) + table_.leastWayBack(tail, to);
    for (std::size_t link = first; link < last; ++link) {
        least += table_.leastBetween(order_[link], order_[link + 1]);
    }
    const double spare = gain + table_.way(from, to);
    if (least - spare >= best.delta) {
        return;
    }
    Chain chain;
    chain.size = last - first + 1;
    for (std::size_t link = 0; link < chain.size; ++link) {
        const std::size_t node = order_[turned ? last - link : first + link];
        chain.nodes[link] = node;
        chain.stops[link] = turned ? mirrorOf(stop_[node]) : stop_[node];
    }
    const double delta = bestChain(from, chain, to) - spare;
    if (delta >= best.delta) {
        return;
    }
    // The part and what lies between it and its new place change places: all of it is turned, and
    // then each of the two is turned back by itself.
    Move move;
    move.delta = delta;
    if (after > last) {
        const std::size_t middle = first + after - last;
        move.addTurn(first, after);
        move.addTurn(first, middle - 1);
        if (!turned) {
            move.addTurn(middle, after);
        }
    } else {
        const std::size_t middle = after + chain.size;
        move.addTurn(after + 1, last);
        move.addTurn(middle + 1, last);
        if (!turned) {
            move.addTurn(after + 1, middle);
        }
    }
    for (std::size_t link = 0; link < chain.size; ++link) {
        move.addStop(chain.nodes[link], chain.stops[link]);
    }
    best = move;
}

void RouteImprover::tryShifts(
    std::size_t position, std::size_t size, bool leading, Move &best) const
{
    if (leading ? position + size > table_.nodeCount() + 1 : position < size) {
        return;
    }
    const std::size_t first = leading ? position : position + 1 - size;
    const std::size_t last = first + size - 1;
    double gain =
        wayAfter(first - 1) + wayAfter(last) - table_.way(stopAt(first - 1), stopAt(last + 1));
    const double limit = gain;
    for (std::size_t link = first; link <= last; ++link) {
        gain += innerOf(stopAt(link)) + (link < last ? wayAfter(link) : 0);
    }
    for (const auto &[distance, other] : neighbours_[order_[position]]) {
        if (distance >= limit) {
            break;
        }
        const std::size_t place = position_[other];
        tryShift(first, last, place, !leading, gain, best);
        tryShift(first, last, place - 1, leading, gain, best);
    }
}

RouteImprover::Move RouteImprover::shakeMove(std::size_t index) const
{
    // The places follow one another in steps near the golden section of the route, so that they
    // spread evenly; the lengths run through their range with strides that fit neither each other
    // nor the places.
    const std::size_t count = table_.nodeCount();
    // Of few nodes half may be swapped, else there would be too little to try.
    const std::size_t share = std::max(count / 3, std::min<std::size_t>(count / 2, 4));
    const std::size_t longest = std::min(longestShake, share);
    const std::size_t left = 1 + index * 7 % longest;
    const std::size_t right = 1 + (index * 11 + index / longest) % longest;
    const std::size_t room = count - left - right + 1;
    const std::size_t first = 1 + (index * (room * 618 / 1000 + 1)) % room;
    const std::size_t middle = first + left;
    const std::size_t last = middle + right - 1;
    const std::size_t before = stopAt(first - 1);
    const std::size_t behind = stopAt(last + 1);
    Move move;
    move.delta = table_.way(before, stopAt(middle)) + table_.way(stopAt(last), stopAt(first)) +
                 table_.way(stopAt(middle - 1), behind) - wayAfter(first - 1) -
                 wayAfter(middle - 1) - wayAfter(last);
    move.addTurn(first, last);
    move.addTurn(first, first + right - 1);
    move.addTurn(first + right, last);
    return move;
}

void RouteImprover::touch(std::size_t position)
{
    const std::size_t node = order_[position];
    if (node < table_.nodeCount() && !isTouched_[node]) {
        isTouched_[node] = true;
        touched_.push_back(node);
    }
}

void RouteImprover::turn(std::size_t first, std::size_t last)
{
    done_.push_back({true, first, last});
    std::reverse(order_.begin() + static_cast<std::ptrdiff_t>(first),
        order_.begin() + static_cast<std::ptrdiff_t>(last) + 1);
    for (std::size_t position = first; position <= last; ++position) {
        const std::size_t node = order_[position];
        position_[node] = position;
        stop_[node] = mirrorOf(stop_[node]);
    }
}

void RouteImprover::setStop(std::size_t node, std::size_t stop)
{
    if (stop_[node] != stop) {
        done_.push_back({false, node, stop_[node]});
        stop_[node] = stop;
    }
}

void RouteImprover::apply(const Move &move)
{
    for (std::size_t index = 0; index < move.turnCount; ++index) {
        const auto &[first, last] = move.turns[index];
        turn(first, last);
    }
    for (std::size_t index = 0; index < move.turnCount; ++index) {
        const auto &[first, last] = move.turns[index];
        for (const std::size_t position : {first - 1, first, last, last + 1}) {
            touch(position);
        }
    }
    for (std::size_t index = 0; index < move.stopCount; ++index) {
        const auto &[node, stop] = move.stops[index];
        setStop(node, stop);
        for (const std::size_t position :
            {position_[node] - 1, position_[node], position_[node] + 1}) {
            touch(position);
        }
    }
}

void RouteImprover::undo()
{
    std::vector<Done> done;
    done.swap(done_);
    for (auto item = done.rbegin(); item != done.rend(); ++item) {
        if (item->isTurn) {
            turn(item->first, item->second);
        } else {
            stop_[item->first] = item->second;
        }
    }
    done_.clear();
}

double RouteImprover::settleTouched()
{
    double change = 0;
    for (std::size_t next = 0; next < touched_.size(); ++next) {
        const std::size_t node = touched_[next];
        isTouched_[node] = false;
        for (;;) {
            const std::size_t position = position_[node];
            Move best;
            best.delta = -table_.tolerance();
            tryStops(position, best);
            tryTurns(position, best);
            for (std::size_t size = 1; size <= longestShift; ++size) {
                tryShifts(position, size, true, best);
                if (size > 1) {
                    tryShifts(position, size, false, best);
                }
            }
            if (best.turnCount == 0 && best.stopCount == 0) {
                break;
            }
            apply(best);
            change += best.delta;
        }
    }
    touched_.clear();
    return change;
}

void RouteImprover::settle()
{
    for (std::size_t position = 1; position <= table_.nodeCount(); ++position) {
        touch(position);
    }
    settleTouched();
    done_.clear();
}

void RouteImprover::shake(std::size_t count)
{
    if (table_.nodeCount() < 4) {
        return;
    }
    for (std::size_t index = 0; index < count; ++index) {
        done_.clear();
        const Move move = shakeMove(index);
        apply(move);
        if (move.delta + settleTouched() >= -table_.tolerance()) {
            undo();
        }
    }
    done_.clear();
}

} // namespace KivSystem
