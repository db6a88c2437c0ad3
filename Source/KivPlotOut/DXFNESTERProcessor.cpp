#include "DXFNESTERProcessor.h"

#include "DxfGenerator.h"
#include "Failures.h"

#include "KivCore/Application.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QSet>
#include <QTextStream>

namespace KivSystem {
namespace DxfNester {
namespace {

CDbFabricObject *currentFabric(const CDbMarkerDrawing &drawing)
{
    CDbFabricObject *fabric = drawing.getFabric(static_cast<short>(drawing.currentFabric - 1));
    KIV_CHECK_OPERATION(fabric != nullptr); // a marker without fabrics
    return fabric;
}

bool hasRepeatedNames(const CDbFabricObject &fabric)
{
    QSet<QString> names;
    for (const CDbPieceObject *piece = fabric.firstPiece(); piece != nullptr;
         piece = piece->getNextPiece()) {
        if (names.contains(piece->getName())) {
            return true;
        }
        names.insert(piece->getName());
    }
    return false;
}

} // namespace

DXFNESTERProcessor::DXFNESTERProcessor() = default;

DXFNESTERProcessor::~DXFNESTERProcessor() = default;

QWidget *DXFNESTERProcessor::optionsPanel()
{
    return nullptr;
}

bool DXFNESTERProcessor::prepare(const DocumentMak &document, short /*fabric*/)
{
    const CDbMarkerDrawing *drawing = document.drawing();
    if (drawing == nullptr) {
        return true;
    }
    short error = 0;
    short layer = 0;
    const bool isSingle = drawing->isSetToSingleLayer(&error, &layer);
    KIV_CHECK_OPERATION(error == 0);
    if (!isSingle || !hasRepeatedNames(*currentFabric(*drawing))) {
        return true;
    }
    KivApplication::instance()->displayWarning(
        QCoreApplication::translate(
            "DXFNESTERProcessor", "Cannot export. One or more piece names are repeating."),
        QString(), nullptr);
    return false;
}

bool DXFNESTERProcessor::buildDocument(const DocumentMak &document, QIODevice *device)
{
    CDbMarkerDrawing *drawing = document.drawing();
    short error = 0;
    short layer = 0;
    drawing->isSetToSingleLayer(&error, &layer);
    KIV_CHECK_OPERATION(error == 0);
    device->setTextModeEnabled(true);
    QTextStream stream(device);
    stream.setCodec("UTF-8");
    // Goes before the stream and gives the pieces back to the chart.
    t_Generateur_Fichier_DXF_Nester generator(stream, drawing, currentFabric(*drawing), layer);
    generator.Genere_Fichier(false);
    return true;
}

bool DXFNESTERProcessor::prompt()
{
    return true;
}

} // namespace DxfNester
} // namespace KivSystem
