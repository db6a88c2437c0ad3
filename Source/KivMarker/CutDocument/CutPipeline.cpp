#include "CutDocument/CutPipeline.h"

#include "CutDocument/CutBlocks.h"
#include "CutDocument/CutFrames.h"
#include "CutDocument/CutHoles.h"
#include "CutDocument/CutInformation.h"
#include "CutDocument/CutOrder.h"
#include "CutDocument/CutRange.h"
#include "CutDocument/CutRequest.h"
#include "CutDocument/CutShapes.h"
#include "CutDocument/CutWaste.h"
#include "CutDocument/CutWriter.h"
#include "CutDocument/PieceNames.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"

#include <optional>

namespace KivSystem {
namespace {

class Pipeline
{
public:
    Pipeline(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric,
        const CutRequest &request, std::vector<CutMessage> &messages)
        : m_drawing(drawing)
        , m_fabric(fabric)
        , m_request(request)
        , m_messages(messages)
        , m_names(drawing, fabric)
    {}

    QVector<QDomDocument> documents()
    {
        const std::vector<SelectedBlock> selected = selectBlocks(m_drawing, m_fabric);
        std::vector<ShapedBlock> blocks = shaped(selected);
        if (blocks.empty() || !isInRange(blocks)) {
            return {};
        }
        std::vector<GeoPoint2D> holes = takeOuterHoles(blocks, m_holeMessages);
        std::vector<CutPlan> plans;
        for (std::vector<CutObject> &objects : arrangeBlocks(blocks, m_fabric, m_request)) {
            CutPlan plan;
            plan.objects = std::move(objects);
            plan.block = static_cast<int>(plans.size());
            plan.width = m_fabric.getMultiLayerFabricMaxWidth(&m_drawing, false);
            m_drawing.calculateTheLengthOccupiedTheLayers(&m_fabric, false, &plan.length);
            plans.push_back(std::move(plan));
        }
        addWaste(plans, blocks, std::move(holes));
        return written(plans);
    }

private:
    std::vector<ShapedBlock> shaped(const std::vector<SelectedBlock> &selected) const
    {
        std::vector<ShapedBlock> blocks;
        for (const SelectedBlock &block : selected) {
            ShapedBlock result{block, {}};
            for (const CDbPolygon *polygon : block.polygons) {
                result.pieces.push_back(cutShape(*polygon, block.offset, m_request));
                result.pieces.back().name = m_names.inMessage(*polygon);
            }
            blocks.push_back(std::move(result));
        }
        return blocks;
    }

    void tell(bool refused, const QString &message)
    {
        m_messages.push_back(
            {refused, QStringLiteral("fabric \"%1\": %2").arg(m_fabric.fabricName, message)});
    }
    void tell(bool refused, const QStringList &messages)
    {
        for (const QString &message : messages) {
            tell(refused, message);
        }
    }

    bool isInRange(const std::vector<ShapedBlock> &blocks)
    {
        if (!m_request.checkRange) {
            return true;
        }
        bool inRange = true;
        for (const ShapedBlock &block : blocks) {
            for (const CutObject &piece : block.pieces) {
                const QString fault = findOutOfRange(piece, block.selected.cloth);
                if (!fault.isEmpty()) {
                    tell(true, fault);
                    inRange = false;
                }
            }
        }
        return inRange;
    }

    // What is cut outside of the pieces belongs to the document of the fabric.
    void addWaste(std::vector<CutPlan> &plans, const std::vector<ShapedBlock> &blocks,
        std::vector<GeoPoint2D> holes)
    {
        const CutSettings &settings = m_request.settings;
        QStringList messages;
        if (settings.cutExternalPunchHoles && !m_request.labelsOnly) {
            plans.front().holes = std::move(holes);
            messages += m_holeMessages;
        }
        if (settings.cutFabricEdge && !m_request.labelsOnly) {
            plans.front().wasteCuts =
                wasteCuts(layers(blocks), objectsOf(plans), settings, messages);
        }
        tell(false, messages);
    }

    static std::vector<GeoRectangle> layers(const std::vector<ShapedBlock> &blocks)
    {
        std::vector<GeoRectangle> cloths;
        for (const ShapedBlock &block : blocks) {
            if (cloths.empty() || cloths.back().left() != block.selected.cloth.left()) {
                cloths.push_back(block.selected.cloth);
            }
        }
        return cloths;
    }

    static std::vector<const CutObject *> objectsOf(const std::vector<CutPlan> &plans)
    {
        std::vector<const CutObject *> objects;
        for (const CutPlan &plan : plans) {
            for (const CutObject &object : plan.objects) {
                objects.push_back(&object);
            }
        }
        return objects;
    }

    QVector<QDomDocument> written(std::vector<CutPlan> &plans)
    {
        const CutInformation information(m_names, m_request);
        QStringList faults;
        QStringList notes;
        QVector<QDomDocument> result;
        for (CutPlan &plan : plans) {
            for (CutObject &object : plan.objects) {
                information.addTo(object);
            }
            if (m_request.frames() && !assignFrames(plan, m_request, faults)) {
                continue;
            }
            orderObjects(plan.objects, m_request);
            markAdvances(plan, notes);
            result.append(writeCutDocument(plan, m_fabric.fabricName, m_request));
        }
        tell(true, faults);
        tell(false, notes);
        return faults.isEmpty() ? result : QVector<QDomDocument>();
    }

    const CDbMarkerDrawing &m_drawing;
    const CDbFabricObject &m_fabric;
    const CutRequest &m_request;
    std::vector<CutMessage> &m_messages;
    QStringList m_holeMessages;
    PieceNames m_names;
};

} // namespace

QVector<QDomDocument> cutDocuments(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric,
    const CutRequest &request, std::vector<CutMessage> &messages)
{
    return Pipeline(drawing, fabric, request, messages).documents();
}

} // namespace KivSystem
