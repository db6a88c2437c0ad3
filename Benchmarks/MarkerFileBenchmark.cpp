// Loading and saving of marker files: 200 and 2,000 pieces of 100 points, so that the growth can be
// read off one run.

#include "BigMarker.h"
#include "KivMarker/Document.h"
#include "KivMarker/MarkerFile.h"

#include <benchmark/benchmark.h>

namespace KivSystem {
namespace {

void BM_LoadMarker(benchmark::State &state)
{
    const QByteArray bytes = MarkerFile::toBytes(*markerOfPieces(static_cast<int>(state.range(0))));
    for (auto run : state) {
        benchmark::DoNotOptimize(MarkerFile::parse(bytes, QStringLiteral("big.mar")));
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(BM_LoadMarker)->Arg(200)->Arg(2000)->Unit(benchmark::kMillisecond);

void BM_SaveMarker(benchmark::State &state)
{
    const auto document = markerOfPieces(static_cast<int>(state.range(0)));
    for (auto run : state) {
        benchmark::DoNotOptimize(MarkerFile::toBytes(*document));
    }
}
BENCHMARK(BM_SaveMarker)->Arg(200)->Arg(2000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace KivSystem
