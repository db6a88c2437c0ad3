#include "CutDocument/InteriorPlace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <deque>
#include <limits>
#include <queue>

namespace KivSystem {
namespace {

constexpr double diagonal = 1.4142135623730951;
constexpr double centroidShare = 0.8;   // of the best clearance that the centroid must have
constexpr double clearanceShare = 0.05; // a gain of less than this is not looked for,
constexpr double sizeShare = 0.002;     // nor one of less than this share of the outline's size
constexpr int cellLimit = 400;          // thin outlines would take a cell for each stretch
constexpr int scanLines = 7;            // each way
constexpr std::size_t workLimit = 1U << 26U; // edges looked at by the last resort

struct Place
{
    double x = 0;
    double y = 0;
};

struct Edge
{
    double x;
    double y;
    double dx;
    double dy;
    double endY;
    double inverseSquare; // 1 / length^2, 0 for an edge without length
};

struct Box
{
    double left = std::numeric_limits<double>::infinity();
    double right = -std::numeric_limits<double>::infinity();
    double bottom = std::numeric_limits<double>::infinity();
    double top = -std::numeric_limits<double>::infinity();
};

using Edges = std::vector<Edge>;

Edges edgesOf(const std::vector<GeoPoint2D> &outline)
{
    Edges edges;
    edges.reserve(outline.size());
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const GeoPoint2D &from = outline[i];
        const GeoPoint2D &to = outline[i + 1 < outline.size() ? i + 1 : 0];
        const double dx = to.x - from.x;
        const double dy = to.y - from.y;
        const double square = dx * dx + dy * dy;
        const bool isLong = square > std::numeric_limits<double>::min();
        edges.push_back({from.x, from.y, dx, dy, to.y, isLong ? 1 / square : 0});
    }
    return edges;
}

Box boxOf(const std::vector<GeoPoint2D> &outline)
{
    Box box;
    for (const GeoPoint2D &point : outline) {
        box.left = std::min(box.left, point.x);
        box.right = std::max(box.right, point.x);
        box.bottom = std::min(box.bottom, point.y);
        box.top = std::max(box.top, point.y);
    }
    return box;
}

double squareDistance(const Edge &edge, double x, double y)
{
    const double wayX = x - edge.x;
    const double wayY = y - edge.y;
    const double along = (wayX * edge.dx + wayY * edge.dy) * edge.inverseSquare;
    const double part = std::min(std::max(along, 0.0), 1.0);
    const double offX = wayX - part * edge.dx;
    const double offY = wayY - part * edge.dy;
    return offX * offX + offY * offY;
}

bool isInside(const Edges &edges, double x, double y)
{
    bool inside = false;
    for (const Edge &edge : edges) {
        if ((edge.y > y) != (edge.endY > y)) {
            inside ^= x < edge.x + (y - edge.y) * edge.dx / edge.dy;
        }
    }
    return inside;
}

double distance(const Edges &edges, double x, double y)
{
    double square = std::numeric_limits<double>::infinity();
    for (const Edge &edge : edges) {
        square = std::min(square, squareDistance(edge, x, y));
    }
    return std::sqrt(square);
}

double signedDistance(const Edges &edges, double x, double y)
{
    return isInside(edges, x, y) ? distance(edges, x, y) : -distance(edges, x, y);
}

Place meanOf(const std::vector<GeoPoint2D> &outline)
{
    Place sum;
    for (const GeoPoint2D &point : outline) {
        sum.x += point.x;
        sum.y += point.y;
    }
    const auto count = static_cast<double>(std::max<std::size_t>(outline.size(), 1));
    return {sum.x / count, sum.y / count};
}

// Not finite, or anywhere, for an outline whose loops cancel out. Reckoned from the middle of the
// box, since the products of coordinates far from zero would lose the digits that count.
Place centroidOf(const Edges &edges, const Box &box)
{
    const Place middle{(box.left + box.right) / 2, (box.bottom + box.top) / 2};
    double area = 0;
    Place sum;
    for (const Edge &edge : edges) {
        const double x = edge.x - middle.x;
        const double y = edge.y - middle.y;
        const double cross = x * edge.dy - y * edge.dx;
        area += cross;
        sum.x += (2 * x + edge.dx) * cross;
        sum.y += (2 * y + edge.dy) * cross;
    }
    return {middle.x + sum.x / (3 * area), middle.y + sum.y / (3 * area)};
}

// Looks for the place of the largest clearance above a given one.
class PlaceSearch
{
public:
    PlaceSearch(const Edges &edges, const Box &box, double known)
        : m_edges(edges)
        , m_box(box)
        , m_best(std::max(known, 0.0))
        , m_size(std::max(box.right - box.left, box.top - box.bottom))
    {}

    bool found() const { return m_found; }
    Place place() const { return m_place; }

    // The middles of the widest stretches on a few lines across: in a thin outline they are next
    // to the best already, where cells would have to be tiny to get inside at all.
    void scan();
    // A quad-tree, the most promising cell first.
    void subdivide();
    // For outlines that are almost nothing: a line between every two heights of corners.
    void scanEverywhere();

private:
    using EdgeList = std::vector<const Edge *>;

    struct Cell
    {
        double x;
        double y;
        double half;      // of a side
        double clearance; // of the middle
        double bound;     // no place in the cell has a larger clearance
        const EdgeList *near;

        bool operator<(const Cell &other) const { return bound < other.bound; }
    };

    double goal() const { return m_best + std::max(m_best * clearanceShare, m_size * sizeShare); }
    void offer(double x, double y);
    void offer(double x, double y, double clearance);
    void scanAcross(double height);
    void scanUpward(double x);
    // Sorts the crossings; gives the middle of the widest stretch inside, or NaN if that is too
    // narrow for a better place.
    double middleOfWidest();
    void addCell(double x, double y, double half, const EdgeList &near, bool knownInside);
    const EdgeList &narrowed(const Cell &cell);

    const Edges &m_edges;
    const Box &m_box;
    double m_best;
    double m_size;
    Place m_place;
    bool m_found = false;
    std::vector<double> m_crossings;
    std::priority_queue<Cell> m_queue;
    std::deque<EdgeList> m_lists; // a deque, for the cells point at its members
};

void PlaceSearch::offer(double x, double y, double clearance)
{
    if (clearance > m_best) {
        m_best = clearance;
        m_place = {x, y};
        m_found = true;
    }
}

void PlaceSearch::offer(double x, double y)
{
    const double clearance = distance(m_edges, x, y);
    if (clearance > m_best && isInside(m_edges, x, y)) {
        offer(x, y, clearance);
    }
}

double PlaceSearch::middleOfWidest()
{
    std::sort(m_crossings.begin(), m_crossings.end());
    double width = 2 * m_best;
    double middle = std::numeric_limits<double>::quiet_NaN();
    for (std::size_t i = 1; i < m_crossings.size(); i += 2) {
        if (m_crossings[i] - m_crossings[i - 1] > width) {
            width = m_crossings[i] - m_crossings[i - 1];
            middle = m_crossings[i - 1] + width / 2;
        }
    }
    return middle;
}

void PlaceSearch::scanAcross(double height)
{
    m_crossings.clear();
    for (const Edge &edge : m_edges) {
        if ((edge.y > height) != (edge.endY > height)) {
            m_crossings.push_back(edge.x + (height - edge.y) * edge.dx / edge.dy);
        }
    }
    const double x = middleOfWidest();
    if (!std::isnan(x)) {
        offer(x, height);
    }
}

void PlaceSearch::scanUpward(double x)
{
    m_crossings.clear();
    for (std::size_t i = 0; i < m_edges.size(); ++i) {
        const Edge &edge = m_edges[i];
        const double endX = m_edges[i + 1 < m_edges.size() ? i + 1 : 0].x;
        if ((edge.x > x) != (endX > x)) {
            m_crossings.push_back(edge.y + (x - edge.x) * edge.dy / edge.dx);
        }
    }
    const double y = middleOfWidest();
    if (!std::isnan(y)) {
        offer(x, y);
    }
}

void PlaceSearch::scan()
{
    for (int i = 1; i <= scanLines; ++i) {
        const double part = i / (scanLines + 1.0);
        scanAcross(m_box.bottom + part * (m_box.top - m_box.bottom));
        scanUpward(m_box.left + part * (m_box.right - m_box.left));
    }
}

// The edges that can be the nearest one to some point of the cell.
const PlaceSearch::EdgeList &PlaceSearch::narrowed(const Cell &cell)
{
    const double reach = std::abs(cell.clearance) + 2 * diagonal * cell.half;
    m_lists.emplace_back();
    for (const Edge *edge : *cell.near) {
        if (squareDistance(*edge, cell.x, cell.y) <= reach * reach) {
            m_lists.back().push_back(edge);
        }
    }
    return m_lists.back();
}

void PlaceSearch::addCell(double x, double y, double half, const EdgeList &near, bool knownInside)
{
    double square = std::numeric_limits<double>::infinity();
    for (const Edge *edge : near) {
        square = std::min(square, squareDistance(*edge, x, y));
    }
    const double toBorder = std::sqrt(square);
    const double radius = diagonal * half;
    if (toBorder + radius <= goal()) {
        return; // whichever side it is on
    }
    const double clearance = knownInside || isInside(m_edges, x, y) ? toBorder : -toBorder;
    offer(x, y, clearance);
    if (clearance + radius > goal()) {
        m_queue.push({x, y, half, clearance, clearance + radius, &near});
    }
}

void PlaceSearch::subdivide()
{
    m_lists.emplace_back();
    for (const Edge &edge : m_edges) {
        m_lists.back().push_back(&edge);
    }
    const EdgeList &all = m_lists.back();
    const double width = m_box.right - m_box.left;
    const double height = m_box.top - m_box.bottom;
    const double side = std::max(std::min(width, height), m_size / 16);
    if (!(side > 0) || !std::isfinite(side)) {
        return;
    }
    const int columns = static_cast<int>(std::ceil(width / side));
    const int rows = static_cast<int>(std::ceil(height / side));
    for (int i = 0; i < columns * rows; ++i) {
        const int row = i / columns;
        addCell(m_box.left + (i % columns + 0.5) * side, m_box.bottom + (row + 0.5) * side,
            side / 2, all, false);
    }
    for (int cells = 0; cells < cellLimit && !m_queue.empty(); cells += 4) {
        const Cell cell = m_queue.top();
        m_queue.pop();
        if (cell.bound <= goal()) {
            return;
        }
        const EdgeList &near = narrowed(cell);
        const double quarter = cell.half / 2;
        const bool knownInside = cell.clearance > diagonal * cell.half;
        addCell(cell.x - quarter, cell.y - quarter, quarter, near, knownInside);
        addCell(cell.x + quarter, cell.y - quarter, quarter, near, knownInside);
        addCell(cell.x - quarter, cell.y + quarter, quarter, near, knownInside);
        addCell(cell.x + quarter, cell.y + quarter, quarter, near, knownInside);
    }
}

void PlaceSearch::scanEverywhere()
{
    std::vector<double> heights;
    for (const Edge &edge : m_edges) {
        heights.push_back(edge.y);
    }
    std::sort(heights.begin(), heights.end());
    heights.erase(std::unique(heights.begin(), heights.end()), heights.end());
    const std::size_t most = std::max<std::size_t>(workLimit / m_edges.size(), 1);
    const std::size_t step = heights.size() / most + 1;
    for (std::size_t i = 1; i < heights.size() && !m_found; i += step) {
        // Not the middle, where the two sides of a bow cross.
        scanAcross(heights[i - 1] + 0.618 * (heights[i] - heights[i - 1]));
    }
}

} // namespace

GeoPoint2D interiorPlace(const std::vector<GeoPoint2D> &outline)
{
    if (outline.empty()) {
        return {};
    }
    const Edges edges = edgesOf(outline);
    const Box box = boxOf(outline);
    const Place centroid = centroidOf(edges, box);
    const double atCentroid = signedDistance(edges, centroid.x, centroid.y);
    PlaceSearch search(edges, box, atCentroid / centroidShare);
    search.scan();
    search.subdivide();
    if (!search.found() && atCentroid > 0) {
        return {centroid.x, centroid.y};
    }
    if (!search.found()) {
        search.scanEverywhere();
    }
    const Place place = search.found() ? search.place() : meanOf(outline);
    return {place.x, place.y};
}

double clearance(const std::vector<GeoPoint2D> &outline, const GeoPoint2D &point)
{
    return signedDistance(edgesOf(outline), point.x, point.y);
}

} // namespace KivSystem
