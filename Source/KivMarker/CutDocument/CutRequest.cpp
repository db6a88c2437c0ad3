#include "CutDocument/CutRequest.h"

namespace KivSystem {
namespace {

CuttingOrder orderFor(const SvgOptions &options, bool optimisedDrawing)
{
    if (options.exportType() == SvgOptions::ExportLabels) {
        return optimisedDrawing ? CuttingOrder::Optimised : CuttingOrder::Shortened;
    }
    switch (options.caller()) {
    case SvgOptions::CallerExport:
        return CuttingOrder::Shortened;
    case SvgOptions::CallerZentrim:
        return CuttingOrder::Optimised;
    case SvgOptions::CallerDefault:
        break;
    }
    return CuttingOrder::Stored;
}

// Eastman cutters have settings of their own; those that they lack are shared with the ANSI ones.
CutSettings eastmanSettings(CutSettings settings)
{
    settings.cutNotchSize = settings.eastCutNotchSize;
    settings.cutOrderCrans = settings.eastCutOrderCrans;
    settings.cutInternalOrder = settings.eastCutInternalOrder;
    settings.cutBlocking = settings.eastCutBlocking;
    settings.cutFusing = settings.eastCutFusing;
    settings.miniCutFileBlock = settings.eastMiniCutFileBlock;
    settings.cutCommandM69 = false; // the command and the length are those of another machine
    return settings;
}

} // namespace

CutRequest cutRequest(const SvgOptions &options, const CutSettings &settings, bool optimisedDrawing)
{
    constexpr double percent = 100;
    const bool eastman = options.exportType() == SvgOptions::ExportEastman;

    CutRequest request;
    request.settings = eastman ? eastmanSettings(settings) : settings;
    request.labelsOnly = options.exportType() == SvgOptions::ExportLabels;
    request.checkRange = options.checkRange();
    request.scaleX = options.scaleX();
    request.scaleY = options.scaleY();
    // An ANSI file is scaled behind the document, by the expressions of its configuration.
    request.machineScaleX = options.scaleX() * (eastman ? 1 : settings.cutScaleX / percent);
    request.notchLength = options.notchLength();
    request.drills = !eastman || options.drillType() != DrillNone;
    request.drillSize = eastman ? options.drillSize() : short(0);
    request.order = orderFor(options, optimisedDrawing);
    if (request.labelsOnly) {
        request.settings.cutBlocking = false;
        request.settings.cutFusing = NC::CutBlockNone;
        request.notchLength = settings.cutNotchSize; // so that the order is that of the cut file
    }
    return request;
}

} // namespace KivSystem
