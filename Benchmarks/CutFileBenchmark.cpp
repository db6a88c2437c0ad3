// Cut files of 200,000 outline points: as 500 pieces and as a single one, with the notches after
// the outline and in its course, with coordinates in whole units and in decimals. Beside it the
// floor, which makes the same bytes from numbers that are at hand: to_chars into one buffer.

#include "CutProcessor.h"

#include "KivCore/Application.h"
#include "KivCore/UserInterface.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ShareGlobales.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <vector>

namespace KivSystem {
namespace {

constexpr int kPoints = 200000;
constexpr int kPointsPerNotch = 100;
constexpr double kCoordinateSteps = 1e7;

class SilentUserInterface : public KivUserInterface
{
public:
    MainWindow *mainWindow() const override { return nullptr; }
    QString getSaveFileName(
        const QStringList &, const QString &, const QString &, int *, QWidget *) override
    {
        return {};
    }
    int confirmContinue(const QString &, const QString &, const QString &, const QString &,
        const QString &, QWidget *) override
    {
        return 0;
    }
    void displayWarning(const QString &, const QString &, QWidget *) override {}
    int execDialog(KivDialog &) override { return 0; }
};

QByteArray configuration(int precision)
{
    const QByteArray root = precision == 0
                                ? "precision='0' x='* scaleX / 100 / 2.54 * 100 + 0.5 long' "
                                  "y='* scaleY / 100 / 2.54 * 100 + 0.5 long'"
                                : "precision='" + QByteArray::number(precision) +
                                      "' x='* scaleX / 100 * 10' y='* scaleY / 100 * 10'";
    return "<cutter " + root +
           "><header><item out='H1*'/></header><polygone>"
           "<begin><item type='No.' out='N%1*'/></begin>"
           "<notch pathto='M15*X%1Y%2*' lineto0='M14*X%1Y%2*' lineto='X%1Y%2*' "
           "linetopenup='M19*X%1Y%2*'/>"
           "<outline pathto='M15*X%1Y%2*' lineto0='M14*X%1Y%2*' lineto='X%1Y%2*'/>"
           "<end><item out='M15*'/></end></polygone><root><item out='M0*'/></root></cutter>";
}

// Records in columns, as for Eastman cutters.
QByteArray columns()
{
    return "<cutter precision='3'><polygone>"
           "<begin><item type='No.' out='PIECE %1' bWrap='1'/></begin>"
           "<notch pathto='MOVE  %1%2' lineto0='NOTCH %1%2' bWrap='1'/>"
           "<outline pathto='MOVE  %1%2' lineto0='CUT   %1%2' lineto='CUT   %1%2' bWrap='1'/>"
           "</polygone></cutter>";
}

QByteArray penTexts()
{
    return "<cutter precision='0' x='* 100 / 2.54 + 0.5 long' y='* 100 / 2.54 + 0.5 long'>"
           "<polygone><begin><item type='pieceinfo' out='D2*'>"
           "<item type='info' out='X%1Y%2*' penup='D2*' pendown='D1*'/></item></begin>"
           "</polygone></cutter>";
}

// The services of the host, with a configuration.
class Host
{
public:
    explicit Host(const QByteArray &text)
        : m_application(std::make_unique<SilentUserInterface>(), QDir(m_plugins.path()))
    {
        QDir(m_plugins.path()).mkpath("io/CutFileConfig");
        QFile file(m_plugins.filePath("io/CutFileConfig/Bench.xml"));
        file.open(QIODevice::WriteOnly);
        file.write(text);
        QFile::copy(KIV_SOURCE_DIR "/io/KIVFNT.TBL", m_plugins.filePath("io/KIVFNT.TBL"));
    }

private:
    QTemporaryDir m_plugins;
    KivApplication m_application;
};

class BenchCutter : public NC::CutProcessor
{
public:
    BenchCutter() : CutProcessor("/Bench.xml") {}
    void setDocument(const QByteArray &svg)
    {
        documents.resize(1);
        documents[0].setContent(svg);
    }
};

// Writes points as the format for Eastman cutters does.
class BenchColumns : public BenchCutter
{
protected:
    using BenchCutter::exportPoint;
    void exportPoint(const GeoPoint2D &point, const QString &format, bool wrap) override
    {
        writePoint(point, format, wrap, precision + 7);
    }
};

// As the marker library writes coordinates: the shortest text of a rounded number.
QByteArray number(double value)
{
    std::array<char, 32> text{};
    const double rounded = std::round(value * kCoordinateSteps) / kCoordinateSteps;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), rounded).ptr;
    return {text.data(), static_cast<int>(end - text.data())};
}

// Round pieces, each notch a slit from a vertex to the middle.
QByteArray document(int pieces)
{
    constexpr double turn = 6.283185307179586;
    const int points = kPoints / pieces;
    QByteArray svg = "<svg tissuL='1000' tissuW='150'>";
    for (int piece = 0; piece < pieces; ++piece) {
        QByteArray outline;
        svg += "<object>";
        for (int index = 0; index < points; ++index) {
            const double angle = turn * index / (points - 1);
            const QByteArray place = number(100 + piece + 40 * std::cos(angle)) + "," +
                                     number(70 + 60 * std::sin(angle));
            outline += (index == 0 ? "M" : "L") + place;
            if (index % kPointsPerNotch == kPointsPerNotch / 2) {
                svg += "<path t='notch'>M" + place + "L" + number(100 + piece) + ",70</path>";
            }
        }
        svg += "<path t='outline'>" + outline + "</path></object>";
    }
    return svg + "</svg>";
}

QByteArray written(BenchCutter &cutter)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    cutter.buildDocument(DocumentMak(nullptr), &buffer);
    return buffer.data();
}

// Pieces, notch order, decimals.
void BM_CutFile(benchmark::State &state)
{
    const Host host(configuration(static_cast<int>(state.range(2))));
    CDbMarkerShareGlobales::instance()->setCutNotchOrder(static_cast<short>(state.range(1)));
    BenchCutter cutter;
    cutter.setDocument(document(static_cast<int>(state.range(0))));
    qint64 bytes = 0;
    for (auto run : state) {
        bytes += written(cutter).size();
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_CutFile)
    ->ArgsProduct({{500, 1}, {NotchNone, NotchAfterOutline, NotchDuringOutline}, {0, 2, 4}})
    ->Unit(benchmark::kMillisecond);

void BM_Columns(benchmark::State &state)
{
    const Host host(columns());
    CDbMarkerShareGlobales::instance()->setCutNotchOrder(NotchNone);
    BenchColumns cutter;
    cutter.setDocument(document(500));
    qint64 bytes = 0;
    for (auto run : state) {
        bytes += written(cutter).size();
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_Columns)->Unit(benchmark::kMillisecond);

// The same bytes, from doubles into one buffer.
void BM_ColumnsFloor(benchmark::State &state)
{
    constexpr int width = 10;
    std::vector<double> values(2 * kPoints, 123.456);
    qint64 bytes = 0;
    for (auto run : state) {
        std::string text;
        text.reserve(kPoints * 28);
        for (std::size_t i = 0; i < values.size(); i += 2) {
            text += "CUT   ";
            for (std::size_t k = i; k < i + 2; ++k) {
                std::array<char, 32> digits{};
                const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                    values[k], std::chars_format::fixed, 3)
                                     .ptr;
                const auto size = static_cast<std::size_t>(end - digits.data());
                text.append(width - size, ' ').append(digits.data(), size);
            }
            text += "\r\n";
        }
        benchmark::DoNotOptimize(text);
        bytes += static_cast<qint64>(text.size());
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_ColumnsFloor)->Unit(benchmark::kMillisecond);

// Pieces with four lines of text each.
void BM_PenTexts(benchmark::State &state)
{
    const Host host(penTexts());
    QByteArray svg = "<svg>";
    for (int piece = 0; piece < state.range(0); ++piece) {
        svg += "<object>";
        for (const char *line : {"M A/A Sleeve", "BASIC TEE 2026", "code 4711-08", "Jersey 2"}) {
            svg += QByteArray("<text x='100' y='50' fontSize='18' angle='0'>") + line + "</text>";
        }
        svg += "</object>";
    }
    BenchCutter cutter;
    cutter.setDocument(svg + "</svg>");
    qint64 bytes = 0;
    for (auto run : state) {
        bytes += written(cutter).size();
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_PenTexts)->Arg(200)->Arg(2000)->Unit(benchmark::kMillisecond);

// A stretch of text and the number behind it.
struct Token
{
    std::string text;
    double value = 0;
};

std::vector<Token> tokens(const QByteArray &model)
{
    std::vector<Token> tokens(1);
    for (const char *place = model.begin(); place != model.end();) {
        const bool isNumber = place != model.begin() && (place[-1] == 'X' || place[-1] == 'Y');
        if (isNumber) {
            place = std::from_chars(place, model.end(), tokens.back().value).ptr;
            tokens.emplace_back();
        } else {
            tokens.back().text += *place++;
        }
    }
    return tokens;
}

// Decimals; whether the numbers are at hand as whole numbers and not as doubles.
void BM_CutFileFloor(benchmark::State &state)
{
    const int precision = static_cast<int>(state.range(0));
    const bool isWhole = state.range(1) != 0;
    const Host host(configuration(precision));
    CDbMarkerShareGlobales::instance()->setCutNotchOrder(NotchNone);
    BenchCutter cutter;
    cutter.setDocument(document(500));
    const QByteArray model = written(cutter);
    const std::vector<Token> parts = tokens(model);
    qint64 bytes = 0;
    for (auto run : state) {
        std::string buffer;
        buffer.reserve(static_cast<std::size_t>(model.size()));
        std::array<char, 32> digits{};
        for (std::size_t index = 0; index < parts.size(); ++index) {
            buffer += parts[index].text;
            if (index + 1 < parts.size()) {
                char *last = digits.data() + digits.size();
                const double value = parts[index].value;
                const auto end =
                    isWhole ? std::to_chars(digits.data(), last, static_cast<qint64>(value))
                            : std::to_chars(
                                  digits.data(), last, value, std::chars_format::fixed, precision);
                buffer.append(digits.data(), end.ptr);
            }
        }
        benchmark::DoNotOptimize(buffer);
        bytes += static_cast<qint64>(buffer.size());
    }
    if (bytes != state.iterations() * model.size()) {
        state.SkipWithError("the floor writes something else");
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_CutFileFloor)
    ->Args({0, 0})
    ->Args({0, 1})
    ->Args({2, 0})
    ->Args({4, 0})
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace KivSystem
