#include "IllustratorPunch.h"

#include "Failures.h"
#include "IllustratorPrimitives.h"

#include "KivGeo/Affine.h"
#include "KivMarker/Point.h"

#include <QPainterPath>
#include <QPointF>
#include <QPolygonF>
#include <QTransform>
#include <QVector>

#include <array>
#include <cmath>
#include <initializer_list>

namespace KivSystem {
namespace KivIllustrator {
namespace {

using Points = QVector<QPointF>;

void writePoints(QTextStream &out, const Points &points)
{
    if (points.isEmpty()) {
        return; // a curved shape that a matrix without area has drawn together
    }
    ILLUST_Move_To(out, points[0].x(), points[0].y());
    for (int i = 1; i < points.size(); ++i) {
        ILLUST_Line_To(out, points[i].x(), points[i].y());
    }
}

void writeOpen(QTextStream &out, const Points &points)
{
    writePoints(out, points);
    strokePath(out);
}

void writeClosed(QTextStream &out, const Points &points)
{
    writePoints(out, points);
    closePath(out);
}

bool isDrawn(float size)
{
    return std::abs(size) > 1e-12;
}

bool isTurnedDrawn(float size)
{
    return std::abs(size) > 1e-05;
}

// --- Along the axes --------------------------------------------------------------------------

// Half the length of the stroke at the end of a bar: a tenth of the two opposite bars together,
// by way of inches and of single precision, which is what the sizes have.
double halfEndStroke(float bar, float opposite)
{
    constexpr double kCmPerInch = 2.5396825396825;
    constexpr float kShare = 0.50793654F;
    const auto inches = static_cast<float>(static_cast<double>(bar + opposite) / kCmPerInch);
    const float half = inches * kShare * 0.5F;
    return static_cast<double>(half);
}

// The end of a bar, in the precision of its size.
double barEnd(double end)
{
    return static_cast<double>(static_cast<float>(end));
}

void writeBarAlongX(QTextStream &out, double x, double y, double way, double half)
{
    writeOpen(out, {{x + way, y}, {x, y}});
    const double e = barEnd(x + way);
    writeOpen(out, {{e, y - half}, {e, y + half}});
}

void writeBarAlongY(QTextStream &out, double x, double y, double way, double half)
{
    writeOpen(out, {{x, y + way}, {x, y}});
    const double e = barEnd(y + way);
    writeOpen(out, {{x - half, e}, {x + half, e}});
}

void writeBars(QTextStream &out, double x, double y, const PunchFeature &punch)
{
    const double halfX = halfEndStroke(punch.punchBarLeft, punch.punchBarRight);
    const double halfY = halfEndStroke(punch.punchBarDown, punch.punchBarUp);
    if (isDrawn(punch.punchBarLeft)) {
        writeBarAlongX(out, x, y, -static_cast<double>(punch.punchBarLeft), halfX);
    }
    if (isDrawn(punch.punchBarRight)) {
        writeBarAlongX(out, x, y, static_cast<double>(punch.punchBarRight), halfX);
    }
    if (isDrawn(punch.punchBarDown)) {
        writeBarAlongY(out, x, y, -static_cast<double>(punch.punchBarDown), halfY);
    }
    if (isDrawn(punch.punchBarUp)) {
        writeBarAlongY(out, x, y, static_cast<double>(punch.punchBarUp), halfY);
    }
}

double halfOf(float size)
{
    return static_cast<double>(size * 0.5F);
}

void writePlus(QTextStream &out, double x, double y, float size)
{
    const double h = halfOf(size);
    writeOpen(out, {{x - h, y}, {x + h, y}});
    writeOpen(out, {{x, y - h}, {x, y + h}});
}

void writeCross(QTextStream &out, double x, double y, float size)
{
    const double h = halfOf(size);
    writeOpen(out, {{x - h, y - h}, {x + h, y + h}});
    writeOpen(out, {{x - h, y + h}, {x + h, y - h}});
}

void writeBowTie(QTextStream &out, double x, double y, float size)
{
    const double h = halfOf(size);
    const double q = static_cast<double>(size) / 6;
    writeClosed(
        out, {{x - h, y + q}, {x + h, y - q}, {x + h, y + q}, {x - h, y - q}, {x - h, y + q}});
}

void writeSquare(QTextStream &out, double x, double y, float size)
{
    const double h = halfOf(size);
    writeClosed(
        out, {{x - h, y + h}, {x - h, y - h}, {x + h, y - h}, {x + h, y + h}, {x - h, y + h}});
}

void writeDiamond(QTextStream &out, double x, double y, float size)
{
    const double h = halfOf(size);
    writeClosed(out, {{x - h, y}, {x, y - h}, {x + h, y}, {x, y + h}, {x - h, y}});
}

void writeOctagon(QTextStream &out, double x, double y, float size)
{
    const double h = halfOf(size);
    const double q = static_cast<double>(size) / 5;
    writeClosed(
        out, {{x - h, y - q}, {x - q, y - h}, {x + q, y - h}, {x + h, y - q}, {x + h, y + q},
                 {x + q, y + h}, {x - q, y + h}, {x - h, y + q}, {x - h, y - q}});
}

// --- Turned by the matrix --------------------------------------------------------------------

QPointF pointOf(const GeoPoint2D &point)
{
    return {point.x, point.y};
}

/// Puts the points of a turned shape, told around the origin, around the punch.
class Turned
{
public:
    Turned(double x, double y, const std::array<double, 4> &matrix)
        : m_place(x, y)
        , m_affine(matrix[0], matrix[1], matrix[2], matrix[3], 0, 0)
    {}

    QPointF operator()(const GeoPoint2D &local) const
    {
        return pointOf(m_affine.applyToPoint(local).translated(m_place));
    }
    QPointF place() const { return pointOf(m_place); }
    const GeoAffine &affine() const { return m_affine; }

    Points operator()(std::initializer_list<GeoPoint2D> locals) const
    {
        Points points;
        for (const GeoPoint2D &local : locals) {
            points.append((*this)(local));
        }
        return points;
    }

private:
    GeoPoint2D m_place;
    GeoAffine m_affine;
};

void writeTriangleLeft(QTextStream &out, const Turned &turned, double s)
{
    const double h = s / 2;
    writeClosed(out, turned({{-h, 0}, {h, h}, {h, -h}, {-h, 0}}));
}

void writeTriangleRight(QTextStream &out, const Turned &turned, double s)
{
    const double h = s / 2;
    writeClosed(out, turned({{h, 0}, {-h, h}, {-h, -h}, {h, 0}}));
}

void writeTwinStroke(QTextStream &out, const Turned &turned, double s)
{
    const GeoPoint2D locals[] = {{0.375 * s, 0.375 * s}, {0.3 * s, 0.44 * s}, {0.5 * s, 0.5 * s},
        {-0.5 * s, -0.5 * s}, {-0.3 * s, -0.44 * s}, {-0.375 * s, -0.375 * s}};
    Points first;
    Points second;
    for (const GeoPoint2D &local : locals) {
        first.append(turned(local));
        second.append(turned(local.rotated(90.0, GeoPoint2D::origin())));
    }
    writePoints(out, first);
    writeClosed(out, second);
}

// `side` is 1 for the hook itself and -1 for its mirror image.
void addHook(QPainterPath &path, const Turned &turned, double side, double s)
{
    const double along = side * s;
    path.moveTo(turned({0.28 * along, 0.4 * s}));
    path.lineTo(turned({-0.42 * along, -0.61 * s}));
    path.cubicTo(turned({-0.6 * along, -0.31 * s}), turned({-0.37 * along, -0.41 * s}),
        turned({-0.2 * along, -0.29 * s}));
}

// The first hook stands in both polygons.
void writeTwinCurve(QTextStream &out, const Turned &turned, double s)
{
    QPainterPath path;
    addHook(path, turned, 1, s);
    writePoints(out, path.toFillPolygon(QTransform()));
    addHook(path, turned, -1, s);
    writeClosed(out, path.toFillPolygon(QTransform()));
}

void addHalfDisc(QPainterPath &path, const QPointF &centre, double radius, double startAngle)
{
    constexpr double kHalfTurn = -180.0;
    const QRectF rect(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    path.moveTo(rect.center());
    path.arcTo(rect, startAngle, kHalfTurn);
    path.closeSubpath();
}

// Whole degrees, the only thing that this shape takes from the matrix.
void writeHalfDiscs(QTextStream &out, const Turned &turned, double s)
{
    constexpr double kDegrees = 57.29577951308232;
    const GeoPoint2D tip = turned.affine().applyToPoint({s / 2, 0});
    const int startAngle = -static_cast<int>(std::atan2(tip.y, tip.x) * kDegrees);
    QPainterPath path;
    addHalfDisc(path, turned.place(), s / 2, startAngle);
    addHalfDisc(path, turned.place(), s / 4, startAngle);
    writeClosed(out, path.toFillPolygon(QTransform()));
}

void writeCorner(QTextStream &out, const Turned &turned, double s)
{
    Points points{turned.place()};
    points += turned({{0, s}, {s / 5, s}, {s / 5, s / 5}, {s, s / 5}, {s, 0}});
    points += turned.place();
    writeClosed(out, points);
}

struct AxisShape
{
    float PunchFeature::*size;
    void (*write)(QTextStream &out, double x, double y, float size);
};

constexpr AxisShape kAxisShapes[] = {
    {&PunchFeature::punchPlus, writePlus},
    {&PunchFeature::punchCross, writeCross},
    {&PunchFeature::punchBowTie, writeBowTie},
    {&PunchFeature::punchSquare, writeSquare},
    {&PunchFeature::punchDiamond, writeDiamond},
    {&PunchFeature::punchOctagon, writeOctagon},
};

struct TurnedShape
{
    float PunchFeature::*size;
    void (*write)(QTextStream &out, const Turned &turned, double s);
};

constexpr TurnedShape kTurnedShapes[] = {
    {&PunchFeature::punchTriangleLeft, writeTriangleLeft},
    {&PunchFeature::punchTriangleRight, writeTriangleRight},
    {&PunchFeature::punchTwinStroke, writeTwinStroke},
    {&PunchFeature::punchTwinCurve, writeTwinCurve},
    {&PunchFeature::punchHalfDiscs, writeHalfDiscs},
    {&PunchFeature::punchCorner, writeCorner},
};

} // namespace

void ILLUST_PunchHole(QTextStream &out, double x, double y, const PunchFeature *punch)
{
    KIV_CHECK_OPERATION(punch != nullptr);
    ILLUST_First_Fin_Groupe(out, true);
    writeBars(out, x, y, *punch);
    for (const AxisShape &shape : kAxisShapes) {
        const float size = punch->*shape.size;
        if (isDrawn(size)) {
            shape.write(out, x, y, size);
        }
    }
    const Turned turned(x, y, punch->punchMatrix);
    for (const TurnedShape &shape : kTurnedShapes) {
        const float size = punch->*shape.size;
        if (isTurnedDrawn(size)) {
            shape.write(out, turned, static_cast<double>(size));
        }
    }
    ILLUST_First_Fin_Groupe(out, false);
}

} // namespace KivIllustrator
} // namespace KivSystem
