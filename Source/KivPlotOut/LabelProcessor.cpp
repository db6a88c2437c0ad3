#include "LabelProcessor.h"

#include "KivMarker/Document.h"
#include "KivMarker/SvgOptions.h"

#include <QDomElement>
#include <QTextStream>

namespace KivSystem {
namespace NC {

LabelProcessor::LabelProcessor() = default;

LabelProcessor::~LabelProcessor() = default;

QWidget *LabelProcessor::optionsPanel()
{
    return nullptr;
}

bool LabelProcessor::prepare(const DocumentMak &doc, short fabricIndex)
{
    if (!Processor::prepare(doc, fabricIndex)) {
        return false;
    }
    SvgOptions options;
    options.setExportType(SvgOptions::ExportLabels);
    currentDocument = 0;
    documents = doc.toSVG(options, fabricIndex);
    return !documents.isEmpty();
}

// A piece without a label gives an empty line, so that lines and pieces stay in step.
bool LabelProcessor::buildDocument(const DocumentMak & /*doc*/, QIODevice *device)
{
    if (currentDocument < 0 || currentDocument >= documents.size()) {
        return false;
    }
    QTextStream stream(device);
    const QDomElement root = documents[currentDocument].documentElement();
    if (root.isNull()) {
        return false;
    }
    const QString tag = QStringLiteral("object");
    QDomElement object = root.firstChildElement(tag);
    for (; !object.isNull(); object = object.nextSiblingElement(tag)) {
        stream << object.attribute(QStringLiteral("label")) << "\r\n";
    }
    return true;
}

bool LabelProcessor::isNeedSelectFabirc()
{
    return true;
}

bool LabelProcessor::exportMoreFiles()
{
    ++currentDocument;
    return currentDocument < documents.size();
}

} // namespace NC
} // namespace KivSystem
