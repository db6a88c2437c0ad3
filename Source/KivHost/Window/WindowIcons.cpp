#include "WindowIcons.h"

#include <QHash>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace KivSystem {

namespace {

constexpr int kSide = 24; // of the grid that the pictures are drawn on
constexpr double kLineWidth = 1.8;
const QColor kAccent(0x0b, 0x57, 0xd0);

void drawLens(QPainter &painter)
{
    painter.drawEllipse(QPointF(10, 10), 6.5, 6.5);
    painter.drawLine(QPointF(15, 15), QPointF(21, 21));
}

void drawOpen(QPainter &painter)
{
    painter.drawPolyline(QPolygonF({{3, 19}, {3, 5}, {9, 5}, {11, 8}, {19, 8}, {19, 11}}));
    painter.drawPolygon(QPolygonF({{3, 19}, {7, 11}, {22, 11}, {18, 19}}));
}

void drawExport(QPainter &painter)
{
    painter.drawPolyline(QPolygonF({{10, 4}, {4, 4}, {4, 20}, {20, 20}, {20, 14}}));
    painter.setPen(QPen(kAccent, kLineWidth));
    painter.drawLine(QPointF(11, 13), QPointF(20, 4));
    painter.drawPolyline(QPolygonF({{14, 4}, {20, 4}, {20, 10}}));
}

void drawZoomIn(QPainter &painter)
{
    drawLens(painter);
    painter.drawLine(QPointF(7, 10), QPointF(13, 10));
    painter.drawLine(QPointF(10, 7), QPointF(10, 13));
}

void drawZoomOut(QPainter &painter)
{
    drawLens(painter);
    painter.drawLine(QPointF(7, 10), QPointF(13, 10));
}

void drawFit(QPainter &painter)
{
    painter.drawPolyline(QPolygonF({{3, 9}, {3, 4}, {8, 4}}));
    painter.drawPolyline(QPolygonF({{16, 4}, {21, 4}, {21, 9}}));
    painter.drawPolyline(QPolygonF({{21, 15}, {21, 20}, {16, 20}}));
    painter.drawPolyline(QPolygonF({{8, 20}, {3, 20}, {3, 15}}));
    painter.setPen(QPen(kAccent, kLineWidth));
    painter.drawRect(QRectF(7.5, 8.5, 9, 7));
}

void drawZentrim(QPainter &painter)
{
    painter.drawEllipse(QPointF(6, 18), 2.8, 2.8);
    painter.drawEllipse(QPointF(6, 6), 2.8, 2.8);
    painter.drawLine(QPointF(8.3, 7.6), QPointF(21, 17));
    painter.drawLine(QPointF(8.3, 16.4), QPointF(21, 7));
    painter.setPen(QPen(kAccent, kLineWidth, Qt::DotLine));
    painter.drawLine(QPointF(12, 21.5), QPointF(22, 21.5));
}

void drawPieceList(QPainter &painter)
{
    painter.drawRect(QRectF(3, 4, 18, 16));
    painter.drawLine(QPointF(13, 4), QPointF(13, 20));
    for (const double y : {8.0, 12.0, 16.0}) {
        painter.drawLine(QPointF(15.5, y), QPointF(18.5, y));
    }
}

using Draw = void (*)(QPainter &);

QPixmap picture(Draw draw, const QColor &color, int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(double(side) / kSide, double(side) / kSide);
    painter.setPen(QPen(color, kLineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    draw(painter);
    return pixmap;
}

} // namespace

QIcon toolIcon(const QString &action, const QPalette &palette)
{
    static const QHash<QString, Draw> pictures{
        {QStringLiteral("open"), drawOpen},
        {QStringLiteral("export"), drawExport},
        {QStringLiteral("zoomIn"), drawZoomIn},
        {QStringLiteral("zoomOut"), drawZoomOut},
        {QStringLiteral("fit"), drawFit},
        {QStringLiteral("zentrim"), drawZentrim},
        {QStringLiteral("pieceList"), drawPieceList},
    };
    const Draw draw = pictures.value(action, nullptr);
    QIcon icon;
    for (const int side : {24, 48}) {
        if (draw != nullptr) {
            icon.addPixmap(picture(draw, palette.color(QPalette::ButtonText), side));
        }
    }
    return icon;
}

} // namespace KivSystem
