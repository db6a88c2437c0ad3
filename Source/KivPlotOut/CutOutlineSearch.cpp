#include "CutOutlineSearch.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace KivSystem {
namespace NC {
namespace {

// An outline with many notches gets an index once its points have been looked at so many times:
// about what the index costs.
constexpr std::size_t kPassesBeforeIndex = 8;

bool isSamePlace(const GeoPoint2D &left, const GeoPoint2D &right)
{
    return std::abs(left.x - right.x) <= CutOutlineSearch::kTolerance &&
           std::abs(left.y - right.y) <= CutOutlineSearch::kTolerance;
}

// Where a place lies along a line that runs askew: many points of an outline share an x or a y.
double key(const GeoPoint2D &place)
{
    constexpr double ofX = 0.5;
    constexpr double ofY = 0.30901699437494745;
    return place.x * ofX + place.y * ofY;
}

// More than the keys of two equal places can differ, rounding included.
double keyTolerance(const GeoPoint2D &place)
{
    return 4 * CutOutlineSearch::kTolerance +
           8 * std::numeric_limits<double>::epsilon() * (std::abs(place.x) + std::abs(place.y));
}

double distance(const GeoPoint2D &left, const GeoPoint2D &right)
{
    return std::hypot(left.x - right.x, left.y - right.y);
}

// Whether `place` is so far outside the segment's box that it cannot lie on the segment: the ways
// to its ends are then longer together than the segment by far more than the tolerance.
bool isFarFrom(const GeoPoint2D &place, const GeoPoint2D &start, const GeoPoint2D &end)
{
    constexpr double share = 1e-3;
    const double width = std::abs(end.x - start.x);
    const double height = std::abs(end.y - start.y);
    const double margin = share * (1 + width + height);
    return place.x < std::min(start.x, end.x) - margin ||
           place.x > std::max(start.x, end.x) + margin ||
           place.y < std::min(start.y, end.y) - margin ||
           place.y > std::max(start.y, end.y) + margin;
}

bool liesOn(const GeoPoint2D &place, const GeoPoint2D &start, const GeoPoint2D &end)
{
    return !isFarFrom(place, start, end) &&
           std::abs(distance(start, end) - distance(place, end) - distance(place, start)) <=
               CutOutlineSearch::kTolerance;
}

} // namespace

boost::optional<std::size_t> CutOutlineSearch::vertexAt(const GeoPoint2D &place, std::size_t from)
{
    if (m_last.empty() && m_compared > kPassesBeforeIndex * m_points.size()) {
        makeIndex();
    }
    if (!m_last.empty()) {
        return vertexInIndex(place, from);
    }
    std::size_t index = m_points.size();
    while (index > from) {
        --index;
        ++m_compared;
        if (isSamePlace(m_points[index], place)) {
            return index;
        }
    }
    return {};
}

boost::optional<std::size_t> CutOutlineSearch::segmentThrough(
    const GeoPoint2D &place, std::size_t from) const
{
    for (std::size_t end = from + 1; end < m_points.size(); ++end) {
        if (liesOn(place, m_points[end - 1], m_points[end])) {
            return end;
        }
    }
    return {};
}

void CutOutlineSearch::makeIndex()
{
    m_start = std::numeric_limits<double>::infinity();
    double end = -m_start;
    for (const GeoPoint2D &point : m_points) {
        const double value = key(point);
        if (std::isfinite(value)) {
            m_start = std::min(m_start, value);
            end = std::max(end, value);
        }
    }
    const double width = end - m_start;
    const auto count = static_cast<double>(m_points.size());
    m_bucketsOfOne = width > 0 && std::isfinite(count / width) ? count / width : 0;

    m_last.assign(m_points.size(), kNone);
    m_previous.assign(m_points.size(), kNone);
    for (std::size_t index = 0; index < m_points.size(); ++index) {
        const double value = key(m_points[index]);
        if (std::isfinite(value)) { // no place is the same as one that is not
            int &last = m_last[bucketOf(value)];
            m_previous[index] = last;
            last = static_cast<int>(index);
        }
    }
}

// Never a later bucket for a smaller key.
std::size_t CutOutlineSearch::bucketOf(double key) const
{
    const double bucket = m_bucketsOfOne == 0 ? 0 : (key - m_start) * m_bucketsOfOne;
    const auto last = static_cast<double>(m_last.size() - 1);
    return static_cast<std::size_t>(std::min(std::max(bucket, 0.0), last));
}

boost::optional<std::size_t> CutOutlineSearch::vertexInIndex(
    const GeoPoint2D &place, std::size_t from) const
{
    const double value = key(place);
    if (!std::isfinite(value)) {
        return {};
    }
    int last = kNone;
    const std::size_t end = bucketOf(value + keyTolerance(place));
    for (std::size_t bucket = bucketOf(value - keyTolerance(place)); bucket <= end; ++bucket) {
        int index = m_last[bucket];
        while (index > last && static_cast<std::size_t>(index) >= from &&
               !isSamePlace(m_points[static_cast<std::size_t>(index)], place)) {
            index = m_previous[static_cast<std::size_t>(index)];
        }
        if (index > last && static_cast<std::size_t>(index) >= from) {
            last = index;
        }
    }
    return last == kNone ? boost::none : boost::make_optional(static_cast<std::size_t>(last));
}

} // namespace NC
} // namespace KivSystem
