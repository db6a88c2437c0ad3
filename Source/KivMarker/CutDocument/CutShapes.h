// CutShapes: turns a placed polygon into what is cut of it, at its place on the cloth.

#ifndef KIVMARKER_CUTSHAPES_H
#define KIVMARKER_CUTSHAPES_H

#include "CutDocument/CutPlan.h"

namespace KivSystem {

class CDbFabricObject;
class CDbPolygon;
struct CutRequest;

/// Outline with notches, lines to be cut, holes and match points. `offset` is added to x.
CutObject cutShape(const CDbFabricObject &fabric, const CDbPolygon &polygon, double offset,
    const CutRequest &request);

} // namespace KivSystem

#endif
