// CutPipeline: the cut documents of one fabric, stage by stage (CutPlan.h lists them).

#ifndef KIVMARKER_CUTPIPELINE_H
#define KIVMARKER_CUTPIPELINE_H

#include <QDomDocument>
#include <QVector>

#include <vector>

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;
struct CutMessage;
struct CutRequest;

/// The fabric's document, and behind it those of blocks. Empty when nothing lies on the fabric and
/// when something must not be cut; `messages` then receives the reason.
QVector<QDomDocument> cutDocuments(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric,
    const CutRequest &request, std::vector<CutMessage> &messages);

} // namespace KivSystem

#endif
