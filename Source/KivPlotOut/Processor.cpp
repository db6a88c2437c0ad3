#include "Processor.h"

#include "Failures.h"

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"

#include <QString>

namespace KivSystem {
namespace {

constexpr qint64 kExportedStatus = 1;

} // namespace

Processor::Processor() = default;

Processor::~Processor() = default;

bool Processor::prepare(const DocumentMak &doc, short fabric)
{
    indexTiss = fabric;
    if (fabric <= 0) {
        return true;
    }

    CDbMarkerDrawing *drawing = doc.drawing();
    KIV_CHECK_OPERATION(drawing != nullptr);
    const CDbFabricsObjectTable &fabrics = drawing->getFabricsTable();
    KIV_HARD_ASSERT(fabric <= fabrics.size(), "I_Fabric <= Liste_De_Fabrics.size()");

    const CDbFabricObject *candidate = drawing->getFabric(static_cast<short>(fabric - 1));
    if (candidate == nullptr || candidate->fabricStatus != kExportedStatus) {
        return false;
    }
    short error = 0; // not looked at: a fabric that cannot be judged counts as empty
    return drawing->getLayerObjectTable().isPlacementInTheFabric(fabrics[fabric - 1], &error);
}

void Processor::setIndexTiss(short fabric)
{
    indexTiss = fabric;
}

bool Processor::initProcessing(QIODevice * /*device*/, const QString & /*filter*/)
{
    return true;
}

bool Processor::checkPolygonOptimization()
{
    return false;
}

bool Processor::isNeedSelectFabirc()
{
    return false;
}

bool Processor::exportMoreFiles()
{
    return false;
}

QString Processor::generateFileName(const DocumentMak &doc, short fabric)
{
    return doc.drawing()->getFabric(static_cast<short>(fabric - 1))->fabricName;
}

} // namespace KivSystem
