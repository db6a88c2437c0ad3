// Exporter: one export job as the host sees it, for one class of document.
//
// Each operation works by itself, so that the host calls them in an order of its own; it usually
// takes the order in which they stand here. The order of the virtual operations is part of the
// interface between the host and its plug-ins.
#ifndef KIVCORE_EXPORTER_H
#define KIVCORE_EXPORTER_H

class QIODevice;
class QString;
class QWidget;

namespace KivSystem {

template <class DocumentType>
class Exporter
{
public:
    Exporter() = default;
    Exporter(const Exporter &) = delete;
    Exporter &operator=(const Exporter &) = delete;
    virtual ~Exporter() = default;

    /// Whether this format can hold the document at all.
    virtual bool canExport(const DocumentType &document) const = 0;

    /// The panel with the format's options; null when it has none. The exporter keeps it.
    virtual QWidget *optionsPanel() = 0;

    /// Last questions before the export. False drops the export without a word.
    virtual bool prepare(const DocumentType &document) = 0;

    /// Whether the format writes a file for each fabric. Shows nothing.
    virtual bool prompt() = 0;

    /// Writes the document to the open `device`. With a null device the exporter asks for file
    /// names itself and offers `filter` for it: filter texts joined by single tabs.
    /// Throws what the format throws when a file cannot be written.
    virtual void exportDocument(
        const DocumentType &document, QIODevice *device, const QString &filter) = 0;
};

} // namespace KivSystem

#endif
