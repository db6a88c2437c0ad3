// CutFrames: which pieces are cut before the conveyor moves the cloth on.
//
// A frame is what the cutter reaches along the length without moving the cloth. A piece is cut in a
// frame when it lies in it as a whole and begins no further from the frame's start than the
// threshold; the next frame starts where the first piece begins that is not cut yet.

#ifndef KIVMARKER_CUTFRAMES_H
#define KIVMARKER_CUTFRAMES_H

#include "CutDocument/CutPlan.h"

#include <QStringList>

namespace KivSystem {

struct CutRequest;

/// Gives each object its frame and fills the plan's frames, of which the first starts at 0; the
/// objects are sorted by frame. When nothing can be cut in the first frame, an object of which
/// nothing is cut stands there, behind which the conveyor moves. An object that is longer than the
/// cutter, or begins before the first frame, is named in the messages, and false returned: it
/// cannot be cut.
bool assignFrames(CutPlan &plan, const CutRequest &request, QStringList &messages);

/// Marks the object behind which the conveyor moves, once the objects stand in cutting order, and
/// leaves out holes and waste cuts that the cutter does not reach any more or not yet: the holes
/// are made before the first piece, the waste is cut behind the last. Messages say what is left
/// out.
void markAdvances(CutPlan &plan, QStringList &messages);

} // namespace KivSystem

#endif
