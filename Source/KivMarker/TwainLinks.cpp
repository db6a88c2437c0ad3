#include "KivMarker/TwainLinks.h"

#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Fabric.h"

namespace KivSystem {
namespace {

// Where a tied point lies on a polygon of its piece.
CDbMarkerPointObject placedPoint(
    const CDbFabricObject &fabric, const TiedPoint &tied, const CDbPolygon &polygon)
{
    const CDbPieceObject *piece = fabric.findPieceAccordingIndex(tied.piece, nullptr);
    const PieceShape &shape = piece->getPieceSize(polygon.pieceSize()).shape;
    const CDbVectorsObjectTable &points = tied.internal ? shape.internalPoints : shape.contour;
    const GeoPoint2D place = polygon.placement().affine().applyToPoint(points[tied.point - 1]);
    return CDbMarkerPointObject(place.x, place.y);
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
    if (ties(wanted, *fabric, *polygonA, *polygonB)) {
        *onA = placedPoint(*fabric, wanted.first, *polygonA);
        *onB = placedPoint(*fabric, wanted.second, *polygonB);
        *found = true;
    } else if (ties(wanted, *fabric, *polygonB, *polygonA)) {
        *onA = placedPoint(*fabric, wanted.second, *polygonA);
        *onB = placedPoint(*fabric, wanted.first, *polygonB);
        *found = true;
    }
}

} // namespace KivSystem
