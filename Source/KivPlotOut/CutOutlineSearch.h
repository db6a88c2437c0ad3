// CutOutlineSearch: where on an outline a notch begins.

#ifndef KIVPLOTOUT_CUTOUTLINESEARCH_H
#define KIVPLOTOUT_CUTOUTLINESEARCH_H

#include "KivGeo/Point2D.h"

#include <boost/optional/optional.hpp>

#include <cstddef>
#include <vector>

namespace KivSystem {
namespace NC {

/// Searches the points of one outline, in cm. They are borrowed and must not change meanwhile.
class CutOutlineSearch
{
public:
    /// Two places that are no further apart are the same, and so are two lengths.
    static constexpr double kTolerance = 1e-12;

    explicit CutOutlineSearch(const std::vector<GeoPoint2D> &points) : m_points(points) {}

    /// The last point, `from` or a later one, that lies on `place`.
    boost::optional<std::size_t> vertexAt(const GeoPoint2D &place, std::size_t from);

    /// The end point of the first segment that `place` lies on; the search begins with the segment
    /// that starts at `from`.
    boost::optional<std::size_t> segmentThrough(const GeoPoint2D &place, std::size_t from) const;

private:
    static constexpr int kNone = -1;

    void makeIndex();
    std::size_t bucketOf(double key) const;
    boost::optional<std::size_t> vertexInIndex(const GeoPoint2D &place, std::size_t from) const;

    const std::vector<GeoPoint2D> &m_points;
    std::size_t m_compared = 0; // points that searches have looked at

    // Points by their place on a line, in as many buckets as there are points; made when it pays.
    double m_start = 0;
    double m_bucketsOfOne = 0;   // buckets to a unit of the line
    std::vector<int> m_last;     // of each bucket: its last point
    std::vector<int> m_previous; // of each point: the one before it in its bucket
};

} // namespace NC
} // namespace KivSystem

#endif
