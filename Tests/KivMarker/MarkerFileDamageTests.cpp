// Damaged marker files: whatever the damage, loading gives a drawing that keeps its rules or throws
// MarkerFileError; under the sanitizers this also finds reads outside of anything.

#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/MarkerFile.h"

#include "MarkerRules.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <random>

namespace KivSystem {
namespace {

QList<QByteArray> goodFiles()
{
    QList<QByteArray> files;
    const QDir samples(QStringLiteral(KIV_SOURCE_DIR "/Samples"));
    QStringList paths{QStringLiteral(KIV_TEST_DATA "/full.mar")};
    for (const QString &name : samples.entryList({QStringLiteral("*.mar")})) {
        paths << samples.filePath(name);
    }
    for (const QString &path : paths) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        files << file.readAll();
    }
    return files;
}

// Whether the bytes were refused; a drawing that they give must keep its rules and survive another
// save and load.
bool isRefused(const QByteArray &bytes)
{
    std::unique_ptr<DocumentMak> document;
    try {
        document = MarkerFile::parse(bytes, QStringLiteral("damaged.mar"));
    } catch (const MarkerFileError &error) {
        EXPECT_TRUE(error.message().startsWith(QLatin1String("damaged.mar: $")))
            << error.message().toStdString();
        return true;
    }
    EXPECT_EQ(brokenRule(*document->drawing()), QString());
    const QByteArray saved = MarkerFile::toBytes(*document);
    const auto again = MarkerFile::parse(saved, QStringLiteral("again.mar"));
    EXPECT_EQ(MarkerFile::toBytes(*again), saved);
    return false;
}

TEST(MarkerFileDamage, EveryTruncatedFileIsRefused)
{
    for (const QByteArray &good : goodFiles()) {
        const int end = good.lastIndexOf('}'); // what follows is a line feed
        for (int length = 0; length <= end; length += 97) {
            EXPECT_TRUE(isRefused(good.left(length))) << length;
        }
    }
}

TEST(MarkerFileDamage, FlippedBytesNeverGiveADrawingThatBreaksItsRules)
{
    constexpr int kPlaces = 2000;
    std::mt19937 random(20260314); // the same damage on every run
    const QList<QByteArray> files = goodFiles();
    int refused = 0;
    for (int trial = 0; trial < kPlaces; ++trial) {
        QByteArray bytes = files.at(trial % files.size());
        const int place = static_cast<int>(random() % static_cast<unsigned>(bytes.size()));
        const int bit = static_cast<int>(random() % 8U);
        bytes[place] = static_cast<char>(bytes.at(place) ^ (1 << bit));
        refused += isRefused(bytes) ? 1 : 0;
    }
    // Most places matter; a flip inside a name or the last digit of a number may pass.
    EXPECT_GT(refused, kPlaces / 4);
    EXPECT_LT(refused, kPlaces);
}

} // namespace
} // namespace KivSystem
