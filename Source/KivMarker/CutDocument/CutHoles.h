// CutHoles: punch holes that lie outside of their pieces, in the waste.

#ifndef KIVMARKER_CUTHOLES_H
#define KIVMARKER_CUTHOLES_H

#include "CutDocument/CutBlocks.h"

#include <QStringList>

namespace KivSystem {

/// Takes the holes outside of their own piece out of the objects. Those that lie in no piece at all
/// are returned; one that would go through another piece is left out, and a message says so.
std::vector<GeoPoint2D> takeOuterHoles(std::vector<ShapedBlock> &blocks, QStringList &messages);

} // namespace KivSystem

#endif
