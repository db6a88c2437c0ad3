// The program itself, as a person or a script starts it.

#include "HostTestSupport.h"

#include <QDomDocument>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

namespace KivSystem {
namespace {

QByteArray contentOf(const char *path)
{
    QFile file(QString::fromUtf8(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    return file.readAll();
}

class ProgramTest : public testing::Test
{
protected:
    ProgramTest() { folder.write("small.mar", smallMarker()); }

    /// Runs kivhost in the folder and gives its exit status.
    int run(const QStringList &arguments, const char *locale = "C")
    {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", folder.path("home"));
        environment.insert("XDG_CONFIG_HOME", folder.path("home"));
        environment.insert("LC_ALL", locale);
        environment.remove("XDG_RUNTIME_DIR");
        environment.remove("DISPLAY");
        environment.remove("QT_QPA_PLATFORM");
        program.setProcessEnvironment(environment);
        program.setWorkingDirectory(folder.path());
        program.start(KIV_BINARY_DIR "/bin/kivhost", arguments);
        EXPECT_TRUE(program.waitForFinished(60000)) << program.errorString();
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        out = QString::fromUtf8(program.readAllStandardOutput());
        err = QString::fromUtf8(program.readAllStandardError());
        return program.exitCode();
    }

    Folder folder;
    QString out;
    QString err;
};

TEST_F(ProgramTest, WritesAMarkerInTheManagersFormat)
{
    ASSERT_EQ(run({"export", "small.mar", "--format", "kiv_txt", "-o", "out"}), 0) << err;
    EXPECT_EQ(err, "");
    const QByteArray report = folder.read("out/kiv_txt/small.txt");
    EXPECT_EQ(out, QString("out/kiv_txt/small.txt\t%1 bytes\n").arg(report.size()));
    EXPECT_TRUE(report.startsWith("small.mar\t")) << report.toStdString();
    EXPECT_EQ(report.split('\n').value(0).split('\t').value(8), "Shell");

    ASSERT_EQ(run({"export", "small.mar", "--format=KIV System Manager (txt)", "--set", "unit=mm",
                  "--set", "decimals=3", "-o", "out"}),
        0)
        << err;
    EXPECT_EQ(err, "");
    EXPECT_EQ(folder.read("out/kiv_txt/small.txt").split('\t').value(12), "1500.000");
}

TEST_F(ProgramTest, TheTextFileNeedsNoStoreThatCanBeWrittenAndChangesNone)
{
    folder.write("home/KivSystem", "a file where the settings' folder would be");
    ASSERT_EQ(run({"export", "small.mar", "--format", "txt", "-o", "out"}), 0) << err;
    EXPECT_EQ(folder.read("out/txt/small.txt").split('\t').size(), 22);

    QFile::remove(folder.path("home/KivSystem"));
    const QByteArray store = "[General]\nmarker_export_list=0, 8\n";
    folder.write("home/KivSystem/kivhost.ini", store);
    ASSERT_EQ(run({"export", "small.mar", "--format", "txt", "-o", "out"}), 0) << err;
    EXPECT_EQ(folder.read("out/txt/small.txt"), "small.mar\tShell\nsmall.mar\tLining\n");
    EXPECT_EQ(folder.read("home/KivSystem/kivhost.ini"), store);

    // No field is left: nobody could accept such a dialog, and the old report stays.
    folder.write("home/KivSystem/kivhost.ini", "[General]\nmarker_export_list=99, 98\n");
    EXPECT_EQ(run({"export", "small.mar", "--format", "txt", "-o", "out"}), 1);
    EXPECT_EQ(err, "kivhost: Text File: was not written: nothing is chosen in \"Export Format\"\n");
    EXPECT_EQ(folder.read("out/txt/small.txt"), "small.mar\tShell\nsmall.mar\tLining\n");
}

TEST_F(ProgramTest, ExitStatusAndSentenceTellWhatIsWrong)
{
    folder.write("broken.mar", "{\"format\": \"kiv-marker\"");
    folder.write("-odd.mar", smallMarker());
    folder.write(QString::fromUtf8("W\xC3\xA4sche.mar"), smallMarker());
    const QString help = "Run with --help for more information.\n";
    const struct
    {
        QStringList arguments;
        int status;
        QString begin; // of standard error
    } cases[] = {
        {{"info", "small.mar"}, 0, ""},
        {{"export", "small.mar", "--all", "-o", "out", "--fields", ""}, 2,
            "kivhost: --fields: expected a value, found an empty one\n" + help},
        {{"info", "--", "-odd.mar"}, 0, ""},
        {{"info", "./-odd.mar", "--json"}, 0, ""},
        {{"info", QString::fromUtf8("W\xC3\xA4sche.mar")}, 0, ""}, // in the C locale
        {{"--help"}, 0, ""},
        {{"export", "--help"}, 0, ""},
        {{"--version"}, 0, ""},
        {{}, 2, "Looks into markers and exports them\nUsage: kivhost"},
        {{"fly"}, 2, "kivhost: "},
        {{"info"}, 2, "kivhost: MARKER is required\n" + help},
        {{"info", "a.mar", "b.mar"}, 2, "kivhost: "},
        {{"info", "-odd.mar"}, 2, "kivhost: "},
        {{"export", "small.mar", "-o", "out"}, 2,
            "kivhost: one of --format and --all is required\n" + help},
        {{"export", "small.mar", "--all", "--format", "txt", "-o", "out"}, 2, "kivhost: "},
        {{"export", "small.mar", "--all", "-o", ""}, 2,
            "kivhost: --output: expected a value, found an empty one"},
        {{"export", "small.mar", "--format", "pdf", "-o", "out"}, 2,
            "kivhost: there is no format \"pdf\"; \"kivhost formats\" lists them\n"},
        {{"export", "small.mar", "--all", "--set", "size=3", "-o", "out"}, 2,
            "kivhost: there is no setting \"size\"; \"kivhost settings\" lists them\n"},
        {{"export", "small.mar", "--all", "--not-optimised", "maybe", "-o", "out"}, 2,
            "kivhost: --not-optimised: "},
        {{"import", "a.json", "--unit", "wide", "-o", "b.mar"}, 2, "kivhost: "},
        {{"info", "none.mar"}, 3, "kivhost: none.mar: there is no such file\n"},
        {{"info", "home/../."}, 3, "kivhost: home/../.: is a directory, expected a file\n"},
        {{"info", "broken.mar"}, 3, "kivhost: broken.mar: "},
        {{"import", "none.json", "--unit", "1", "-o", "b.mar"}, 3,
            "kivhost: none.json: there is no such file\n"},
        {{"formats", "--plugins", "nowhere"}, 3, "kivhost: "},
        {{"export", "small.mar", "--format", "kiv_txt", "-o", "broken.mar"}, 1,
            "kivhost: broken.mar: is a file, expected a directory\n"},
    };
    QDir().mkpath(folder.path("home"));
    const QStringList before = folder.contents();
    for (const auto &entry : cases) {
        const std::string line = entry.arguments.join(' ').toStdString();
        EXPECT_EQ(run(entry.arguments), entry.status) << line << '\n' << err;
        EXPECT_EQ(err.left(entry.begin.size()), entry.begin) << line << '\n' << err;
        EXPECT_EQ(err.isEmpty(), entry.status == 0) << line << '\n' << err;
        EXPECT_EQ(out.isEmpty(), entry.status != 0) << line << '\n' << out;
        EXPECT_EQ(folder.contents(), before) << line;
    }
}

TEST_F(ProgramTest, InfoCountsPiecesAndMeasuresInCentimetres)
{
    ASSERT_EQ(run({"info", "small.mar", "--json"}), 0) << err;
    const QJsonObject info = QJsonDocument::fromJson(out.toUtf8()).object();
    EXPECT_EQ(info["name"], "small");
    const QJsonObject fabric = info["fabrics"].toArray()[0].toObject();
    const QJsonObject layer{{"name", "Layer A"}, {"width", 150}, {"length", 15},
        {"efficiency", 100 * 200.0 / (150 * 15)}, {"garments", 2}, {"placed", 1}, {"toPlace", 3},
        {"standBy", 1}};
    EXPECT_EQ(fabric["layers"].toArray()[0].toObject(), layer);
    const QJsonObject piece{{"name", "Front"}, {"style", "Tee"}, {"sizes", QJsonArray{"M"}},
        {"ordered", 4}, {"placed", 1}, {"left", 2}};
    EXPECT_EQ(fabric["pieces"].toArray()[0].toObject(), piece);
}

TEST_F(ProgramTest, InfoPrintsInTheUsersUnits)
{
    folder.write("home/KivSystem/kivhost.ini", "[units]\nlength=mm\n");
    ASSERT_EQ(run({"info", "small.mar"}), 0) << err;
    EXPECT_TRUE(out.contains("    layer \"Layer A\": width 1500.0 mm, length 150.0 mm, efficiency "
                             "8.89%, garments 2, placed 1, to place 3, stand-by 1\n"))
        << out;
    EXPECT_TRUE(
        out.contains("    piece \"Front\", style \"Tee\", sizes M: ordered 4, placed 1, left 2\n"))
        << out;
    EXPECT_TRUE(out.contains("fabric \"Lining\": plain, status 0")) << out;
}

TEST_F(ProgramTest, FormatsAndSettingsAreListed)
{
    ASSERT_EQ(run({"formats"}), 0) << err;
    EXPECT_TRUE(out.startsWith("KIV System Manager (txt)\t1\tkiv_txt\tText File (*.txt), ")) << out;
    ASSERT_EQ(run({"formats", "--json"}), 0);
    EXPECT_EQ(QJsonDocument::fromJson(out.toUtf8()).array()[5].toObject()["id"], 54);

    folder.write("home/KivSystem/kivhost.ini", "[text_export]\noption\\_0=@ByteArray(\\x1d)\n");
    ASSERT_EQ(run({"settings"}), 0) << err;
    EXPECT_TRUE(out.contains("field_separator = \\x1d\n")) << out;
    EXPECT_TRUE(out.contains("unit = cm\n")) << out;
    ASSERT_EQ(run({"settings", "--json"}), 0);
    EXPECT_EQ(QJsonDocument::fromJson(out.toUtf8()).array()[5].toObject()["value"], "\\x1d");
}

TEST_F(ProgramTest, AResultThatCannotBePrintedIsAFailure)
{
    QProcess program;
    program.setStandardOutputFile("/dev/full");
    program.start(KIV_BINARY_DIR "/bin/kivhost", {"info", folder.path("small.mar")});
    ASSERT_TRUE(program.waitForFinished(60000));
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(program.readAllStandardError(), "kivhost: standard output: cannot be written\n");
}

// The published problems and the best layouts known of them, when they lie beside the checkout.
TEST_F(ProgramTest, PublishedLayoutsKeepTheirMeasuresInTheManagersReport)
{
    const QDir data(KIV_SOURCE_DIR "/../shared/data/nesting");
    if (!data.exists("shirts.json")) {
        GTEST_SKIP() << "no data in " << data.path().toStdString();
    }
    const struct
    {
        QString name;
        double unit;
        double width;
        double length;
        double efficiency;
        int placed;
    } cases[] = {
        {"shirts", 2, 80, 118.785904, 90.920, 99},
        {"trousers", 2, 158, 470.34368, 92.615, 64},
        {"swim", 0.025, 143.8, 138.541325, 79.826, 48},
    };
    for (const auto &entry : cases) {
        ASSERT_EQ(run({"import", data.filePath(entry.name + ".json"), "--layout",
                      data.filePath("final_best_" + entry.name + ".svg"), "--unit",
                      QString::number(entry.unit), "-o", entry.name + ".mar"}),
            0)
            << err;
        EXPECT_FALSE(err.contains("warning")) << err;
        ASSERT_EQ(run({"export", entry.name + ".mar", "--format", "kiv_txt", "-o", "out"}), 0);
        const QList<QByteArray> fields =
            folder.read("out/kiv_txt/" + entry.name + ".txt").trimmed().split('\t');
        ASSERT_EQ(fields.size(), 22) << entry.name;
        EXPECT_NEAR(fields[12].toDouble(), entry.width, 0.01) << entry.name;
        EXPECT_NEAR(fields[14].toDouble(), entry.length, 0.01) << entry.name;
        EXPECT_NEAR(fields[16].toDouble(), entry.efficiency, 0.01) << entry.name;
        EXPECT_EQ(fields[17].toInt(), entry.placed) << entry.name;
        EXPECT_EQ(fields[18], "0") << entry.name;
    }
}

TEST_F(ProgramTest, PrintsTheCutDocumentForABrowserTheSameInEveryRun)
{
    const QString marker = KIV_SOURCE_DIR "/Samples/trousers.mar";
    ASSERT_EQ(
        run({"svg", marker, "--fabric", "2", "--for", "eastman", "--set", "EastCutScaleX=50"}), 0)
        << err;
    const QString first = out;
    ASSERT_EQ(
        run({"svg", marker, "--fabric", "2", "--for", "eastman", "--set", "EastCutScaleX=50"}), 0);
    EXPECT_EQ(out, first);
    QDomDocument svg;
    ASSERT_TRUE(svg.setContent(out));
    const QDomElement root = svg.documentElement();
    EXPECT_EQ(root.attribute("viewBox").section(' ', 0, 1), "-2 -2");
    // What a browser shows stands beside the elements of the cut, not among them.
    const QDomElement path = root.firstChildElement("object").firstChildElement("path");
    EXPECT_EQ(path.attribute("d"), path.text());
    EXPECT_EQ(root.lastChildElement().tagName(), "g");
    EXPECT_EQ(root.lastChildElement().elementsByTagName("use").size(),
        root.elementsByTagName("object").size() > 0
            ? svg.elementsByTagName("path").size() -
                  root.lastChildElement().elementsByTagName("path").size()
            : 0);

    EXPECT_EQ(run({"svg", marker, "--fabric", "3"}), 2);
    EXPECT_EQ(err, "kivhost: there is no fabric 3; the marker has 2\n");
    EXPECT_EQ(run({"svg", marker, "--block", "1"}), 2);
    EXPECT_EQ(err, "kivhost: there is no document of a block 1; there are 0\n");
    EXPECT_EQ(run({"svg", marker, "--set", "CutCommandM69=true", "--set", "CutLength=20", "--set",
                  "CutThresholdAdvance=20"}),
        1);
    EXPECT_TRUE(err.contains("the cutter reaches 20.000 cm")) << err;
    EXPECT_EQ(out, "");
}

TEST_F(ProgramTest, TellsOfTheCutsInEachOrder)
{
    const QString marker = KIV_SOURCE_DIR "/Samples/tshirt.mar";
    ASSERT_EQ(run({"info", marker, "--cut", "--json"}), 0) << err;
    const QJsonObject cuts =
        QJsonDocument::fromJson(out.toUtf8()).object()["cut"].toArray()[0].toObject();
    const auto value = [&cuts](const char *order, const char *key) {
        return cuts[order].toObject()[key].toDouble();
    };
    EXPECT_GT(value("stored", "idleLength"), value("shortened", "idleLength"));
    EXPECT_GT(value("shortened", "idleLength"), value("optimised", "idleLength"));
    EXPECT_NEAR(value("stored", "cutLength"), value("optimised", "cutLength"), 1e-3);
    EXPECT_EQ(value("stored", "objects"), 24);
    ASSERT_EQ(run({"info", marker, "--cut"}), 0);
    EXPECT_TRUE(out.contains("cuts of fabric \"Rib 1x1\":\n    stored: cut 180.00, idle ")) << out;
}

TEST_F(ProgramTest, NamesTheConfigurationOfACutFormatThatItCannotUse)
{
    QDir().mkpath(folder.path("plugins/io/CutFileConfig"));
    const QString plugins = KIV_BINARY_DIR "/bin/plugins/";
    ASSERT_TRUE(QFile::copy(plugins + "libKivPlotOut.so", folder.path("plugins/libKivPlotOut.so")));
    const QStringList arguments = {"export", KIV_SOURCE_DIR "/Samples/trousers.mar", "--format",
        "cut_ansi", "-o", "out", "--plugins", "plugins"};
    EXPECT_EQ(run(arguments), 1);
    const QString file = folder.path("plugins/io/CutFileConfig/ANSI.xml");
    EXPECT_EQ(
        err, QString("kivhost: Cut File ANSI: was not written: %1: No such file or directory\n")
                 .arg(file));
    folder.write("plugins/io/CutFileConfig/ANSI.xml", "<ansi>\n<header></ansi>");
    EXPECT_EQ(run(arguments), 1);
    EXPECT_TRUE(err.contains(file + " (line 2, column ")) << err;
    EXPECT_FALSE(folder.contents().contains("out/cut_ansi"));
}

TEST_F(ProgramTest, NestingFileFollowsTheLocaleInItsRealsAlone)
{
    folder.write("dress.mar", contentOf(KIV_SOURCE_DIR "/Tests/Golden/markers/dress.mar"));
    const QStringList command{"export", "dress.mar", "--format", "dxf_nester", "-o", "out"};
    ASSERT_EQ(run(command), 0) << err;
    QByteArray plain = folder.read("out/dxf_nester/dress.dxf");
    ASSERT_EQ(run(command, "de_DE.UTF-8"), 0) << err;
    const QByteArray german = folder.read("out/dxf_nester/dress.dxf");
    EXPECT_TRUE(german.contains("WIDTH:149,9900\n") && german.contains("SIZE:38\n"));
    EXPECT_EQ(german.count(','), plain.count('.'));
    EXPECT_EQ(german, plain.replace('.', ','));
}

TEST_F(ProgramTest, TellsWhatANestingFileLacks)
{
    const QByteArray dress = contentOf(KIV_SOURCE_DIR "/Tests/Golden/markers/dress.mar");
    const auto exported = [&](QByteArray from, QByteArray to) {
        folder.write("dress.mar", QByteArray(dress).replace(from, to));
        return run({"export", "dress.mar", "--format", "dxf_nester", "-o", "out"});
    };
    EXPECT_EQ(exported("\"singleLayer\": 1,", ""), 0);
    EXPECT_EQ(err, "kivhost: the marker is not set to a single layer: its nesting file holds the "
                   "frame of the fabric and no pieces\n");
    EXPECT_EQ(exported("\"GUSSET\"", "\"FRONT\""), 1);
    EXPECT_EQ(err,
        "kivhost: DXF-NESTER: was not written: Cannot export. One or more piece names are "
        "repeating.\n");
    EXPECT_EQ(exported("{\"piece\": 2, \"size\": 1, \"x\": 0, \"y\": 200}",
                  "{\"piece\": 1, \"size\": 1}, {\"piece\": 2, \"size\": 1, \"y\": 200}"),
        0);
    EXPECT_EQ(err, "kivhost: group 1 in stand-by is not in the nesting file: its pieces do not "
                   "join to one shape\n");
    EXPECT_EQ(exported("\"GUSSET\"", "\"GU$SET\""), 3);
    EXPECT_EQ(err, "kivhost: dress.mar: $.fabrics[0].pieces[1].name: found the text \"GU$SET\", "
                   "expected a name without the character $\n");
    folder.write("none.mar", "{\"format\": \"kiv-marker\", \"version\": 1, \"singleLayer\": 1, "
                             "\"layers\": [{\"name\": \"\"}], \"fabrics\": [], \"styles\": []}");
    EXPECT_EQ(run({"export", "none.mar", "--format", "dxf_nester", "-o", "out"}), 1);
    EXPECT_EQ(err, "kivhost: DXF-NESTER: was not written: the marker holds nothing for it\n");
}

TEST_F(ProgramTest, RefusesAWrongPanelAndAFabricThatCannotBeCut)
{
    const QString marker = KIV_SOURCE_DIR "/Samples/trousers.mar";
    EXPECT_EQ(run({"export", marker, "--format", "cut_ansi", "-o", "out", "--set", "CutLength=100",
                  "--set", "CutThresholdAdvance=101"}),
        1);
    EXPECT_TRUE(err.contains("101.00 cm")) << err; // as a window would tell it
    EXPECT_EQ(
        run({"export", marker, "--format", "cut_ansi", "-o", "out", "--set", "CutCommandM69=true",
            "--set", "CutLength=100", "--set", "CutThresholdAdvance=100"}),
        1);
    EXPECT_TRUE(err.contains("cm long; the cutter reaches 100.000 cm")) << err;
    EXPECT_EQ(out, "");
    EXPECT_FALSE(folder.contents().contains("out"));
}

} // namespace
} // namespace KivSystem
