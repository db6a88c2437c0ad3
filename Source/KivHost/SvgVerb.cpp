#include "Console.h"
#include "CutPicture.h"
#include "CutRequests.h"
#include "HostSettings.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/MarkerFile.h"
#include "Verbs.h"

#include <QDomDocument>

namespace KivSystem {

int writeSvg(const SvgVerbOptions &options, const Console &console)
{
    const RunSettings settings(options.settings, RunSettings::ReadOnly, console);
    const std::unique_ptr<DocumentMak> document = loadMarker(options.marker);
    const CDbMarkerDrawing &drawing = *document->drawing();
    if (options.fabric < 1 || options.fabric > drawing.getFabricsQty()) {
        throw HostError(ExitWrongUsage, QStringLiteral("there is no fabric %1; the marker has %2")
                                            .arg(options.fabric)
                                            .arg(drawing.getFabricsQty()));
    }
    QVector<QDomDocument> documents =
        document->toSVG(cutRequestFor(options.cutter, drawing), static_cast<short>(options.fabric));
    bool refused = false;
    for (const CutMessage &message : document->takeCutMessages()) {
        console.message(message.text);
        refused = refused || message.refused;
    }
    if (refused) {
        return ExitFailed;
    }
    if (documents.isEmpty()) {
        throw HostError(
            ExitFailed, QStringLiteral("there is nothing to cut on fabric %1").arg(options.fabric));
    }
    if (options.block < 0 || options.block >= documents.size()) {
        throw HostError(
            ExitWrongUsage, QStringLiteral("there is no document of a block %1; there are %2")
                                .arg(options.block)
                                .arg(documents.size() - 1));
    }
    addPicture(documents[options.block]);
    console.out << QString::fromUtf8(xmlText(documents[options.block]));
    return ExitDone;
}

} // namespace KivSystem
