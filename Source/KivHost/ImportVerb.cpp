#include "Console.h"
#include "HostSettings.h"
#include "KivCore/Locale.h"
#include "KivMarker/Document.h"
#include "KivMarker/MarkerFile.h"
#include "NestingFiles.h"
#include "NestingMarker.h"
#include "Verbs.h"

#include <QFileInfo>

#include <cmath>
#include <optional>

namespace KivSystem {

int importMarker(const ImportOptions &options, const Console &console)
{
    if (!(options.unit > 0) || !std::isfinite(options.unit)) {
        throw HostError(
            ExitWrongUsage, QStringLiteral("--unit: expected a length in centimetres above 0"));
    }
    for (const QString &source : {options.instance, options.layout}) {
        const QString place = QFileInfo(source).canonicalFilePath();
        if (!place.isEmpty() && place == QFileInfo(options.output).canonicalFilePath()) {
            throw HostError(ExitWrongUsage,
                QStringLiteral("%1: is read, expected another file to write").arg(options.output));
        }
    }
    applyConventions(console);
    const NestingInstance instance = readNestingInstance(options.instance, options.unit);
    std::optional<NestingLayout> layout;
    if (!options.layout.isEmpty()) {
        layout = readNestingLayout(options.layout, options.unit, instance);
    }
    const NestingMarker marker = makeNestingMarker(instance, layout ? &*layout : nullptr);
    if (marker.outside > 0) {
        const QString farthest =
            KivLocale().formatLength(marker.farthestOutside, KivLocale::WithUnit);
        console.message(
            QStringLiteral("%1: warning: %2 of the pieces reach out of the strip, by up to %3")
                .arg(options.layout, QString::number(marker.outside), farthest));
    }
    try {
        MarkerFile::save(*marker.document, options.output);
    } catch (const MarkerFileError &error) {
        throw HostError(ExitFailed, error.message());
    }
    console.message(QStringLiteral("%1: %2 items, %3 pieces ordered, %4 placed")
                        .arg(options.instance, QString::number(instance.items.size()),
                            QString::number(marker.pieces), QString::number(marker.placed)));
    console.out << options.output << '\t' << QFileInfo(options.output).size() << " bytes\n";
    return ExitDone;
}

} // namespace KivSystem
