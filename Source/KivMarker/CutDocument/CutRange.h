// CutRange: finds what lies outside of the fabric, so that nothing is cut there unnoticed.

#ifndef KIVMARKER_CUTRANGE_H
#define KIVMARKER_CUTRANGE_H

#include <QString>

namespace KivSystem {

struct CutObject;
struct CutSettings;
struct SelectedBlock;

/// How far a cut may leave the cloth before it counts: below the step of any cutter, above the
/// rounding of a placement. In cm.
constexpr double kRangeTolerance = 1e-3;

/// One sentence when what is cut of a piece reaches beyond the cloth of its block or into the next
/// layer, naming the piece and the edge; empty when it does not.
QString findOutOfRange(
    const CutObject &piece, const SelectedBlock &block, const CutSettings &settings);

} // namespace KivSystem

#endif
