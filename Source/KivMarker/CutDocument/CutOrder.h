// CutOrder: the order of the cuts, chosen so that the way with the tool up is short.

#ifndef KIVMARKER_CUTORDER_H
#define KIVMARKER_CUTORDER_H

#include "CutDocument/CutPlan.h"

namespace KivSystem {

struct CutRequest;

/// No outline is tried from more of its corners than this.
constexpr std::size_t kMostStarts = 24;

/// Orders the objects within each frame, the parts of each object, and, where that is asked for,
/// the corner at which an outline starts. A corner with a notch is never a start.
/// `tool` is where the tool comes from.
void orderObjects(
    std::vector<CutObject> &objects, const GeoPoint2D &tool, const CutRequest &request);

/// For notches that are cut during the outline: where the outline comes to a place more than once,
/// all notches there are cut when it comes last, since the formats look for the last time.
void gatherNotches(CutOutline &outline);

/// The outline's notches in the order in which the outline meets them; one at the start comes last,
/// since the outline comes back to it.
std::vector<int> notchOrder(const CutOutline &outline);

} // namespace KivSystem

#endif
