#include "CutDocument/CutNotches.h"

#include "KivMarker/Point.h"

#include <algorithm>

namespace KivSystem {
namespace {

// Of a notch whose vector has no length, in a marker that tells no other.
constexpr double kFallbackLength = 0.5; // cm

// A place that lies closer to a vertex than this is that vertex.
constexpr double kSamePlace = 1e-7; // cm

// A place on the outline: on the edge that starts at a vertex, so far from it.
struct EdgePlace
{
    std::size_t vertex;
    double along;

    bool operator<(const EdgePlace &other) const
    {
        return vertex != other.vertex ? vertex < other.vertex : along < other.along;
    }
};

// What happens at a place: a notch starts there, or, without a path, one ends.
struct NotchPlace
{
    EdgePlace place;
    CutPath path; // from its second point on
};

struct Vector
{
    double x;
    double y;
};

class NotchMaker
{
public:
    NotchMaker(const CDbVectorsObjectTable &contour, double offset, double length);
    CutOutline outline();
    int shortened() const { return m_shortened; }

private:
    const CutPoint &at(std::size_t index) const { return m_points[index % m_points.size()]; }
    double edgeLength(std::size_t index) const
    {
        return distance(at(index).place(), at(index + 1).place());
    }
    GeoPoint2D placeOf(const EdgePlace &place) const;
    EdgePlace walked(std::size_t vertex, double way) const;
    Vector inward(std::size_t vertex) const;
    double depthAt(std::size_t vertex, const Vector &direction, double length) const;
    void addNotch(std::size_t vertex, const CDbMarkerPointObject &mark);
    std::vector<CutPoint> m_points;
    double m_length;
    double m_perimeter = 0;
    std::vector<NotchPlace> m_notches;
    int m_shortened = 0;
};

bool isNotch(int type)
{
    return type == SimpleNotch || type == DoubleNotch || type == VNotch || type == UserNotch;
}

NotchMaker::NotchMaker(const CDbVectorsObjectTable &contour, double offset, double length)
    : m_length(length)
{
    std::vector<std::pair<std::size_t, const CDbMarkerPointObject *>> marks;
    for (const CDbMarkerPointObject &point : contour) {
        CutPoint laid;
        laid.x = point.x + offset;
        laid.y = point.y;
        if (m_points.empty() || laid.x != m_points.back().x || laid.y != m_points.back().y) {
            m_points.push_back(laid);
        }
        if (point.pointType == Punch || point.pointType == UserPunch || point.matchPoint) {
            m_points.back().keep = true;
        }
        if (isNotch(point.pointType)) {
            marks.emplace_back(m_points.size() - 1, &point);
        }
    }
    while (m_points.size() > 1 && m_points.back().x == m_points.front().x &&
           m_points.back().y == m_points.front().y) {
        m_points.pop_back();
    }
    for (std::size_t i = 0; i < m_points.size(); ++i) {
        m_perimeter += edgeLength(i);
    }
    if (m_length != 0) {
        for (const auto &[vertex, mark] : marks) {
            addNotch(vertex % m_points.size(), *mark);
        }
    }
}

GeoPoint2D NotchMaker::placeOf(const EdgePlace &place) const
{
    const CutPoint &from = at(place.vertex);
    if (place.along == 0) {
        return from.place();
    }
    const CutPoint &to = at(place.vertex + 1);
    const double share = place.along / edgeLength(place.vertex);
    return {from.x + share * (to.x - from.x), from.y + share * (to.y - from.y)};
}

// Goes along the outline from a vertex: forward, or back with a negative way.
EdgePlace NotchMaker::walked(std::size_t vertex, double way) const
{
    const std::size_t count = m_points.size();
    double rest = std::min(std::abs(way), m_perimeter / 4); // a tiny piece keeps two sides
    if (way >= 0) {
        while (rest >= edgeLength(vertex)) {
            rest -= edgeLength(vertex);
            vertex = (vertex + 1) % count;
        }
    } else {
        do {
            vertex = (vertex + count - 1) % count;
            rest -= edgeLength(vertex);
        } while (rest > 0);
        rest = -rest;
    }
    if (rest < kSamePlace) {
        return {vertex, 0};
    }
    if (edgeLength(vertex) - rest < kSamePlace) {
        return {(vertex + 1) % count, 0};
    }
    return {vertex, rest};
}

// Into the piece, square to the outline: for a notch whose vector says nothing.
Vector NotchMaker::inward(std::size_t vertex) const
{
    const std::size_t count = m_points.size();
    double area = 0;
    for (std::size_t i = 0; i < count; ++i) {
        area += (at(i).x - at(0).x) * (at(i + 1).y - at(0).y) -
                (at(i + 1).x - at(0).x) * (at(i).y - at(0).y);
    }
    const CutPoint &before = at(vertex + count - 1);
    const CutPoint &behind = at(vertex + 1);
    const double side = area >= 0 ? 1 : -1;
    const Vector normal{-side * (behind.y - before.y), side * (behind.x - before.x)};
    const double size = std::hypot(normal.x, normal.y);
    return size > 0 ? Vector{normal.x / size, normal.y / size} : Vector{0, 1};
}

// The length, or half of the way to the edge at which a notch of that length would leave the piece.
double NotchMaker::depthAt(std::size_t vertex, const Vector &direction, double length) const
{
    const GeoPoint2D base = at(vertex).place();
    double way = 2 * length;
    for (std::size_t i = 0; i < m_points.size(); ++i) {
        const GeoPoint2D from = at(i).place();
        const GeoPoint2D to = at(i + 1).place();
        // Sides of the notch's line on which the ends of the edge lie.
        const double a = direction.x * (from.y - base.y) - direction.y * (from.x - base.x);
        const double b = direction.x * (to.y - base.y) - direction.y * (to.x - base.x);
        if ((a > 0) == (b > 0)) {
            continue;
        }
        const double share = a / (a - b);
        const double along = direction.x * (from.x + share * (to.x - from.x) - base.x) +
                             direction.y * (from.y + share * (to.y - from.y) - base.y);
        if (along > kSamePlace) {
            way = std::min(way, along);
        }
    }
    return std::min(length, way / 2);
}

void NotchMaker::addNotch(std::size_t vertex, const CDbMarkerPointObject &mark)
{
    const Vector own{static_cast<double>(mark.notchDx), static_cast<double>(mark.notchDy)};
    const double ownLength = std::hypot(own.x, own.y);
    const Vector unit =
        ownLength > 0 ? Vector{own.x / ownLength, own.y / ownLength} : inward(vertex);
    const double wanted = m_length > 0 ? m_length : ownLength > 0 ? ownLength : kFallbackLength;
    const double length = depthAt(vertex, unit, wanted);
    m_shortened += length < wanted ? 1 : 0;
    const auto tipFrom = [&](const GeoPoint2D &base) {
        return GeoPoint2D(base.x + length * unit.x, base.y + length * unit.y);
    };
    const GeoPoint2D base = at(vertex).place();
    const GeoPoint2D tip = tipFrom(base);
    const EdgePlace before = walked(vertex, -length / 2);
    const EdgePlace behind = walked(vertex, length / 2);

    m_notches.push_back({{vertex, 0}, {}});
    if (mark.pointType == DoubleNotch) {
        m_notches.push_back({before, {tipFrom(placeOf(before))}});
        m_notches.push_back({behind, {tipFrom(placeOf(behind))}});
    } else if (mark.pointType == VNotch) {
        m_notches.push_back({before, {tip, placeOf(behind)}});
        m_notches.push_back({behind, {}});
    } else if (mark.pointType == UserNotch && mark.notchWidth != 0.0F) {
        const double half = static_cast<double>(mark.notchWidth) / 2;
        m_notches.push_back({{vertex, 0}, {tip, {tip.x + half * unit.y, tip.y - half * unit.x}, //
                                              {tip.x - half * unit.y, tip.y + half * unit.x}}});
    } else {
        m_notches.push_back({{vertex, 0}, {tip}});
    }
}

// A place has one path: a second notch goes on from there, with the tool back at the place.
void startNotch(CutOutline &outline, const CutPath &path)
{
    CutPoint &point = outline.points.back();
    if (point.notch < 0) {
        point.notch = static_cast<int>(outline.notches.size());
        outline.notches.emplace_back();
    }
    CutPath &whole = outline.notches[static_cast<std::size_t>(point.notch)];
    whole.push_back(point.place());
    whole.insert(whole.end(), path.begin(), path.end());
}

CutOutline NotchMaker::outline()
{
    std::stable_sort(m_notches.begin(), m_notches.end(),
        [](const NotchPlace &a, const NotchPlace &b) { return a.place < b.place; });

    CutOutline result;
    auto notch = m_notches.begin();
    for (std::size_t vertex = 0; vertex < m_points.size(); ++vertex) {
        result.points.push_back(m_points[vertex]);
        for (; notch != m_notches.end() && notch->place.vertex == vertex; ++notch) {
            const GeoPoint2D spot = placeOf(notch->place);
            if (distance(result.points.back().place(), spot) >= kSamePlace) {
                CutPoint point;
                point.x = spot.x;
                point.y = spot.y;
                result.points.push_back(point);
            }
            result.points.back().keep = true;
            if (!notch->path.empty()) {
                startNotch(result, notch->path);
            }
        }
    }
    return result;
}

} // namespace

CutOutline notchedOutline(
    const CDbVectorsObjectTable &contour, double offset, double length, int *shortened)
{
    NotchMaker maker(contour, offset, length);
    if (shortened != nullptr) {
        *shortened = maker.shortened();
    }
    return maker.outline();
}

} // namespace KivSystem
