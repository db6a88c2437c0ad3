/// Lines with two free ends and a trait: how they are drawn. All lengths are centimetres.

#ifndef KIVCONJOIN_TRAITLINE_H
#define KIVCONJOIN_TRAITLINE_H

#include "KivGeo/Point2D.h"

#include <array>
#include <memory>

namespace KivSystem {

/// A point with a third value, its height above the cloth; what lies flat has 0.
class CDbPointKIV : public GeoPoint2D
{
public:
    CDbPointKIV() = default;
    CDbPointKIV(double px, double py, double height = 0) : GeoPoint2D(px, py), z(height) {}

    double z = 0;
};

/// A point of a marker.
class CDbPointMAK : public CDbPointKIV
{
public:
    using CDbPointKIV::CDbPointKIV;
};

/// Values of TraitInfo::traitFlag; any other stands for a solid line.
enum TraitStyle : unsigned char
{
    SolidTrait = 0,
    DashedTrait = 1,      ///< dash, gap
    ChainDottedTrait = 2, ///< dash, gap, dot, gap
};

/// Lengths of a line's pattern: dash, gap, dot.
using TraitTriple = std::array<double, 3>;

/// How a line is drawn.
struct TraitInfo
{
    double traitScalar = 0;               ///< shift to the left of the way from end to end
    TraitTriple traitTriple{0, 0, 0};     ///< a pattern without positive lengths is drawn solid
    unsigned char traitFlag = SolidTrait; ///< a TraitStyle
    /// Parts of the pattern that are passed over where the line begins: with 1 a dashed line begins
    /// with its gap. Any number; the pattern repeats either way.
    int traitCounter = 0;

    void copyTraitInfo(const TraitInfo &other);
};

/// A line between two points, which belong to somebody else and may be missing.
class LineObject
{
public:
    LineObject();
    ~LineObject();
    LineObject(const LineObject &) = delete;
    LineObject &operator=(const LineObject &) = delete;

    TraitInfo *const lineTrait; ///< never null; owned

    /// Null pointers take the ends away. The points outlive the line, or their use by it.
    void setV1AndV2(CDbPointKIV *first, CDbPointKIV *second);
    const CDbPointKIV *v1() const { return m_first; }
    const CDbPointKIV *v2() const { return m_second; }

private:
    explicit LineObject(std::unique_ptr<TraitInfo> trait);

    std::unique_ptr<TraitInfo> m_trait;
    CDbPointKIV *m_first = nullptr;
    CDbPointKIV *m_second = nullptr;
};

} // namespace KivSystem

#endif
