/// The pieces of a fabric: their shapes by size, and the chart of how many are to be cut.
///
/// A piece's shape is kept for the left-hand side, in centimetres about an origin of its own with
/// the grain along X; the right-hand side is its mirror image across the grain.

#ifndef KIVMARKER_PIECE_H
#define KIVMARKER_PIECE_H

#include "KivGeo/Rectangle.h"
#include "KivMarker/Point.h"

#include <QString>

#include <map>
#include <optional>
#include <tuple>
#include <vector>

namespace KivSystem {

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

    /// The piece's own rules; without them those of the fabric hold.
    const std::optional<PlacementRules> &ownRules() const { return m_rules; }
    void setOwnRules(const PlacementRules &rules) { m_rules = rules; }

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

    /// All quantities that are ordered, by layer, size, left before right.
    std::vector<std::pair<ChartKey, short>> orderedQuantities() const;

    /// The texts for a 1-based size of the piece, from the style's table: `sizeName` and
    /// `specialName`. Error: k_error_missing without a table, or when the table lacks the size's
    /// number; k_error_index past the end.
    void returnsSizeAndNameAccordingTypeSize(const CDbStyleSizeObjectTable *sizes, short size,
        QString &sizeName, QString &specialName, short *error) const;

private:
    friend class CDbFabricObject; // links the chain

    struct ChartQuantity
    {
        short ordered = 0;
        short taken = 0;
    };

    CDbPieceObject *m_next = nullptr;
    short m_style;
    bool m_single = false;
    short m_quantity = 1;
    std::optional<PlacementRules> m_rules;
    std::vector<CDbPieceSizeObject> m_sizes;
    std::map<ChartKey, ChartQuantity> m_chart;
    std::map<short, qint64> m_orderedByLayer;
};

} // namespace KivSystem

#endif
