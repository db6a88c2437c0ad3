// CutHoles: punch holes that lie outside of their pieces, in the waste.

#ifndef KIVMARKER_CUTHOLES_H
#define KIVMARKER_CUTHOLES_H

#include "CutDocument/CutBlocks.h"

#include <QStringList>

namespace KivSystem {

/// Takes the holes outside of their own piece, as the marker has it, out of the objects.
std::vector<GeoPoint2D> takeOuterHoles(std::vector<ShapedBlock> &blocks);

/// Leaves out holes that would go through a piece or beside the cloth; messages say so.
std::vector<GeoPoint2D> holesInWaste(const std::vector<GeoPoint2D> &holes,
    const std::vector<ShapedBlock> &blocks, QStringList &messages);

} // namespace KivSystem

#endif
