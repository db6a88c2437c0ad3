#include "KivMarker/TextIterators.h"

#include "KivMarker/Fabric.h"
#include "KivMarker/Polygon.h" // the groups of a layer
#include "KivMarker/Text.h"

namespace KivSystem {
namespace {

QListEx<void *> layerTexts(const CDbFabricObject &fabric, short layer)
{
    const FabricLayer *found = fabric.findLayer(static_cast<short>(layer + 1));
    return found != nullptr ? textPointers(found->texts) : QListEx<void *>();
}

} // namespace

CDbTextObjectIter::CDbTextObjectIter() = default;

CDbTextObjectIter::~CDbTextObjectIter() = default;

CDbTexObjectVoidPtrIter::CDbTexObjectVoidPtrIter(const QListEx<void *> &texts) : m_texts(texts) {}

bool CDbTexObjectVoidPtrIter::next(CDbTextObject **text)
{
    const bool found = m_position < m_texts.size();
    *text = found ? static_cast<CDbTextObject *>(m_texts.at(m_position++)) : nullptr;
    return found;
}

CTextLayerTableIter::CTextLayerTableIter(const CDbFabricObject &fabric, short layer)
    : CDbTexObjectVoidPtrIter(layerTexts(fabric, layer))
{}

QListEx<void *> textPointers(const std::vector<std::unique_ptr<CDbTextObject>> &texts)
{
    QListEx<void *> pointers;
    for (const auto &text : texts) {
        pointers.append(text.get());
    }
    return pointers;
}

} // namespace KivSystem
