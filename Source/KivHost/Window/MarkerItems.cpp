#include "MarkerItems.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QTextBoundaryFinder>

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
constexpr double kLeastStripe = 4;     // between two lines of a pattern

constexpr double kLineSpacing = 1.25;  // of a letter's height
constexpr double kBaseOfMiddle = 0.36; // of a letter's height: from a line's middle to its base
constexpr double kOvershoot = 0.6;     // cm around a piece for what its lines are wide
constexpr double kReach = 1;           // cm across a line in which the mouse finds it
constexpr int kMeasured = 100;         // pixels of the letters that texts are measured by

const QColor kOutline(0x2b, 0x2f, 0x36);
const QColor kNotch(0xc8, 0x1e, 0x1e);
const QColor kCutLine(0x1f, 0x5f, 0xbf);
const QColor kDrawnLine(0x6b, 0x72, 0x80);
const QColor kMark(0xb4, 0x53, 0x09);
const QColor kLink(0x7c, 0x3a, 0xed);
const QColor kImage(0xbe, 0x18, 0x5d);
const QColor kStripe(0xa1, 0x62, 0x07, 0x90);
const QColor kSelected(0x0b, 0x57, 0xd0);

// Square ends, as pens have them, make the dashes of an SVG file run together.
QPen flatPen(const QColor &color, double width = 1, Qt::PenStyle style = Qt::SolidLine)
{
    return {color, width, style, Qt::FlatCap};
}

// Lines are drawn in pixels: pens that a view does not scale are unknown to many readers of SVG.
void drawPath(QPainter &painter, const QTransform &view, const QPainterPath &path)
{
    if (!path.isEmpty()) {
        painter.drawPath(view.map(path));
    }
}

double pixelsPerCentimetre(const QPainter &painter)
{
    return QStyleOptionGraphicsItem::levelOfDetailFromTransform(painter.worldTransform());
}

QRectF withOvershoot(const QRectF &rect)
{
    return rect.adjusted(-kOvershoot, -kOvershoot, kOvershoot, kOvershoot);
}

double widestLine(const QFontMetricsF &metrics, const QStringList &lines)
{
    double widest = 0;
    for (const QString &line : lines) {
        widest = std::max(widest, metrics.horizontalAdvance(line));
    }
    return widest;
}

QFont fontOf(const QPainter &painter, double pixels)
{
    QFont font = painter.font();
    font.setPixelSize(std::max(1, static_cast<int>(std::min(pixels, kLargestLetter))));
    return font;
}

struct Pose
{
    QPointF place;
    double angle = 0; // degrees, clockwise on the screen
};

// A place on a line, or on its first or last part drawn out.
Pose poseAt(const QPolygonF &path, double along)
{
    Pose pose;
    for (int i = 1; i < path.size(); ++i) {
        const QLineF part(path[i - 1], path[i]);
        const double length = part.length();
        if (length > 0) {
            pose = {part.pointAt(along / length), -part.angle()};
        }
        if (along < length) {
            break;
        }
        along -= length;
    }
    return pose;
}

double startOf(const SceneText &text, double along, double width)
{
    return text.alignment.testFlag(Qt::AlignLeft)    ? along
           : text.alignment.testFlag(Qt::AlignRight) ? along - width
                                                     : along - width / 2;
}

// Each letter for itself, square to the line; `line` is drawn `down` pixels below it. The painter
// draws in pixels, as the path is.
void drawAlong(
    QPainter &painter, const QPolygonF &path, const QString &line, double start, double down)
{
    const QFontMetricsF metrics(painter.font());
    const QTransform view = painter.worldTransform();
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, line);
    int from = 0;
    for (int to = letters.toNextBoundary(); to > from; to = letters.toNextBoundary()) {
        const QString letter = line.mid(from, to - from);
        const double width = metrics.horizontalAdvance(letter);
        const Pose pose = poseAt(path, start + width / 2);
        painter.translate(pose.place);
        painter.rotate(pose.angle);
        painter.drawText(QPointF(-width / 2, down), letter);
        painter.setWorldTransform(view);
        start += width;
        from = to;
    }
}

void drawAlongPath(
    QPainter &painter, const SceneText &text, const QStringList &lines, double pixelsPerCm)
{
    const QPolygonF path = painter.worldTransform().map(text.path);
    const QFontMetricsF metrics(painter.font());
    const double height = painter.font().pixelSize();
    double down = height * (kBaseOfMiddle - kLineSpacing * (lines.size() - 1) / 2);
    painter.setWorldTransform(QTransform());
    for (const QString &line : lines) {
        const double width = metrics.horizontalAdvance(line);
        drawAlong(painter, path, line, startOf(text, text.along * pixelsPerCm, width), down);
        down += height * kLineSpacing;
    }
}

// From the place to the top of the first line, downward; `step` is the height of a line.
double topOf(const SceneText &text, int lines, double step)
{
    return text.alignment.testFlag(Qt::AlignVCenter) ? -step * lines / 2
           : text.alignment.testFlag(Qt::AlignTop)   ? 0
                                                     : -step;
}

void drawAtPlace(QPainter &painter, const SceneText &text, const QStringList &lines)
{
    constexpr double wide = 20000;
    const QPointF place = painter.worldTransform().map(text.place);
    painter.setWorldTransform(QTransform());
    painter.translate(place);
    painter.rotate(-text.angle);
    const double step = painter.font().pixelSize() * kLineSpacing;
    double top = topOf(text, lines.size(), step);
    const Qt::Alignment across = text.alignment & Qt::AlignHorizontal_Mask;
    for (const QString &line : lines) {
        painter.drawText(QRectF(startOf(text, 0, wide), top, wide, step),
            static_cast<int>(across | Qt::AlignVCenter), line);
        top += step;
    }
}

// `pixels` is the height of a letter on the screen, and `least` that of one in a text whose end is
// left out. What was drawn is told in pixels: its width and its height, none if it was too small.
QSizeF drawLines(QPainter &painter, const SceneText &text, double pixels, double least)
{
    const double pixelsPerCm = pixelsPerCentimetre(painter);
    const double limit = text.room * pixelsPerCm;
    pixels = std::min(pixels, kLargestLetter);
    QFont font = fontOf(painter, pixels);
    QStringList lines = text.lines;
    double widest = widestLine(QFontMetricsF(font), lines);
    if (limit > 0 && widest > limit) {
        const double fitting = pixels * limit / widest;
        pixels = text.elided ? std::max(fitting, least) : fitting;
        font = fontOf(painter, pixels);
        widest = limit;
        if (pixels > fitting) {
            const QFontMetricsF metrics(font);
            for (QString &line : lines) {
                line = metrics.elidedText(line, Qt::ElideRight, limit);
            }
            widest = widestLine(metrics, lines);
            pixels = widest > limit ? 0 : pixels; // no room for a letter
        }
    }
    if (pixels < kSmallestLetter) {
        return {};
    }
    painter.save();
    painter.setFont(font);
    if (text.path.size() > 1) {
        drawAlongPath(painter, text, lines, pixelsPerCm);
    } else {
        drawAtPlace(painter, text, lines);
    }
    painter.restore();
    return {widest, font.pixelSize() * kLineSpacing * lines.size()};
}

// Where lines stand from `low` to `high`, in no order; none if they stand too near to each other.
std::vector<double> repeated(
    const StripesItem::Stripes &stripes, double low, double high, double pixels)
{
    std::vector<double> places;
    const auto lines = static_cast<double>(stripes.positions.size());
    if (stripes.repetition * pixels < kLeastStripe * lines) {
        return places;
    }
    for (const double position : stripes.positions) {
        const double first = std::ceil((low - position) / stripes.repetition);
        for (double i = 0; position + (first + i) * stripes.repetition <= high; ++i) {
            places.push_back(position + (first + i) * stripes.repetition);
        }
    }
    return places;
}

} // namespace

SceneText SceneText::translated(const QPointF &shift) const
{
    SceneText moved = *this;
    moved.place += shift;
    moved.path.translate(shift);
    return moved;
}

QRectF extentOf(const SceneText &text)
{
    QFont font;
    font.setPixelSize(kMeasured);
    const int lines = text.lines.size();
    double height = text.height;
    if (text.across > 0) {
        height = std::min(height, text.across / (lines * kLineSpacing));
    }
    double width = widestLine(QFontMetricsF(font), text.lines) / kMeasured * height;
    if (text.room > 0 && width > text.room) {
        height *= text.room / width;
        width = text.room;
    }
    const double step = height * kLineSpacing;
    if (text.path.size() > 1) {
        const double reach = step * lines;
        QRectF extent = text.path.boundingRect();
        for (const double along : {startOf(text, text.along, width), // it may reach beyond the path
                 startOf(text, text.along, width) + width}) {
            const QPointF end = poseAt(text.path, along).place;
            extent = extent.united(QRectF(end, QSizeF(height, height)));
        }
        return extent.adjusted(-reach, -reach, reach, reach);
    }
    const QRectF level(
        startOf(text, 0, width), -topOf(text, lines, step) - step * lines, width, step * lines);
    return QTransform().translate(text.place.x(), text.place.y()).rotate(text.angle).mapRect(level);
}

void drawSceneText(QPainter &painter, const SceneText &text)
{
    const double pixels = pixelsPerCentimetre(painter);
    double height = text.height * pixels;
    if (text.across > 0) {
        height = std::min(height, text.across * pixels / (text.lines.size() * kLineSpacing));
    }
    if (height >= kSmallestLetter) {
        drawLines(painter, text, height, 0);
    }
}

PolygonItem::PolygonItem(const PieceOutline &outline, Kind kind)
    : m_contour(outline.contour)
    , m_coarse(outline.coarse)
    , m_kind(kind)
    , m_bounds(withOvershoot(outline.contour.boundingRect()))
{
    setFlag(ItemIsSelectable, kind == Piece);
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
    const QTransform view = painter->worldTransform();
    painter->save();
    painter->setWorldTransform(QTransform());
    const Qt::PenStyle style = m_kind == CutDownPartner ? Qt::DashLine : Qt::SolidLine;
    painter->setPen(isSelected() ? flatPen(kSelected, 3, style) : flatPen(kOutline, 1, style));
    painter->setBrush(m_kind == CutDownPartner ? QBrush(Qt::NoBrush) : QBrush(fill));
    if (pixels < kFinePicture && m_coarse.size() > 2) {
        painter->drawPolygon(view.map(m_coarse));
    } else {
        drawPath(*painter, view, m_contour);
    }
    painter->restore();
}

DetailsItem::DetailsItem(const SceneOptions &options) : m_options(options)
{
    setFlag(ItemUsesExtendedStyleOption); // only what is in sight is drawn
    setAcceptedMouseButtons(Qt::NoButton);
}

QRectF DetailsItem::add(PieceOutline outline, const SceneText &name, const QPointF &shift)
{
    QRectF bounds = outline.contour.boundingRect();
    for (const QPainterPath *path :
        {&outline.seam, &outline.notches, &outline.marks, &outline.drills, &outline.images,
            &outline.cutLines, &outline.drawnLines, &outline.links}) {
        if (!path->isEmpty()) {
            bounds = bounds.united(path->boundingRect());
        }
    }
    bounds = withOvershoot(bounds).translated(shift);
    prepareGeometryChange();
    m_bounds = m_bounds.united(bounds);
    m_details.push_back({std::move(outline), shift, name.translated(shift), bounds});
    return bounds;
}

void DetailsItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *)
{
    const auto forEachInSight = [&](const auto &draw) {
        for (const Details &details : m_details) {
            if (details.bounds.intersects(option->exposedRect)) {
                draw(details);
            }
        }
    };
    const QTransform view = painter->worldTransform();
    if (pixelsPerCentimetre(*painter) >= kSmallestPart) {
        painter->save();
        painter->setWorldTransform(QTransform());
        painter->setBrush(Qt::NoBrush);
        forEachInSight([&](const Details &details) { paintLines(*painter, details, view); });
        painter->restore();
    }
    if (m_options.texts) {
        painter->setPen(QColor(0x11, 0x18, 0x27));
        forEachInSight([&](const Details &details) { drawSceneText(*painter, details.name); });
    }
}

void DetailsItem::paintLines(
    QPainter &painter, const Details &details, const QTransform &view) const
{
    const PieceOutline &outline = details.outline;
    const QTransform place = QTransform::fromTranslate(details.shift.x(), details.shift.y()) * view;
    const std::pair<const QPainterPath *, QPen> lines[] = {
        {&outline.seam, flatPen(kDrawnLine, 1, Qt::DashLine)},
        {&outline.drawnLines, flatPen(kDrawnLine, 1, Qt::DashDotLine)},
        {&outline.cutLines, flatPen(kCutLine, 1)},
        {&outline.links, flatPen(kLink, 1)},
    };
    for (const auto &[path, pen] : lines) {
        painter.setPen(pen);
        drawPath(painter, place, *path);
    }
    if (m_options.notches) {
        painter.setPen(flatPen(kImage, 1, Qt::DashLine));
        drawPath(painter, place, outline.images);
        painter.setPen(flatPen(kNotch, 1.5));
        drawPath(painter, place, outline.notches);
        painter.setPen(flatPen(kMark, 1.5));
        drawPath(painter, place, outline.marks);
        drawPath(painter, place, outline.drills);
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
    const double half = std::max(reach * std::max(longest, m_text.lines.size()), m_text.room);
    m_bounds = QRectF(m_text.place.x() - half, m_text.place.y() - half, 2 * half, 2 * half);
    if (m_text.path.size() > 1) {
        m_bounds = m_text.path.boundingRect().adjusted(-half, -half, half, half);
    }
    setAcceptedMouseButtons(Qt::NoButton);
}

void SceneTextItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const double scale = pixelsPerCentimetre(*painter);
    double pixels = std::max(m_text.height * scale, m_leastPixels);
    if (m_text.across > 0) {
        pixels = std::min(pixels, m_text.across * scale);
    }
    m_shape = QPainterPath();
    if (pixels >= kSmallestLetter) {
        painter->setPen(m_color);
        const QSizeF drawn = drawLines(*painter, m_text, pixels, m_leastPixels) / scale;
        const int lines = std::max(1, m_text.lines.size());
        const double top = topOf(m_text, lines, drawn.height() / lines);
        m_shape.addRect({m_text.place.x() + startOf(m_text, 0, drawn.width()),
            m_text.place.y() - top - drawn.height(), drawn.width(), drawn.height()});
    }
}

LineItem::LineItem(const QPainterPath &path, const QPen &pen) : QGraphicsPathItem(path)
{
    setPen(pen);
}

QPainterPath LineItem::shape() const
{
    if (brush().style() != Qt::NoBrush) {
        return path();
    }
    QPainterPathStroker stroker;
    stroker.setWidth(kReach);
    return stroker.createStroke(path());
}

void LineItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const QTransform view = painter->worldTransform();
    painter->save();
    painter->setWorldTransform(QTransform());
    painter->setPen(pen());
    painter->setBrush(brush());
    drawPath(*painter, view, path());
    painter->restore();
}

StripesItem::StripesItem(const QRectF &cloth, Stripes across, Stripes along)
    : m_cloth(cloth)
    , m_across(std::move(across))
    , m_along(std::move(along))
{
    setFlag(ItemUsesExtendedStyleOption); // only what is in sight is drawn
    setAcceptedMouseButtons(Qt::NoButton);
}

void StripesItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *)
{
    const double pixels = pixelsPerCentimetre(*painter);
    const QRectF seen = m_cloth.intersected(option->exposedRect);
    const QTransform view = painter->worldTransform();
    QVector<QLineF> lines;
    for (const double x :
        repeated(m_across, seen.left() - m_cloth.left(), seen.right() - m_cloth.left(), pixels)) {
        const double place = m_cloth.left() + x;
        lines.append(view.map(QLineF(place, seen.top(), place, seen.bottom())));
    }
    for (const double y :
        repeated(m_along, seen.top() - m_cloth.top(), seen.bottom() - m_cloth.top(), pixels)) {
        const double place = m_cloth.top() + y;
        lines.append(view.map(QLineF(seen.left(), place, seen.right(), place)));
    }
    painter->save();
    painter->setWorldTransform(QTransform());
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(flatPen(kStripe, 1));
    painter->drawLines(lines);
    painter->restore();
}

} // namespace KivSystem
