// CutShapes: turns a placed polygon into what is cut of it, at its place on the cloth.

#ifndef KIVMARKER_CUTSHAPES_H
#define KIVMARKER_CUTSHAPES_H

#include "CutDocument/CutPlan.h"

namespace KivSystem {

class CDbPolygon;
struct CutRequest;

/// Outline with notches, lines to be cut, holes and match points, without a name yet. `offset` is
/// added to x.
CutObject cutShape(const CDbPolygon &polygon, double offset, const CutRequest &request);

} // namespace KivSystem

#endif
