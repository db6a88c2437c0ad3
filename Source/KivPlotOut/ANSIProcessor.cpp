#include "ANSIProcessor.h"

#include "Dialogs/ANSIOptionsWidget.h"
#include "Failures.h"

#include "KivCore/Application.h"
#include "KivCore/MainWindow.h"
#include "KivMarker/ShareGlobales.h"

namespace KivSystem {
namespace NC {

ANSIProcessor::ANSIProcessor()
    : CutProcessor("/ANSI.xml")
    , optionsWidget(new ANSIOptionsWidget(KivApplication::instance()->mainWindow()))
{}

ANSIProcessor::~ANSIProcessor() = default;

QWidget *ANSIProcessor::optionsPanel()
{
    return optionsWidget.data();
}

bool ANSIProcessor::applyOptionChanges()
{
    KIV_HARD_ASSERT(!optionsWidget.isNull(), "px != 0");
    return optionsWidget->applyChanges();
}

const SvgOptions &ANSIProcessor::getSvgOpt(const DocumentMak &doc)
{
    svgOptions.setExportType(SvgOptions::ExportAnsi);
    svgOptions.setCheckRange(true);
    return CutProcessor::getSvgOpt(doc);
}

QString ANSIProcessor::getNotchLineTo0(const QDomElement &notchConfig)
{
    const auto *settings = CDbMarkerShareGlobales::instance();
    if (!settings->getCutCommandM19()) {
        return notchConfig.attribute(QStringLiteral("linetopenup"));
    }
    const int order = getNotchOrder();
    const bool isOneStroke = order == NotchDuringOutline ||
                             (order == NotchBeforeOutline && settings->getCutCuttingEdge());
    return isOneStroke ? notchConfig.attribute(QStringLiteral("linetonopenup"))
                       : CutProcessor::getNotchLineTo0(notchConfig);
}

} // namespace NC
} // namespace KivSystem
