/// Placed polygons and the groups that they are placed in.

#ifndef KIVMARKER_POLYGON_H
#define KIVMARKER_POLYGON_H

#include "KivGeo/Affine.h"
#include "KivGeo/Rectangle.h"
#include "KivMarker/Piece.h"

#include <memory>
#include <vector>

namespace KivSystem {

class CDbTextObject;

/// How a piece's shape reaches the marker: mirrored across its grain (y to -y), then turned about
/// its origin, then shifted.
struct Placement
{
    double x = 0;        ///< centimetres along the length
    double y = 0;        ///< centimetres across the width
    double rotation = 0; ///< degrees, counter-clockwise; quarter turns are exact
    bool mirrored = false;

    GeoAffine affine() const;
};

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

private:
    void setShape(PieceShape shape);

    std::vector<std::unique_ptr<CDbVectorsObjectTable>> m_contours;
    std::vector<InternalLine> m_internalLines;
    Placement m_placement;
    double m_area = 0;
    short m_size;
    bool m_left;
    bool m_ownShape = false;
};

/// Values of CDbGrPolysObject::groupPlace.
enum GroupPlace : int
{
    PlacedOnMarker = 1,
    PlacedInStandBy = 2, ///< taken out of the chart and parked beside the layout
};

/// Polygons that move together.
class CDbGrPolysObject
{
public:
    CDbGrPolysObject(); ///< an empty group on the marker
    explicit CDbGrPolysObject(GroupPlace place);
    virtual ~CDbGrPolysObject();
    CDbGrPolysObject(const CDbGrPolysObject &) = delete;
    CDbGrPolysObject &operator=(const CDbGrPolysObject &) = delete;

    CDbPolygon *firstPolygon = nullptr; ///< head of the chain; owned by the group
    std::vector<std::unique_ptr<CDbTextObject>> texts;

    virtual int groupPlace() const { return m_place; } ///< a GroupPlace

    /// Adds a polygon at the end of the chain.
    void addPolygon(std::unique_ptr<CDbPolygon> polygon);
    int polygonCount() const { return static_cast<int>(m_polygons.size()); }

private:
    std::vector<std::unique_ptr<CDbPolygon>> m_polygons;
    GroupPlace m_place = PlacedOnMarker;
};

} // namespace KivSystem

#endif
