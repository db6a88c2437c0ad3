// CutNotches: the notches of a contour become paths to be cut. Every path starts on a vertex of the
// outline, which is put there where the contour has none:
//
//     simple   base, tip
//     double   two slits, half a notch length to each side of the base along the outline
//     V        half a notch length before the base, tip, half a notch length behind it
//     user     base, tip, one end of the cross bar, the other end
//
// The tip lies in the direction of the notch's vector, as far as the length asked for, but never
// further than half of the way to where the notch would leave the piece again.

#ifndef KIVMARKER_CUTNOTCHES_H
#define KIVMARKER_CUTNOTCHES_H

#include "CutDocument/CutPlan.h"

namespace KivSystem {

class CDbVectorsObjectTable;

/// The outline of a contour with its notches. `offset` is added to x. `length` is the length of the
/// notches in cm: 0 for none, below 0 for those of the marker. Points that repeat the one before
/// them are left out. `shortened`, when not null, receives how many notches are shorter than asked
/// for.
CutOutline notchedOutline(
    const CDbVectorsObjectTable &contour, double offset, double length, int *shortened = nullptr);

} // namespace KivSystem

#endif
