// The manager report of 200 and of 20 styles x 5 fabrics x 4 layers x 10 sizes, beside a floor that
// writes as many bytes of the same kind from one buffer.

#include "BigMarker.h"
#include "KivMarker/Document.h"
#include "TextIndexList.h"
#include "TextProcessor.h"
#include "TextProcessorOptions.h"

#include <QBuffer>

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <string>

namespace KivSystem {
namespace {

QByteArray report(const DocumentMak &document)
{
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    TextProcessor::exportDocument(
        document, &buffer, TextIndexList::loadDefault(), TextProcessorOptions());
    return buffer.data();
}

std::unique_ptr<DocumentMak> marker(const benchmark::State &state)
{
    return markerOfStyles({static_cast<int>(state.range(0)), 5, 4, 10});
}

void BM_ManagerReport(benchmark::State &state)
{
    const auto document = marker(state);
    qint64 bytes = 0;
    for (auto run : state) {
        bytes += report(*document).size();
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_ManagerReport)->Arg(20)->Arg(200)->Unit(benchmark::kMillisecond);

// The same bytes, its numbers made by to_chars and all else copied.
void BM_ManagerReportFloor(benchmark::State &state)
{
    const QByteArray model = report(*marker(state));
    for (auto run : state) {
        std::string buffer;
        buffer.reserve(static_cast<std::size_t>(model.size()));
        std::array<char, 32> digits{};
        for (int position = 0; position < model.size();) {
            double value = 0;
            const auto parsed = std::from_chars(
                model.constData() + position, model.constData() + model.size(), value);
            const int length = static_cast<int>(parsed.ptr - (model.constData() + position));
            const bool decimal = length > 0 && model.mid(position, length).contains('.');
            if (decimal) {
                const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                    std::chars_format::fixed, 2);
                buffer.append(digits.data(), end.ptr);
                position += length;
            } else {
                buffer.push_back(model[position++]);
            }
        }
        benchmark::DoNotOptimize(buffer);
    }
    state.SetBytesProcessed(state.iterations() * model.size());
}
BENCHMARK(BM_ManagerReportFloor)->Arg(20)->Arg(200)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace KivSystem
