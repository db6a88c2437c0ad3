// PieceName: where the name of a piece stands on it.
#ifndef KIVHOST_PIECENAME_H
#define KIVHOST_PIECENAME_H

#include "MarkerItems.h"

#include <vector>

namespace KivSystem {

class CDbPolygon;

/// The lines in the middle of the piece, along its longer extent, as large as they look well. If
/// they would lie on one of the texts or on a drill they stand beside it, also smaller; where the
/// piece has no room for that they lie on the drills, and in the end on the texts. `outline` is the
/// polygon's, and `texts` are rectangles in its coordinates.
SceneText pieceName(const QStringList &lines, const CDbPolygon &polygon,
    const PieceOutline &outline, const std::vector<QRectF> &texts);

} // namespace KivSystem

#endif
