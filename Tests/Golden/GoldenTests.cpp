// Exports every sample marker in every format that there is, as a person would with kivhost, and
// compares what was written with the files beside this one: Tests/Golden/TAG/SAMPLE/FILE. A
// difference is printed as a patch; `scripts/test --update-golden` applies it.
//
// What differs from machine to machine is masked by its field: the folder of the marker and the
// dates of its file.

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
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

// Fields 1 (folder), 4 and 5 (dates of the file) of a report of all fields.
QByteArray withoutMachine(const QByteArray &report)
{
    const std::map<int, QByteArray> masks{{1, "@FOLDER@"}, {4, "@CREATED@"}, {5, "@MODIFIED@"}};
    QList<QByteArray> lines = report.split('\n');
    for (QByteArray &line : lines) {
        QList<QByteArray> fields = line.split('\t');
        for (const auto &[field, mask] : masks) {
            if (field < fields.size()) {
                fields[field] = mask;
            }
        }
        line = fields.join('\t');
    }
    return lines.join('\n');
}

QByteArray masked(const QString &tag, const QByteArray &bytes)
{
    return tag == QLatin1String("kiv_txt") || tag == QLatin1String("txt") ? withoutMachine(bytes)
                                                                          : bytes;
}

// What `kivhost export --all` writes for a sample, masked, by "TAG/FILE".
std::map<QString, QByteArray> exported(const QString &sample)
{
    const QTemporaryDir folder;
    const QString marker = folder.filePath(sample + QStringLiteral(".mar"));
    EXPECT_TRUE(QFile::copy(kSamples + QLatin1Char('/') + sample + QStringLiteral(".mar"), marker));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    environment.insert(QStringLiteral("HOME"), folder.path());
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder.path());
    QProcess host;
    host.setProcessEnvironment(environment);
    host.start(kHost, {QStringLiteral("export"), marker, QStringLiteral("--all"),
                          QStringLiteral("-o"), folder.filePath(QStringLiteral("out"))});
    EXPECT_TRUE(host.waitForFinished(60000));
    EXPECT_EQ(host.exitCode(), 0) << host.readAllStandardError().toStdString();

    std::map<QString, QByteArray> files = filesBelow(folder.filePath(QStringLiteral("out")));
    for (auto &[path, bytes] : files) {
        bytes = masked(path.section(QLatin1Char('/'), 0, 0), bytes);
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
        if (path.count(QLatin1Char('/')) == 2 && path.section(QLatin1Char('/'), 1, 1) == sample) {
            expected[path] = bytes;
        }
    }
    for (const auto &[path, bytes] : exported(sample)) {
        const QString name = path.section(QLatin1Char('/'), 0, 0) + QLatin1Char('/') + sample +
                             QLatin1Char('/') + path.section(QLatin1Char('/'), 1);
        const QString golden = kGolden + QLatin1Char('/') + name;
        if (update) {
            write(golden, bytes);
        } else if (expected.count(name) == 0 || expected.at(name) != bytes) {
            ADD_FAILURE() << patch(golden, bytes).toStdString();
        }
        expected.erase(name);
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
    for (const QString &name : QDir(kSamples).entryList({QStringLiteral("*.mar")})) {
        names.push_back(QFileInfo(name).completeBaseName().toStdString());
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(
    Samples, Golden, testing::ValuesIn(samples()), [](const auto &sample) { return sample.param; });

} // namespace
