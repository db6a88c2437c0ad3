#include "CutDocument/CutWaste.h"

#include "KivMarker/CutSettings.h"

#include <algorithm>

namespace KivSystem {
namespace {

// What the pieces leave free at one place along the length.
struct FreeEdges
{
    double lowest;  // of any piece there; the upper edge of the cloth without one
    double highest; // of any piece there; the lower edge without one
};

// The cuts at the edges of one layer.
class EdgeCuts
{
public:
    EdgeCuts(const GeoRectangle &cloth, const CutSettings &settings)
        : m_cloth(cloth)
        , m_spacing(settings.cutFabricEdgeSpacing)
        , m_length(settings.cutFabricEdgeLength)
    {
        constexpr double rounding = 1e-9; // none at the end itself
        const double count = std::ceil(cloth.width() / m_spacing - rounding) - 1;
        m_free.assign(
            static_cast<std::size_t>(std::max(count, 0.0)), FreeEdges{cloth.top(), cloth.bottom()});
    }

    void keepClearOf(const CutObject &object)
    {
        for (const CutOutline &outline : object.outlines) {
            const auto &points = outline.points;
            for (std::size_t i = 0; i < points.size(); ++i) {
                keepClearOf(points[i].place(), points[(i + 1) % points.size()].place());
            }
            for (const CutPath &notch : outline.notches) {
                keepClearOf(notch);
            }
        }
        for (const CutPath &line : object.internals) {
            keepClearOf(line);
        }
    }

    // Along the upper edge against the length, then back along the lower one.
    std::vector<WasteCut> cuts() const
    {
        std::vector<WasteCut> result;
        for (std::size_t i = m_free.size(); i-- > 0;) {
            addUpperCut(result, placeOf(i), m_free[i]);
        }
        for (std::size_t i = 0; i < m_free.size(); ++i) {
            addLowerCut(result, placeOf(i), m_free[i]);
        }
        return result;
    }

private:
    double placeOf(std::size_t index) const
    {
        return m_cloth.left() + static_cast<double>(index + 1) * m_spacing;
    }

    void keepClearOf(const CutPath &path)
    {
        for (std::size_t i = 0; i + 1 < path.size(); ++i) {
            keepClearOf(path[i], path[i + 1]);
        }
    }

    void keepClearOf(GeoPoint2D from, GeoPoint2D to)
    {
        if (from.x > to.x) {
            std::swap(from, to);
        }
        const double last = static_cast<double>(m_free.size());
        const auto place = [&](double x) { return (x - m_cloth.left()) / m_spacing; };
        const double first = std::max(std::ceil(place(from.x - kWasteClearance)), 1.0);
        for (double i = first; i <= std::min(std::floor(place(to.x + kWasteClearance)), last);
             ++i) {
            // The part of the edge that lies as near as that to the cut.
            const double x = m_cloth.left() + i * m_spacing;
            const double a = heightAt(from, to, std::max(from.x, x - kWasteClearance));
            const double b = heightAt(from, to, std::min(to.x, x + kWasteClearance));
            FreeEdges &edges = m_free[static_cast<std::size_t>(i) - 1];
            edges.lowest = std::min({edges.lowest, a, b});
            edges.highest = std::max({edges.highest, a, b});
            if (from.x == to.x) {
                edges.lowest = std::min(edges.lowest, std::min(from.y, to.y));
                edges.highest = std::max(edges.highest, std::max(from.y, to.y));
            }
        }
    }

    static double heightAt(const GeoPoint2D &from, const GeoPoint2D &to, double x)
    {
        return from.x == to.x ? from.y : from.y + (x - from.x) / (to.x - from.x) * (to.y - from.y);
    }

    // Both cuts would meet: one goes right across.
    bool isAcross(const FreeEdges &edges) const
    {
        return edges.lowest > edges.highest && 2 * m_length >= m_cloth.height();
    }

    static double clearance(const FreeEdges &edges)
    {
        return edges.lowest > edges.highest ? 0 : kWasteClearance;
    }

    void addUpperCut(std::vector<WasteCut> &result, double x, const FreeEdges &edges) const
    {
        const double free = m_cloth.top() - edges.highest - clearance(edges);
        const double size = std::min(m_length, free);
        if (!isAcross(edges) && size >= kWasteClearance) {
            result.push_back({x, {x, m_cloth.top()}, {x, m_cloth.top() - size}, true});
        }
    }

    void addLowerCut(std::vector<WasteCut> &result, double x, const FreeEdges &edges) const
    {
        const double free = edges.lowest - clearance(edges) - m_cloth.bottom();
        const double size = std::min(m_length, free);
        if (isAcross(edges)) {
            result.push_back({x, {x, m_cloth.bottom()}, {x, m_cloth.top()}, false});
        } else if (size >= kWasteClearance) {
            result.push_back({x, {x, m_cloth.bottom()}, {x, m_cloth.bottom() + size}, true});
        }
    }

    GeoRectangle m_cloth;
    double m_spacing;
    double m_length;
    std::vector<FreeEdges> m_free;
};

} // namespace

std::vector<WasteCut> wasteCuts(const std::vector<GeoRectangle> &cloths,
    const std::vector<const CutObject *> &objects, const CutSettings &settings,
    QStringList &messages)
{
    double count = 0;
    for (const GeoRectangle &cloth : cloths) {
        count += 2 * cloth.width() / settings.cutFabricEdgeSpacing;
    }
    if (!(count <= kMostWasteCuts)) {
        messages.append(QStringLiteral("a spacing of %1 cm makes more than %2 cuts at the edge of "
                                       "the fabric; they are left out")
                            .arg(settings.cutFabricEdgeSpacing)
                            .arg(kMostWasteCuts, 0, 'f', 0));
        return {};
    }
    std::vector<WasteCut> result;
    for (const GeoRectangle &cloth : cloths) {
        EdgeCuts cuts(cloth, settings);
        for (const CutObject *object : objects) {
            cuts.keepClearOf(*object);
        }
        const std::vector<WasteCut> found = cuts.cuts();
        result.insert(result.end(), found.begin(), found.end());
    }
    if (!cloths.empty()) {
        const GeoRectangle &last = cloths.back();
        double end = last.right();
        for (const CutObject *object : objects) {
            end = std::max(end, object->reach(CutSettings()).right()); // a notch may stick out
        }
        result.push_back({end, {end, last.bottom()}, {end, last.top()}, false});
    }
    return result;
}

} // namespace KivSystem
