// ExporterFactory: what a plug-in hands to the host. It names the export formats, describes each
// one for the save dialogs and makes export jobs.
//
//     FileFormat format;
//     if (factory->describeFormat("Text File", format)) { ... format.filter.split('\t') ... }
#ifndef KIVCORE_EXPORTERFACTORY_H
#define KIVCORE_EXPORTERFACTORY_H

#include "KivCore/Export.h"
#include "KivCore/Exporter.h"

#include <QObject>
#include <QString>

#include <boost/shared_ptr.hpp>

#include <vector>

namespace KivSystem {

/// The host's general document type. It has no definition on purpose: a factory serves documents
/// of any class, and only the plug-in and the caller know which one.
class Document;

/// How a format is described to the host.
struct FileFormat
{
    QString name;   ///< key of the format, never translated
    QString filter; ///< translated filter texts for a save dialog, joined by single tabs
    QString tag;    ///< short code of the format
    qint32 id = 0;  ///< number by which the host knows the format
};

class KIVCORE_EXPORT ExporterFactory : public QObject
{
    Q_OBJECT

public:
    explicit ExporterFactory(QObject *parent = nullptr);
    ~ExporterFactory() override;

    /// Keys of all formats, in the order in which they are offered.
    virtual std::vector<QString> supportedFormats() const = 0;

    /// Fills `format` for the key `name`, compared case-sensitively. False for an unknown key; the
    /// format's name is set to the key all the same.
    virtual bool describeFormat(const QString &name, FileFormat &format) const = 0;

    /// A new export job for the key `name`; an empty pointer for a key it cannot serve.
    ///
    /// A plug-in hands out its exporters reinterpreted as Exporter<Document>, whatever class of
    /// document they export. The caller casts the pointer back (boost::reinterpret_pointer_cast)
    /// to Exporter<its document class> before it calls anything; nothing may be called through
    /// Exporter<Document> itself.
    virtual boost::shared_ptr<Exporter<Document>> createExporter(const QString &name) = 0;
};

} // namespace KivSystem

#endif
