#include "KivMarker/Style.h"

#include "KivMarker/ErrorCodes.h"
#include "KivMarker/Fabric.h"
#include "KivMarker/Piece.h"

#include <numeric>

namespace KivSystem {

CDbStyleSizeObjectTable::CDbStyleSizeObjectTable(
    const CDbStyleObject &style, const CDbFabricObject *fabric)
    : m_style(&style)
    , m_fabric(fabric)
{}

short CDbStyleSizeObjectTable::getNumberStyleSize() const
{
    return static_cast<short>(m_style->sizes().size());
}

short CDbStyleSizeObjectTable::quantityClothingBySize(
    const CDbFabricObject *fabric, short layer, const CDbPieceObject *piece, short size) const
{
    const auto found = m_quantities.find(layer);
    if (fabric != m_fabric || found == m_quantities.end()) {
        return 0;
    }
    const int row =
        piece != nullptr ? m_style->sizePosition(piece->getPieceSize(size).sizeNumber) : size - 1;
    return row >= 0 && row < getNumberStyleSize() ? found->second[static_cast<std::size_t>(row)]
                                                  : short(0);
}

qint64 CDbStyleSizeObjectTable::garmentsInLayer(short layer) const
{
    const auto found = m_quantities.find(layer);
    return found != m_quantities.end()
               ? std::accumulate(found->second.begin(), found->second.end(), qint64(0))
               : 0;
}

bool CDbStyleSizeObjectTable::setQuantity(short layer, short size, short quantity)
{
    if (m_fabric->findLayer(layer) == nullptr || size < 1 || size > getNumberStyleSize()) {
        return false;
    }
    std::vector<short> &quantities = m_quantities[layer];
    quantities.resize(m_style->sizes().size(), 0);
    quantities[static_cast<std::size_t>(size - 1)] = quantity;
    return true;
}

const StyleSize *CDbStyleSizeObjectTable::findByNumber(short number) const
{
    const int row = m_style->sizePosition(number);
    return row >= 0 ? &m_style->sizes()[static_cast<std::size_t>(row)] : nullptr;
}

CDbStyleObject::CDbStyleObject(
    const QString &name, const QString &sourceFile, std::vector<StyleSize> sizes)
    : m_name(name)
    , m_sourceFile(sourceFile)
    , m_sizes(std::move(sizes))
{
    for (std::size_t position = 0; position < m_sizes.size(); ++position) {
        m_positions.emplace(m_sizes[position].number, static_cast<int>(position));
    }
}

int CDbStyleObject::sizePosition(short number) const
{
    const auto found = m_positions.find(number);
    return found != m_positions.end() ? found->second : -1;
}

CDbStyleSizeObjectTable *CDbStyleObject::findStyleSizeObjectTable(short fabric, short *error) const
{
    if (fabric < 1 || static_cast<std::size_t>(fabric) > m_fabrics.size()) {
        setErrorCode(error, k_error_index);
        return nullptr;
    }
    setErrorCode(error, k_no_error);
    std::unique_ptr<CDbStyleSizeObjectTable> &table = m_tables[fabric];
    if (table == nullptr) {
        table = std::make_unique<CDbStyleSizeObjectTable>(
            *this, m_fabrics[static_cast<std::size_t>(fabric - 1)]);
    }
    return table.get();
}

void CDbStyleObject::addFabric(const CDbFabricObject *fabric)
{
    m_fabrics.push_back(fabric);
}

} // namespace KivSystem
