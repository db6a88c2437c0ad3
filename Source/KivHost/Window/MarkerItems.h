// MarkerItems: what stands on the scene of a marker. Coordinates are centimetres, y upward; letters
// stand upright all the same.
#ifndef KIVHOST_MARKERITEMS_H
#define KIVHOST_MARKERITEMS_H

#include "PieceOutline.h"

#include <QColor>
#include <QGraphicsPathItem>
#include <QPolygonF>
#include <QStringList>

#include <vector>

namespace KivSystem {

/// What the View menu offers for all markers.
struct SceneOptions
{
    enum Fill
    {
        ByColour, ///< the colours of the marker's pieces
        ByStyle,
        BySize,
    };

    Fill fill = ByStyle;
    bool texts = true;
    bool notches = true;
    bool guideLines = true;
};

/// Lines of text about a point or along a line. Letters as high as `height` centimetres; too small
/// to read, they are not drawn.
struct SceneText
{
    QStringList lines;
    /// The first line stands on it; with AlignTop it hangs from it; with AlignVCenter all lines are
    /// centred on it.
    QPointF place;
    double height = 0;
    Qt::Alignment alignment = Qt::AlignCenter;
    double angle = 0;  ///< degrees, counter-clockwise
    double room = 0;   ///< widest line in cm; 0 for no limit
    double across = 0; ///< of all lines together, likewise
    /// Lines that are too long have smaller letters. With this, letters that must not be smaller
    /// are kept, and the end of the lines is left out.
    bool elided = false;
    /// In place of `place` and `angle`: a line that the lines of text stand about, going straight
    /// on where it ends. What `alignment` places stands `along` cm from its start.
    QPolygonF path;
    double along = 0;

    /// Moved by a shift in cm.
    SceneText translated(const QPointF &shift) const;
};

/// The rectangle in cm that the text takes, in a scene that is large enough for all its letters.
QRectF extentOf(const SceneText &text);

/// Draws with a painter whose transformation is that of a scene.
void drawSceneText(QPainter &painter, const SceneText &text);

/// A polygon of the marker: its fill and its cut contour. All else of it is drawn by a DetailsItem.
class PolygonItem : public QGraphicsItem
{
public:
    enum Kind
    {
        Piece,
        CutDownPartner, ///< an outline that is not selected
    };

    PolygonItem(const PieceOutline &outline, Kind kind);

    void setFill(const QColor &fill);
    QColor fill() const { return m_fill; }

    QRectF boundingRect() const override { return m_bounds; }
    QPainterPath shape() const override { return m_contour; }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    QPainterPath m_contour;
    QPolygonF m_coarse;
    Kind m_kind;
    QRectF m_bounds;
    QColor m_fill;
};

/// Lines, marks and names of all polygons of a scene, which may reach over a neighbour and so lie
/// above the fills. One item has them all, since from afar a picture costs what its items are in
/// number. The mouse does not find it.
class DetailsItem : public QGraphicsItem
{
public:
    /// `options` is the scene's and outlives the item.
    explicit DetailsItem(const SceneOptions &options);

    /// Of one polygon, which is shifted by so many cm. Returns what they cover in the scene.
    QRectF add(PieceOutline outline, const SceneText &name, const QPointF &shift);

    QRectF boundingRect() const override { return m_bounds; }
    QPainterPath shape() const override { return {}; }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    struct Details
    {
        PieceOutline outline;
        QPointF shift; // of the outline
        SceneText name;
        QRectF bounds;
    };

    void paintLines(QPainter &painter, const Details &details, const QTransform &view) const;

    const SceneOptions &m_options;
    std::vector<Details> m_details;
    QRectF m_bounds;
};

/// A text by itself, such as a layer's name. The mouse finds it where it was drawn last.
class SceneTextItem : public QGraphicsItem
{
public:
    SceneTextItem(SceneText text, const QColor &color, double leastPixels = 0);

    const SceneText &text() const { return m_text; }

    QRectF boundingRect() const override { return m_bounds; }
    QPainterPath shape() const override { return m_shape; }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    SceneText m_text;
    QColor m_color;
    double m_leastPixels; // letters are drawn no smaller than that
    QRectF m_bounds;
    QPainterPath m_shape;
};

/// Lines whose pen has a width in pixels, the same at every zoom and in every kind of picture.
class LineItem : public QGraphicsPathItem
{
public:
    LineItem(const QPainterPath &path, const QPen &pen);

    QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;
};

/// The stripes of a cloth: lines that repeat without an end. The mouse does not find them; from so
/// far that they would run together they are not drawn.
class StripesItem : public QGraphicsItem
{
public:
    struct Stripes
    {
        std::vector<double> positions; ///< cm from the cloth's left bottom corner
        double repetition = 0;         ///< cm; above 0 if there are positions
    };

    /// `across` are the lines across the length, at their x; `along` those along it.
    StripesItem(const QRectF &cloth, Stripes across, Stripes along);

    QRectF boundingRect() const override { return m_cloth; }
    QPainterPath shape() const override { return {}; }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    QRectF m_cloth;
    Stripes m_across;
    Stripes m_along;
};

} // namespace KivSystem

#endif
