// ExportSteps: what the command line and the window do alike with one format.
//
//     checkBeforeExport(format, document, tell);
//     if (exporter.canExport(document) && closeOptionsPanel(exporter.optionsPanel()) &&
//         exporter.prepare(document)) {
//         writeDocument(exporter, format, document, tell);
//     }
#ifndef KIVHOST_EXPORTSTEPS_H
#define KIVHOST_EXPORTSTEPS_H

#include "KivCore/ExporterFactory.h"

#include <functional>
#include <vector>

class QWidget;

namespace KivSystem {

class DocumentMak;

/// Takes a remark for the user.
using Tell = std::function<void(const QString &sentence)>;

/// In the order of the factory.
std::vector<FileFormat> offeredFormats(const ExporterFactory &factory);

/// Of the format's files, without a full stop: "cut".
QString extensionOf(const FileFormat &format);

/// Null for a format that the factory names but cannot serve.
boost::shared_ptr<Exporter<DocumentMak>> makeExporter(
    ExporterFactory &factory, const QString &format);

/// What the host can tell better than the plug-in, which would write nothing or too little. Throws
/// HostError (ExitFailed) when the format cannot be written.
void checkBeforeExport(const FileFormat &format, const DocumentMak &document, const Tell &tell);

/// Checks and closes the panel, by which it hands its choices on; false when it refuses. A null
/// panel has nothing to say.
bool closeOptionsPanel(QWidget *panel);

/// Has the exporter ask for its files and write them, and tells what is missing in them. Throws
/// HostError when a fabric was refused, which fails the whole format (half a marker is no result),
/// and what the exporter throws.
void writeDocument(Exporter<DocumentMak> &exporter, const FileFormat &format,
    const DocumentMak &document, const Tell &tell);

} // namespace KivSystem

#endif
