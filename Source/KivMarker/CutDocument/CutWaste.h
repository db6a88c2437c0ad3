// CutWaste: cuts that chop the waste: at both edges of the cloth at even distances, and across the
// end of what is occupied.

#ifndef KIVMARKER_CUTWASTE_H
#define KIVMARKER_CUTWASTE_H

#include "CutDocument/CutPlan.h"
#include "CutDocument/CutSelection.h"

#include <QStringList>

namespace KivSystem {

struct CutSettings;

/// So near does a waste cut come to a piece, and no shorter cut is worth while. In cm.
constexpr double kWasteClearance = 0.2;

/// No cloth needs more; a spacing that asks for them is a slip. For one fabric.
constexpr double kMostWasteCuts = 100000;

/// The waste cuts of a fabric. `cloths` are its layers as laid, in their order, `objects` all that
/// is cut there: no waste cut at the edges comes near any of it, and the one across the end touches
/// no more than the end of the last piece. More cuts than kMostWasteCuts are refused: none is made
/// then, and the messages say why.
std::vector<WasteCut> wasteCuts(const std::vector<GeoRectangle> &cloths,
    const std::vector<const CutObject *> &objects, const CutSettings &settings,
    QStringList &messages);

} // namespace KivSystem

#endif
