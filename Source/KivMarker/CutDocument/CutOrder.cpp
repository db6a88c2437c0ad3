#include "CutDocument/CutOrder.h"

#include "CutDocument/CutRequest.h"
#include "CutDocument/CutRoute.h"

#include <algorithm>
#include <map>

namespace KivSystem {
namespace {

// The tool on its way through one object.
class ToolWay
{
public:
    void stroke(const GeoPoint2D &from, const GeoPoint2D &to)
    {
        if (m_started) {
            m_stop.inner += distance(m_stop.exit, from);
        } else {
            m_stop.entry = from;
            m_started = true;
        }
        m_stop.exit = to;
    }
    void stroke(const CutPath &path) { stroke(path.front(), path.back()); }
    const RouteStop &stop() const { return m_stop; }

private:
    RouteStop m_stop;
    bool m_started = false;
};

// The outline's notches when it starts at `start`.
std::vector<int> notchesFrom(const CutOutline &outline, std::size_t start)
{
    std::vector<int> order;
    const std::size_t count = outline.points.size();
    for (std::size_t i = 1; i <= count; ++i) {
        const int notch = outline.points[(start + i) % count].notch;
        if (notch >= 0) {
            order.push_back(notch);
        }
    }
    return order;
}

void cutNotches(ToolWay &way, const CutOutline &outline, std::size_t start)
{
    for (const int notch : notchesFrom(outline, start)) {
        way.stroke(outline.notches[static_cast<std::size_t>(notch)]);
    }
}

void cutOutline(ToolWay &way, const CutOutline &outline, std::size_t start, bool withNotches)
{
    const GeoPoint2D place = outline.points[start].place();
    way.stroke(place, place);
    if (withNotches) {
        // The tool comes down at the start, comes up at each notch's end and goes back to its base.
        for (const int notch : notchesFrom(outline, start)) {
            const CutPath &path = outline.notches[static_cast<std::size_t>(notch)];
            way.stroke(place, path.back());
            way.stroke(path.front(), place);
        }
    }
}

// How the object is cut when its first outline starts at `start` and the others where they do.
RouteStop stopOf(const CutObject &object, std::size_t start, const CutSettings &settings)
{
    ToolWay way;
    const auto eachOutline = [&](const auto &visit) {
        for (std::size_t i = 0; i < object.outlines.size(); ++i) {
            visit(object.outlines[i], i == 0 ? start : 0);
        }
    };
    const auto cutInternals = [&] {
        for (const CutPath &line : object.internals) {
            way.stroke(line);
        }
    };
    const auto notches = [&](const CutOutline &outline, std::size_t at) {
        cutNotches(way, outline, at);
    };
    const auto outlines = [&](const CutOutline &outline, std::size_t at) {
        cutOutline(way, outline, at, settings.cutOrderCrans == NotchDuringOutline);
    };

    for (const CutDrill &drill : object.drills) {
        way.stroke(drill.place, drill.place);
    }
    if (settings.cutInternalOrder == CutLineBeforeOutline) {
        cutInternals();
    }
    if (settings.cutOrderCrans == NotchBeforeOutline) {
        eachOutline(notches);
    }
    eachOutline(outlines);
    if (settings.cutOrderCrans == NotchAfterOutline) {
        eachOutline(notches);
    }
    if (settings.cutInternalOrder == CutLineAfterOutline) {
        cutInternals();
    }
    return way.stop();
}

// Where the first outline may start, as it is stored first.
std::vector<std::size_t> startsOf(const CutObject &object, CuttingOrder order)
{
    std::vector<std::size_t> starts{0};
    if (order != CuttingOrder::Optimised || object.outlines.size() != 1) {
        return starts;
    }
    const auto &points = object.outlines.front().points;
    std::vector<std::size_t> corners;
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (points[i].corner && points[i].notch < 0) {
            corners.push_back(i);
        }
    }
    const std::size_t taken = std::min(corners.size(), kMostStarts);
    for (std::size_t i = 0; i < taken; ++i) {
        starts.push_back(corners[i * corners.size() / taken]);
    }
    return starts;
}

void startAt(CutOutline &outline, std::size_t start)
{
    std::rotate(outline.points.begin(), outline.points.begin() + static_cast<std::ptrdiff_t>(start),
        outline.points.end());
}

// Sorts the parts so that each is the one that begins nearest to where the one before it ends.
template <class Part, class Ends>
void chain(std::vector<Part> &parts, GeoPoint2D from, const Ends &ends)
{
    for (auto part = parts.begin(); part != parts.end(); ++part) {
        const auto nearest = std::min_element(part, parts.end(), [&](const Part &a, const Part &b) {
            return distance(ends(a).first, from) < distance(ends(b).first, from);
        });
        std::rotate(part, nearest, nearest + 1);
        from = ends(*part).second;
    }
}

// Lines may be cut from either end: turns each so that it starts nearest to the end before it.
void chainLines(std::vector<CutPath> &lines, GeoPoint2D from)
{
    const auto near = [&from](const CutPath &line) {
        return std::min(distance(line.front(), from), distance(line.back(), from));
    };
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        const auto nearest = std::min_element(line, lines.end(),
            [&near](const CutPath &a, const CutPath &b) { return near(a) < near(b); });
        std::rotate(line, nearest, nearest + 1);
        if (distance(line->back(), from) < distance(line->front(), from)) {
            std::reverse(line->begin(), line->end());
        }
        from = line->back();
    }
}

void orderParts(CutObject &object, const CutSettings &settings)
{
    if (object.outlines.empty()) {
        return;
    }
    chain(object.outlines, object.outlines.front().points.front().place(),
        [](const CutOutline &outline) {
            const GeoPoint2D start = outline.points.front().place();
            return std::make_pair(start, start);
        });
    GeoPoint2D next = object.outlines.front().points.front().place();
    if (settings.cutInternalOrder == CutLineAfterOutline) {
        chainLines(object.internals, next);
    } else if (!object.internals.empty()) {
        // What comes before the outline is chained from its end, which lies next to the outline.
        chainLines(object.internals, next);
        std::reverse(object.internals.begin(), object.internals.end());
        for (CutPath &line : object.internals) {
            std::reverse(line.begin(), line.end());
        }
        next = object.internals.front().front();
    }
    chain(object.drills, next,
        [](const CutDrill &drill) { return std::make_pair(drill.place, drill.place); });
    std::reverse(object.drills.begin(), object.drills.end());
}

} // namespace

void orderObjects(
    std::vector<CutObject> &objects, const GeoPoint2D &from, const CutRequest &request)
{
    if (request.order == CuttingOrder::Stored) {
        return;
    }
    GeoPoint2D tool = from;
    for (auto begin = objects.begin(); begin != objects.end();) {
        const auto end = std::find_if(
            begin, objects.end(), [begin](const CutObject &o) { return o.frame != begin->frame; });
        std::vector<RouteNode> nodes;
        std::vector<std::vector<std::size_t>> starts;
        for (auto object = begin; object != end; ++object) {
            orderParts(*object, request.settings);
            starts.push_back(startsOf(*object, request.order));
            nodes.emplace_back();
            for (const std::size_t start : starts.back()) {
                nodes.back().push_back(stopOf(*object, start, request.settings));
            }
        }
        std::vector<CutObject> ordered;
        for (const RouteStep &step : shortenedRoute(nodes, tool)) {
            const auto node = static_cast<std::size_t>(step.node);
            const auto stop = static_cast<std::size_t>(step.stop);
            CutObject &object = *(begin + step.node);
            if (!object.outlines.empty()) {
                startAt(object.outlines.front(), starts[node][stop]);
            }
            tool = nodes[node][stop].exit;
            ordered.push_back(std::move(object));
        }
        begin = std::move(ordered.begin(), ordered.end(), begin);
    }
}

void gatherNotches(CutOutline &outline)
{
    // The document names places with a step of its own; nearer ones are one place there.
    constexpr double steps = 1e6; // in a centimetre
    const auto key = [](const CutPoint &point) {
        return std::make_pair(std::llround(point.x * steps), std::llround(point.y * steps));
    };
    const std::size_t count = outline.points.size();
    const auto pointAt = [&](std::size_t i) -> CutPoint & { return outline.points[i % count]; };
    std::map<std::pair<long long, long long>, std::size_t> lastVisits; // of places with notches
    for (const CutPoint &point : outline.points) {
        if (point.notch >= 0) {
            lastVisits[key(point)] = 0;
        }
    }
    for (std::size_t i = 1; i <= count; ++i) {
        const auto visit = lastVisits.find(key(pointAt(i)));
        if (visit != lastVisits.end()) {
            visit->second = i;
        }
    }
    for (std::size_t i = 1; i <= count; ++i) {
        CutPoint &point = pointAt(i);
        CutPoint &last = point.notch >= 0 ? pointAt(lastVisits[key(point)]) : point;
        if (&last == &point) {
            continue;
        }
        CutPath &moved = outline.notches[static_cast<std::size_t>(point.notch)];
        moved.front() = last.place();
        if (last.notch < 0) {
            last.notch = point.notch;
        } else { // one path, which comes back to the place in between
            CutPath &path = outline.notches[static_cast<std::size_t>(last.notch)];
            path.insert(path.end(), moved.begin(), moved.end());
        }
        point.notch = -1;
    }
}

std::vector<int> notchOrder(const CutOutline &outline)
{
    return notchesFrom(outline, 0);
}

} // namespace KivSystem
