#include "PieceOutline.h"

#include "KivMarker/Image.h"
#include "KivMarker/Links.h"
#include "KivMarker/Polygon.h"

#include <QTransform>

#include <cmath>
#include <initializer_list>
#include <vector>

namespace KivSystem {

namespace {

constexpr double kNotchLength = 0.5; // cm, of a notch without a vector
constexpr double kMatchMark = 0.5;   // cm, side of the square at a match point
constexpr int kMostStrokes = 1000;   // a link with a finer pattern is solid
constexpr double kCoarseStep = 0.8;  // cm between two points of a coarse contour

QPointF pointOf(const GeoPoint2D &point)
{
    return {point.x, point.y};
}

void addLine(QPainterPath &path, const QPointF &from, const QPointF &to)
{
    path.moveTo(from);
    path.lineTo(to);
}

// Square to the contour at a point, into the piece, one centimetre long.
QPointF inward(const CDbVectorsObjectTable &contour, int index, bool counterClockwise)
{
    const int count = contour.size();
    const QPointF before = pointOf(contour[(index + count - 1) % count]);
    const QPointF along = pointOf(contour[(index + 1) % count]) - before;
    const double length = std::hypot(along.x(), along.y());
    if (length == 0) {
        return {};
    }
    const QPointF left(-along.y() / length, along.x() / length);
    return counterClockwise ? left : -left;
}

void addNotch(QPainterPath &path, const CDbMarkerPointObject &point, const QPointF &inside)
{
    const QPointF base = pointOf(point);
    QPointF way(static_cast<double>(point.notchDx), static_cast<double>(point.notchDy));
    if (way.isNull()) {
        way = inside * kNotchLength;
    }
    const QPointF aside = QPointF(-way.y(), way.x()) / 2;
    switch (point.pointType) {
    case DoubleNotch:
        addLine(path, base - aside, base - aside + way);
        addLine(path, base + aside, base + aside + way);
        break;
    case VNotch:
        addLine(path, base - aside, base + way);
        path.lineTo(base + aside);
        break;
    case UserNotch: {
        addLine(path, base, base + way);
        const double length = std::hypot(aside.x(), aside.y());
        if (length > 0) {
            const QPointF bar =
                aside * (static_cast<double>(point.notchWidth) / 2 / length); // half of it
            addLine(path, base + way - bar, base + way + bar);
        }
        break;
    }
    default:
        addLine(path, base, base + way);
    }
}

bool isNotch(int type)
{
    return type == SimpleNotch || type == DoubleNotch || type == VNotch || type == UserNotch;
}

using Points = QVector<QPointF>;

QPainterPath lines(std::initializer_list<Points> polygons)
{
    QPainterPath path;
    for (const Points &polygon : polygons) {
        path.addPolygon(polygon);
    }
    return path;
}

// `side` is 1 for the hook itself and -1 for its mirror image.
void addHook(QPainterPath &path, double side)
{
    path.moveTo(0.28 * side, 0.4);
    path.lineTo(-0.42 * side, -0.61);
    path.cubicTo(-0.6 * side, -0.31, -0.37 * side, -0.41, -0.2 * side, -0.29);
}

QPainterPath twinCurve()
{
    QPainterPath path;
    addHook(path, 1);
    addHook(path, -1);
    return path;
}

QPainterPath halfDiscs()
{
    QPainterPath path;
    for (const double radius : {0.5, 0.25}) {
        path.moveTo(0, 0);
        path.arcTo(QRectF(-radius, -radius, 2 * radius, 2 * radius), 0, -180); // y is upward
        path.closeSubpath();
    }
    return path;
}

QPainterPath twinStroke()
{
    const QPolygonF stroke(Points{
        {0.375, 0.375}, {0.3, 0.44}, {0.5, 0.5}, {-0.5, -0.5}, {-0.3, -0.44}, {-0.375, -0.375}});
    return lines({stroke, QTransform(0, 1, -1, 0, 0, 0).map(stroke)});
}

/// A figure of the size 1 about the origin.
struct PunchFigure
{
    enum Turning
    {
        Upright,
        ByMatrix,
        ByAngle, ///< of the matrix
    };

    float PunchFeature::*size;
    Turning turning;
    QPainterPath path;
};

const std::vector<PunchFigure> &punchFigures()
{
    using Feature = PunchFeature;
    constexpr PunchFigure::Turning upright = PunchFigure::Upright;
    constexpr PunchFigure::Turning turned = PunchFigure::ByMatrix;
    constexpr double h = 0.5;
    constexpr double sixth = 1.0 / 6;
    static const std::vector<PunchFigure> figures{
        {&Feature::punchPlus, upright, lines({Points{{-h, 0}, {h, 0}}, Points{{0, -h}, {0, h}}})},
        {&Feature::punchCross, upright,
            lines({Points{{-h, -h}, {h, h}}, Points{{-h, h}, {h, -h}}})},
        {&Feature::punchBowTie, upright,
            lines({Points{{-h, sixth}, {h, -sixth}, {h, sixth}, {-h, -sixth}, {-h, sixth}}})},
        {&Feature::punchSquare, upright,
            lines({Points{{-h, h}, {-h, -h}, {h, -h}, {h, h}, {-h, h}}})},
        {&Feature::punchDiamond, upright,
            lines({Points{{-h, 0}, {0, -h}, {h, 0}, {0, h}, {-h, 0}}})},
        {&Feature::punchOctagon, upright,
            lines({Points{{-h, -0.2}, {-0.2, -h}, {0.2, -h}, {h, -0.2}, {h, 0.2}, {0.2, h},
                {-0.2, h}, {-h, 0.2}, {-h, -0.2}}})},
        {&Feature::punchTriangleLeft, turned, lines({Points{{-h, 0}, {h, h}, {h, -h}, {-h, 0}}})},
        {&Feature::punchTriangleRight, turned, lines({Points{{h, 0}, {-h, h}, {-h, -h}, {h, 0}}})},
        {&Feature::punchTwinStroke, turned, twinStroke()},
        {&Feature::punchTwinCurve, turned, twinCurve()},
        {&Feature::punchHalfDiscs, PunchFigure::ByAngle, halfDiscs()},
        {&Feature::punchCorner, turned,
            lines({Points{{0, 0}, {0, 1}, {0.2, 1}, {0.2, 0.2}, {1, 0.2}, {1, 0}, {0, 0}}})},
    };
    return figures;
}

// A bar from the place to its end, with a stroke across it there, a tenth of it and the opposite
// one together to either side.
void addBar(
    QPainterPath &path, const QPointF &place, const QPointF &way, float size, float opposite)
{
    if (size != 0.0F) {
        const QPointF end = place + way * static_cast<double>(size);
        const QPointF across =
            QPointF(-way.y(), way.x()) * (static_cast<double>(size + opposite) / 10);
        addLine(path, place, end);
        addLine(path, end - across, end + across);
    }
}

void addPunch(QPainterPath &path, const QPointF &place, const PunchFeature &punch)
{
    addBar(path, place, {-1, 0}, punch.punchBarLeft, punch.punchBarRight);
    addBar(path, place, {1, 0}, punch.punchBarRight, punch.punchBarLeft);
    addBar(path, place, {0, -1}, punch.punchBarDown, punch.punchBarUp);
    addBar(path, place, {0, 1}, punch.punchBarUp, punch.punchBarDown);
    const auto &[a, b, c, d] = punch.punchMatrix;
    for (const PunchFigure &figure : punchFigures()) {
        const auto size = static_cast<double>(punch.*figure.size);
        if (size == 0) {
            continue;
        }
        QTransform turn;
        if (figure.turning == PunchFigure::ByMatrix) {
            turn = QTransform(a, b, c, d, 0, 0);
        } else if (figure.turning == PunchFigure::ByAngle) {
            turn.rotateRadians(std::atan2(b, a));
        }
        path.addPath((QTransform::fromScale(size, size) * turn).map(figure.path).translated(place));
    }
}

// Of a point of the contour, inside or on an internal line.
void addMark(QPainterPath &path, const CDbMarkerPointObject &point)
{
    const QPointF place = pointOf(point);
    if ((point.pointType == Punch || point.pointType == UserPunch) && point.punch() != nullptr) {
        addPunch(path, place, *point.punch());
    }
    if (point.matchPoint) {
        PunchFeature match;
        match.punchSquare = static_cast<float>(kMatchMark);
        match.punchPlus = match.punchSquare;
        addPunch(path, place, match);
    }
}

void addContourSymbols(PieceOutline &outline, const CDbVectorsObjectTable &contour)
{
    const bool counterClockwise = contour.isCounterClockwise();
    for (int i = 0; i < contour.size(); ++i) {
        if (isNotch(contour[i].pointType)) {
            addNotch(outline.notches, contour[i], inward(contour, i, counterClockwise));
        }
        addMark(outline.marks, contour[i]);
    }
}

// Collects the strokes of a link.
class LinkStrokes : public CDbTraitParams
{
public:
    explicit LinkStrokes(QPainterPath &path) : m_path(path) {}

    e_Type_Preference preferenceOutput() const override { return PreferenceScreen; }
    void drawingSingleLine(const GeoPoint2D &from, const GeoPoint2D &to) override
    {
        addLine(m_path, pointOf(from), pointOf(to));
    }

private:
    QPainterPath &m_path;
};

// A link without one of its points has no length and no strokes.
void addLink(QPainterPath &path, const CDbPolygon &polygon, const CDbLinkObject &link)
{
    CDbPointKIV from;
    CDbPointKIV to;
    CDbLinkObject::getExtremitiesMarkerLink(
        polygon.findContour(CutContour), &polygon.internalPoints, link, &from, &to);
    LineObject line;
    line.setV1AndV2(&from, &to);
    if (link.linkKind == TreeLink) {
        *line.lineTrait = TraitInfo{link.traitScalar, link.traitTriple, link.traitFlag, 0};
    }
    QPainterPath drawn;
    LinkStrokes strokes(drawn);
    CDbDevice::drawKivLineObject(&line, &strokes, 0);
    if (drawn.elementCount() > 2 * kMostStrokes) {
        drawn = QPainterPath();
        line.lineTrait->traitFlag = SolidTrait;
        CDbDevice::drawKivLineObject(&line, &strokes, 0);
    }
    path.addPath(drawn);
}

void addOpen(QPainterPath &path, const CDbVectorsObjectTable &points)
{
    for (int i = 0; i < points.size(); ++i) {
        if (i == 0) {
            path.moveTo(pointOf(points[i]));
        } else {
            path.lineTo(pointOf(points[i]));
        }
    }
}

void addFrame(QPainterPath &path, const CDbImage &image)
{
    using Image = CDbImage;
    path.moveTo(pointOf(image.getVector(Image::LeftBottom)));
    for (const auto corner : {Image::RightBottom, Image::RightTop, Image::LeftTop}) {
        path.lineTo(pointOf(image.getVector(corner)));
    }
    path.closeSubpath();
}

QPolygonF coarseContour(const CDbVectorsObjectTable &contour)
{
    QPolygonF coarse;
    for (const CDbMarkerPointObject &point : contour) {
        const QPointF place = pointOf(point);
        if (coarse.isEmpty() || std::hypot(place.x() - coarse.last().x(),
                                    place.y() - coarse.last().y()) >= kCoarseStep) {
            coarse.append(place);
        }
    }
    return coarse;
}

} // namespace

QPainterPath contourPath(const CDbVectorsObjectTable &points)
{
    QPainterPath path;
    addOpen(path, points);
    path.closeSubpath();
    return path;
}

PieceOutline outlineOf(const CDbPolygon &polygon)
{
    PieceOutline outline;
    if (const CDbVectorsObjectTable *contour = polygon.findContour(CutContour)) {
        outline.contour = contourPath(*contour);
        outline.coarse = coarseContour(*contour);
        addContourSymbols(outline, *contour);
    }
    if (const CDbVectorsObjectTable *seam = polygon.findContour(SeamContour)) {
        outline.seam = contourPath(*seam);
        addContourSymbols(outline, *seam);
    }
    for (const CDbMarkerPointObject &point : polygon.internalPoints) {
        addMark(outline.drills, point);
    }
    for (const InternalLine &line : polygon.internalLines()) {
        addOpen(line.kind == InternalLine::Kind::Cut ? outline.cutLines : outline.drawnLines,
            line.points);
        for (const CDbMarkerPointObject &point : line.points) {
            addMark(outline.drills, point);
        }
    }
    for (const CDbImage *image : polygon.getImages()) {
        addFrame(outline.images, *image);
    }
    for (short i = 0; polygon.polygonLinks != nullptr && i < polygon.polygonLinks->size(); ++i) {
        addLink(outline.links, polygon, (*polygon.polygonLinks)[i]);
    }
    return outline;
}

} // namespace KivSystem
