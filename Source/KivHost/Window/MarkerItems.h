// MarkerItems: what stands on the scene of a marker. Coordinates are centimetres, y upward; letters
// stand upright all the same.
#ifndef KIVHOST_MARKERITEMS_H
#define KIVHOST_MARKERITEMS_H

#include "PieceOutline.h"

#include <QColor>
#include <QGraphicsItem>
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

/// Lines of text about a point. Letters as high as `height` centimetres; too small to read, they
/// are not drawn.
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
};

/// Draws with a painter whose transformation is that of a scene.
void drawSceneText(QPainter &painter, const SceneText &text);

/// A polygon of the marker.
class PolygonItem : public QGraphicsItem
{
public:
    struct Content
    {
        PieceOutline outline;
        std::vector<SceneText> texts;
        bool cutDownPartner = false;
    };

    /// `options` is the scene's and outlives the item.
    PolygonItem(Content content, const SceneOptions &options);

    void setFill(const QColor &fill);
    QColor fill() const { return m_fill; }

    QRectF boundingRect() const override { return m_bounds; }
    QPainterPath shape() const override { return m_content.outline.contour; }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    void paintDetails(QPainter &painter, double pixels) const;

    Content m_content;
    const SceneOptions &m_options;
    QRectF m_bounds;
    QColor m_fill;
};

/// A text by itself, such as a layer's name.
class SceneTextItem : public QGraphicsItem
{
public:
    SceneTextItem(SceneText text, const QColor &color, double leastPixels = 0);

    QRectF boundingRect() const override { return m_bounds; }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    SceneText m_text;
    QColor m_color;
    double m_leastPixels; // letters are drawn no smaller than that
    QRectF m_bounds;
};

} // namespace KivSystem

#endif
