#include "KivMarker/Drawing.h"

#include "KivMarker/ErrorCodes.h"
#include "KivMarker/MarkerOptions.h"

#include <QFileInfo>

#include <algorithm>
#include <stdexcept>

namespace KivSystem {

CDbMarkerDrawing::CDbMarkerDrawing() = default;

CDbMarkerDrawing::~CDbMarkerDrawing() = default;

QString CDbMarkerDrawing::drawingName() const
{
    return filePath.isEmpty() ? QStringLiteral("Untitled") : QFileInfo(filePath).completeBaseName();
}

CDbFabricObject *CDbMarkerDrawing::getFabric(short index) const
{
    return index >= 0 && index < m_fabrics.size() ? m_fabrics[index] : nullptr;
}

int CDbMarkerDrawing::getLayersQty(short *error) const
{
    setErrorCode(error, k_no_error);
    return m_layers.size();
}

bool CDbMarkerDrawing::isSetToSingleLayer(short *error, short *layer) const
{
    setErrorCode(error, m_singleLayer <= m_layers.size() ? k_no_error : k_error_index);
    if (layer != nullptr) {
        *layer = m_singleLayer;
    }
    return m_singleLayer != 0;
}

std::vector<LaidLayer> CDbMarkerDrawing::laidLayers(const CDbFabricObject *fabric) const
{
    const auto space = static_cast<double>(CDbMarkerOptions::mDefaultOptions.spaceLayers());
    std::vector<LaidLayer> laid;
    double start = 0;
    for (int number = 1; fabric != nullptr && number <= fabric->layerCount(); ++number) {
        const auto layer = static_cast<short>(number);
        const double length = fabric->getLengthOccupiedLayer(layer);
        if (length > kEmptyLayerLength) {
            laid.push_back({layer, start, length});
            start += length + space;
        }
    }
    return laid;
}

void CDbMarkerDrawing::calculateTheLengthOccupiedTheLayers(
    const CDbFabricObject *fabric, bool onlySingleLayer, double *length) const
{
    if (fabric == nullptr || length == nullptr) {
        return;
    }
    if (onlySingleLayer && m_singleLayer != 0) {
        *length = fabric->getLengthOccupiedLayer(m_singleLayer);
        return;
    }
    const std::vector<LaidLayer> laid = laidLayers(fabric);
    *length = laid.empty() ? 0 : laid.back().start + laid.back().length;
}

CDbStyleObject *CDbMarkerDrawing::getStyle(short index) const
{
    return index >= 0 && static_cast<std::size_t>(index) < stylesList.size()
               ? stylesList[static_cast<std::size_t>(index)]
               : nullptr;
}

CDbStyleSizeObjectTable *CDbMarkerDrawing::findSizesList(
    short style, short fabric, short *error) const
{
    const CDbStyleObject *found = getStyle(style);
    if (found == nullptr) {
        setErrorCode(error, k_error_index);
        return nullptr;
    }
    return found->findStyleSizeObjectTable(fabric, error);
}

void CDbMarkerDrawing::getPieceSizeContourList(const CDbPieceObject *piece, short size,
    short *error, const CDbVectorsObjectTable **contour, bool *isCurved) const
{
    *contour = nullptr;
    if (piece == nullptr || size < 1 || size > piece->getNumberOfSizes()) {
        setErrorCode(error, piece == nullptr ? k_error_missing : k_error_index);
        return;
    }
    setErrorCode(error, k_no_error);
    *contour = &piece->getPieceSize(size).shape.contour;
    if (isCurved != nullptr) {
        *isCurved = std::any_of((*contour)->begin(), (*contour)->end(),
            [](const CDbMarkerPointObject &point) { return point.pointType == CurvePoint; });
    }
}

void CDbMarkerDrawing::getLinksListOfPiecesInFabricStyle(
    short fabric, short style, CDbTwainLinkPiecesObjectTable **links) const
{
    static CDbTwainLinkPiecesObjectTable none;
    CDbFabricObject *found = getFabric(static_cast<short>(fabric - 1));
    CDbTwainLinkPiecesObjectTable *table = found != nullptr ? found->findLinks(style) : nullptr;
    *links = table != nullptr ? table : &none;
}

qint64 CDbMarkerDrawing::garmentsInLayer(const CDbFabricObject *fabric, short layer) const
{
    const short fabricNumber = m_fabrics.findFabricIndex(fabric);
    if (fabricNumber == 0) {
        return 0;
    }
    qint64 garments = 0;
    for (std::size_t position = 0; position < stylesList.size(); ++position) {
        const CDbStyleSizeObjectTable *sizes =
            stylesList[position]->findStyleSizeObjectTable(fabricNumber, nullptr);
        if (sizes != nullptr && fabric->isFabricInvolvedByStyle(static_cast<short>(position + 1))) {
            garments += sizes->garmentsInLayer(layer);
        }
    }
    return garments;
}

CDbLayerObject *CDbMarkerDrawing::addLayer(const QString &name)
{
    if (!m_fabrics.isEmpty()) {
        throw std::logic_error("layers are added before the first fabric");
    }
    m_ownedLayers.push_back(std::make_unique<CDbLayerObject>());
    m_ownedLayers.back()->layerName = name;
    m_layers.append(m_ownedLayers.back().get());
    return m_layers.last();
}

CDbFabricObject *CDbMarkerDrawing::addFabric(const QString &name)
{
    if (!stylesList.empty()) {
        throw std::logic_error("fabrics are added before the first style");
    }
    m_ownedFabrics.push_back(std::make_unique<CDbFabricObject>(name, m_layers.size()));
    m_ownedFabrics.back()->m_drawing = this;
    m_fabrics.append(m_ownedFabrics.back().get());
    return m_fabrics.last();
}

CDbStyleObject *CDbMarkerDrawing::addStyle(
    const QString &name, const QString &sourceFile, std::vector<StyleSize> sizes)
{
    auto style = std::make_unique<CDbStyleObject>(name, sourceFile, std::move(sizes));
    for (const CDbFabricObject *fabric : qAsConst(m_fabrics)) {
        style->addFabric(fabric);
    }
    stylesList.push_back(style.get());
    m_ownedStyles.push_back(std::move(style));
    return stylesList.back();
}

} // namespace KivSystem
