// Illustrator drawings of 200,000 contour points, as 2,000 pieces and as 20. Beside it the floor,
// which makes the same bytes from numbers and texts that are at hand: to_chars into one buffer.

#include "BigMarker.h"
#include "IllustratorMarker.h"
#include "OutputFile.h"

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"

#include <QApplication>
#include <QDateTime>
#include <QTemporaryDir>
#include <QTextStream>

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cmath>
#include <vector>

namespace KivSystem {
namespace {

constexpr int kPoints = 200000;

void writeFile(const QString &path, const DocumentMak &document)
{
    OutputFile file(path);
    file.open(QIODevice::ReadWrite | QIODevice::Truncate);
    {
        QTextStream stream(&file);
        KivIllustrator::Export_Illustrator_Mk(
            stream, QStringLiteral("out.ai"), document.drawing(), document.drawing()->getFabric(0));
    }
    file.finish();
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

void BM_Drawing(benchmark::State &state)
{
    const auto pieces = static_cast<int>(state.range(0));
    const auto document = markerOfPieces(pieces, kPoints / pieces);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("out.ai"));
    for (auto iteration : state) {
        writeFile(path, *document);
    }
    state.counters["bytes"] = static_cast<double>(contentOf(path).size());
}

// The file as runs of coordinates, in points, and what stands between them.
struct Token
{
    QByteArray text; // before the number
    double value = 0;
    int digits = 0;
};

std::vector<Token> tokensOf(const QByteArray &bytes, QByteArray &tail)
{
    std::vector<Token> tokens;
    int start = 0;
    for (int line = 0; line < bytes.size();) {
        const int end = bytes.indexOf('\n', line);
        const char last = bytes[end - 1];
        if (end - line > 3 && (last == 'm' || last == 'L')) {
            const int middle = bytes.indexOf(' ', line);
            const int stop = bytes.indexOf(' ', middle + 1);
            for (const auto &[from, to] : {std::pair(line, middle), std::pair(middle + 1, stop)}) {
                Token token;
                token.text = bytes.mid(start, from - start);
                std::from_chars(bytes.constData() + from, bytes.constData() + to, token.value);
                const int whole = QByteArray::number(static_cast<int>(token.value)).size();
                token.digits = whole < 2 ? 4 : whole + 4;
                tokens.push_back(token);
                start = to;
            }
        }
        line = end + 1;
    }
    tail = bytes.mid(start);
    return tokens;
}

void BM_DrawingFloor(benchmark::State &state)
{
    const auto pieces = static_cast<int>(state.range(0));
    const auto document = markerOfPieces(pieces, kPoints / pieces);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("out.ai"));
    writeFile(path, *document);
    const QByteArray expected = contentOf(path);
    QByteArray tail;
    const std::vector<Token> tokens = tokensOf(expected, tail);
    QByteArray buffer;
    for (auto iteration : state) {
        buffer.resize(0);
        buffer.reserve(expected.size() + 1);
        for (const Token &token : tokens) {
            buffer.append(token.text);
            std::array<char, 32> digits{};
            const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                token.value, std::chars_format::general, token.digits)
                                 .ptr;
            buffer.append(digits.data(), static_cast<int>(end - digits.data()));
        }
        buffer.append(tail);
        QFile file(path);
        file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        file.write(buffer);
    }
    if (buffer != expected) {
        state.SkipWithError("the floor writes other bytes");
    }
}

BENCHMARK(BM_Drawing)->Arg(2000)->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DrawingFloor)->Arg(2000)->Arg(20)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace KivSystem

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv); // for its font
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
