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

#include <algorithm>

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
        std::vector<ShapedBlock> blocks = shaped(selectBlocks(m_drawing, m_fabric));
        const std::vector<GeoPoint2D> holes = takeOuterHoles(blocks);
        if (blocks.empty() || !isInRange(blocks)) {
            return {};
        }
        std::vector<CutPlan> plans;
        for (std::vector<CutObject> &objects : arrangeBlocks(blocks, m_fabric, m_request)) {
            CutPlan plan;
            plan.objects = std::move(objects);
            plan.block = static_cast<int>(plans.size());
            plan.width = m_fabric.getMultiLayerFabricMaxWidth(&m_drawing, false);
            m_drawing.calculateTheLengthOccupiedTheLayers(&m_fabric, false, &plan.length);
            plans.push_back(std::move(plan));
        }
        addWaste(plans, blocks, holes);
        return written(plans);
    }

private:
    std::vector<ShapedBlock> shaped(const std::vector<SelectedBlock> &selected)
    {
        QStringList shortened;
        std::vector<ShapedBlock> blocks;
        for (const SelectedBlock &block : selected) {
            ShapedBlock result{block, {}};
            for (const LaidPiece &laid : block.pieces) {
                CutObject piece = cutShape(laid, m_request);
                piece.name = m_names.inMessage(*laid.polygon);
                if (piece.shortenedNotches > 0) {
                    shortened.append(
                        QStringLiteral("%1 has %2 notches that would cut through it and "
                                       "are made shorter")
                            .arg(piece.name)
                            .arg(piece.shortenedNotches));
                }
                result.pieces.push_back(std::move(piece));
            }
            blocks.push_back(std::move(result));
        }
        if (!m_request.labelsOnly) {
            tell(false, shortened);
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

    // Without the check what is out of range is cut, but not in silence.
    bool isInRange(const std::vector<ShapedBlock> &blocks)
    {
        QStringList faults;
        for (const ShapedBlock &block : blocks) {
            for (const CutObject &piece : block.pieces) {
                const QString fault = findOutOfRange(piece, block.selected, m_request.settings);
                if (!fault.isEmpty()) {
                    faults.append(fault);
                }
            }
        }
        if (!m_request.labelsOnly) {
            tell(m_request.checkRange, faults);
        }
        return faults.isEmpty() || !m_request.checkRange;
    }

    // What is cut outside of the pieces belongs to the document of the fabric. Labels know no more
    // of it than where the tool comes from.
    void addWaste(std::vector<CutPlan> &plans, const std::vector<ShapedBlock> &blocks,
        const std::vector<GeoPoint2D> &holes)
    {
        const CutSettings &settings = m_request.settings;
        QStringList messages;
        if (settings.cutExternalPunchHoles) {
            plans.front().holes = holesInWaste(holes, blocks, messages);
        }
        if (settings.cutFabricEdge && !m_request.labelsOnly) {
            plans.front().wasteCuts =
                wasteCuts(layers(blocks), objectsOf(plans), settings, messages);
        }
        if (!m_request.labelsOnly) {
            tell(false, messages);
        }
    }

    static std::vector<GeoRectangle> layers(const std::vector<ShapedBlock> &blocks)
    {
        std::vector<GeoRectangle> cloths;
        for (const ShapedBlock &block : blocks) {
            const GeoRectangle &cloth = block.selected.cloth;
            const bool isNew = cloths.empty() || cloths.back().left() != cloth.left();
            if (isNew && cloth.width() > 0) { // a layer may lie wholly before its start
                cloths.push_back(cloth);
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
            QStringList unreached;
            if (m_request.settings.cutCommandM69 && !assignFrames(plan, m_request, unreached) &&
                !m_request.labelsOnly) {
                faults += unreached;
                continue;
            }
            orderPlan(plan);
            markAdvances(plan, notes);
            result.append(writeCutDocument(plan, m_fabric.fabricName, m_request));
        }
        tell(true, faults);
        tell(false, notes);
        return faults.isEmpty() ? result : QVector<QDomDocument>();
    }

    void orderPlan(CutPlan &plan) const
    {
        orderObjects(
            plan.objects, plan.holes.empty() ? GeoPoint2D() : plan.holes.back(), m_request);
        if (m_request.notchesDuringOutline()) {
            for (CutObject &object : plan.objects) {
                std::for_each(object.outlines.begin(), object.outlines.end(), gatherNotches);
            }
        }
    }

    const CDbMarkerDrawing &m_drawing;
    const CDbFabricObject &m_fabric;
    const CutRequest &m_request;
    std::vector<CutMessage> &m_messages;
    PieceNames m_names;
};

} // namespace

QVector<QDomDocument> cutDocuments(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric,
    const CutRequest &request, std::vector<CutMessage> &messages)
{
    return Pipeline(drawing, fabric, request, messages).documents();
}

} // namespace KivSystem
