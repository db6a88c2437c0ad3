// CutShapes: turns a placed polygon into what is cut of it, at its place on the cloth.

#ifndef KIVMARKER_CUTSHAPES_H
#define KIVMARKER_CUTSHAPES_H

#include "CutDocument/CutPlan.h"

namespace KivSystem {

struct CutRequest;

/// Outline with notches, lines to be cut, holes and match points, without a name yet.
CutObject cutShape(const LaidPiece &piece, const CutRequest &request);

} // namespace KivSystem

#endif
