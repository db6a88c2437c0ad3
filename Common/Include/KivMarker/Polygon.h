/// Polygons: pieces that were taken out of the chart.

#ifndef KIVMARKER_POLYGON_H
#define KIVMARKER_POLYGON_H

#include "KivGeo/Rectangle.h"
#include "KivMarker/Piece.h"

#include <QVector>

#include <memory>
#include <vector>

namespace KivSystem {

class CDbImage;
class CDbLinksObjectTable;
class CDbFabricObject;
class CDbTextObject;

/// How far a curve may be off its points that thinCurves leaves out, in cm.
constexpr double kCurveFlatness = 0.001;

/// Values of CDbPolygon::contourKinds, in the order in which the contours are kept: the cut contour
/// is the last, before it the seam and before that the spacing contour, as far as there are such.
enum ContourKind : int
{
    SeamContour = 1,    ///< where the piece is sewn; drawn beside the cut contour
    SpacingContour = 2, ///< the cut contour with its gap, never drawn
    CutContour = 3,     ///< areas, lengths, links and cut files go by it
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
    GeoRectangle polygonRect; ///< bounding rectangle of the cut contour, set with the shape
    short colorIndex = 0;     ///< 0 for black, otherwise 1-based in the colour table
    short ballotNumber = 0;   ///< a character's code; 0 for none
    bool pairedBallot = false;
    bool foldedPiece = false;
    CDbLinksObjectTable *polygonLinks = nullptr; ///< null without links; owned
    CDbMarkerPointObject infoCentre; ///< what CDbTextObject::computationTextCenter() found
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

    /// The current contour, which is the cut contour; null before one is set.
    const CDbVectorsObjectTable *currentContour() const;
    /// The first contour of that kind, null without one.
    CDbVectorsObjectTable *findContour(ContourKind kind) const;

    /// Keeps a contour that lies so many centimetres outside of the cut contour, from now on also
    /// when the shape changes; 0 for none.
    void setSpacing(double spacing);
    double spacing() const { return m_spacing; }

    /// Whether the polygon follows hybrid rules: it was not made from a single piece, so that it
    /// has none to be named by. k_error_index for a piece index below 0.
    bool isPolygoneHybrid(short *error) const;

    /// The images that lie on the polygon, in their order; they belong to it.
    QVector<CDbImage *> getImages() const;
    CDbImage *addImage(std::unique_ptr<CDbImage> image);
    /// Replaces the links; null for none.
    void setLinks(std::unique_ptr<CDbLinksObjectTable> links);

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
    void addContour(CDbVectorsObjectTable contour, ContourKind kind);
    void keepContours(CDbVectorsObjectTable seam, CDbVectorsObjectTable contour);

    std::unique_ptr<CDbPolygon> m_cutDown;
    std::vector<std::unique_ptr<CDbVectorsObjectTable>> m_contours;
    std::vector<std::unique_ptr<CDbImage>> m_images;
    std::unique_ptr<CDbLinksObjectTable> m_links;
    std::vector<InternalLine> m_internalLines;
    Placement m_placement;
    double m_area = 0;
    double m_spacing = 0;
    short m_size;
    bool m_left;
    bool m_ownShape = false;
};

} // namespace KivSystem

#endif
