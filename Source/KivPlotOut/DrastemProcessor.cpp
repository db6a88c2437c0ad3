#include "DrastemProcessor.h"

#include "Dialogs/ANSIOptionsWidget.h"
#include "Failures.h"

#include "KivCore/Application.h"
#include "KivCore/MainWindow.h"

namespace KivSystem {
namespace NC {

DrastemProcessor::DrastemProcessor()
    : CutProcessor("/ANSI.xml")
    , optionsWidget(new ANSIOptionsWidget(KivApplication::instance()->mainWindow()))
{}

DrastemProcessor::~DrastemProcessor() = default;

QWidget *DrastemProcessor::optionsPanel()
{
    return optionsWidget.data();
}

bool DrastemProcessor::applyOptionChanges()
{
    KIV_HARD_ASSERT(!optionsWidget.isNull(), "px != 0");
    return optionsWidget->applyChanges();
}

const SvgOptions &DrastemProcessor::getSvgOpt(const DocumentMak &doc)
{
    svgOptions.setExportType(SvgOptions::ExportDrastem);
    return CutProcessor::getSvgOpt(doc);
}

} // namespace NC
} // namespace KivSystem
