// CutCorners: finds the corners of an outline.

#ifndef KIVMARKER_CUTCORNERS_H
#define KIVMARKER_CUTCORNERS_H

namespace KivSystem {

struct CutOutline;

/// A knife that goes round a corner whose edges include a smaller angle than this tears the cloth:
/// it is lifted and plunged again. In degrees.
constexpr double kSharpCorner = 80;

/// From this change of direction on a place counts as a corner, at which an outline may start
/// without a mark in a smooth line. In degrees.
constexpr double kCornerTurn = 30;

/// Marks the outline's corners; a sharp one is kept from then on. Marks that are there stay.
void markCorners(CutOutline &outline);

} // namespace KivSystem

#endif
