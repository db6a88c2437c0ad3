// Exports every sample marker in every format that there is, and the markers/ of these tests in the
// formats that they were made for, as a person would with kivhost, and
// compares what was written with the files beside this one: Tests/Golden/TAG/SAMPLE/FILE, or
// TAG/SAMPLE/VARIANT/FILE for the variants of the user's own report. A difference is printed as a
// patch; `scripts/test --update-golden` applies it.

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>

namespace {

const QString kSamples = QStringLiteral(KIV_SOURCE_DIR "/Samples");
const QString kGolden = QStringLiteral(KIV_SOURCE_DIR "/Tests/Golden");
const QString kHost = QStringLiteral(KIV_BINARY_DIR "/bin/kivhost");

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

void write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(bytes);
}

// The files below a folder by their path in it.
std::map<QString, QByteArray> filesBelow(const QString &folder)
{
    std::map<QString, QByteArray> files;
    QDirIterator walk(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        files[QDir(folder).relativeFilePath(path)] = contentOf(path);
    }
    return files;
}

// One way of exporting. Its files stand in Tests/Golden/TAG/SAMPLE/, or below NAME there.
struct Variant
{
    const char *name; // empty for all formats as they come
    QStringList arguments;
    const char *settings = ""; // the user's stored settings
};

#define SET(assignment) "--set", assignment

const Variant kVariants[] = {
    {"", {"--all"}},
    {"shuffled", {"--format", "txt", "--fields", "18,8,13,0,12,7,14,10"}},
    // The dialog leaves out what is no field, keeps what stands twice, and reads "x" as 0.
    {"repeated", {"--format", "txt"}, "[General]\nmarker_export_list=0, 99, 7, 7, -1, x, 8\n"},
    {"marker", {"--format", "txt", "--fields", "0,2,3"}},
    {"semicolon", {"--format", "txt", "--field-separator", ";"}},
    {"comma", {"--format", "txt", "--field-separator", ",", "--repeat-separator", "; "}},
    {"line-per-size", {"--format", "txt", "--field-separator", ";", "--one-line-per-size"}},
    {"during", {"--format", "cut_ansi", SET("CutOrderCrans=1"), SET("CutInternalOrder=2")}},
    {"during-without-m19",
        {"--format", "cut_ansi", SET("CutOrderCrans=1"), SET("CutCommandM19=false"),
            SET("CutCommandM20=false"), SET("CutInternalOrder=0")}},
    {"after", {"--format", "cut_ansi", SET("CutOrderCrans=3"), SET("CutScaleX=98.5"),
                  SET("CutPenUpSynchro=true"), SET("PunchUserTool=true")}},
    {"before-without-m19", {"--format", "cut_ansi", SET("CutCommandM19=false")}},
    {"outlines-with-waste",
        {"--format", "cut_ansi", SET("CutOrderCrans=0"), SET("CutInternalOrder=0"),
            SET("CutFabricEdge=true"), SET("CutFabricEdgeSpacing=40"),
            SET("CutExternalPunchHoles=true"), SET("ReducePoints=true")}},
    {"labels-and-frames",
        {"--format", "cut_ansi", SET("CutLabelM31=true"), SET("CutCommandM69=true"),
            SET("CutLength=220"), SET("CutThresholdAdvance=160"), SET("CutCuttingEdge=true")}},
    {"punch-during", {"--format", "cut_eastman", SET("EastCutTypeDrill=1"),
                         SET("EastCutOrderCrans=1"), SET("EastCutInternalOrder=0")}},
    {"vnch-after",
        {"--format", "cut_eastman", SET("EastCutTypeDrill=3"), SET("EastCutOrderCrans=3"),
            SET("EastCutScaleX=98.5"), SET("EastCutAnglePunchHole=45")}},
    {"slit-outlines", {"--format", "cut_eastman", SET("EastCutTypeDrill=4"),
                          SET("EastCutOrderCrans=0"), SET("EastCutInternalOrder=2"),
                          SET("EastCutAnglePunchHole=90"), SET("CutFabricEdge=true")}},
    {"laser", {"--format", "cut_eastman", SET("EastCutTypeDrill=5")}},
    {"no-drill-blocks", {"--format", "cut_eastman", SET("EastCutTypeDrill=0"),
                            SET("EastCutFusing=1"), SET("EastMiniCutFileBlock=true")}},
    {"all-texts", {"--format", "ill_tm", SET("plot_quantite=true"), SET("plot_pieceCode=true"),
                      SET("plot_special=true"), SET("plot_description=true"),
                      SET("plot_sewingLine=true"), SET("plot_spaceLayers=5"),
                      SET("plot_textInBottom=true"), SET("symbols_letterSize=24")}},
    {"labels-of-blocks", {"--format", "cut_labels", SET("MiniCutFileBlock=true")}},
    {"blocks", {"--format", "cut_ansi", SET("CutFusing=2"), SET("CutBlocking=true"),
                   SET("MiniCutFileBlock=true")}},
};

// What the markers of these tests are exported to.
const Variant kNestingVariants[] = {
    {"", {"--format", "dxf_nester"}},
};
const Variant kDrawingVariants[] = {
    {"", {"--format", "ill_tm", SET("plot_pieceTrait=false"), SET("plot_pieceName=false"),
             SET("plot_styleName=false"), SET("plot_ballot=false"), SET("plot_taille=false")}},
    {"tenth",
        {"--format", "ill_tm", SET("Illustrator_export_factor=0.1"), SET("plot_quantite=true")}},
};

struct Source
{
    QString folder;
    std::vector<Variant> variants;
};

Source sourceOf(const QString &marker)
{
    const QString own = kGolden + QStringLiteral("/markers");
    if (QFile::exists(own + QLatin1Char('/') + marker + QStringLiteral(".mar"))) {
        if (marker == QLatin1String("triangle")) {
            return {own, {std::begin(kDrawingVariants), std::end(kDrawingVariants)}};
        }
        return {own, {std::begin(kNestingVariants), std::end(kNestingVariants)}};
    }
    return {kSamples, {std::begin(kVariants), std::end(kVariants)}};
}

// Masks what differs from machine to machine and from run to run: the folder of the marker, the
// dates of its file and the time of a drawing.
QByteArray masked(QByteArray bytes, const QString &marker)
{
    const QFileInfo file(marker);
    bytes.replace(file.absolutePath().toUtf8(), "@FOLDER@");
    const QByteArray drawn = "%%Creation Date: ";
    const int start = bytes.indexOf(drawn) + drawn.size();
    if (start >= drawn.size()) {
        bytes.replace(start, bytes.indexOf('\n', start) - start, "@TIME@");
    }
    return bytes.replace(
        QLocale::c().toString(file.lastModified().date(), QStringLiteral("d/M/yyyy")).toUtf8(),
        "@DATE@");
}

// What `kivhost export` writes for a sample, masked, by "TAG/FILE".
std::map<QString, QByteArray> exported(const QString &sample, const Variant &variant)
{
    const QTemporaryDir folder;
    const QString marker = folder.filePath(sample + QStringLiteral(".mar"));
    EXPECT_TRUE(QFile::copy(
        sourceOf(sample).folder + QLatin1Char('/') + sample + QStringLiteral(".mar"), marker));
    QFile copy(marker); // the copy is as old as the sample otherwise
    EXPECT_TRUE(copy.open(QIODevice::ReadWrite) &&
                copy.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime));
    copy.close();
    write(folder.filePath(QStringLiteral("KivSystem/kivhost.ini")), variant.settings);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    environment.insert(QStringLiteral("HOME"), folder.path());
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder.path());
    QProcess host;
    host.setProcessEnvironment(environment);
    host.start(kHost, QStringList{QStringLiteral("export"), marker, QStringLiteral("-o"),
                          folder.filePath(QStringLiteral("out"))} +
                          variant.arguments);
    EXPECT_TRUE(host.waitForFinished(60000));
    EXPECT_EQ(host.exitCode(), 0) << host.readAllStandardError().toStdString();

    std::map<QString, QByteArray> files = filesBelow(folder.filePath(QStringLiteral("out")));
    for (auto &[path, bytes] : files) {
        bytes = masked(bytes, marker);
    }
    return files;
}

QString patch(const QString &golden, const QByteArray &bytes)
{
    QProcess diff;
    diff.start(QStringLiteral("diff"), {QStringLiteral("-uaN"), golden, QStringLiteral("-")});
    diff.write(bytes);
    diff.closeWriteChannel();
    diff.waitForFinished();
    return QString::fromLocal8Bit(diff.readAllStandardOutput());
}

class Golden : public testing::TestWithParam<std::string>
{};

TEST_P(Golden, ExportIsByteForByteTheFileInTheTree)
{
    const QString sample = QString::fromStdString(GetParam());
    const bool update = qEnvironmentVariableIsSet("KIV_UPDATE_GOLDEN");
    std::map<QString, QByteArray> expected;
    for (const auto &[path, bytes] : filesBelow(kGolden)) {
        if (path.section(QLatin1Char('/'), 1, 1) == sample) {
            expected[path] = bytes;
        }
    }
    for (const Variant &variant : sourceOf(sample).variants) {
        for (const auto &[path, bytes] : exported(sample, variant)) {
            const QString name = QDir::cleanPath(
                QStringLiteral("%1/%2/%3/%4")
                    .arg(path.section(QLatin1Char('/'), 0, 0), sample,
                        QString::fromLatin1(variant.name), path.section(QLatin1Char('/'), 1)));
            const QString golden = kGolden + QLatin1Char('/') + name;
            if (update) {
                write(golden, bytes);
            } else if (expected.count(name) == 0 || expected.at(name) != bytes) {
                ADD_FAILURE() << patch(golden, bytes).toStdString();
            }
            expected.erase(name);
        }
    }
    for (const auto &[name, bytes] : expected) {
        if (update) {
            QFile::remove(kGolden + QLatin1Char('/') + name);
        } else {
            ADD_FAILURE() << name.toStdString() << " is not written any more";
        }
    }
}

std::vector<std::string> samples()
{
    std::vector<std::string> names;
    for (const QString &folder : {kSamples, kGolden + QStringLiteral("/markers")}) {
        for (const QString &name : QDir(folder).entryList({QStringLiteral("*.mar")})) {
            names.push_back(QFileInfo(name).completeBaseName().toStdString());
        }
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(
    Samples, Golden, testing::ValuesIn(samples()), [](const auto &sample) { return sample.param; });

} // namespace
