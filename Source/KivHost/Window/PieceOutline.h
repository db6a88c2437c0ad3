// PieceOutline: the lines of a polygon as paths to draw. Coordinates are those of the polygon.
#ifndef KIVHOST_PIECEOUTLINE_H
#define KIVHOST_PIECEOUTLINE_H

#include <QPainterPath>
#include <QPolygonF>

namespace KivSystem {

class CDbPolygon;
class CDbVectorsObjectTable;
struct InternalLine;

/// All paths of a polygon; those that it has nothing for are empty.
struct PieceOutline
{
    QPainterPath contour; ///< the cut contour
    QPolygonF coarse;     ///< the same with few points, for a picture from afar
    QPainterPath seam;
    QPainterPath notches;
    QPainterPath marks;      ///< figures of punches and match points on the contour
    QPainterPath drills;     ///< the same inside, also on internal lines
    QPainterPath images;     ///< the frames of the images that lie on it
    QPainterPath links;      ///< tree links in the strokes of their pattern, and sewing links
    QPainterPath cutLines;   ///< internal lines that are cut
    QPainterPath drawnLines; ///< internal lines that are drawn, the grain among them
};

PieceOutline outlineOf(const CDbPolygon &polygon);

/// The cut contour alone.
QPainterPath contourPath(const CDbVectorsObjectTable &points);

} // namespace KivSystem

#endif
