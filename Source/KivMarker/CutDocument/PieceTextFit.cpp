#include "CutDocument/PieceTextFit.h"

#include "CutDocument/InteriorPlace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace KivSystem {
namespace {

constexpr double cmPerPoint = 0.03528 * 1.2; // of a letter's cell, with the room between lines
constexpr double smallestSize = 6;
constexpr double sizeLimit = 1e5; // keeps the tries few on an outline of absurd extent
// In letter heights. With this margin the boxes of neighbouring lines touch, so that no spike of
// the outline slips between two lines.
constexpr double lineDistance = 1.4;
constexpr double margin = 0.2;

// An edge as seen from the centre, along the text and upright to it.
struct Edge
{
    double middleX;
    double middleY;
    double halfX;
    double halfY;
};

// A line's letters with their margin, centred on x = 0.
struct LineBox
{
    double middleY;
    double halfWidth;
    double halfHeight;
};

// All in letter heights about the centre of the text.
struct Block
{
    std::vector<LineBox> boxes;
    double halfWidth = 0;
    double halfHeight = 0;
};

double advance(QChar character)
{
    return character.unicode() <= 0xFF ? 0.5 : 1.0;
}

double widthOf(const QString &line)
{
    double width = 0;
    for (const QChar character : line) {
        width += advance(character);
    }
    return width;
}

// How far above the centre the middle of a line is.
double middleOf(std::size_t line, std::size_t count)
{
    return (static_cast<double>(count - 1) / 2 - static_cast<double>(line)) * lineDistance;
}

Block blockOf(const std::vector<double> &widths, std::size_t count)
{
    Block block;
    for (std::size_t i = 0; i < count; ++i) {
        const LineBox box{middleOf(i, count), widths[i] / 2 + margin, 0.5 + margin};
        block.halfWidth = std::max(block.halfWidth, box.halfWidth);
        block.halfHeight = std::max(block.halfHeight, box.middleY + box.halfHeight);
        block.boxes.push_back(box);
    }
    return block;
}

bool touches(const Edge &edge, double middleY, double halfWidth, double halfHeight)
{
    const double x = edge.middleX;
    const double y = edge.middleY - middleY;
    const double reachX = std::abs(edge.halfX);
    const double reachY = std::abs(edge.halfY);
    return std::abs(x) <= halfWidth + reachX && std::abs(y) <= halfHeight + reachY &&
           std::abs(edge.halfX * y - edge.halfY * x) <= halfWidth * reachY + halfHeight * reachX;
}

bool touches(const Edge &edge, const Block &block, double height)
{
    if (!touches(edge, 0, block.halfWidth * height, block.halfHeight * height)) {
        return false;
    }
    return std::any_of(block.boxes.begin(), block.boxes.end(), [&](const LineBox &box) {
        return touches(edge, box.middleY * height, box.halfWidth * height, box.halfHeight * height);
    });
}

// The outline turned back by the text's angle.
class Surroundings
{
public:
    Surroundings(const std::vector<GeoPoint2D> &outline, const GeoPoint2D &centre, bool upright);

    // That a size is free says nothing of a smaller one: a corner of the outline beside a short
    // line, under a long one, can come to lie in the long one when the lines move together.
    bool isFree(const Block &block, double height);

private:
    std::vector<Edge> m_edges;
    std::size_t m_obstacle = 0; // the edge that was in the way last: most often it still is
};

Surroundings::Surroundings(
    const std::vector<GeoPoint2D> &outline, const GeoPoint2D &centre, bool upright)
{
    m_edges.reserve(outline.size());
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const GeoPoint2D &from = outline[i];
        const GeoPoint2D &to = outline[i + 1 < outline.size() ? i + 1 : 0];
        const double x = (from.x + to.x) / 2 - centre.x;
        const double y = (from.y + to.y) / 2 - centre.y;
        const double halfX = (to.x - from.x) / 2;
        const double halfY = (to.y - from.y) / 2;
        m_edges.push_back(upright ? Edge{y, -x, halfY, -halfX} : Edge{x, y, halfX, halfY});
    }
}

bool Surroundings::isFree(const Block &block, double height)
{
    if (touches(m_edges[m_obstacle], block, height)) {
        return false;
    }
    for (std::size_t i = 0; i < m_edges.size(); ++i) {
        if (touches(m_edges[i], block, height)) {
            m_obstacle = i;
            return false;
        }
    }
    return true;
}

// No letter is higher than the outline is long, so larger sizes need no try.
double firstSize(const std::vector<GeoPoint2D> &outline, double largestSize)
{
    const auto xs = std::minmax_element(outline.begin(), outline.end(),
        [](const GeoPoint2D &a, const GeoPoint2D &b) { return a.x < b.x; });
    const auto ys = std::minmax_element(outline.begin(), outline.end(),
        [](const GeoPoint2D &a, const GeoPoint2D &b) { return a.y < b.y; });
    const double extent = std::max(xs.second->x - xs.first->x, ys.second->y - ys.first->y);
    const double useful = std::max(std::ceil(extent / cmPerPoint), smallestSize);
    return std::min({largestSize, useful, sizeLimit});
}

FittedText placed(const QStringList &lines, const std::vector<double> &widths, std::size_t count,
    const GeoPoint2D &centre, double size, bool upright)
{
    const double height = size * cmPerPoint;
    FittedText text{size, upright ? 90.0 : 0.0, {}};
    for (std::size_t i = 0; i < count; ++i) {
        const QString &line = lines[static_cast<int>(i)];
        const double along = (advance(line.at(0)) - widths[i]) / 2 * height;
        const double up = middleOf(i, count) * height;
        text.lines.push_back(
            {line, centre.x + (upright ? -up : along), centre.y + (upright ? along : up)});
    }
    return text;
}

} // namespace

std::optional<FittedText> fitText(const std::vector<GeoPoint2D> &outline, const GeoPoint2D &centre,
    const QStringList &lines, double largestSize)
{
    QStringList written;
    std::vector<double> widths;
    for (const QString &line : lines) {
        if (!line.trimmed().isEmpty()) {
            written.append(line);
            widths.push_back(widthOf(line));
        }
    }
    if (widths.empty() || !(largestSize > 0) || !(clearance(outline, centre) > 0)) {
        return std::nullopt;
    }
    const double start = firstSize(outline, largestSize);
    const double end = std::min(start, smallestSize);
    Surroundings level(outline, centre, false);
    Surroundings upright(outline, centre, true);
    for (std::size_t count = widths.size(); count > 0; --count) {
        const Block block = blockOf(widths, count);
        for (double size = start; size >= end; size = std::ceil(size) - 1) {
            const double height = size * cmPerPoint;
            if (level.isFree(block, height)) {
                return placed(written, widths, count, centre, size, false);
            }
            if (upright.isFree(block, height)) {
                return placed(written, widths, count, centre, size, true);
            }
        }
    }
    return std::nullopt;
}

} // namespace KivSystem
