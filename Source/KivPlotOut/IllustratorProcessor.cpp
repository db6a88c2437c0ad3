#include "IllustratorProcessor.h"

#include "Dialogs/IllustratorExportOptionsWidget.h"
#include "Failures.h"
#include "IllustratorMarker.h"
#include "IllustratorPrimitives.h"

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"

#include <QFile>
#include <QFileInfo>
#include <QTextStream>

namespace KivSystem {
namespace KivIllustrator {
namespace {

QString titleOf(const QIODevice *device)
{
    const auto *file = qobject_cast<const QFile *>(device);
    return file == nullptr ? QString() : QFileInfo(*file).fileName();
}

} // namespace

IllustratorProcessor::IllustratorProcessor()
    : optionsWidget(new IllustratorExportOptionsWidget(nullptr))
{}

IllustratorProcessor::~IllustratorProcessor() = default;

QWidget *IllustratorProcessor::optionsPanel()
{
    return optionsWidget.data();
}

bool IllustratorProcessor::prepare(const DocumentMak &doc, short fabric)
{
    indexTiss = fabric;
    if (fabric < 1) {
        return false;
    }
    const CDbMarkerDrawing *drawing = doc.drawing();
    const CDbFabricObject *fabricObject = drawing->getFabric(static_cast<short>(fabric - 1));
    KIV_CHECK_OPERATION(fabricObject != nullptr);
    if (fabricObject->fabricStatus != 1) {
        return false;
    }
    double length = 0;
    drawing->calculateTheLengthOccupiedTheLayers(fabricObject, false, &length);
    return length > kEmptyLayerLength;
}

bool IllustratorProcessor::buildDocument(const DocumentMak &doc, QIODevice *device)
{
    if (indexTiss < 1) {
        return false;
    }
    CDbMarkerDrawing *drawing = doc.drawing();
    KIV_HARD_ASSERT(optionsWidget != nullptr, "px != 0");
    setScale(optionsWidget->factor());
    CDbFabricObject *fabric = drawing->getFabric(static_cast<short>(indexTiss - 1));
    KIV_CHECK_OPERATION(fabric != nullptr);
    const QString title = titleOf(device);
    device->setTextModeEnabled(true);
    QTextStream stream(device);
    Export_Illustrator_Mk(stream, title, drawing, fabric);
    return true;
}

bool IllustratorProcessor::isNeedSelectFabirc()
{
    return true;
}

bool IllustratorProcessor::canExport(const DocumentMak & /*doc*/) const
{
    return true;
}

bool IllustratorProcessor::prompt()
{
    return true;
}

} // namespace KivIllustrator
} // namespace KivSystem
