#include "ManagerTextProcessor.h"

#include "TextIndexList.h"
#include "TextProcessor.h"
#include "TextProcessorOptions.h"

namespace KivSystem {
namespace NC {

QWidget *ManagerTextProcessor::optionsPanel()
{
    return nullptr;
}

bool ManagerTextProcessor::prepare(const DocumentMak & /*doc*/, short /*fabric*/)
{
    return true;
}

bool ManagerTextProcessor::buildDocument(const DocumentMak &doc, QIODevice *device)
{
    TextProcessor::exportDocument(
        doc, device, TextIndexList::loadDefault(), TextProcessorOptions());
    return true;
}

} // namespace NC
} // namespace KivSystem
