// MarkerExporterFactory: the formats of this plug-in. The host gets it from markerplugin() and
// speaks to nothing else.

#ifndef KIVPLOTOUT_MARKEREXPORTERFACTORY_H
#define KIVPLOTOUT_MARKEREXPORTERFACTORY_H

#include "KivCore/ExporterFactory.h"

namespace KivSystem {

class MarkerExporterFactory : public ExporterFactory
{
    Q_OBJECT

public:
    ~MarkerExporterFactory() override;

    /// The one instance, made when the library is loaded.
    static MarkerExporterFactory *instance();

    std::vector<QString> supportedFormats() const override;

    /// An unknown key leaves all of `format` but its name as it was. The filter keeps the language
    /// that was active when its text was first needed.
    bool describeFormat(const QString &key, FileFormat &format) const override;

    /// A new job with a processor of its own, which may make widgets. It really is an
    /// Exporter<DocumentMak>; empty for an unknown key and for a format without a processor.
    boost::shared_ptr<Exporter<Document>> createExporter(const QString &key) override;

private:
    MarkerExporterFactory();

    static MarkerExporterFactory self;
};

} // namespace KivSystem

#endif
