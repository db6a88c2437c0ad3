#include "KivMarker/Bundle.h"

#include "KivMarker/Drawing.h"
#include "KivMarker/ErrorCodes.h"

#include <algorithm>

namespace KivSystem {
namespace {

// Garments of a piece's size in a layer; at least one, for a piece that no garment asks for.
std::size_t garmentsOf(
    const CDbFabricObject &fabric, short layer, const CDbPieceObject &piece, short size)
{
    const CDbMarkerDrawing *drawing = fabric.drawing();
    if (drawing == nullptr) {
        return 1;
    }
    const CDbStyleSizeObjectTable *sizes =
        drawing->findSizesList(static_cast<short>(piece.getStyleNo() - 1),
            drawing->getFabricsTable().findFabricIndex(&fabric), nullptr);
    const int garments =
        sizes != nullptr ? sizes->quantityClothingBySize(&fabric, layer, &piece, size) : 0;
    return static_cast<std::size_t>(std::max(garments, 1));
}

} // namespace

// Slots run through all garments for the first piece, then for the second, and so on.
void CDBundleUtility::takeBundleIndex(const CDbFabricObject *fabric, short layer,
    CDbPieceObject *piece, short size, bool left, short *index, short *copy, short *error)
{
    *index = 0;
    *copy = 0;
    if (fabric == nullptr || piece == nullptr) {
        setErrorCode(error, k_error_missing);
        return;
    }
    setErrorCode(error, k_no_error);
    const std::size_t garments = garmentsOf(*fabric, layer, *piece, size);
    const std::size_t slot = piece->bundleSlots(ChartKey{size, layer, left}).take();
    *index = static_cast<short>(slot % garments + 1);
    *copy = static_cast<short>(slot / garments + 1);
}

void CDBundleUtility::releaseBundleIndex(const CDbFabricObject *fabric, short layer,
    CDbPieceObject *piece, short size, bool left, short index, short copy)
{
    if (fabric == nullptr || piece == nullptr || index < 1 || copy < 1) {
        return;
    }
    const std::size_t garments = garmentsOf(*fabric, layer, *piece, size);
    piece->bundleSlots(ChartKey{size, layer, left})
        .release(
            static_cast<std::size_t>(copy - 1) * garments + static_cast<std::size_t>(index - 1));
}

} // namespace KivSystem
