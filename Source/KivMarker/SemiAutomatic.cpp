#include "KivMarker/SemiAutomatic.h"

#include "KivMarker/Bundle.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ErrorCodes.h"

namespace KivSystem {
namespace {

constexpr double kHalfTurn = 180;

std::unique_ptr<CDbPolygon> cutDownPartner(const CDbPieceObject &piece, const CDbPolygon &polygon)
{
    Placement placement = piece.chartTransformation();
    if (piece.getTwoPieceCutDown() == MirroredPartner) {
        placement.mirrored = !placement.mirrored;
    } else {
        placement.rotation += kHalfTurn;
    }
    auto partner =
        std::make_unique<CDbPolygon>(polygon.pieceIndex, polygon.pieceSize(), polygon.isLeft());
    partner->sizeNumber = polygon.sizeNumber;
    partner->place(piece.getPieceSize(polygon.pieceSize()), placement);
    return partner;
}

MarkerErrorCode faultOf(const CDbFabricObject &fabric, short layer, const CDbPieceObject &piece,
    short size, short pieceIndex, bool left, short quantity)
{
    if (fabric.findPieceAccordingIndex(pieceIndex, nullptr) != &piece) {
        return k_error_missing;
    }
    if (fabric.findLayer(layer) == nullptr || size < 1 || size > piece.getNumberOfSizes()) {
        return k_error_index;
    }
    return piece.getQtyPieceSizeLayer(size, left, layer) < quantity ? k_error_state : k_no_error;
}

} // namespace

void SemiAutomatic::returnAPolyWithAllTransformationFromCharter(CDbMarkerDrawing *drawing,
    short quantity, CDbFabricObject *fabric, short layer, CDbPieceObject *piece, short size,
    short pieceIndex, bool left, double spaceNoOverlap, double stepDigitalCurve, short *error,
    CDbPolygon **polygon)
{
    *polygon = nullptr;
    const bool hasAll = drawing != nullptr && fabric != nullptr && piece != nullptr;
    const MarkerErrorCode fault =
        hasAll ? faultOf(*fabric, layer, *piece, size, pieceIndex, left, quantity)
               : k_error_missing;
    setErrorCode(error, fault);
    if (fault != k_no_error) {
        return;
    }

    auto made = std::make_unique<CDbPolygon>(pieceIndex, size, left);
    made->sizeNumber = piece->getPieceSize(size).sizeNumber;
    made->place(piece->getPieceSize(size), piece->chartTransformation());
    made->thinCurves(stepDigitalCurve);
    made->addSpacingContour(spaceNoOverlap);
    if (piece->getTwoPieceCutDown() != NotCutDown) {
        made->setCutDownPolygon(cutDownPartner(*piece, *made));
    }
    made->bundleSize = size;
    made->bundleLeft = left;
    CDBundleUtility::takeBundleIndex(
        fabric, layer, piece, size, left, &made->bundleIndex, &made->bundleCopy, error);
    *polygon = made.release();
}

} // namespace KivSystem
