/// Points of pieces and of placed polygons, with what a cutter does at them.
///
/// Coordinates and sizes are centimetres.

#ifndef KIVMARKER_POINT_H
#define KIVMARKER_POINT_H

#include "KivGeo/Point2D.h"
#include "KivGeo/Polygon2D.h"

#include <array>
#include <memory>

namespace KivSystem {

/// The shape of a drill or punch mark: every size that is not zero adds its own figure, all of
/// them centred on the point. Sizes are centimetres.
struct PunchFeature
{
    float punchBarLeft = 0;       ///< bar from the point to the left
    float punchBarRight = 0;      ///< bar to the right
    float punchBarDown = 0;       ///< bar downward
    float punchBarUp = 0;         ///< bar upward
    float punchPlus = 0;          ///< plus sign
    float punchCross = 0;         ///< diagonal cross
    float punchBowTie = 0;        ///< bow tie
    float punchSquare = 0;        ///< square
    float punchDiamond = 0;       ///< diamond
    float punchOctagon = 0;       ///< octagon
    float punchTriangleLeft = 0;  ///< triangle, tip to the left, turned by the matrix
    float punchTriangleRight = 0; ///< triangle, tip to the right, turned by the matrix
    float punchTwinStroke = 0;    ///< two crossing strokes, turned by the matrix
    float punchTwinCurve = 0;     ///< two mirrored hooks, turned by the matrix
    float punchHalfDiscs = 0;     ///< two half discs, turned by the matrix's angle only
    float punchCorner = 0;        ///< corner, turned by the matrix
    std::array<double, 4> punchMatrix{1, 0, 0, 1}; ///< a, b, c, d of a GeoAffine without shift
};

bool operator==(const PunchFeature &left, const PunchFeature &right);

/// Values of CDbMarkerPointObject::pointType.
enum MarkerPointType : int
{
    PlainPoint = 0,
    CurvePoint = 1, ///< lies on a curve: the outline is smooth here
    SimpleNotch = 2,
    DoubleNotch = 3,
    VNotch = 4,
    Punch = 5,
    UserPunch = 6, ///< a punch that the user assigned a tool of its own
    UserNotch = 10,
};

/// One point of a contour, or a mark inside a piece. A value: copies share the punch shape, which
/// is never changed once it is set.
class CDbMarkerPointObject : public GeoPoint2D
{
public:
    CDbMarkerPointObject() = default;
    CDbMarkerPointObject(double px, double py, MarkerPointType type = PlainPoint);

    int pointType = PlainPoint; ///< a MarkerPointType
    float notchDx = 0;          ///< the notch's vector from the point to its tip
    float notchDy = 0;
    float notchWidth = 0; ///< length of the cross bar of a user notch
    bool matchPoint = false;

    /// The shape of a punch or a user punch, a small plus unless it has one of its own; null on
    /// other points without one.
    const PunchFeature *punch() const;
    /// The shape that was set, null for none. The point and its copies own it together.
    const PunchFeature *ownPunch() const { return m_punch.get(); }
    void setPunch(const PunchFeature &feature);

private:
    std::shared_ptr<const PunchFeature> m_punch;
};

/// Equal in every member; the punch shapes are compared by value.
bool operator==(const CDbMarkerPointObject &left, const CDbMarkerPointObject &right);

/// How far a mirror image may lie off, in cm.
constexpr double kSymmetryTolerance = 0.01;

/// A table of points: a closed contour, an open line, or loose marks, by where it stands.
class CDbVectorsObjectTable : public GeoPolygon2D<CDbMarkerPointObject>
{
public:
    using GeoPolygon2D<CDbMarkerPointObject>::GeoPolygon2D;

    /// Whether the closed contour is its own mirror image about an axis through `centre`: the
    /// horizontal one, along the grain, or with `vertical` the one across it. Nothing of either
    /// image may lie further than kSymmetryTolerance from the other; where the points lie on the
    /// outline does not matter.
    bool isSymmetrical(const CDbMarkerPointObject &centre, bool vertical) const;
};

} // namespace KivSystem

#endif
