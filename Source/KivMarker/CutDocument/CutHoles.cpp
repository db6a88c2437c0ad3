#include "CutDocument/CutHoles.h"

#include "CutDocument/InteriorPlace.h"

#include <algorithm>

namespace KivSystem {
namespace {

// A hole on the outline itself lies in the piece.
constexpr double kOnOutline = 1e-6; // cm

bool contains(const CutObject &object, const GeoPoint2D &place)
{
    return std::any_of(
        object.outlines.begin(), object.outlines.end(), [&place](const CutOutline &outline) {
            return clearance(placesOf(outline), place) >= -kOnOutline;
        });
}

const CutObject *findPieceAt(const std::vector<ShapedBlock> &blocks, const GeoPoint2D &place)
{
    for (const ShapedBlock &block : blocks) {
        for (const CutObject &piece : block.pieces) {
            if (contains(piece, place)) {
                return &piece;
            }
        }
    }
    return nullptr;
}

} // namespace

std::vector<GeoPoint2D> takeOuterHoles(std::vector<ShapedBlock> &blocks, QStringList &messages)
{
    std::vector<GeoPoint2D> holes;
    for (ShapedBlock &block : blocks) {
        for (CutObject &piece : block.pieces) {
            const auto outer = std::stable_partition(piece.drills.begin(), piece.drills.end(),
                [&piece](const CutDrill &drill) { return contains(piece, drill.place); });
            for (auto drill = outer; drill != piece.drills.end(); ++drill) {
                if (const CutObject *other = findPieceAt(blocks, drill->place)) {
                    messages.append(
                        QStringLiteral("a punch hole outside of %1 lies in %2 and is left out")
                            .arg(piece.name, other->name));
                } else {
                    holes.push_back(drill->place);
                }
            }
            piece.drills.erase(outer, piece.drills.end());
        }
    }
    return holes;
}

} // namespace KivSystem
