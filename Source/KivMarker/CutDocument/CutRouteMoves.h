// The local search behind shortenedRoute(): a route that is changed by small moves.
//
// The route is kept with the start at position 0, the nodes at the positions 1 to nodeCount() and
// the open end behind them. Every move is made of turns (a part of the route is turned round, each
// of its stops becomes its mirror) and of other stops for a few nodes, so that a move is undone by
// the same turns in reverse order.

#ifndef KIVMARKER_CUTDOCUMENT_CUTROUTEMOVES_H
#define KIVMARKER_CUTDOCUMENT_CUTROUTEMOVES_H

#include "CutDocument/CutRouteTable.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace KivSystem {

/// Not thread-safe. Table and neighbours must outlive the object.
class RouteImprover
{
public:
    using Neighbours = std::vector<std::vector<StopTree::Near>>;

    RouteImprover(const RouteTable &table, const Neighbours &neighbours);

    /// Takes over a route that visits every node once.
    void load(const Route &route);
    Route route() const;
    /// The way with the tool up, summed up anew.
    double length() const;

    /// Gives every node the stop that makes the route in its present order as short as can be.
    void chooseStops();
    /// Applies moves until none of those looked at makes the route shorter.
    void settle();
    /// Swaps neighbouring parts of the route here and there, count times, and settles after each;
    /// what has not become shorter by that is undone.
    void shake(std::size_t count);

private:
    /// Up to three turns of positions, up to four (node, stop) and what they change.
    struct Move
    {
        double delta = 0;
        std::size_t turnCount = 0;
        std::size_t stopCount = 0;
        std::array<std::pair<std::size_t, std::size_t>, 3> turns{};
        std::array<std::pair<std::size_t, std::size_t>, 4> stops{};

        void addTurn(std::size_t first, std::size_t last);
        void addStop(std::size_t node, std::size_t stop);
    };

    /// The nodes of a short part of the route with stops they could have.
    struct Chain
    {
        std::size_t size = 0;
        std::array<std::size_t, 3> nodes{};
        std::array<std::size_t, 3> stops{};
    };

    /// Two stops of neighbouring nodes with all the way from before to after them; none when there
    /// are no two with less than what was allowed.
    struct Pair
    {
        double length = 0;
        std::size_t first = RouteTable::none;
        std::size_t second = RouteTable::none;
    };

    std::size_t stopAt(std::size_t position) const;
    double wayAfter(std::size_t position) const;
    double innerOf(std::size_t stop) const { return table_.stop(stop).inner; }
    std::size_t mirrorOf(std::size_t stop) const { return table_.stop(stop).mirror; }

    Pair bestPair(
        std::size_t from, std::size_t left, std::size_t right, std::size_t to, double limit) const;
    double leastPair(std::size_t from, std::size_t left, std::size_t right, std::size_t to) const;
    double bestChain(std::size_t from, Chain &chain, std::size_t to) const;
    double insideOfTurn(std::size_t first, std::size_t last) const;

    void tryStops(std::size_t position, Move &best) const;
    void tryTurn(std::size_t first, std::size_t last, Move &best) const;
    void tryTurnWithStops(std::size_t first, std::size_t last, Move &best) const;
    void tryTurns(std::size_t position, Move &best) const;
    void tryShift(std::size_t first, std::size_t last, std::size_t after, bool turned, double gain,
        Move &best) const;
    void tryShifts(std::size_t position, std::size_t size, bool leading, Move &best) const;
    Move shakeMove(std::size_t index) const;

    void touch(std::size_t position);
    void turn(std::size_t first, std::size_t last);
    void setStop(std::size_t node, std::size_t stop);
    void apply(const Move &move);
    void undo();
    double settleTouched();

    const RouteTable &table_;
    const Neighbours &neighbours_;
    std::size_t longestTurn_;
    /// The node at each position, the open end (none) last.
    std::vector<std::size_t> order_;
    /// By node: its position and its stop.
    std::vector<std::size_t> position_;
    std::vector<std::size_t> stop_;
    /// The nodes whose surroundings have changed, as a queue, and by node whether it is there.
    std::vector<std::size_t> touched_;
    std::vector<bool> isTouched_;
    /// What has been done since the last time it was cleared: a turn with its positions, or a node
    /// with its former stop.
    struct Done
    {
        bool isTurn;
        std::size_t first;
        std::size_t second;
    };
    std::vector<Done> done_;
    /// Room for bestPair(): the right stops that may do, with the way from each on.
    mutable std::vector<std::pair<double, std::size_t>> onward_;
};

} // namespace KivSystem

#endif
