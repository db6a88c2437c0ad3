#include "KivMarker/Point.h"

namespace KivSystem {
namespace {

using Size = float PunchFeature::*;

constexpr std::array<Size, 16> kSizes{&PunchFeature::punchBarLeft, &PunchFeature::punchBarRight,
    &PunchFeature::punchBarDown, &PunchFeature::punchBarUp, &PunchFeature::punchPlus,
    &PunchFeature::punchCross, &PunchFeature::punchBowTie, &PunchFeature::punchSquare,
    &PunchFeature::punchDiamond, &PunchFeature::punchOctagon, &PunchFeature::punchTriangleLeft,
    &PunchFeature::punchTriangleRight, &PunchFeature::punchTwinStroke,
    &PunchFeature::punchTwinCurve, &PunchFeature::punchHalfDiscs, &PunchFeature::punchCorner};

} // namespace

bool operator==(const PunchFeature &left, const PunchFeature &right)
{
    for (const Size size : kSizes) {
        if (left.*size != right.*size) {
            return false;
        }
    }
    return left.punchMatrix == right.punchMatrix;
}

CDbMarkerPointObject::CDbMarkerPointObject(double px, double py, MarkerPointType type)
    : GeoPoint2D(px, py)
    , pointType(type)
{}

const PunchFeature *CDbMarkerPointObject::punch() const
{
    static const PunchFeature plain = [] {
        constexpr float plus = 0.5F; // cm
        PunchFeature feature;
        feature.punchPlus = plus;
        return feature;
    }();
    const bool isPunch = pointType == Punch || pointType == UserPunch;
    return m_punch == nullptr && isPunch ? &plain : m_punch.get();
}

void CDbMarkerPointObject::setPunch(const PunchFeature &feature)
{
    m_punch = std::make_shared<const PunchFeature>(feature);
}

bool operator==(const CDbMarkerPointObject &left, const CDbMarkerPointObject &right)
{
    const bool samePunch = left.ownPunch() == right.ownPunch() ||
                           (left.ownPunch() != nullptr && right.ownPunch() != nullptr &&
                               *left.ownPunch() == *right.ownPunch());
    return left.x == right.x && left.y == right.y && left.pointType == right.pointType &&
           left.notchDx == right.notchDx && left.notchDy == right.notchDy &&
           left.notchWidth == right.notchWidth && left.matchPoint == right.matchPoint && samePunch;
}

} // namespace KivSystem
