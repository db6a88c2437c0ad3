// CutRange: finds what lies outside of the fabric, so that nothing is cut there unnoticed.

#ifndef KIVMARKER_CUTRANGE_H
#define KIVMARKER_CUTRANGE_H

#include <QStringList>

#include <vector>

namespace KivSystem {

class GeoRectangle;
struct CutObject;

/// How far a cut may leave the cloth before it counts: below the step of any cutter, above the
/// rounding of a placement. In cm.
constexpr double kRangeTolerance = 1e-3;

/// One sentence when the object reaches beyond the cloth, naming it and the edge; empty when it
/// does not.
QString findOutOfRange(const CutObject &object, const GeoRectangle &cloth);

} // namespace KivSystem

#endif
