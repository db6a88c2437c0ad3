#include "PieceName.h"

#include "KivMarker/Polygon.h"
#include "KivMarker/Text.h"

#include <QLineF>

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace KivSystem {

namespace {

constexpr double kLetterShare = 0.16; // of a piece's narrow extent, a letter's height
constexpr double kLeastLetter = 1.2;  // cm
constexpr double kMostLetter = 8;     // cm
constexpr double kTall = 1.3;         // a piece as much higher than long has its name upright
constexpr double kShareOfRoom = 0.8;  // of a piece's extent that its name may take
constexpr int kSteps = 10;            // of a piece's extent, from place to place that is tried

// Without regard to anything that lies on the piece.
SceneText usualName(const QStringList &lines, const CDbPolygon &polygon)
{
    const GeoRectangle &rect = polygon.polygonRect;
    const double narrow = std::min(rect.width(), rect.height());
    CDbMarkerPointObject centre;
    CDbTextObject::computationTextCenter(&centre, polygon.findContour(CutContour), rect);
    SceneText name;
    name.lines = lines;
    name.place = {static_cast<double>(centre.notchDx), static_cast<double>(centre.notchDy)};
    name.height = std::min(kMostLetter, std::max(kLeastLetter, kLetterShare * narrow));
    name.angle = rect.height() > kTall * rect.width() ? 90 : 0;
    name.room = kShareOfRoom * std::max(rect.width(), rect.height());
    name.across = kShareOfRoom * narrow;
    if (name.angle == 0) {
        name.room = kShareOfRoom * rect.width() * centre.pointType / 100; // free at that place
    }
    return name;
}

bool isFree(const QRectF &rect, const std::vector<QRectF> &taken)
{
    return std::none_of(
        taken.begin(), taken.end(), [&](const QRectF &other) { return other.intersects(rect); });
}

// No edge of the outline comes into the rectangle, whose middle is inside.
bool isInside(const QRectF &rect, const QPolygonF &outline)
{
    if (!outline.containsPoint(rect.center(), Qt::OddEvenFill)) {
        return false;
    }
    const QLineF sides[] = {{rect.topLeft(), rect.topRight()},
        {rect.topRight(), rect.bottomRight()}, {rect.bottomRight(), rect.bottomLeft()},
        {rect.bottomLeft(), rect.topLeft()}};
    for (int i = 0; i < outline.size(); ++i) {
        const QLineF edge(outline[i], outline[(i + 1) % outline.size()]);
        if (rect.contains(edge.p1())) {
            return false;
        }
        for (const QLineF &side : sides) {
            if (edge.intersects(side, nullptr) == QLineF::BoundedIntersection) {
                return false;
            }
        }
    }
    return true;
}

// The nearest first.
std::vector<QPointF> placesAround(const QPointF &centre, const QRectF &rect)
{
    std::vector<QPointF> places;
    for (int i = 1; i < kSteps; ++i) {
        for (int j = 1; j < kSteps; ++j) {
            places.emplace_back(
                rect.left() + rect.width() * i / kSteps, rect.top() + rect.height() * j / kSteps);
        }
    }
    std::stable_sort(places.begin(), places.end(), [&](const QPointF &left, const QPointF &right) {
        return QLineF(centre, left).length() < QLineF(centre, right).length();
    });
    return places;
}

// Whether the name found a place that is free.
bool findPlace(SceneText &name, const QPolygonF &outline, const std::vector<QRectF> &taken,
    std::initializer_list<double> shares)
{
    const QRectF usual = extentOf(name);
    const std::vector<QPointF> places = placesAround(usual.center(), outline.boundingRect());
    for (const double share : shares) {
        QRectF rect(QPointF(), usual.size() * share);
        for (const QPointF &place : places) {
            rect.moveCenter(place);
            if (isFree(rect, taken) && isInside(rect, outline)) {
                name.place = place;
                name.room = name.angle == 0 ? rect.width() : rect.height();
                name.across = name.angle == 0 ? rect.height() : rect.width();
                return true;
            }
        }
    }
    return false;
}

std::vector<QRectF> drillsOf(const PieceOutline &outline)
{
    std::vector<QRectF> drills;
    for (const QPolygonF &line : outline.drills.toSubpathPolygons()) {
        constexpr double air = 0.1; // a straight line has no area
        drills.push_back(line.boundingRect().adjusted(-air, -air, air, air));
    }
    return drills;
}

} // namespace

SceneText pieceName(const QStringList &lines, const CDbPolygon &polygon,
    const PieceOutline &outline, const std::vector<QRectF> &texts)
{
    SceneText name = usualName(lines, polygon);
    const QRectF usual = extentOf(name);
    const QRectF extent = outline.contour.boundingRect();
    std::vector<QRectF> taken;
    std::copy_if(texts.begin(), texts.end(), std::back_inserter(taken),
        [&](const QRectF &text) { return text.intersects(extent); });
    const std::vector<QRectF> drills = drillsOf(outline);
    if (isFree(usual, taken) && isFree(usual, drills)) {
        return name;
    }
    std::vector<QRectF> all = taken;
    all.insert(all.end(), drills.begin(), drills.end());
    if (!findPlace(name, outline.coarse, all, {1, 0.8, 0.6}) && !isFree(usual, taken)) {
        findPlace(name, outline.coarse, taken, {1, 0.8, 0.6, 0.4});
    }
    return name;
}

} // namespace KivSystem
