/// The pieces of a fabric: their shapes by size, and the chart of how many are to be cut.
///
/// A piece's shape is kept for the left-hand side, in centimetres about an origin of its own with
/// the grain along X; the right-hand side is its mirror image across the grain.

#ifndef KIVMARKER_PIECE_H
#define KIVMARKER_PIECE_H

#include "KivGeo/Rectangle.h"
#include "KivMarker/Placement.h"
#include "KivMarker/Point.h"

#include <QString>

#include <map>
#include <optional>
#include <tuple>
#include <vector>

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;
class CDbPolygon;
class CDbStyleObject;
class CDbStyleSizeObjectTable;

/// What may be done to a piece when it is placed.
struct PlacementRules
{
    short rotationStep = 0;  ///< degrees; 0 forbids turning
    double fineRotation = 0; ///< largest tilt in degrees either way
    bool flipX = false;      ///< may be mirrored about the X axis
    bool flipY = false;      ///< may be mirrored about the Y axis
};

bool operator==(const PlacementRules &left, const PlacementRules &right);

/// A named member of a chain of drawing objects.
class CDbGroupObject
{
public:
    virtual ~CDbGroupObject() = default;
    QString getName() const { return m_name; }

protected:
    explicit CDbGroupObject(const QString &name) : m_name(name) {}

private:
    QString m_name;
};

/// A line inside a piece: the grain line, a line to be cut or drawn.
struct InternalLine
{
    enum class Kind
    {
        Cut,
        Draw,
        Grain
    };

    Kind kind = Kind::Cut;
    CDbVectorsObjectTable points; ///< open, at least two points
};

/// The geometry of a piece in one size, or of a placed polygon.
struct PieceShape
{
    CDbVectorsObjectTable contour;        ///< closed without a repeated last point
    CDbVectorsObjectTable internalPoints; ///< punch and match points
    std::vector<InternalLine> internalLines;
    CDbVectorsObjectTable seam; ///< closed likewise; empty for a shape without one
};

/// One size of a piece.
class CDbPieceSizeObject
{
public:
    short sizeNumber = 0;  ///< the number of the style's size; 0 for none
    GeoRectangle sizeRect; ///< bounding rectangle of the contour
    PieceShape shape;
};

/// The texts of a piece, as they are printed on it.
struct PieceData
{
    QString patternText;
    QString nameText;
    QString descriptionText;
    QString codeText;
    QString codeReferenceText;
    QString tissusText; ///< the cloth that the piece is meant for
    QString identificationText;
};

/// Where a quantity of the chart belongs. `size` and `layer` are 1-based.
struct ChartKey
{
    short size = 0;
    short layer = 0;
    bool left = true;

    bool operator<(const ChartKey &other) const
    {
        return std::tie(layer, size, other.left) < std::tie(other.layer, other.size, left);
    }
};

/// Values of CDbPieceObject::getTwoPieceCutDown: the partner of a piece that is cut down in two.
enum CutDownKind : short
{
    NotCutDown = 0,
    MirroredPartner = 1, ///< the piece's mirror image
    TurnedPartner = 2,   ///< the piece turned by 180 degrees
};

/// Numbered places, the lowest free one of which is given out; they count from 0.
class BundleSlots
{
public:
    std::size_t take();
    void release(std::size_t slot); ///< one that is not taken is passed over

private:
    std::vector<bool> m_taken;
    std::size_t m_lowestFree = 0;
};

class CDbPieceObject : public CDbGroupObject
{
public:
    /// `style` is the number of the style, from 1.
    CDbPieceObject(const QString &name, short style);

    PieceData pieceData;

    /// Next piece of the fabric's chain, null at the end.
    CDbPieceObject *getNextPiece() { return m_next; }
    const CDbPieceObject *getNextPiece() const { return m_next; }
    short getStyleNo() const { return m_style; }

    short getNumberOfSizes() const;
    /// The record of a 1-based size; past the end an empty record with the number 0.
    const CDbPieceSizeObject &getPieceSize(short size) const;
    void addSize(short number, PieceShape shape);

    /// The piece is cut once for a garment, without a mirrored partner.
    bool getKIVPieceSingle() const { return m_single; }
    void setSingle(bool single) { m_single = single; }
    /// How many of the piece a garment has.
    short getKIVPieceQuantity() const { return m_quantity; }
    void setQuantity(short quantity) { m_quantity = quantity; }
    /// A CutDownKind.
    short getTwoPieceCutDown() const { return m_cutDown; }
    void setTwoPieceCutDown(CutDownKind kind) { m_cutDown = kind; }
    /// How the piece's shape leaves the chart: scaled, mirrored or turned; without a shift.
    const Placement &chartTransformation() const { return m_transformation; }
    void setChartTransformation(const Placement &placement) { m_transformation = placement; }

    /// The piece's own rules; without them those of the fabric hold.
    const std::optional<PlacementRules> &ownRules() const { return m_rules; }
    void setOwnRules(const PlacementRules &rules) { m_rules = rules; }
    /// The rules that hold for the piece on a fabric; a null fabric has none.
    const PlacementRules &rulesOn(const CDbFabricObject *fabric) const;
    short rotationPermittedValue(const CDbFabricObject *fabric) const; ///< degrees, 0 for no turn
    bool permittedSymmetryX(const CDbFabricObject *fabric) const;
    bool permittedSymmetryY(const CDbFabricObject *fabric) const;
    /// Degrees of tilt either way; of a piece without rules of its own, its fabric's.
    double permittedFineRotationValue() const;

    /// How many pieces of a 1-based size, left- or right-hand by `left`, still wait in the chart
    /// for a 1-based layer: ordered, less those on the marker or in stand-by, never below zero.
    short getQtyPieceSizeLayer(short size, bool left, short layer) const;
    /// Quantity ordered on that side, placed or not.
    short orderedQuantity(const ChartKey &key) const;
    void setOrderedQuantity(const ChartKey &key, short quantity);
    /// Pieces of all sizes and both sides that are ordered in a 1-based layer.
    qint64 orderedInLayer(short layer) const;
    /// Notes that `change` more pieces have left the chart for the marker or for stand-by.
    void changeTaken(const ChartKey &key, short change);
    /// Changes by `change` how many pieces wait in the chart for the polygon's piece, size and side
    /// in a 1-based layer: -1 takes the polygon out, 1 gives it back. `withBundle` takes a bundle
    /// index for a polygon that leaves, and releases that of one that comes back. Errors, with
    /// nothing changed: k_error_missing for a null argument or a polygon whose piece the fabric
    /// does not have, k_error_index for a layer past the end.
    static void modifyPolyInTableData(CDbMarkerDrawing *drawing, CDbPolygon *polygon, short layer,
        CDbFabricObject *fabric, short change, short *error, bool withBundle);

    /// The places in garments that pieces of a size and side have taken, by CDBundleUtility.
    BundleSlots &bundleSlots(const ChartKey &key) { return m_bundles[key]; }

    /// All quantities that are ordered, by layer, size, left before right.
    std::vector<std::pair<ChartKey, short>> orderedQuantities() const;

    /// The texts for a 1-based size of the piece, from the style's table: `sizeName` and
    /// `specialName`. Error: k_error_missing without a table, or when the table lacks the size's
    /// number; k_error_index past the end.
    void returnsSizeAndNameAccordingTypeSize(const CDbStyleSizeObjectTable *sizes, short size,
        QString &sizeName, QString &specialName, short *error) const;

    /// The display name of one of the piece's polygons: the special text of its size, from the
    /// style's table for the 1-based fabric. Errors as above, k_error_missing also for a null
    /// argument, k_error_index also for a fabric past the end; the name is then empty.
    void getPolyName(const CDbPolygon *polygon, const CDbStyleObject *style, short fabric,
        QString &name, short *error) const;

private:
    friend class CDbFabricObject; // links the chain and sets the fabric

    struct ChartQuantity
    {
        short ordered = 0;
        short taken = 0;
    };

    CDbPieceObject *m_next = nullptr;
    const CDbFabricObject *m_fabric = nullptr;
    short m_style;
    bool m_single = false;
    short m_cutDown = NotCutDown;
    Placement m_transformation;
    short m_quantity = 1;
    std::optional<PlacementRules> m_rules;
    std::vector<CDbPieceSizeObject> m_sizes;
    std::map<ChartKey, ChartQuantity> m_chart;
    std::map<short, qint64> m_orderedByLayer;
    std::map<ChartKey, BundleSlots> m_bundles;
};

} // namespace KivSystem

#endif
