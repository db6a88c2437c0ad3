#include "KivMarker/Document.h"

#include "CutDocument/CutPipeline.h"
#include "CutDocument/CutRequest.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ShareGlobales.h"

#include <algorithm>
#include <utility>

namespace KivSystem {

DocumentMak::DocumentMak(std::unique_ptr<CDbMarkerDrawing> drawing) : m_drawing(std::move(drawing))
{}

DocumentMak::~DocumentMak() = default;

QString DocumentMak::name() const
{
    return m_drawing != nullptr ? m_drawing->drawingName() : QString();
}

std::vector<CutMessage> DocumentMak::takeCutMessages() const
{
    return std::exchange(m_cutMessages, {});
}

QVector<QDomDocument> DocumentMak::toSVG(const SvgOptions &options, short fabric) const
{
    if (m_drawing == nullptr) {
        return {};
    }
    const CutRequest request = cutRequest(
        options, CDbMarkerShareGlobales::instance()->cutSettings(), m_drawing->zentrimActif);
    const bool all = fabric == 0;
    const auto told = static_cast<std::ptrdiff_t>(m_cutMessages.size());
    QVector<QDomDocument> documents;
    for (int index = 0; index < m_drawing->getFabricsQty(); ++index) {
        const CDbFabricObject &found = *m_drawing->getFabric(static_cast<short>(index));
        if (all ? found.fabricStatus == 1 : index + 1 == fabric) {
            documents += cutDocuments(*m_drawing, found, request, m_cutMessages);
        }
    }
    const bool refused = std::any_of(m_cutMessages.begin() + told, m_cutMessages.end(),
        [](const CutMessage &message) { return message.refused; });
    return refused ? QVector<QDomDocument>() : documents;
}

} // namespace KivSystem
