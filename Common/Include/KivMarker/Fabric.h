/// A fabric of a marker: its rules, its pieces, and what lies on it in each layer.

#ifndef KIVMARKER_FABRIC_H
#define KIVMARKER_FABRIC_H

#include "KivMarker/Group.h"
#include "KivMarker/OneBased.h"
#include "KivMarker/Piece.h"
#include "KivMarker/PlaidAndStripes.h"
#include "KivMarker/Text.h"
#include "KivMarker/TwainLinks.h"

#include <QString>
#include <QVector>

#include <map>
#include <memory>
#include <vector>

namespace KivSystem {

class CDbMarkerDrawing;

/// Values of CDbFabricObject::fabricType: how the cloth is laid.
enum FabricType : int
{
    PlainFabric = 0,
    FoldOnBottom = 1,
    FoldOnTop = 2,
    TubularFabric = 3,
};

/// What lies on a fabric in one layer.
struct FabricLayer
{
    FabricLayer();
    FabricLayer(FabricLayer &&) noexcept;
    FabricLayer &operator=(FabricLayer &&) noexcept;
    ~FabricLayer();

    double width = 0;                  ///< of the fabric, in centimetres
    CDbLineObjectList horizontalLines; ///< guide lines along the length, by y
    CDbLineObjectList verticalLines;   ///< guide lines across the width, by x
    std::vector<std::unique_ptr<CDbTextObject>> texts;
    std::vector<std::unique_ptr<CDbGrPolysObject>> groups; ///< on the marker and in stand-by
    CDbGrPolysObjectList groupList;                        ///< the same groups
    mutable std::size_t walkPosition = 0; ///< of layerFirstGrPolys and layerNextGrPolys
};

/// A fabric. Layers and pieces count from 1. Everything handed out stays owned by the fabric.
class CDbFabricObject
{
public:
    /// `layers` is the number of layers of the marker; all widths start at 0.
    CDbFabricObject(const QString &name, int layers);
    ~CDbFabricObject();
    CDbFabricObject(const CDbFabricObject &) = delete;
    CDbFabricObject &operator=(const CDbFabricObject &) = delete;

    QString fabricName;
    qint64 fabricStatus = 1; ///< only a fabric with the value 1 is exported
    int fabricType = PlainFabric;
    bool oneWay = false; ///< the cloth has a direction
    CDbPlaidAndStripesInfo plaidInfo;
    bool foldAnyPiece = false;  ///< single pieces may lie on the fold without a symmetry test
    bool edgeGapActive = false; ///< the gap holds towards the fabric's edge, too
    PlacementRules rules;       ///< for pieces without rules of their own

    /// Spacing between pieces along the length and across the width, in centimetres. X may be
    /// negative, which stands for a spacing that is measured along the length only.
    double getGapInX() const { return m_gapX; }
    double getGapInY() const { return m_gapY; }
    void setGaps(double x, double y);

    /// The larger of both spacings, whichever way it is measured.
    double getMaxGapInFabric() const;

    /// What may be done to pieces on this fabric that have no rules of their own.
    bool permittedSymmetryX() const { return rules.flipX; }
    bool permittedSymmetryY() const { return rules.flipY; }
    short rotationPermittedValue() const { return rules.rotationStep; } ///< degrees, 0 for no turn
    double permittedFineRotationValue() const { return rules.fineRotation; } ///< degrees

    /// Pieces keep their own turning rules.
    bool isHybridFabric() const { return m_hybrid; }
    void setHybrid(bool hybrid) { m_hybrid = hybrid; }

    int layerCount() const { return static_cast<int>(m_layers.size()); }
    /// Width of the fabric in a layer, in centimetres; 0 past the end.
    double getFabricLayerWidth(short layer) const;
    /// The largest of the fabric's widths in the layers, in centimetres. `onlyOccupied`: in those
    /// that hold something. Layers that the drawing does not have do not count; a null drawing
    /// counts all.
    double getMultiLayerFabricMaxWidth(const CDbMarkerDrawing *drawing, bool onlyOccupied) const;
    /// Length that the groups on the marker occupy in a layer: from 0 to their right-most point, in
    /// centimetres. 0 for an empty layer and past the end.
    double getLengthOccupiedLayer(short layer) const;

    /// What a layer of this fabric is about: `garments` of all styles that have pieces here; pieces
    /// `placed` on the marker; pieces ordered in the chart and still `toPlace`, those in stand-by
    /// among them; the occupied `length` in cm and the `area` of the placed pieces in square cm.
    /// Past the end: k_error_index, and all values 0. Null pointers are passed over.
    void calculateTheValuesToDisplayInALayer(short layer, short *error, short *garments,
        short *toPlace, short *placed, double *length, double *area) const;

    /// The efficiency shown to the user: the area's share of width times length, in percent; 0 when
    /// there is no width or no length.
    double returnPlacementEfficiencyFactor(double width, double length, double area) const;

    /// Whether the 1-based style has pieces on this fabric.
    bool isFabricInvolvedByStyle(short style) const;
    /// First piece of the 1-based style. None: null and k_error_missing.
    CDbPieceObject *firstPieceByStyle(short style, short *error) const;
    /// First piece of the fabric's chain, null without pieces; CDbPieceObject::getNextPiece goes
    /// on.
    CDbPieceObject *firstPiece() const;
    /// The piece with a 1-based index. Past the end: null and k_error_index.
    CDbPieceObject *findPieceAccordingIndex(short index, short *error) const;
    int pieceCount() const { return static_cast<int>(m_pieces.size()); }
    /// Adds a piece at the end of the chain. Throws std::out_of_range for a style below 1.
    CDbPieceObject *addPiece(std::unique_ptr<CDbPieceObject> piece);

    /// First group of a 1-based layer, whether on the marker or in stand-by; null for none and past
    /// the end.
    CDbGrPolysObject *layerFirstGrPolys(short layer) const;
    /// Next group of the walk that layerFirstGrPolys began in that layer; null at the end. A layer
    /// has one such walk at a time. Past the last layer: null and k_error_index.
    CDbGrPolysObject *layerNextGrPolys(short layer, short *error) const;
    /// Whether a layer has free texts. The layer is 0-based here, as for CTextLayerTableIter.
    bool hasTextListInLayer(short layer) const;
    /// The groups of a layer, on the marker and in stand-by; null for none and past the end.
    const CDbGrPolysObjectList *getPlaceGroupList(t_1_Based layer) const;
    /// The groups of the layer in which a group lies; null when it lies in none.
    const CDbGrPolysObjectList *listOfGroup(const CDbGrPolysObject *group) const;
    /// The guide lines of a layer; null past the end.
    const CDbLineObjectList *getHorLines(t_1_Based layer) const;
    const CDbLineObjectList *getVerLines(t_1_Based layer) const;

    /// The links between pieces of a 1-based style; null when there are none.
    CDbTwainLinkPiecesObjectTable *findLinks(short style);
    /// Adds a link. Both pieces must be of one style and have the points in each of their sizes;
    /// throws std::out_of_range otherwise.
    void addLink(const TwainLink &link);
    /// All links by the number of their style.
    const std::map<short, CDbTwainLinkPiecesObjectTable> &links() const { return m_links; }

    /// The drawing that the fabric belongs to; null for one that stands by itself.
    CDbMarkerDrawing *drawing() const { return m_drawing; }

    /// Puts a filled group into a 1-based layer, which must exist, and takes its polygons out of
    /// the chart.
    CDbGrPolysObject *addGroup(short layer, std::unique_ptr<CDbGrPolysObject> group);

    /// The contents of a 1-based layer; null past the end.
    const FabricLayer *findLayer(short layer) const;
    FabricLayer *findLayer(short layer);

private:
    friend class CDbMarkerDrawing; // sets the drawing

    CDbMarkerDrawing *m_drawing = nullptr;
    std::map<short, CDbTwainLinkPiecesObjectTable> m_links;
    double m_gapX = 0;
    double m_gapY = 0;
    bool m_hybrid = false;
    std::vector<FabricLayer> m_layers;
    std::vector<std::unique_ptr<CDbPieceObject>> m_pieces;
    std::vector<CDbPieceObject *> m_firstPieces; // by style, null for a style without pieces
};

/// The fabrics of a drawing, which owns them; positions count from 0.
class CDbFabricsObjectTable : public QVector<CDbFabricObject *>
{
public:
    /// 1-based index of a fabric, 0 when it is not in the table.
    short findFabricIndex(const CDbFabricObject *fabric) const;
};

} // namespace KivSystem

#endif
