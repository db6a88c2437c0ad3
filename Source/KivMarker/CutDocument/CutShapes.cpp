#include "CutDocument/CutShapes.h"

#include "CutDocument/CutCorners.h"
#include "CutDocument/CutNotches.h"
#include "CutDocument/CutReduction.h"
#include "CutDocument/CutRequest.h"
#include "KivMarker/Polygon.h"

namespace KivSystem {
namespace {

GeoPoint2D laid(const CDbMarkerPointObject &point, double offset)
{
    return {point.x + offset, point.y};
}

void collectMarks(CutObject &object, const CDbVectorsObjectTable &points, double offset)
{
    for (const CDbMarkerPointObject &point : points) {
        if (point.pointType == Punch || point.pointType == UserPunch) {
            object.drills.push_back({laid(point, offset), point.pointType == UserPunch});
        }
        if (point.matchPoint) {
            object.matchPoints.push_back(laid(point, offset));
        }
    }
}

CutPath laidLine(const CDbVectorsObjectTable &points, double offset)
{
    CutPath line;
    for (const CDbMarkerPointObject &point : points) {
        line.push_back(laid(point, offset));
    }
    return line;
}

} // namespace

CutObject cutShape(const LaidPiece &piece, const CutRequest &request)
{
    const CDbPolygon &polygon = *piece.polygon;
    const double offset = piece.offset;
    const CDbVectorsObjectTable &contour = *polygon.currentContour();
    CutObject object;
    object.pieces.push_back(piece);

    CutOutline outline =
        notchedOutline(contour, offset, request.notchLength, &object.shortenedNotches);
    markCorners(outline);
    reduceOutline(outline, request.settings);
    markCorners(outline); // what was left out may have made a corner sharper
    divideLongEdges(outline, request.settings);
    object.outlines.push_back(std::move(outline));

    for (const InternalLine &line : polygon.internalLines()) {
        collectMarks(object, line.points, offset);
        if (line.kind == InternalLine::Kind::Cut) {
            object.internals.push_back(
                conditionedLine(laidLine(line.points, offset), request.settings));
        }
    }
    collectMarks(object, contour, offset);
    collectMarks(object, polygon.internalPoints, offset);
    return object;
}

} // namespace KivSystem
