// DXF-NESTER files of 200,000 outline points, as 2,000 pieces and as 20. Beside it the floor, which
// makes the same bytes from numbers and texts that are at hand: to_chars into one buffer.

#include "BigMarker.h"
#include "DXFNESTERProcessor.h"
#include "OutputFile.h"

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ShareGlobales.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <vector>

namespace KivSystem {
namespace {

constexpr int kPoints = 200000;
const QByteArray kVertex = "  0\nVERTEX\n  8\n1\n 10\n";

// A marker in which each piece is placed once and waits once more.
std::unique_ptr<DocumentMak> markerToNest(int pieces)
{
    DrawingSettings settings = CDbMarkerShareGlobales::instance()->drawingSettings();
    settings.stepDigitalCurve = 0; // no point is left out
    CDbMarkerShareGlobales::instance()->setDrawingSettings(settings);
    auto document = markerOfPieces(pieces, kPoints / pieces);
    CDbMarkerDrawing &drawing = *document->drawing();
    drawing.setSingleLayer(1);
    drawing.findSizesList(0, 1, nullptr)->setQuantity(1, 1, 2);
    for (CDbPieceObject *piece = drawing.getFabric(0)->firstPiece(); piece != nullptr;
         piece = piece->getNextPiece()) {
        piece->setOrderedQuantity({1, 1, true}, 2);
    }
    return document;
}

void writeFile(const QString &path, const DocumentMak &document)
{
    DxfNester::DXFNESTERProcessor processor;
    OutputFile file(path);
    file.open(QIODevice::ReadWrite | QIODevice::Truncate);
    processor.buildDocument(document, &file);
    file.finish();
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

// Write calls of this process so far.
qint64 writeCalls()
{
    const QByteArray counts = contentOf(QStringLiteral("/proc/self/io"));
    const int start = counts.indexOf("syscw: ") + 7;
    return counts.mid(start, counts.indexOf('\n', start) - start).toLongLong();
}

void BM_NestingFile(benchmark::State &state)
{
    const auto document = markerToNest(static_cast<int>(state.range(0)));
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("out.dxf"));
    const qint64 before = writeCalls();
    for (auto iteration : state) {
        writeFile(path, *document);
    }
    constexpr double unit = 10000;
    const auto written = static_cast<double>(QFileInfo(path).size()) *
                         static_cast<double>(state.iterations()) / unit;
    state.counters["bytes"] = static_cast<double>(QFileInfo(path).size());
    state.counters["writes_per_10KB"] = static_cast<double>(writeCalls() - before) / written;
}

// The file as texts that stand between two vertices, and the vertices' numbers.
struct Parts
{
    std::vector<QByteArray> texts; // each before its run of vertices; the last one ends the file
    std::vector<std::vector<std::pair<double, double>>> runs;
};

Parts partsOf(const QByteArray &bytes, const DocumentMak &document)
{
    Parts parts;
    int position = 0;
    for (const CDbPieceObject *piece = document.drawing()->getFabric(0)->firstPiece();
         piece != nullptr; piece = piece->getNextPiece()) {
        const int start = bytes.indexOf(kVertex, position);
        parts.texts.push_back(bytes.mid(position, start - position));
        position = bytes.indexOf("  0\nSEQEND", start);
        parts.runs.emplace_back();
        for (const CDbMarkerPointObject &point : piece->getPieceSize(1).shape.contour) {
            parts.runs.back().emplace_back(point.x, point.y);
        }
    }
    parts.texts.push_back(bytes.mid(position));
    return parts;
}

void appendNumber(QByteArray &buffer, double value)
{
    constexpr int decimals = 4;
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value + 0.0,
        std::chars_format::fixed, decimals)
                         .ptr;
    buffer.append(digits.data(), static_cast<int>(end - digits.data()));
}

void BM_NestingFileFloor(benchmark::State &state)
{
    const auto document = markerToNest(static_cast<int>(state.range(0)));
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("out.dxf"));
    writeFile(path, *document);
    const QByteArray expected = contentOf(path);
    const Parts parts = partsOf(expected, *document);
    QByteArray buffer;
    for (auto iteration : state) {
        buffer.resize(0);
        buffer.reserve(expected.size());
        for (std::size_t run = 0; run < parts.runs.size(); ++run) {
            buffer.append(parts.texts[run]);
            for (const auto &[x, y] : parts.runs[run]) {
                buffer.append(kVertex);
                appendNumber(buffer, x);
                buffer.append("\n 20\n", 5);
                appendNumber(buffer, y);
                buffer.append('\n');
            }
        }
        buffer.append(parts.texts.back());
        QFile file(path);
        file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        file.write(buffer);
    }
    if (buffer != expected) {
        state.SkipWithError("the floor writes other bytes");
    }
}

BENCHMARK(BM_NestingFile)->Arg(2000)->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NestingFileFloor)->Arg(2000)->Arg(20)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace KivSystem
