#include "KivMarker/Style.h"

#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Piece.h"

#include <algorithm>
#include <numeric>

namespace KivSystem {

CDbStyleSizeObjectTable::CDbStyleSizeObjectTable(
    const CDbFabricObject *fabric, const std::vector<StyleSize> &sizes, int layers)
    : m_fabric(fabric)
    , m_sizes(sizes)
    , m_quantities(static_cast<std::size_t>(layers), std::vector<short>(sizes.size(), 0))
{}

short CDbStyleSizeObjectTable::getNumberStyleSize() const
{
    return static_cast<short>(m_sizes.size());
}

short CDbStyleSizeObjectTable::quantityClothingBySize(
    const CDbFabricObject *fabric, short layer, const CDbPieceObject *piece, short size) const
{
    if (fabric != m_fabric || layer < 1 || static_cast<std::size_t>(layer) > m_quantities.size()) {
        return 0;
    }
    const int row = piece != nullptr ? position(piece->getPieceSize(size).sizeNumber) : size - 1;
    if (row < 0 || row >= getNumberStyleSize()) {
        return 0;
    }
    return m_quantities[static_cast<std::size_t>(layer - 1)][static_cast<std::size_t>(row)];
}

int CDbStyleSizeObjectTable::garmentsInLayer(short layer) const
{
    if (layer < 1 || static_cast<std::size_t>(layer) > m_quantities.size()) {
        return 0;
    }
    const std::vector<short> &quantities = m_quantities[static_cast<std::size_t>(layer - 1)];
    return std::accumulate(quantities.begin(), quantities.end(), 0);
}

bool CDbStyleSizeObjectTable::setQuantity(short layer, short size, short quantity)
{
    if (layer < 1 || static_cast<std::size_t>(layer) > m_quantities.size() || size < 1 ||
        size > getNumberStyleSize()) {
        return false;
    }
    m_quantities[static_cast<std::size_t>(layer - 1)][static_cast<std::size_t>(size - 1)] =
        quantity;
    return true;
}

const StyleSize *CDbStyleSizeObjectTable::findByNumber(short number) const
{
    const int row = position(number);
    return row >= 0 ? &m_sizes[static_cast<std::size_t>(row)] : nullptr;
}

int CDbStyleSizeObjectTable::position(short number) const
{
    const auto found = std::find_if(m_sizes.begin(), m_sizes.end(),
        [number](const StyleSize &size) { return size.number == number; });
    return found != m_sizes.end() ? static_cast<int>(found - m_sizes.begin()) : -1;
}

CDbStyleObject::CDbStyleObject(
    const QString &name, const QString &sourceFile, std::vector<StyleSize> sizes)
    : m_name(name)
    , m_sourceFile(sourceFile)
    , m_sizes(std::move(sizes))
{}

bool CDbStyleObject::hasSize(short number) const
{
    return std::any_of(m_sizes.begin(), m_sizes.end(),
        [number](const StyleSize &size) { return size.number == number; });
}

CDbStyleSizeObjectTable *CDbStyleObject::findStyleSizeObjectTable(short fabric, short *error) const
{
    if (fabric < 1 || static_cast<std::size_t>(fabric) > m_tables.size()) {
        setErrorCode(error, k_error_index);
        return nullptr;
    }
    setErrorCode(error, k_no_error);
    return m_tables[static_cast<std::size_t>(fabric - 1)].get();
}

void CDbStyleObject::addTable(const CDbFabricObject *fabric, int layers)
{
    m_tables.push_back(std::make_unique<CDbStyleSizeObjectTable>(fabric, m_sizes, layers));
}

} // namespace KivSystem
