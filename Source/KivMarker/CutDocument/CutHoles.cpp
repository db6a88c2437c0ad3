#include "CutDocument/CutHoles.h"

#include "CutDocument/CutRange.h"
#include "CutDocument/InteriorPlace.h"

#include <algorithm>

namespace KivSystem {
namespace {

// A hole on the outline itself lies in the piece.
constexpr double kOnOutline = 1e-6; // cm

bool contains(const LaidPiece &piece, const GeoPoint2D &place)
{
    return piece.rect().contains(place, kOnOutline) &&
           clearance(piece.contour(), place) >= -kOnOutline;
}

// Why the hole cannot be made; empty when it can.
QString findObstacle(const GeoPoint2D &hole, const std::vector<ShapedBlock> &blocks)
{
    bool onCloth = false;
    for (const ShapedBlock &block : blocks) {
        for (const CutObject &piece : block.pieces) {
            if (contains(piece.pieces.front(), hole)) {
                return QStringLiteral("in %1").arg(piece.name);
            }
        }
        // The cloth goes on behind what is occupied.
        const GeoRectangle &cloth = block.selected.cloth;
        onCloth = onCloth || (hole.x >= cloth.left() - kRangeTolerance &&
                                 hole.y >= cloth.bottom() - kRangeTolerance &&
                                 hole.y <= cloth.top() + kRangeTolerance);
    }
    return onCloth ? QString() : QStringLiteral("beside the cloth");
}

} // namespace

std::vector<GeoPoint2D> takeOuterHoles(std::vector<ShapedBlock> &blocks)
{
    std::vector<GeoPoint2D> holes;
    for (ShapedBlock &block : blocks) {
        for (CutObject &piece : block.pieces) {
            const LaidPiece &laid = piece.pieces.front();
            const auto outer = std::stable_partition(piece.drills.begin(), piece.drills.end(),
                [&laid](const CutDrill &drill) { return contains(laid, drill.place); });
            for (auto drill = outer; drill != piece.drills.end(); ++drill) {
                holes.push_back(drill->place);
            }
            piece.drills.erase(outer, piece.drills.end());
        }
    }
    return holes;
}

std::vector<GeoPoint2D> holesInWaste(const std::vector<GeoPoint2D> &holes,
    const std::vector<ShapedBlock> &blocks, QStringList &messages)
{
    std::vector<GeoPoint2D> free;
    for (const GeoPoint2D &hole : holes) {
        const QString obstacle = findObstacle(hole, blocks);
        if (obstacle.isEmpty()) {
            free.push_back(hole);
        } else {
            messages.append(
                QStringLiteral("a punch hole outside of its piece lies %1 and is left out")
                    .arg(obstacle));
        }
    }
    return free;
}

} // namespace KivSystem
