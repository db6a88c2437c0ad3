// The cut document of a marker, as a whole and stage by stage. The argument is the number of
// pieces; each has 400 points, so that 500 pieces have 200,000.

#include "BigMarker.h"

#include "CutDocument/CutBlocks.h"
#include "CutDocument/CutInformation.h"
#include "CutDocument/CutOrder.h"
#include "CutDocument/CutRequest.h"
#include "CutDocument/CutShapes.h"
#include "CutDocument/CutWriter.h"
#include "CutDocument/PieceNames.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"

#include <benchmark/benchmark.h>

namespace KivSystem {
namespace {

constexpr int kPointsOfPiece = 400;

SvgOptions options()
{
    SvgOptions result;
    result.setExportType(SvgOptions::ExportAnsi);
    result.setCaller(SvgOptions::CallerZentrim);
    result.setNotchLength(0.5);
    return result;
}

CutSettings settings()
{
    CutSettings result;
    result.reducePoints = true;
    result.reducePointsTolerance = 0.0001;
    result.cutLabelM31 = true;
    result.penCutInfos = true;
    return result;
}

// A marker and what the stages make of it, for a stage to start from.
struct Stages
{
    explicit Stages(int pieces)
        : document(markerOfPieces(pieces, kPointsOfPiece))
        , fabric(*document->drawing()->getFabric(0))
        , request(cutRequest(options(), settings(), true))
    {}

    std::vector<ShapedBlock> shapes() const
    {
        std::vector<ShapedBlock> blocks;
        for (const SelectedBlock &block : selectBlocks(*document->drawing(), fabric)) {
            blocks.push_back({block, {cutShape(block.pieces[0], request)}});
        }
        return blocks;
    }
    std::vector<CutObject> objects() const
    {
        return arrangeBlocks(shapes(), fabric, request).front();
    }

    std::unique_ptr<DocumentMak> document;
    const CDbFabricObject &fabric;
    CutRequest request;
};

void shapesWithReduction(benchmark::State &state)
{
    const Stages stages(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(stages.shapes());
    }
}

void labelsAndTexts(benchmark::State &state)
{
    const Stages stages(static_cast<int>(state.range(0)));
    std::vector<CutObject> objects = stages.objects();
    const PieceNames names(*stages.document->drawing(), stages.fabric);
    const CutInformation information(names, stages.request);
    for (auto _ : state) {
        for (CutObject &object : objects) {
            object.texts.clear();
            information.addTo(object);
        }
    }
}

void cuttingOrder(benchmark::State &state)
{
    const Stages stages(static_cast<int>(state.range(0)));
    const std::vector<CutObject> objects = stages.objects();
    for (auto _ : state) {
        std::vector<CutObject> ordered = objects;
        orderObjects(ordered, GeoPoint2D(), stages.request);
        benchmark::DoNotOptimize(ordered);
    }
}

void writing(benchmark::State &state)
{
    const Stages stages(static_cast<int>(state.range(0)));
    CutPlan plan;
    plan.objects = stages.objects();
    for (auto _ : state) {
        benchmark::DoNotOptimize(writeCutDocument(plan, QStringLiteral("F"), stages.request));
    }
}

void roughOutlines(benchmark::State &state)
{
    Stages stages(static_cast<int>(state.range(0)));
    stages.request.settings.cutBlocking = true;
    const std::vector<ShapedBlock> blocks = stages.shapes();
    for (auto _ : state) {
        benchmark::DoNotOptimize(arrangeBlocks(blocks, stages.fabric, stages.request));
    }
}

// With the settings' defaults: all points, no labels, no texts.
void wholeDocument(benchmark::State &state)
{
    const Stages stages(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(stages.document->toSVG(options(), 1));
    }
}

BENCHMARK(wholeDocument)->Arg(50)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(shapesWithReduction)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(roughOutlines)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(labelsAndTexts)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(cuttingOrder)->Arg(50)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(writing)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace KivSystem
