#include "PieceOutline.h"

#include "KivMarker/Polygon.h"

#include <cmath>

namespace KivSystem {

namespace {

constexpr double kNotchLength = 0.5; // cm, of a notch without a vector
constexpr double kMarkSize = 0.3;    // cm, half of a mark's width
constexpr double kCoarseStep = 0.8;  // cm between two points of a coarse contour

QPointF pointOf(const GeoPoint2D &point)
{
    return {point.x, point.y};
}

void addLine(QPainterPath &path, const QPointF &from, const QPointF &to)
{
    path.moveTo(from);
    path.lineTo(to);
}

// Square to the contour at a point, into the piece, one centimetre long.
QPointF inward(const CDbVectorsObjectTable &contour, int index, bool counterClockwise)
{
    const int count = contour.size();
    const QPointF before = pointOf(contour[(index + count - 1) % count]);
    const QPointF along = pointOf(contour[(index + 1) % count]) - before;
    const double length = std::hypot(along.x(), along.y());
    if (length == 0) {
        return {};
    }
    const QPointF left(-along.y() / length, along.x() / length);
    return counterClockwise ? left : -left;
}

void addNotch(QPainterPath &path, const CDbMarkerPointObject &point, const QPointF &inside)
{
    const QPointF base = pointOf(point);
    QPointF way(static_cast<double>(point.notchDx), static_cast<double>(point.notchDy));
    if (way.isNull()) {
        way = inside * kNotchLength;
    }
    const QPointF aside = QPointF(-way.y(), way.x()) / 2;
    switch (point.pointType) {
    case DoubleNotch:
        addLine(path, base - aside, base - aside + way);
        addLine(path, base + aside, base + aside + way);
        break;
    case VNotch:
        addLine(path, base - aside, base + way);
        path.lineTo(base + aside);
        break;
    case UserNotch: {
        addLine(path, base, base + way);
        const double length = std::hypot(aside.x(), aside.y());
        if (length > 0) {
            const QPointF bar =
                aside * (static_cast<double>(point.notchWidth) / 2 / length); // half of it
            addLine(path, base + way - bar, base + way + bar);
        }
        break;
    }
    default:
        addLine(path, base, base + way);
    }
}

bool isNotch(int type)
{
    return type == SimpleNotch || type == DoubleNotch || type == VNotch || type == UserNotch;
}

void addNotches(QPainterPath &path, const CDbVectorsObjectTable &contour)
{
    const bool counterClockwise = contour.isCounterClockwise();
    for (int i = 0; i < contour.size(); ++i) {
        if (isNotch(contour[i].pointType)) {
            addNotch(path, contour[i], inward(contour, i, counterClockwise));
        }
    }
}

void addMark(QPainterPath &path, const CDbMarkerPointObject &point)
{
    const QPointF place = pointOf(point);
    const QPointF across(kMarkSize, 0);
    const QPointF up(0, kMarkSize);
    addLine(path, place - across, place + across);
    addLine(path, place - up, place + up);
    if (point.pointType == Punch || point.pointType == UserPunch) {
        path.addEllipse(place, kMarkSize / 2, kMarkSize / 2);
    }
}

void addOpen(QPainterPath &path, const CDbVectorsObjectTable &points)
{
    for (int i = 0; i < points.size(); ++i) {
        if (i == 0) {
            path.moveTo(pointOf(points[i]));
        } else {
            path.lineTo(pointOf(points[i]));
        }
    }
}

QPolygonF coarseContour(const CDbVectorsObjectTable &contour)
{
    QPolygonF coarse;
    for (const CDbMarkerPointObject &point : contour) {
        const QPointF place = pointOf(point);
        if (coarse.isEmpty() || std::hypot(place.x() - coarse.last().x(),
                                    place.y() - coarse.last().y()) >= kCoarseStep) {
            coarse.append(place);
        }
    }
    return coarse;
}

} // namespace

QPainterPath contourPath(const CDbVectorsObjectTable &points)
{
    QPainterPath path;
    addOpen(path, points);
    path.closeSubpath();
    return path;
}

PieceOutline outlineOf(const CDbPolygon &polygon)
{
    PieceOutline outline;
    if (const CDbVectorsObjectTable *contour = polygon.findContour(CutContour)) {
        outline.contour = contourPath(*contour);
        outline.coarse = coarseContour(*contour);
        addNotches(outline.notches, *contour);
    }
    if (const CDbVectorsObjectTable *seam = polygon.findContour(SeamContour)) {
        outline.seam = contourPath(*seam);
    }
    for (const CDbMarkerPointObject &point : polygon.internalPoints) {
        addMark(outline.marks, point);
    }
    for (const InternalLine &line : polygon.internalLines()) {
        addOpen(line.kind == InternalLine::Kind::Cut ? outline.cutLines : outline.drawnLines,
            line.points);
    }
    return outline;
}

} // namespace KivSystem
