/// Polygons: pieces that were taken out of the chart.

#ifndef KIVMARKER_POLYGON_H
#define KIVMARKER_POLYGON_H

#include "KivGeo/Rectangle.h"
#include "KivMarker/Piece.h"

#include <memory>
#include <vector>

namespace KivSystem {

class CDbFabricObject;
class CDbTextObject;

/// How far a curve may be off its points that thinCurves leaves out, in cm.
constexpr double kCurveFlatness = 0.001;

/// Values of CDbPolygon::contourKinds.
enum ContourKind : int
{
    SeamContour = 1,    ///< drawn beside the cut contour
    SpacingContour = 2, ///< the contour with its gap, never drawn
    CutContour = 3,
};

/// One piece that was taken out of the chart: lying on the marker or in stand-by. Coordinates are
/// centimetres in the marker, x along the length, y across the width, both from the left bottom.
class CDbPolygon
{
public:
    /// A polygon of the piece with the 1-based index `piece` in its fabric, in the piece's 1-based
    /// size.
    CDbPolygon(short piece, short size, bool left);
    ~CDbPolygon();
    CDbPolygon(const CDbPolygon &) = delete;
    CDbPolygon &operator=(const CDbPolygon &) = delete;

    CDbPolygon *nextPolygon = nullptr; ///< next of the group's chain; owned by the group
    short pieceIndex = 0;              ///< 1-based in the fabric; 0 for none
    short sizeNumber = 0;              ///< number of the style's size
    std::vector<CDbVectorsObjectTable *> contourList; ///< the last is the current; owned
    std::vector<int> contourKinds;                    ///< a ContourKind for each contour
    CDbVectorsObjectTable internalPoints;
    GeoRectangle polygonRect; ///< bounding rectangle, set with the shape
    short colorIndex = 0;     ///< 0 for black, otherwise 1-based in the colour table
    short ballotNumber = 0;   ///< a character's code; 0 for none
    bool pairedBallot = false;
    bool foldedPiece = false;
    /// The partner of a piece that is cut down in two, null without one; owned.
    CDbPolygon *cutDownPolygon = nullptr;
    bool blockingPolygon = false; ///< belongs to a block; see isBlockingPoly

    // The garment that the polygon belongs to: what CDBundleUtility took for it.
    short bundleSize = 0;   ///< 1-based size of the piece; 0 without a garment
    bool bundleLeft = true; ///< side of the piece
    short bundleIndex = 0;  ///< number of the garment in its size, from 1
    short bundleCopy = 0;   ///< which of the garment's pieces of that side, from 1

    short pieceSize() const { return m_size; } ///< 1-based size of the piece
    bool isLeft() const { return m_left; }
    const Placement &placement() const { return m_placement; }
    const std::vector<InternalLine> &internalLines() const { return m_internalLines; }
    std::vector<std::unique_ptr<CDbTextObject>> polygonTexts; ///< its own texts

    /// Gives the polygon the shape of its piece, moved by the placement, as its cut contour.
    void place(const CDbPieceSizeObject &size, const Placement &placement);
    /// Gives the polygon a shape of its own, in marker coordinates: a folded or an altered piece.
    void setOwnShape(PieceShape shape, const Placement &placement);
    /// Whether the shape is the polygon's own and not its piece's.
    bool hasOwnShape() const { return m_ownShape; }

    /// The current contour, null before one is set.
    const CDbVectorsObjectTable *currentContour() const;
    /// Area of the contour that place() or setOwnShape() gave, in square centimetres.
    double area() const { return m_area; }

    /// Whether the piece was scaled when it was placed.
    bool polyIsScale() const { return m_placement.isScaled(); }
    /// Whether the polygon belongs to a block of polygons that move as one; false for null.
    static bool isBlockingPoly(const CDbPolygon *polygon);
    /// Area of the cloth that the piece takes when it is opened out, in square centimetres: on a
    /// folded cloth a folded piece lies with half of it. area() is brought up to date.
    double calculateAreaOfPoly(bool clothIsFolded);
    /// Turns a left-hand polygon into its mirror image across its grain, a right-hand one: about
    /// the X axis, or about Y when it lies turned by 90 degrees. `fabric` is the one that it
    /// belongs to. Error: k_error_missing, with nothing changed, for a null fabric or without a
    /// shape.
    void makeSymXOrYFromLeftPoly(const CDbFabricObject *fabric, short *error);
    /// Appends the cut contour, `width` cm wider all round, as the current one, SpacingContour.
    void addSpacingContour(double width);
    /// Leaves out points of curves that stand nearer than `step` cm to the one before and change
    /// the cut contour by no more than kCurveFlatness.
    void thinCurves(double step);
    void setCutDownPolygon(std::unique_ptr<CDbPolygon> partner);

private:
    void setShape(PieceShape shape);

    std::unique_ptr<CDbPolygon> m_cutDown;
    std::vector<std::unique_ptr<CDbVectorsObjectTable>> m_contours;
    std::vector<InternalLine> m_internalLines;
    Placement m_placement;
    double m_area = 0;
    short m_size;
    bool m_left;
    bool m_ownShape = false;
};

} // namespace KivSystem

#endif
