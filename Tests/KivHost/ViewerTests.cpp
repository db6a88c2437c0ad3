#include "CommandLineInterface.h"
#include "CutRequests.h"
#include "HostTestSupport.h"
#include "KivCore/Application.h"
#include "KivCore/Locale.h"
#include "KivCore/MainWindow.h"
#include "KivMarker/CutStatistics.h"
#include "KivMarker/Document.h"
#include "KivMarker/MarkerSettings.h"
#include "KivMarker/ShareGlobales.h"
#include "PluginLoader.h"
#include "Verbs.h"
#include "Viewer/CutFileChild.h"
#include "Viewer/FileReaders.h"
#include "Viewer/PicturePainter.h"
#include "Viewer/ViewedFile.h"
#include "Viewer/Viewer.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDomDocument>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>

#include <cstring>
#include <random>

namespace KivSystem {

namespace {

const QString tree = QStringLiteral(KIV_SOURCE_DIR);

QString golden(const char *name)
{
    return tree + "/Tests/Golden/" + name;
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    return file.readAll();
}

// 40 cm idle, 20 cm cut, a notch of 2 cm, a drill 10 cm from there, a label, a second piece.
const QByteArray small = "H1*G71*M70*D2*M15*M20*Tee/L=1.00/W=2.00*N1*X4000Y0*M14*X4000Y2000*M19*"
                         "X4000Y1800*M15*X3000Y1800*M43*N2*M31*X3000Y1800*An M14 label*M14*"
                         "X3000Y0*D2*M15*QX4000Y0*M0*";

std::string faultIn(const std::function<void()> &action)
{
    try {
        action();
    } catch (const ReadFault &fault) {
        return fault.what();
    }
    return {};
}

template <class Widget>
Widget *find(MdiChild &child, const char *name = "")
{
    return child.findChild<Widget *>(QLatin1String(name));
}

void trigger(MdiChild &child, const char *shortcut)
{
    for (QAction *action : child.actions()) {
        if (action->shortcut() == QKeySequence(QLatin1String(shortcut))) {
            action->trigger();
            return;
        }
    }
    FAIL() << "no action for " << shortcut;
}

} // namespace

// The numbers are those of a few lines of Python that follow the files by regular expressions.
TEST(Viewer, CutFilesOfBothDialectsHaveTheLengthsAndCountsThatTheyWereWrittenWith)
{
    struct Case
    {
        const char *file;
        CutProgram (*read)(const QByteArray &);
        double cut, notch, idle;
        int notches, drills, parts;
    };
    const Case cases[] = {
        {"cut_ansi/tshirt/labels-and-frames/ZentJersey navy.cut", readAnsiCutFile, 4198.134512,
            86.289436, 4049.492743, 189, 12, 24},
        {"cut_ansi/tshirt/ZentRib 1x1.cut", readAnsiCutFile, 179.9844, 1.524, 79.841526, 3, 0, 3},
        {"cut_eastman/tshirt/slit-outlines/ZentJersey navy.cut", readEastmanCutFile, 4351.618583, 0,
            2374.658199, 0, 12, 25},
        {"cut_eastman/tshirt/laser/ZentJersey navy.cut", readEastmanCutFile, 4198.421143, 86.528560,
            3369.671253, 189, 12, 24},
    };
    for (const Case &file : cases) {
        const CutProgram program = file.read(bytesOf(golden(file.file)));
        const CutSums sums = sumOf(program);
        EXPECT_NEAR(sums.cut, file.cut, 1e-4) << file.file;
        EXPECT_NEAR(sums.notch, file.notch, 1e-4) << file.file;
        EXPECT_NEAR(sums.idle, file.idle, 1e-4) << file.file;
        EXPECT_EQ(sums.notches, file.notches) << file.file;
        EXPECT_EQ(sums.drills, file.drills) << file.file;
        EXPECT_EQ(sums.pieces, file.parts) << file.file;
    }
    const CutProgram labels = readAnsiCutFile(bytesOf(golden(cases[0].file)));
    EXPECT_EQ(labels.name, "ZentJersey navy");
    EXPECT_EQ(sumOf(labels).plunges, 168);
    EXPECT_EQ(sumOf(labels).toolChanges, 11);
    EXPECT_EQ(sumOf(labels).labels, 24);
    EXPECT_NEAR(labels.occupied, 430.5, 0.02);
}

// An ANSI file of the marker with these settings, beside the statistics of its documents.
void compareWithExport(const QString &marker, const QStringList &assignments)
{
    const Folder folder;
    KeptConsole kept;
    auto interface = std::make_unique<CommandLineInterface>(kept.console);
    CommandLineInterface &user = *interface;
    const QDir plugins(KIV_BINARY_DIR "/bin/plugins");
    const KivApplication application(std::move(interface), plugins);
    ExportOptions options;
    options.marker = marker;
    options.formats = QStringList("Cut File ANSI");
    options.directory = folder.path();
    options.settings.assignments = assignments;
    ASSERT_EQ(exportMarker(options, loadPlugin(plugins), user, kept.console), ExitDone) << kept.err;
    CutStatistics written;
    int moves = 0;
    QDirIterator files(folder.path(), {"*.cut"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const CutProgram program = readAnsiCutFile(bytesOf(files.next()));
        const CutSums sums = sumOf(program);
        written.plunges += sums.plunges;
        written.holes += sums.drills;
        written.frameAdvances += sums.advances;
        written.cutLength += sums.cut;
        written.idleLength += sums.idle;
        moves += static_cast<int>(program.steps.size());
    }

    const RunSettings settings(options.settings, RunSettings::ReadOnly, kept.console);
    const CutSettings &cut = CDbMarkerShareGlobales::instance()->cutSettings();
    const std::unique_ptr<DocumentMak> document = loadMarker(marker);
    CutStatistics sum;
    for (const QDomDocument &part :
        document->toSVG(cutRequestFor("ansi", *document->drawing()), 0)) {
        const CutStatistics one = measureCuts(part, static_cast<NotchOrder>(cut.cutOrderCrans),
            static_cast<CutLine>(cut.cutInternalOrder));
        sum.plunges += one.plunges;
        sum.holes += one.holes;
        sum.frameAdvances += one.frameAdvances;
        sum.cutLength += one.cutLength;
        sum.idleLength += one.idleLength;
    }
    EXPECT_EQ(sum.plunges, written.plunges);
    EXPECT_EQ(sum.holes, written.holes);
    EXPECT_EQ(sum.frameAdvances, written.frameAdvances);
    const double rounding = 3e-4; // of a file in 1/100 inch, its errors being of both signs
    EXPECT_NEAR(sum.cutLength, written.cutLength, rounding * moves);
    EXPECT_NEAR(sum.idleLength, written.idleLength, rounding * moves);
}

TEST(Viewer, AnExportedCutFileIsWhatTheStatisticsOfItsDocumentTell)
{
    const QStringList others[] = {{}, {"CutCommandM19=false", "CutInternalOrder=2"},
        {"CutCuttingEdge=true", "CutInternalOrder=0"},
        {"CutLabelM31=true", "CutExternalPunchHoles=true", "CutFabricEdge=true"},
        {"CutCommandM69=true", "CutFusing=2", "MiniCutFileBlock=true", "CutBlocking=true"}};
    for (const char *sample : {"tshirt", "trousers"}) {
        for (int order = NotchNone; order <= NotchAfterOutline; ++order) {
            for (const QStringList &other : others) {
                SCOPED_TRACE(
                    QString("%1, %2 %3").arg(sample).arg(order).arg(other.join(' ')).toStdString());
                compareWithExport(tree + "/Samples/" + sample + ".mar",
                    QStringList(other) << QString("CutOrderCrans=%1").arg(order));
            }
        }
    }
    MarkerSettings().apply();
}

TEST(Viewer, EveryExportedFileOfTheTreeIsReadAndShown)
{
    int files = 0;
    QDirIterator entries(tree + "/Tests/Golden", {"*.cut", "*.dxf", "*.txt"}, QDir::Files,
        QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        EXPECT_TRUE(canView(path)) << path;
        EXPECT_FALSE(pictureOf(readExportedFile(path)).bounds().isEmpty()) << path;
        ++files;
    }
    EXPECT_GT(files, 100);
}

TEST(Viewer, UnitsAndTextsOfACutFileAreWhatTheFileSays)
{
    const CutProgram program = readAnsiCutFile(small);
    const CutSums sums = sumOf(program);
    EXPECT_EQ(program.name, "Tee");
    EXPECT_EQ(program.labels, std::vector<QString>{"An M14 label"});
    EXPECT_NEAR(sums.cut, 40, 1e-9);
    EXPECT_NEAR(sums.notch, 2, 1e-9);
    EXPECT_NEAR(sums.idle, 50, 1e-9);
    EXPECT_EQ(sums.toolChanges, 2);
    QByteArray inches = small;
    EXPECT_NEAR(sumOf(readAnsiCutFile(inches.replace("G71*", ""))).cut, 40 * 2.54, 1e-9);
    EXPECT_NEAR(sumOf(readAnsiCutFile(inches.replace("H1*", "H1*G70*"))).cut, 40 * 0.254, 1e-9);
    // A hole has a number of its own, and is no piece. After the same stroke stand the bar of a T,
    // then a cut that starts at the notch's tip.
    const QByteArray notch = "N1*X9Y9*M43*N2*X0Y0*M14*M19*X0Y100*M15*M14*X100Y100*M14*X-100Y100*";
    for (const auto &[rest, length] : {std::pair("M15*X0Y0*", 4.0), std::pair("X0Y0*", 1.0)}) {
        const CutSums cuts = sumOf(readAnsiCutFile("G71*" + notch + rest + "M0*"));
        EXPECT_NEAR(cuts.notch, length, 1e-9) << rest;
        EXPECT_EQ(cuts.pieces, 1);
        EXPECT_EQ(cuts.looseHoles, 1);
    }
    // Two numbers that leave no blank between their columns.
    const CutProgram columns = readEastmanCutFile("MOVE  -12345.678-12345.679\r\nEND");
    EXPECT_EQ(columns.steps.back().to, QPointF(-12345.678, -12345.679));
}

TEST(Viewer, BrokenFilesAreRefusedInOneSentenceThatNamesThePlace)
{
    struct Case
    {
        QByteArray bytes;
        std::function<void(const QByteArray &)> read;
        const char *place;
        const char *reason;
    };
    const auto ansi = [](const QByteArray &bytes) { readAnsiCutFile(bytes); };
    const auto eastman = [](const QByteArray &bytes) { readEastmanCutFile(bytes); };
    const auto nester = [](const QByteArray &bytes) { readNesterFile(bytes); };
    const auto drawing = [](const QByteArray &bytes) { readIllustratorFile(bytes); };
    const auto table = [](const QByteArray &bytes) { readTableFile(bytes); };
    const QByteArray ps = "%!PS-Adobe-2.0\n";
    const Case cases[] = {
        {"", ansi, "block 1 (byte 0)", "without M0"},
        {small.left(60), ansi, "block 11 (byte 55)", "without M0"},
        {"H1*N1*X1Y2*Z9*M0*", ansi, "block 4 (byte 11)", "\"Z9\" is no command"},
        {"H1*X1.5Y2*M0*", ansi, "block 2", "no command"},
        {"H1*X99999999999Y2*M0*", ansi, "block 2", "no command"},
        {"H1*X900000000Y2*M0*", ansi, "block 2", "too far"},
        {"H1*X1X2*M0*", ansi, "block 2", "X twice"},
        {"H1*X1Y1*G71*M0*", ansi, "block 3", "unit changes"},
        {"H1*D1*M14*X1Y1*M0*", ansi, "block 4", "both down"},
        {"H1*M31*M15*text*M0*", ansi, "block 3", "label has no place"},
        {"H1*M0*", ansi, "", "moves nothing"},
        {"H1*X1Y1*M0*\r\n\x1a" + small, ansi, "block 4 (byte 14)", "follows the end"},
        {"MOVE       1.000     1.000\nEND\n\n" + small, eastman, "line 4", "follows the end"},
        {"\xef\xbb\xbf\x01MOVE 1\n", eastman, "line 1", "\"\\ufeff\\u0001MOVE"},
        {"PIECE    1\nCUT        1.000     nan\nEND\n", eastman, "line 2", "no place"},
        {"CUT        1.000    1e300\nEND\n", eastman, "line 1", "no place"},
        {"FLY        1.000     1.000\nEND\n", eastman, "line 1", "no record"},
        {"SPEED      0\nEND\n", eastman, "line 1", "from 1 to 100"},
        {"PUNCH\nEND\n", eastman, "line 1", "behind no hole"},
        {"MOVE       1.000     1.000\n", eastman, "line 1", "without END"},
        {"  0\nSECTION\n  0\n", nester, "line 3", "no value"},
        {"  0\nSECTION\nzero\n", nester, "line 3", "no group code"},
        {"  0\nBLOCK\n  0\nENDBLK\n", nester, "line 4", "without EOF"},
        {"  0\nVERTEX\n 10\nx\n  0\nEOF\n", nester, "line 4", "no coordinate"},
        {"  0\nINSERT\n  2\nA\n  0\nEOF\n", nester, "line 4", "\"A\" is inserted"},
        {"  0\nEOF\n\n  0\n", nester, "line 4 (byte 11)", "follows the end"},
        {ps + "0 0 L\n%%EOF\n", drawing, "line 2", "no point to start"},
        {ps + "0 m\n%%EOF\n", drawing, "line 2", "1 numbers"},
        {ps + "0 0 m\n1 1 L\nx (\n", drawing, "line 4", "no operator"},
        {ps + "U\n", drawing, "line 2", "not begun"},
        {ps + "u\n%%EOF\n", drawing, "line 3", "not closed"},
        {ps + "x (abc)t\n%%EOF\n", drawing, "line 2", "no count"},
        {ps + "%%EOF\nu\n", drawing, "line 3 (byte 21)", "follows the end"},
        {"", table, "", "empty"},
        {QByteArray("a;b\nc;\0\n", 8), table, "line 2", "no text"},
        {QByteArray("a;\xe4\nc;\0\n", 8), table, "line 2", "no text"},
    };
    for (const Case &file : cases) {
        const std::string fault = faultIn([&] { file.read(file.bytes); });
        EXPECT_EQ(fault.find(file.place), 0U) << fault << " of " << file.bytes.constData();
        EXPECT_NE(fault.find(file.reason), std::string::npos) << fault;
        EXPECT_EQ(fault.find('\n'), std::string::npos) << fault;
    }
}

TEST(Viewer, ReadersComeToAnEndWithAnyBytes)
{
    const Folder folder;
    std::mt19937 random(20261121);
    const std::vector<QByteArray> files{small, bytesOf(golden("dxf_nester/plaid/plaid.dxf")),
        bytesOf(golden("cut_eastman/tshirt/laser/ZentJersey navy.cut")).left(3000),
        "%!PS-Adobe-2.0\nu\n0 0 0 10 K\n0 0 m\n28.35 28.35 L\ns\n2 (ab)t\nU\n%%EOF\n"};
    int readable = 0;
    for (int round = 0; round < 1000; ++round) {
        QByteArray bytes = files[static_cast<std::size_t>(round) % files.size()];
        for (int change = 0; change < 1 + round % 5; ++change) {
            bytes[static_cast<int>(random() % static_cast<unsigned>(bytes.size()))] =
                static_cast<char>(random());
        }
        bytes.truncate(round % 7 == 0 ? static_cast<int>(random() % 200) : bytes.size());
        for (const auto &name : {"a.cut", "a.dxf", "a.ai", "a.txt"}) {
            const QString path = folder.write(name, bytes);
            const std::string fault = faultOf([&] {
                readable += pictureOf(readExportedFile(path)).layers.size() > 0;
            }).toStdString();
            EXPECT_EQ(fault.find("unexpected"), std::string::npos);
        }
    }
    EXPECT_GT(readable, 0);

    QByteArray huge(16 * 1024 * 1024, '\0');
    for (int i = 0; i + 4 <= huge.size(); i += 4) {
        const auto word = static_cast<quint32>(random());
        std::memcpy(huge.data() + i, &word, 4);
    }
    const QString garbage = folder.write("huge.cut", huge);
    const QString zeros = folder.write("zeros.txt", QByteArray(huge.size(), '\0'));
    const QString digits = folder.write("digits.dxf", QByteArray(huge.size(), '7'));
    const QString stars = folder.write("stars.cut", QByteArray(huge.size(), '*'));
    for (const QString &path : {garbage, zeros, digits, stars}) {
        EXPECT_NE(faultOf([&] { readExportedFile(path); }), "") << path;
    }
}

TEST(Viewer, ADrawingHasItsColoursAndTextsAndItsSizeInCentimetres)
{
    Picture picture = readIllustratorFile(
        "%!PS-Adobe-2.0\n%%Title: (a.ai)\n0 0 0 10 k\n0 0.9961 0.9961 0.0038910 K\n[]0 d\nu\n"
        "28.35 28.35 m\n28.35 85.05 L\n"
        "28.35 28.35 m\n113.4 28.35 L\n28.35 85.05 L\ns\n/_Sans_Serif 2 2 0 1 z\n"
        "[1 0 0 1 28.35 85.05]e\n9 (12) (b\\))t\nT\nU\n%%EOF\n");
    ASSERT_EQ(picture.layers.at(0).strokes.size(), 2U); // a path of two parts
    EXPECT_FALSE(picture.layers[0].strokes[0].closed);
    const Stroke &stroke = picture.layers[0].strokes[1];
    EXPECT_TRUE(stroke.closed);
    EXPECT_GT(stroke.colour.red(), 250);
    EXPECT_LT(stroke.colour.green(), 3);
    EXPECT_EQ(picture.layers[0].texts.at(0).text, "12) (b\\)");
    EXPECT_EQ(picture.layers[0].texts[0].colour, QColor(Qt::black));
    picture.layers[0].texts.clear(); // what is left are the paths
    EXPECT_NEAR(picture.bounds().right(), 4, 1e-9);
    EXPECT_NEAR(picture.bounds().bottom(), 3, 1e-9);
}

TEST(Viewer, NestingFilesAreReadWhateverTheLocaleOfTheirNumbers)
{
    const NesterFile plaid = readNesterFile(bytesOf(golden("dxf_nester/plaid/plaid.dxf")));
    ASSERT_EQ(plaid.blocks.size(), 7U);
    EXPECT_EQ(plaid.blocks[3].name, "Front$0$0");
    EXPECT_EQ(plaid.blocks[3].instances, 2);
    EXPECT_TRUE(plaid.blocks[3].keywords.contains("PREFLIP:TRUE"));
    EXPECT_TRUE(plaid.keywords.contains("UNIT:CM"));
    for (const char *number : {"1234.5000", "1,234.5000", "1.234,5000", "1 234,5000"}) {
        const NesterFile file =
            readNesterFile(QByteArray("  0\nBLOCK\n  2\nA\n  0\nPOLYLINE\n  0\nVERTEX\n 10\n") +
                           number + "\n 20\n-0.0000\n  0\nSEQEND\n  0\nENDBLK\n  0\nEOF\n");
        EXPECT_EQ(file.blocks.at(0).lines.at(0).points.at(0), QPointF(1234.5, 0)) << number;
    }
}

TEST(Viewer, ReportsHaveTheSameFieldsWhateverTheirSeparator)
{
    const TableFile tabs = readTableFile(bytesOf(golden("txt/tshirt/tshirt.txt")));
    EXPECT_EQ(tabs.rows.size(), 4U);
    EXPECT_EQ(tabs.columns, 22);
    EXPECT_EQ(tabs.rows[0][3], QString::fromUtf8("tee, \"basic\", größe 38-42"));
    EXPECT_EQ(readTableFile(bytesOf(golden("txt/tshirt/semicolon/tshirt.txt"))).rows[2][8],
        tabs.rows[2][8]);
    EXPECT_EQ(
        readTableFile(bytesOf(golden("txt/tshirt/comma/tshirt.txt"))).rows[0][3], tabs.rows[0][3]);
    EXPECT_EQ(
        readTableFile("a \"b\"\r\nc\r\n").rows, (std::vector<QStringList>{{"a \"b\""}, {"c"}}));
    const struct
    {
        QByteArray bytes;
        const char *usual;
        const char *separator;
        QStringList second; // row
    } cases[] = {
        {"1,2 / 3,4\r5,6 / 7,8\r", "\t", ",", {"5", "6 / 7", "8"}},
        {"1,2 / 3,4\n5,6 / 7,8\n", " / ", " / ", {"5,6", "7,8"}},
        {"a, b\tc\nd, e\tf\n", ",", "\t", {"d, e", "f"}}, // written with other settings
        {"a, b|c\nd|\"e|\"\"f\"\n", ";", "|", {"d", "e|\"f"}},
        {"a;b;c\nd;e\n", "\t", ";", {"d", "e"}},
        {"a b\nc d\n", "\t", "", {"c d"}},
        {"a,\"b\nc\n", "\t", "", {"c"}}, // a guess, with a quote that never ends
        {"a~~b~~c\nd~~~~e\n", "\t", "~~", {"d", "", "e"}},
        {"a\tb;c;d\na\tb;e;f\n", ";", ";", {"a\tb", "e", "f"}},
        {"a\n\x80gr\xf6\xdf\n", "\t", "", {QString::fromUtf8("€größ")}},
    };
    for (const auto &report : cases) {
        const TableFile table = readTableFile(report.bytes, {std::nullopt, report.usual});
        EXPECT_EQ(table.separator, report.separator) << report.bytes.constData();
        EXPECT_EQ(table.rows.at(1), report.second) << report.bytes.constData();
        EXPECT_EQ(table.isSingleByte, report.bytes.contains('\x80'));
        EXPECT_EQ(table.doubt.contains("never closed"), report.bytes.contains(",\"b"));
    }
}

TEST(Viewer, TheWayOfTheKnifeGoesByLengthAndByTime)
{
    const CutProgram program = readAnsiCutFile(small);
    const CutWay way(program, {30, 60, 2, 3, 0}); // 0.5 and 1 m/s, plunges of 2 s, drills of 3 s
    EXPECT_NEAR(way.length(), 90, 1e-9);
    EXPECT_NEAR(way.duration(), 50.0 / 100 + 40.0 / 50 + 2 * 2 + 3, 1e-9);
    const struct
    {
        double way;
        QPointF place;
        double time;
    } cases[] = {{-5, {0, 0}, 0}, {0, {0, 0}, 0}, {20, {20, 0}, 0.2}, {40, {40, 0}, 2.4},
        {50, {40, 10}, 2.6}, {61, {40, 19}, 2.82}, {67, {35, 18}, 2.89}, {72, {30, 18}, 7.94},
        {90, {30, 0}, 8.3}, {1000, {30, 0}, 8.3}};
    for (const auto &at : cases) {
        const QPointF miss = way.at(at.way).point - at.place;
        EXPECT_LT(miss.manhattanLength(), 1e-9) << at.way;
        EXPECT_NEAR(way.timeAt(at.way), at.time, 1e-9) << at.way;
        EXPECT_NEAR(way.wayAt(at.time), qBound(0.0, at.way, 90.0), 1e-9) << at.way;
    }
    EXPECT_NEAR(way.wayAt(5), 72, 1e-9); // it drills
}

TEST(Viewer, TheSliderAndTheKeysMoveTheKnife)
{
    QSettings().clear();
    const Folder folder;
    const std::unique_ptr<MdiChild> child = makeViewer(folder.write("small.cut", small));
    auto &cut = dynamic_cast<CutFileChild &>(*child);
    EXPECT_EQ(child->windowTitle(), "small.cut");
    auto *slider = find<QSlider>(*child, "way");
    ASSERT_EQ(slider->maximum(), 900);
    slider->setValue(500);
    EXPECT_LT((cut.knife() - QPointF(40, 10)).manhattanLength(), 1e-9);
    const struct
    {
        const char *key;
        double way;
    } moves[] = {{".", 60}, {".", 62}, {",", 60}, {",", 40}, {",", 0}, {",", 0}, {"]", 72},
        {"]", 90}, {"]", 90}, {"[", 72}, {"[", 0}};
    for (const auto &move : moves) {
        trigger(*child, move.key);
        EXPECT_NEAR(cut.way(), move.way, 1e-9) << move.key;
    }
    trigger(*child, "P");
    EXPECT_TRUE(cut.isPlaying());
    slider->setValue(slider->maximum());
    QElapsedTimer clock;
    for (clock.start(); cut.isPlaying() && clock.elapsed() < 5000;) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    EXPECT_FALSE(cut.isPlaying());
    EXPECT_EQ(cut.knife(), QPointF(30, 0));

    const auto *sum = find<QLabel>(*child, "sum");
    EXPECT_TRUE(sum->text().contains("0:03 min")) << sum->text();
    auto *speed = find<QDoubleSpinBox>(*child, "viewer/knife_speed");
    speed->setValue(1.7);
    EXPECT_TRUE(sum->text().contains("0:16 min")) << sum->text();
    find<QDoubleSpinBox>(*child, "viewer/drill_time")->setValue(61);
    EXPECT_TRUE(sum->text().contains("1:16 min")) << sum->text();
    const KivConventions before = KivLocale::applicationConventions();
    KivConventions inches = before;
    inches.length = LengthUnit::Inch;
    KivLocale::setApplicationConventions(inches);
    cut.refresh();
    EXPECT_EQ(speed->text(), QLocale().toString(1.1) + " in/s");
    EXPECT_TRUE(sum->text().contains("1:16 min")) << sum->text();
    KivLocale::setApplicationConventions(before);
    const auto next = makeViewer(folder.write("hole.cut", "H1*N7*X9Y9*M43*N8*X0Y0*M0*"));
    EXPECT_EQ(find<QDoubleSpinBox>(*next, "viewer/knife_speed")->value(), 1.7);
    EXPECT_TRUE(find<QLabel>(*next, "place")->text().startsWith("hole 7:"));
}

TEST(Viewer, TheWayThatIsDoneIsDrawnHeavierAndTheRestStaysAsItWas)
{
    const Folder folder;
    const std::unique_ptr<MdiChild> child = makeViewer(folder.write("small.cut", small));
    child->resize(1100, 700);
    auto *slider = find<QSlider>(*child, "way");
    const auto darkness = [&child](int position) {
        child->findChild<QSlider *>("way")->setValue(position);
        const QImage image = child->grab().toImage();
        int dark = 0;
        for (int y = 0; y < 500; ++y) {
            for (int x = 0; x < image.width(); ++x) {
                dark += qGray(image.pixel(x, y)) < 80;
            }
        }
        return dark;
    };
    const int start = darkness(0);
    const int half = darkness(600);
    const int end = darkness(slider->maximum());
    EXPECT_GT(start, 100);
    EXPECT_GT(half, start + 100);
    EXPECT_GT(end, half + 100);
    EXPECT_EQ(darkness(0), start);
}

TEST(Viewer, BlocksAndFieldsAreListed)
{
    const auto nester = makeViewer(golden("dxf_nester/plaid/plaid.dxf"));
    auto *list = find<QTreeWidget>(*nester);
    ASSERT_EQ(list->topLevelItemCount(), 8); // and one for all
    EXPECT_EQ(list->topLevelItem(4)->text(0), "Front$0$0");
    list->setCurrentItem(list->topLevelItem(4)->child(0)); // a keyword shows its block
    const auto report = makeViewer(golden("txt/tshirt/tshirt.txt"));
    const QAbstractItemModel &table = *find<QTableView>(*report)->model();
    EXPECT_EQ(table.rowCount(), 4);
    EXPECT_EQ(table.index(0, 8).data(), "Jersey navy");
    EXPECT_EQ(table.index(0, 21).data(), "1 | 2 | 1");
    find<QComboBox>(*report, "separator")->setCurrentText("Other");
    QTest::keyClicks(find<QLineEdit>(*report, "otherSeparator"), "\\x2d");
    EXPECT_EQ(find<QTableView>(*report)->model()->index(0, 1).data().toString().left(2), "42");
}

// Also one that was stored as a cut file.
TEST(Viewer, ATableWithOneVeryLongLineIsShown)
{
    const Folder folder;
    const auto report =
        makeViewer(folder.write("ragged.cut", QByteArray(60000, '\t') + QByteArray(60000, '\n')));
    const QAbstractItemModel &table = *find<QTableView>(*report)->model();
    EXPECT_EQ(table.columnCount(), 60001);
    EXPECT_EQ(table.rowCount(), 60000);
    EXPECT_EQ(table.index(59999, 60000).data(), QString());
}

TEST(Viewer, OnlyExportedFilesAreShown)
{
    const Folder folder;
    const QByteArray eastman = "\r\nNAME  a\r\nUNIT  CM\r\nMOVE       1.000     1.000\r\nEND\r\n";
    const struct
    {
        const char *name;
        QByteArray bytes;
        FileKind kind;
    } files[] = {
        {"drawing.txt", "%!PS-Adobe-2.0\n", FileKind::Illustrator},
        {"cut.txt", "\xef\xbb\xbf" + small, FileKind::AnsiCut},
        {"cut.txt", eastman, FileKind::EastmanCut},
        {"damaged.cut", QByteArray(eastman).replace("NAME", "NANE"), FileKind::EastmanCut},
        {"damaged.cut", "A" + small, FileKind::AnsiCut},
        {"report.cut", "tshirt;Jersey\nb;c\n", FileKind::Table},
    };
    for (const auto &file : files) {
        EXPECT_EQ(kindOf(file.bytes, file.name), file.kind) << file.bytes.constData();
    }
    readExportedFile(folder.write("mark.cut", files[1].bytes));
    for (const char *name : {"a.cut", "a.dxf", "a.ai", "a.txt"}) {
        const QString path = folder.write(name, "\xef\xbb\xbf");
        EXPECT_EQ(faultOf([&] { readExportedFile(path); }), "3 " + path + ": the file is empty");
    }
    EXPECT_FALSE(canView(folder.write("a.bin", "\x7f"
                                               "ELF")));
    EXPECT_FALSE(canView(tree + "/Samples/tshirt.mar"));
    EXPECT_FALSE(canView(folder.path("none.cut")));
    EXPECT_FALSE(canView(folder.path()));
    const QString fault = faultOf([&] { makeViewer(folder.write("bad.cut", "cut*\n")); });
    EXPECT_TRUE(fault.contains("bad.cut: block 1")) << fault;
}

} // namespace KivSystem
