#include "CutDocument/CutPlan.h"

#include "KivMarker/CutSettings.h"
#include "KivMarker/Polygon.h"

#include <algorithm>

namespace KivSystem {
namespace {

class Extent
{
public:
    void add(double x, double y)
    {
        m_rect = m_any ? GeoRectangle(std::min(m_rect.left(), x), std::max(m_rect.right(), x),
                             std::min(m_rect.bottom(), y), std::max(m_rect.top(), y))
                       : GeoRectangle(x, x, y, y);
        m_any = true;
    }
    void add(const CutPath &path)
    {
        for (const GeoPoint2D &point : path) {
            add(point.x, point.y);
        }
    }
    const GeoRectangle &rect() const { return m_rect; }

private:
    GeoRectangle m_rect;
    bool m_any = false;
};

} // namespace

std::vector<GeoPoint2D> placesOf(const CutOutline &outline)
{
    std::vector<GeoPoint2D> places;
    places.reserve(outline.points.size());
    for (const CutPoint &point : outline.points) {
        places.push_back(point.place());
    }
    return places;
}

std::vector<GeoPoint2D> LaidPiece::contour() const
{
    const CDbVectorsObjectTable &points = *polygon->currentContour();
    std::vector<GeoPoint2D> places;
    places.reserve(static_cast<std::size_t>(points.size()));
    for (const CDbMarkerPointObject &point : points) {
        places.emplace_back(point.x + offset, point.y);
    }
    return places;
}

GeoRectangle LaidPiece::rect() const
{
    return polygon->polygonRect.translated(offset, 0);
}

GeoRectangle CutObject::reach(const CutSettings &settings) const
{
    Extent extent;
    for (const CutOutline &outline : outlines) {
        for (const CutPoint &point : outline.points) {
            extent.add(point.x, point.y);
        }
        if (settings.cutOrderCrans != NotchNone) {
            for (const CutPath &notch : outline.notches) {
                extent.add(notch);
            }
        }
    }
    if (settings.cutInternalOrder != CutLineNone) {
        for (const CutPath &line : internals) {
            extent.add(line);
        }
    }
    for (const CutDrill &drill : drills) {
        extent.add(drill.place.x, drill.place.y);
    }
    return extent.rect();
}

} // namespace KivSystem
