#include "MarkerItems.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <algorithm>
#include <cmath>

namespace KivSystem {

namespace {

// Pixels of the screen.
constexpr double kSmallestPiece = 3;   // one smaller is a spot
constexpr double kSmallestLetter = 6;  // nobody reads a smaller one
constexpr double kLargestLetter = 400; // above, letters are cut off
constexpr double kSmallestPart = 2;    // for a centimetre: below, notches are not seen
constexpr double kFinePicture = 4;     // for a centimetre: above, all points of a contour are drawn

constexpr double kLineSpacing = 1.25; // of a letter's height
constexpr double kOvershoot = 0.6;    // cm that notches and marks may reach beyond the contour

const QColor kOutline(0x2b, 0x2f, 0x36);
const QColor kNotch(0xc8, 0x1e, 0x1e);
const QColor kCutLine(0x1f, 0x5f, 0xbf);
const QColor kDrawnLine(0x6b, 0x72, 0x80);
const QColor kMark(0xb4, 0x53, 0x09);
const QColor kSelected(0x0b, 0x57, 0xd0);

QPen cosmetic(const QColor &color, double width = 1, Qt::PenStyle style = Qt::SolidLine)
{
    QPen pen(color, width, style);
    pen.setCosmetic(true);
    return pen;
}

double pixelsPerCentimetre(const QPainter &painter)
{
    return QStyleOptionGraphicsItem::levelOfDetailFromTransform(painter.worldTransform());
}

double widestLine(const QFontMetricsF &metrics, const QStringList &lines)
{
    double widest = 0;
    for (const QString &line : lines) {
        widest = std::max(widest, metrics.horizontalAdvance(line));
    }
    return widest;
}

// `pixels` is the height of a letter on the screen.
void drawLines(QPainter &painter, const SceneText &text, double pixels, double limit)
{
    QFont font = painter.font();
    font.setPixelSize(std::max(1, static_cast<int>(std::min(pixels, kLargestLetter))));
    const double widest = widestLine(QFontMetricsF(font), text.lines);
    if (limit > 0 && widest > limit) {
        pixels *= limit / widest;
        font.setPixelSize(std::max(1, static_cast<int>(pixels)));
    }
    if (pixels < kSmallestLetter) {
        return;
    }
    const QPointF place = painter.worldTransform().map(text.place);
    painter.save();
    painter.setWorldTransform(QTransform());
    painter.translate(place);
    painter.rotate(-text.angle);
    painter.setFont(font);
    const double step = font.pixelSize() * kLineSpacing;
    const bool isCentred = text.alignment.testFlag(Qt::AlignVCenter);
    double top = isCentred                               ? -step * text.lines.size() / 2
                 : text.alignment.testFlag(Qt::AlignTop) ? 0
                                                         : -step;
    constexpr double wide = 20000;
    const Qt::Alignment across = text.alignment & Qt::AlignHorizontal_Mask;
    const double left = across == Qt::AlignLeft ? 0 : across == Qt::AlignRight ? -wide : -wide / 2;
    for (const QString &line : text.lines) {
        painter.drawText(
            QRectF(left, top, wide, step), static_cast<int>(across | Qt::AlignVCenter), line);
        top += step;
    }
    painter.restore();
}

} // namespace

void drawSceneText(QPainter &painter, const SceneText &text)
{
    const double pixels = pixelsPerCentimetre(painter);
    double height = text.height * pixels;
    if (text.across > 0) {
        height = std::min(height, text.across * pixels / (text.lines.size() * kLineSpacing));
    }
    if (height >= kSmallestLetter) {
        drawLines(painter, text, height, text.room * pixels);
    }
}

PolygonItem::PolygonItem(Content content, const SceneOptions &options)
    : m_content(std::move(content))
    , m_options(options)
{
    const PieceOutline &outline = m_content.outline;
    m_bounds = outline.contour.boundingRect();
    for (const QPainterPath *path :
        {&outline.seam, &outline.notches, &outline.marks, &outline.cutLines, &outline.drawnLines}) {
        if (!path->isEmpty()) {
            m_bounds = m_bounds.united(path->boundingRect());
        }
    }
    m_bounds.adjust(-kOvershoot, -kOvershoot, kOvershoot, kOvershoot);
    setFlag(ItemIsSelectable, !m_content.cutDownPartner);
}

void PolygonItem::setFill(const QColor &fill)
{
    m_fill = fill;
    update();
}

void PolygonItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const double pixels = pixelsPerCentimetre(*painter);
    const QColor fill = isSelected() ? m_fill.lighter(112) : m_fill;
    if (std::max(m_bounds.width(), m_bounds.height()) * pixels < kSmallestPiece) {
        painter->fillRect(m_bounds, isSelected() ? kSelected : fill.darker(130));
        return;
    }
    const Qt::PenStyle style = m_content.cutDownPartner ? Qt::DashLine : Qt::SolidLine;
    painter->setPen(isSelected() ? cosmetic(kSelected, 3, style) : cosmetic(kOutline, 1, style));
    painter->setBrush(m_content.cutDownPartner ? QBrush(Qt::NoBrush) : QBrush(fill));
    if (pixels < kFinePicture && m_content.outline.coarse.size() > 2) {
        painter->drawPolygon(m_content.outline.coarse);
    } else {
        painter->drawPath(m_content.outline.contour);
    }
    paintDetails(*painter, pixels);
}

void PolygonItem::paintDetails(QPainter &painter, double pixels) const
{
    painter.setBrush(Qt::NoBrush);
    if (pixels >= kSmallestPart) {
        const PieceOutline &outline = m_content.outline;
        const std::pair<const QPainterPath *, QPen> lines[] = {
            {&outline.seam, cosmetic(kDrawnLine, 1, Qt::DashLine)},
            {&outline.drawnLines, cosmetic(kDrawnLine, 1, Qt::DashDotLine)},
            {&outline.cutLines, cosmetic(kCutLine)},
        };
        for (const auto &[path, pen] : lines) {
            if (!path->isEmpty()) {
                painter.setPen(pen);
                painter.drawPath(*path);
            }
        }
        if (m_options.notches) {
            painter.setPen(cosmetic(kNotch, 1.5));
            painter.drawPath(outline.notches);
            painter.setPen(cosmetic(kMark, 1.5));
            painter.drawPath(outline.marks);
        }
    }
    if (m_options.texts) {
        painter.setPen(QColor(0x11, 0x18, 0x27));
        for (const SceneText &text : m_content.texts) {
            drawSceneText(painter, text);
        }
    }
}

SceneTextItem::SceneTextItem(SceneText text, const QColor &color, double leastPixels)
    : m_text(std::move(text))
    , m_color(color)
    , m_leastPixels(leastPixels)
{
    // Wide enough for letters that are drawn larger than they are.
    const double reach = m_text.height * 2;
    int longest = 0;
    for (const QString &line : qAsConst(m_text.lines)) {
        longest = std::max(longest, line.size());
    }
    const double half = reach * std::max(longest, m_text.lines.size());
    m_bounds = QRectF(m_text.place.x() - half, m_text.place.y() - half, 2 * half, 2 * half);
}

void SceneTextItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const double scale = pixelsPerCentimetre(*painter);
    double pixels = std::max(m_text.height * scale, m_leastPixels);
    if (m_text.across > 0) {
        pixels = std::min(pixels, m_text.across * scale);
    }
    if (pixels >= kSmallestLetter) {
        painter->setPen(m_color);
        drawLines(*painter, m_text, pixels, m_text.room * scale);
    }
}

} // namespace KivSystem
