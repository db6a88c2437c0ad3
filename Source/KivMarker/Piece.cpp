#include "KivMarker/Piece.h"

#include "KivMarker/Bundle.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Polygon.h"

#include <algorithm>

namespace KivSystem {

bool operator==(const PlacementRules &left, const PlacementRules &right)
{
    return left.rotationStep == right.rotationStep && left.fineRotation == right.fineRotation &&
           left.flipX == right.flipX && left.flipY == right.flipY;
}

std::size_t BundleSlots::take()
{
    const std::size_t slot = m_lowestFree;
    if (slot == m_taken.size()) {
        m_taken.push_back(true);
    } else {
        m_taken[slot] = true;
    }
    while (m_lowestFree < m_taken.size() && m_taken[m_lowestFree]) {
        ++m_lowestFree;
    }
    return slot;
}

void BundleSlots::release(std::size_t slot)
{
    if (slot < m_taken.size()) {
        m_taken[slot] = false;
        m_lowestFree = std::min(m_lowestFree, slot);
    }
}

CDbPieceObject::CDbPieceObject(const QString &name, short style)
    : CDbGroupObject(name)
    , m_style(style)
{
    pieceData.nameText = name;
}

short CDbPieceObject::getNumberOfSizes() const
{
    return static_cast<short>(m_sizes.size());
}

const CDbPieceSizeObject &CDbPieceObject::getPieceSize(short size) const
{
    static const CDbPieceSizeObject none;
    return size >= 1 && size <= getNumberOfSizes() ? m_sizes[static_cast<std::size_t>(size - 1)]
                                                   : none;
}

void CDbPieceObject::addSize(short number, PieceShape shape)
{
    CDbPieceSizeObject size;
    size.sizeNumber = number;
    size.sizeRect = shape.contour.boundingRect();
    size.shape = std::move(shape);
    m_sizes.push_back(std::move(size));
}

const PlacementRules &CDbPieceObject::rulesOn(const CDbFabricObject *fabric) const
{
    static const PlacementRules none;
    if (m_rules) {
        return *m_rules;
    }
    return fabric != nullptr ? fabric->rules : none;
}

short CDbPieceObject::rotationPermittedValue(const CDbFabricObject *fabric) const
{
    return rulesOn(fabric).rotationStep;
}

bool CDbPieceObject::permittedSymmetryX(const CDbFabricObject *fabric) const
{
    return rulesOn(fabric).flipX;
}

bool CDbPieceObject::permittedSymmetryY(const CDbFabricObject *fabric) const
{
    return rulesOn(fabric).flipY;
}

double CDbPieceObject::permittedFineRotationValue() const
{
    return rulesOn(m_fabric).fineRotation;
}

short CDbPieceObject::getQtyPieceSizeLayer(short size, bool left, short layer) const
{
    const auto found = m_chart.find(ChartKey{size, layer, left});
    if (found == m_chart.end()) {
        return 0;
    }
    const int remaining = found->second.ordered - found->second.taken;
    return static_cast<short>(std::max(remaining, 0));
}

short CDbPieceObject::orderedQuantity(const ChartKey &key) const
{
    const auto found = m_chart.find(key);
    return found != m_chart.end() ? found->second.ordered : short(0);
}

void CDbPieceObject::setOrderedQuantity(const ChartKey &key, short quantity)
{
    short &ordered = m_chart[key].ordered;
    m_orderedByLayer[key.layer] += quantity - ordered;
    ordered = quantity;
}

qint64 CDbPieceObject::orderedInLayer(short layer) const
{
    const auto found = m_orderedByLayer.find(layer);
    return found != m_orderedByLayer.end() ? found->second : 0;
}

void CDbPieceObject::changeTaken(const ChartKey &key, short change)
{
    ChartQuantity &quantity = m_chart[key];
    quantity.taken = static_cast<short>(quantity.taken + change);
}

void CDbPieceObject::modifyPolyInTableData(CDbMarkerDrawing *drawing, CDbPolygon *polygon,
    short layer, CDbFabricObject *fabric, short change, short *error, bool withBundle)
{
    CDbPieceObject *piece = polygon != nullptr && fabric != nullptr && fabric->drawing() == drawing
                                ? fabric->findPieceAccordingIndex(polygon->pieceIndex, nullptr)
                                : nullptr;
    if (piece == nullptr) {
        setErrorCode(error, k_error_missing);
        return;
    }
    if (fabric->findLayer(layer) == nullptr) {
        setErrorCode(error, k_error_index);
        return;
    }
    setErrorCode(error, k_no_error);
    const short size = polygon->pieceSize();
    const bool left = polygon->isLeft();
    piece->changeTaken(ChartKey{size, layer, left}, static_cast<short>(-change));
    if (!withBundle) {
        return;
    }
    if (change < 0) {
        polygon->bundleSize = size;
        polygon->bundleLeft = left;
        CDBundleUtility::takeBundleIndex(
            fabric, layer, piece, size, left, &polygon->bundleIndex, &polygon->bundleCopy, error);
    } else {
        CDBundleUtility::releaseBundleIndex(
            fabric, layer, piece, size, left, polygon->bundleIndex, polygon->bundleCopy);
        polygon->bundleIndex = 0;
        polygon->bundleCopy = 0;
    }
}

std::vector<std::pair<ChartKey, short>> CDbPieceObject::orderedQuantities() const
{
    std::vector<std::pair<ChartKey, short>> quantities;
    for (const auto &[key, quantity] : m_chart) {
        if (quantity.ordered != 0) {
            quantities.emplace_back(key, quantity.ordered);
        }
    }
    return quantities;
}

void CDbPieceObject::returnsSizeAndNameAccordingTypeSize(const CDbStyleSizeObjectTable *sizes,
    short size, QString &sizeName, QString &specialName, short *error) const
{
    if (size < 1 || size > getNumberOfSizes()) {
        setErrorCode(error, k_error_index);
        return;
    }
    const StyleSize *found =
        sizes != nullptr ? sizes->findByNumber(getPieceSize(size).sizeNumber) : nullptr;
    if (found == nullptr) {
        setErrorCode(error, k_error_missing);
        return;
    }
    sizeName = found->name;
    specialName = found->special;
    setErrorCode(error, k_no_error);
}

void CDbPieceObject::getPolyName(const CDbPolygon *polygon, const CDbStyleObject *style,
    short fabric, QString &name, short *error) const
{
    name.clear();
    if (polygon == nullptr || style == nullptr) {
        setErrorCode(error, k_error_missing);
        return;
    }
    if (const auto *sizes = style->findStyleSizeObjectTable(fabric, error)) {
        QString sizeName;
        returnsSizeAndNameAccordingTypeSize(sizes, polygon->pieceSize(), sizeName, name, error);
    }
}

} // namespace KivSystem
