#include "MarkerExporterFactory.h"

#include "ANSIProcessor.h"
#include "DXFNESTERProcessor.h"
#include "EastmanProcessor.h"
#include "IllustratorProcessor.h"
#include "LabelProcessor.h"
#include "ManagerTextProcessor.h"
#include "MarkerExporter.h"
#include "TextProcessorImpl.h"

#include <QCoreApplication>

#include <boost/make_shared.hpp>
#include <boost/pointer_cast.hpp>

namespace KivSystem {
namespace {

// Every format but DXF-NESTER shares this filter on purpose, the Illustrator format among them.
QString textAndCutFilter()
{
    static const QString cutFileFilter = QStringLiteral("%1\t%2").arg(
        QCoreApplication::translate("KivSystem::MarkerExporter", "Text File (*.txt)"),
        QCoreApplication::translate("KivSystem::MarkerExporter", "Cut File (*.cut)"));
    return cutFileFilter;
}

QString dxfFilter()
{
    static const QString cutFileFilter = QStringLiteral("%1").arg(
        QCoreApplication::translate("KivSystem::MarkerExporter", "DXF File (*.dxf)"));
    return cutFileFilter;
}

template <class ProcessorType>
boost::shared_ptr<Processor> makeProcessor()
{
    return boost::make_shared<ProcessorType>();
}

struct FormatRow
{
    const char *key;
    qint32 id; // known to the host: 52 and 55 stay unused
    const char *tag;
    QString (*filter)();
    boost::shared_ptr<Processor> (*makeProcessor)();
};

constexpr FormatRow formatTable[] = {
    {"KIV System Manager (txt)", 1, "kiv_txt", textAndCutFilter,
        makeProcessor<NC::ManagerTextProcessor>},
    {"Text File", 2, "txt", textAndCutFilter, makeProcessor<NC::TextProcessorImpl>},
    {"Cut File ANSI", 50, "cut_ansi", textAndCutFilter, makeProcessor<NC::ANSIProcessor>},
    {"Cut File Eastman", 51, "cut_eastman", textAndCutFilter, makeProcessor<NC::EastmanProcessor>},
    {"Cut Labels", 53, "cut_labels", textAndCutFilter, makeProcessor<NC::LabelProcessor>},
    {"DXF-NESTER", 54, "dxf_nester", dxfFilter, makeProcessor<DxfNester::DXFNESTERProcessor>},
    {"Illustrator(TM)", 56, "ill_tm", textAndCutFilter,
        makeProcessor<KivIllustrator::IllustratorProcessor>},
};

} // namespace

MarkerExporterFactory MarkerExporterFactory::self;

MarkerExporterFactory::MarkerExporterFactory() = default;

MarkerExporterFactory::~MarkerExporterFactory() = default;

MarkerExporterFactory *MarkerExporterFactory::instance()
{
    return &self;
}

std::vector<QString> MarkerExporterFactory::supportedFormats() const
{
    std::vector<QString> keys;
    for (const FormatRow &row : formatTable) {
        keys.push_back(QString::fromLatin1(row.key));
    }
    return keys;
}

bool MarkerExporterFactory::describeFormat(const QString &key, FileFormat &format) const
{
    textAndCutFilter(); // built here whatever the key is: it keeps today's language from now on
    format.name = key;
    for (const FormatRow &row : formatTable) {
        if (key == QLatin1String(row.key)) {
            format.filter = row.filter();
            format.id = row.id;
            format.tag = QString::fromLatin1(row.tag);
            return true;
        }
    }
    return false;
}

boost::shared_ptr<Exporter<Document>> MarkerExporterFactory::createExporter(const QString &key)
{
    boost::shared_ptr<Processor> processor;
    for (const FormatRow &row : formatTable) {
        if (key == QLatin1String(row.key)) {
            processor = row.makeProcessor();
        }
    }
    if (processor == nullptr) {
        return {};
    }
    const boost::shared_ptr<Exporter<DocumentMak>> exporter =
        boost::make_shared<MarkerExporter>(processor);
    return boost::reinterpret_pointer_cast<Exporter<Document>>(exporter);
}

} // namespace KivSystem
