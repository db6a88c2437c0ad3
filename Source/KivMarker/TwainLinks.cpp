#include "KivMarker/TwainLinks.h"

#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Fabric.h"

#include <optional>

namespace KivSystem {
namespace {

// Where a tied point lies on a polygon of its piece; nothing when the polygon's own shape lacks it.
std::optional<GeoPoint2D> placedPoint(
    const CDbFabricObject &fabric, const TiedPoint &tied, const CDbPolygon &polygon)
{
    if (polygon.hasOwnShape()) {
        const CDbVectorsObjectTable &own =
            tied.internal ? polygon.internalPoints : *polygon.currentContour();
        return tied.point <= own.size() ? std::optional<GeoPoint2D>(own[tied.point - 1])
                                        : std::nullopt;
    }
    const CDbPieceObject *piece = fabric.findPieceAccordingIndex(tied.piece, nullptr);
    const PieceShape &shape = piece->getPieceSize(polygon.pieceSize()).shape;
    const CDbVectorsObjectTable &points = tied.internal ? shape.internalPoints : shape.contour;
    return polygon.placement().affine().applyToPoint(points[tied.point - 1]);
}

bool isSingle(const CDbFabricObject &fabric, const CDbPolygon &polygon)
{
    const CDbPieceObject *piece = fabric.findPieceAccordingIndex(polygon.pieceIndex, nullptr);
    return piece != nullptr && piece->getKIVPieceSingle();
}

// Whether the link ties `first` at its first point to `second` at its second one.
bool ties(const TwainLink &link, const CDbFabricObject &fabric, const CDbPolygon &first,
    const CDbPolygon &second)
{
    if (first.pieceIndex != link.first.piece || second.pieceIndex != link.second.piece ||
        first.sizeNumber != second.sizeNumber) {
        return false;
    }
    if (link.first.piece == link.second.piece) {
        return first.isLeft() && !second.isLeft();
    }
    return first.isLeft() == second.isLeft() || isSingle(fabric, first) || isSingle(fabric, second);
}

bool tie(const TwainLink &link, const CDbFabricObject &fabric, const CDbPolygon &first,
    const CDbPolygon &second, CDbMarkerPointObject *onFirst, CDbMarkerPointObject *onSecond)
{
    if (!ties(link, fabric, first, second)) {
        return false;
    }
    const std::optional<GeoPoint2D> one = placedPoint(fabric, link.first, first);
    const std::optional<GeoPoint2D> other = placedPoint(fabric, link.second, second);
    if (!one || !other) {
        return false;
    }
    *onFirst = CDbMarkerPointObject(one->x, one->y);
    *onSecond = CDbMarkerPointObject(other->x, other->y);
    return true;
}

} // namespace

short CDbTwainLinkPiecesObjectTable::getTwainLinkPiecesCount() const
{
    return static_cast<short>(m_links.size());
}

void CDbTwainLinkPiecesObjectTable::getTheVectorsLinkTwoPolys(const CDbFabricObject *fabric,
    short link, const CDbPolygon *polygonA, const CDbPolygon *polygonB, short *error,
    CDbMarkerPointObject *onA, CDbMarkerPointObject *onB, bool *found) const
{
    *found = false;
    if (fabric == nullptr || polygonA == nullptr || polygonB == nullptr) {
        setErrorCode(error, k_error_missing);
        return;
    }
    if (link < 1 || link > getTwainLinkPiecesCount()) {
        setErrorCode(error, k_error_index);
        return;
    }
    setErrorCode(error, k_no_error);
    const TwainLink &wanted = at(link - 1);
    *found = tie(wanted, *fabric, *polygonA, *polygonB, onA, onB) ||
             tie(wanted, *fabric, *polygonB, *polygonA, onB, onA);
}

} // namespace KivSystem
