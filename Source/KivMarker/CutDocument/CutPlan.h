// What a cut document holds while it is made: plain values that the stages pass on and change, in
// this order:
//
//     CutSelection    the placed groups of a fabric, layers one behind the other
//     CutShapes       groups become objects: outlines, internal lines, holes
//       CutNotches    notches become paths that start on a vertex of their outline
//       CutCorners    sharp corners
//       CutReduction  points that may be left out, intermediate points
//     CutHoles        holes outside of the pieces
//     CutRange        nothing lies outside of the fabric
//     CutBlocks       outlines of blocks, documents of their own
//     CutWaste        cuts that chop the waste
//     CutInformation  labels, piece information, speed
//     CutFrames       frames of the conveyor
//     CutOrder        the order of the cuts
//     CutWriter       the XML document
//
// Coordinates are centimetres of the fabric: x along the length over all layers, y across.

#ifndef KIVMARKER_CUTPLAN_H
#define KIVMARKER_CUTPLAN_H

#include "CutDocument/PieceTextFit.h"
#include "KivGeo/Point2D.h"
#include "KivGeo/Rectangle.h"

#include <QString>

#include <cmath>
#include <optional>
#include <vector>

namespace KivSystem {

class CDbPolygon;
struct CutSettings;

/// A polygon of the marker, where its layer lies.
struct LaidPiece
{
    const CDbPolygon *polygon = nullptr;
    double offset = 0; ///< added to x: the start of its layer

    std::vector<GeoPoint2D> contour() const; ///< as the marker has it
    GeoRectangle rect() const;               ///< around the contour
};

/// A row of points to be cut; that of a notch starts on a vertex of its outline.
using CutPath = std::vector<GeoPoint2D>;

struct CutPoint
{
    double x = 0;
    double y = 0;
    bool keep = false;   ///< stays where it is: a notch, a hole, a match point, a sharp corner
    bool lift = false;   ///< a sharp corner: the tool is lifted and plunged behind it
    bool corner = false; ///< the outline turns here, so that a start does not show
    int notch = -1;      ///< 0-based among the outline's notches; -1 for none

    GeoPoint2D place() const { return {x, y}; }
};

inline double distance(const GeoPoint2D &a, const GeoPoint2D &b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

/// A closed outline; the first point is not repeated at the end. Cutting starts at the first.
struct CutOutline
{
    std::vector<CutPoint> points;
    std::vector<CutPath> notches; ///< each belongs to one point
};

/// The places of the outline's points.
std::vector<GeoPoint2D> placesOf(const CutOutline &outline);

struct CutDrill
{
    GeoPoint2D place;
    bool user = false; ///< a hole that the user gave a tool of its own
};

/// One piece or block, cut in one go.
struct CutObject
{
    QString name; ///< for messages: the piece and its size
    std::vector<LaidPiece> pieces;
    std::vector<CutOutline> outlines;
    std::vector<CutPath> internals;
    std::vector<CutDrill> drills;
    std::vector<GeoPoint2D> matchPoints;
    std::optional<QString> label;
    GeoPoint2D labelPlace;
    std::vector<FittedText> texts;
    int velocity = 0;           ///< class of speed, from 0 for the largest pieces
    int shortenedNotches = 0;   ///< that would have cut through the piece
    int frame = 0;              ///< 0-based frame of the conveyor
    bool advanceBehind = false; ///< the conveyor moves on when the object is cut

    /// Everything that the tool reaches when it cuts what the settings ask for. The zero rectangle
    /// for an object of which nothing is cut.
    GeoRectangle reach(const CutSettings &settings) const;
};

/// One frame of the conveyor: what the cutter reaches before the cloth moves on.
struct CutFrame
{
    double start = 0;
    double end = 0;
};

/// A cut that chops the waste.
struct WasteCut
{
    double x = 0; ///< along the length
    GeoPoint2D from;
    GeoPoint2D to;
    bool fromEdge = false; ///< comes in from the cloth's edge, where the cutter may start outside
};

/// What becomes one document.
struct CutPlan
{
    std::vector<CutObject> objects; ///< in cutting order once they are ordered
    std::vector<CutFrame> frames;   ///< empty when the conveyor stands still
    std::vector<GeoPoint2D> holes;  ///< outside of the pieces
    std::vector<WasteCut> wasteCuts;
    double length = 0; ///< of the fabric, as laid
    double width = 0;
    int block = 0; ///< number of the block, from 1; 0 for the document of the fabric
};

} // namespace KivSystem

#endif
