// Picture: what there is to draw, as strokes and texts of some kind in centimetres, x to the right
// and y upward. Readers of files make pictures; PicturePainter and PictureSvg show them.
#ifndef KIVHOST_PICTURE_H
#define KIVHOST_PICTURE_H

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVector>

#include <vector>

namespace KivSystem {

enum class StrokeKind
{
    Cut,   ///< knife down, or the outline of a piece
    Idle,  ///< on the way with the tools up
    Notch, ///< knife down for a notch
    Drill, ///< one point each
    Pen,
    Frame, ///< the cloth's edge, frame advances
    Text,
};

constexpr int kStrokeKinds = 7;

/// What a kind is drawn in where a stroke has no colour of its own.
QColor colourOf(StrokeKind kind);
/// "Cut", "Idle way", ... for a legend.
QString nameOf(StrokeKind kind);

struct Stroke
{
    StrokeKind kind = StrokeKind::Cut;
    QVector<QPointF> points; ///< a single point is a mark
    bool closed = false;
    QColor colour; ///< invalid: that of the kind
    QColor fill;   ///< invalid: none
};

struct PictureText
{
    QPointF place;     ///< of the base line: its start, or its middle if `centred`
    QString text;      ///< one line
    double height = 1; ///< cm
    double angle = 0;  ///< degrees, counter-clockwise
    bool centred = false;
    QColor colour;   ///< invalid: that of StrokeKind::Text
    double room = 0; ///< cm along the base line that the text may take: it is set smaller; 0: any
};

/// Drawn in the order of the list; within a layer first the strokes, then the texts.
struct PictureLayer
{
    QString name;
    std::vector<Stroke> strokes;
    std::vector<PictureText> texts;
};

struct Picture
{
    std::vector<PictureLayer> layers;

    /// Around all strokes and the base lines of the texts, as long as those may be; null without
    /// any. Top and bottom are those of QRectF: y() is the smallest y.
    QRectF bounds() const;
};

} // namespace KivSystem

#endif
