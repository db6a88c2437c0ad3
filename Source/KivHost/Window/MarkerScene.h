// MarkerScene: one fabric of a marker, its layers side by side along the length by their ranks.
// Groups in stand-by lie in rows above their layer. Coordinates are centimetres, y upward.
#ifndef KIVHOST_MARKERSCENE_H
#define KIVHOST_MARKERSCENE_H

#include "MarkerItems.h"

#include <QGraphicsScene>

#include <vector>

namespace KivSystem {

class CDbFabricObject;
class CDbGrPolysObject;
class CDbMarkerDrawing;
class CDbPieceObject;
class CDbPolygon;
struct FabricLayer;

/// One polygon of the fabric, with the words that name it.
struct ScenePiece
{
    const CDbPolygon *polygon = nullptr;
    PolygonItem *item = nullptr; ///< owned by the scene
    short layer = 0;             ///< 1-based
    bool standBy = false;
    QString name;
    QString size;
    QString side; ///< "left", "right", or "single" for a piece without a partner
    QString style;
};

/// "single", "left" or "right".
QString sideText(const CDbPieceObject *piece, bool left);

class MarkerScene : public QGraphicsScene
{
    Q_OBJECT

public:
    /// Drawing and fabric are borrowed and outlive the scene.
    MarkerScene(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric,
        const SceneOptions &options, QObject *parent = nullptr);

    void setOptions(const SceneOptions &options);

    /// By layers, in the order in which the marker holds them.
    const std::vector<ScenePiece> &pieces() const { return m_pieces; }
    /// Positions in pieces(), ascending.
    std::vector<int> selectedPieces() const;
    /// Selects these and no others, with one selectionChanged().
    void selectPieces(const std::vector<int> &positions);
    /// Selects what is selected in another scene of the same fabric, as far as it is in this one:
    /// by layer, name, size, side and style, and among several of these the nearest.
    void selectLike(const MarkerScene &other);

private:
    struct Place
    {
        short layer = 0;
        double start = 0;
        double length = 0;
        double width = 0;
    };

    std::vector<Place> places() const;
    void addLayer(const Place &place);
    void addGuideLines(const FabricLayer &layer, const QRectF &cloth);
    LineItem &addLine(const QPainterPath &path, const QPen &pen, double height);
    LineItem &addLine(const QLineF &line, const QPen &pen, const QString &toolTip);
    void addStripes(const QRectF &cloth);
    void addFolds(const QRectF &cloth);
    void addGroup(const CDbGrPolysObject &group, const Place &place, const QPointF &shift,
        const std::vector<QRectF> &texts);
    PolygonItem *addPolygon(const PieceOutline &outline, PolygonItem::Kind kind,
        const ScenePiece &words, const QPointF &shift, const QString &remark);
    void addStandBy(const Place &place);
    void addTexts(const std::vector<SceneText> &texts, const QPointF &shift);
    ScenePiece describe(const CDbPolygon &polygon) const;
    QColor fillOf(const ScenePiece &piece) const;

    const CDbMarkerDrawing &m_drawing;
    const CDbFabricObject &m_fabric;
    SceneOptions m_options;
    QRectF m_extent;                  // of cloth and pieces
    DetailsItem *m_details = nullptr; // the scene's
    std::vector<ScenePiece> m_pieces;
    std::vector<QGraphicsItem *> m_guideLines;
    std::vector<QGraphicsItem *> m_texts;
};

} // namespace KivSystem

#endif
