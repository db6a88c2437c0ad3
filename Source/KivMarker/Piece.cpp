#include "KivMarker/Piece.h"

#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Style.h"

#include <algorithm>

namespace KivSystem {

bool operator==(const PlacementRules &left, const PlacementRules &right)
{
    return left.rotationStep == right.rotationStep && left.fineRotation == right.fineRotation &&
           left.flipX == right.flipX && left.flipY == right.flipY;
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

} // namespace KivSystem
