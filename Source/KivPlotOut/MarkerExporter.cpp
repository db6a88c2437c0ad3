#include "MarkerExporter.h"

#include "Failures.h"
#include "OutputFile.h"
#include "Processor.h"

#include "KivCore/Application.h"
#include "KivCore/MainWindow.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ShareGlobales.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <utility>

namespace KivSystem {
namespace {

QStringList dialogFilters(const QString &filter)
{
    QStringList filters = filter.split(QLatin1Char('\t'));
    filters.append(QCoreApplication::translate("QCoreApplication", "All Files (*.*)"));
    return filters;
}

int askAboutOptimization()
{
    const QString message = QCoreApplication::translate("QCoreApplication",
        "Polygon optimization is performed only in Zentrim View?%1To export non optimized "
        "polygons, press Continue?")
                                .arg(QLatin1Char('\n'));
    return KivApplication::instance()->confirmContinue(message,
        QCoreApplication::translate("QCoreApplication", "Continue"),
        QCoreApplication::translate("QCoreApplication", "Continue"),
        QCoreApplication::translate("QCoreApplication", "  Go to Zentrim View  "),
        QCoreApplication::translate("QCoreApplication", "Cancel"), nullptr);
}

void showZentrimView()
{
    const MainWindow *window = KivApplication::instance()->mainWindow();
    MdiChild *child = window == nullptr ? nullptr : window->activeMdiChild();
    if (child != nullptr) {
        child->sendSignal(MdiChild::ShowZentrimView);
    }
}

} // namespace

MarkerExporter::MarkerExporter(boost::shared_ptr<Processor> processor)
    : m_processor(std::move(processor))
{
    KIV_HARD_ASSERT(m_processor != nullptr, "proc != NULL");
}

MarkerExporter::~MarkerExporter() = default;

bool MarkerExporter::canExport(const DocumentMak & /*doc*/) const
{
    return true;
}

QWidget *MarkerExporter::optionsPanel()
{
    return m_processor->optionsPanel();
}

bool MarkerExporter::prepare(const DocumentMak &doc)
{
    const CDbMarkerDrawing *drawing = doc.drawing();
    KIV_CHECK_OPERATION(drawing != nullptr);
    if (drawing->zentrimActif || !CDbMarkerShareGlobales::instance()->getZentrimActif() ||
        !m_processor->checkPolygonOptimization()) {
        return true;
    }

    constexpr int kContinue = 0;
    constexpr int kGoToZentrimView = 1;
    const int answer = askAboutOptimization();
    if (answer == kGoToZentrimView) {
        showZentrimView();
    }
    return answer == kContinue;
}

bool MarkerExporter::prompt()
{
    return m_processor->isNeedSelectFabirc();
}

void MarkerExporter::exportDocument(
    const DocumentMak &doc, QIODevice *device, const QString &filter)
{
    if (!m_processor->initProcessing(device, filter)) {
        return;
    }
    if (device != nullptr) {
        if (m_processor->prepare(doc, 0)) {
            m_processor->buildDocument(doc, device);
        }
    } else if (m_processor->isNeedSelectFabirc()) {
        exportFabrics(doc, dialogFilters(filter));
    } else {
        exportWholeDocument(doc, dialogFilters(filter));
    }
}

void MarkerExporter::exportFabrics(const DocumentMak &doc, const QStringList &filters)
{
    const CDbMarkerDrawing *drawing = doc.drawing();
    KIV_CHECK_OPERATION(drawing != nullptr);
    const int count = drawing->getFabricsQty();
    for (int index = 1; index <= count; ++index) {
        const auto fabric = static_cast<short>(index);
        if (!m_processor->prepare(doc, fabric)) {
            continue;
        }
        // A cancelled dialog ends nothing on purpose: the next file of the fabric is asked for.
        do {
            exportFile(doc, filters, m_processor->generateFileName(doc, fabric));
        } while (m_processor->exportMoreFiles());
    }
}

void MarkerExporter::exportWholeDocument(const DocumentMak &doc, const QStringList &filters)
{
    if (m_processor->prepare(doc, 0)) {
        exportFile(doc, filters, doc.name());
    }
}

void MarkerExporter::exportFile(
    const DocumentMak &doc, const QStringList &filters, const QString &proposedName)
{
    const QString path = KivApplication::instance()->getSaveFileName(filters,
        QCoreApplication::translate("QCoreApplication", "Export Document as"), proposedName,
        nullptr, nullptr);
    if (QFileInfo(path).baseName().isEmpty()) {
        return; // cancelled, or a name such as ".txt", which counts as cancelled
    }

    OutputFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Truncate)) {
        BOOST_THROW_EXCEPTION(IOError(file.error()));
    }
    m_processor->buildDocument(doc, &file);
    const QFileDevice::FileError error = file.finish();
    if (error != QFileDevice::NoError) {
        BOOST_THROW_EXCEPTION(IOError(error));
    }
}

} // namespace KivSystem
