// MarkerExporter: one export job as the host sees it. It asks the user, opens the files and hands
// them to the processor of its format.

#ifndef KIVPLOTOUT_MARKEREXPORTER_H
#define KIVPLOTOUT_MARKEREXPORTER_H

#include "KivCore/Exporter.h"

#include <boost/shared_ptr.hpp>

class QStringList;

namespace KivSystem {

class DocumentMak;
class Processor;

/// Each operation works by itself, in any order and any number of times. Exceptions of the formats
/// pass through.
class MarkerExporter : public Exporter<DocumentMak>
{
public:
    /// Shares the processor. A null one is an error of the program and ends it.
    explicit MarkerExporter(boost::shared_ptr<Processor> processor);
    ~MarkerExporter() override;

    /// Always true.
    bool canExport(const DocumentMak &doc) const override;

    /// The processor's panel, owned by it; null when the format has no options.
    QWidget *optionsPanel() override;

    /// Asks whether polygons that are not optimised may be exported. False drops the export.
    bool prepare(const DocumentMak &doc) override;

    /// Whether the format asks for a file for each fabric. Shows nothing.
    bool prompt() override;

    /// Writes the document to `device`, which is open, or, with a null device, to one file or to
    /// files for each fabric that the user names; `filter` holds the file filters for these
    /// dialogs, separated by tabs. A cancelled dialog skips its file without a word. Throws
    /// IOError for a file that cannot be opened or not be written in full.
    void exportDocument(const DocumentMak &doc, QIODevice *device, const QString &filter) override;

private:
    void exportFabrics(const DocumentMak &doc, const QStringList &filters);
    void exportWholeDocument(const DocumentMak &doc, const QStringList &filters);
    void exportFile(
        const DocumentMak &doc, const QStringList &filters, const QString &proposedName);

    boost::shared_ptr<Processor> m_processor;
};

} // namespace KivSystem

#endif
