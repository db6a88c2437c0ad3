#include "ExportStaging.h"
#include "HostTestSupport.h"

#include <QDateTime>

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace KivSystem {
namespace {

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path;
    file.write(bytes);
}

TEST(FileNames, AreMadeOfWhatAFileNameCanHold)
{
    const QString longName(120, QChar(0xE9)); // two bytes each
    const std::pair<QString, QString> cases[] = {
        {"Shell", "Shell"},
        {"a/b\\c:d*e?f\"g<h>i|j", "a_b_c_d_e_f_g_h_i_j"},
        {"tab\tline\nnull" + QString(QChar(0)), "tab_line_null_"},
        {"", "_"},
        {".hidden", "_hidden"},
        {"..", "_."},
        {"v1.2 final", "v1.2 final"},
        {QString(QChar(0xD800)) + "x", "_x"},
        {longName, longName.left(100)},
        // A letter with its accent is one character: it goes as a whole.
        {QString(199, 'x') + "e" + QChar(0x301), QString(199, 'x')},
    };
    for (const auto &[proposed, expected] : cases) {
        EXPECT_EQ(fileNameFrom(proposed), expected);
    }
}

TEST(FileNames, ATakenNameGetsTheNextFreeNumber)
{
    FileNames names("cut");
    const std::pair<QString, QString> claims[] = {
        {"Shell", "Shell.cut"},
        {"SHELL", "SHELL (2).cut"},
        {"Shell (3)", "Shell (3).cut"},
        {"shell", "shell (4).cut"},
        {QString("Caf") + QChar(0xE9), QString("Caf") + QChar(0xE9) + ".cut"},
        {QString("cafe") + QChar(0x301), QString("cafe") + QChar(0x301) + " (2).cut"},
    };
    for (const auto &[proposed, expected] : claims) {
        EXPECT_EQ(names.claim(proposed), expected);
    }
}

TEST(ExportStaging, PutsAllFilesInPlaceAtOnceAndReplacesOldOnes)
{
    const Folder folder;
    folder.write("out/txt/A.txt", "old");
    ExportStaging staging(folder.path("out/txt"), "txt");
    const QString first = staging.addFile("A");
    const QString second = staging.addFile("B");
    EXPECT_EQ(QFileInfo(first).fileName(), "A.txt");
    EXPECT_EQ(staging.currentTarget(), folder.path("out/txt/B.txt"));
    writeFile(first, "new");
    writeFile(second, QByteArray(100000, 'b'));
    EXPECT_EQ(folder.read("out/txt/A.txt"), "old");

    const std::vector<WrittenFile> written = staging.commit();

    ASSERT_EQ(written.size(), 2U);
    EXPECT_EQ(written[1].path, folder.path("out/txt/B.txt"));
    EXPECT_EQ(written[1].bytes, 100000);
    EXPECT_EQ(folder.read("out/txt/A.txt"), "new");
    EXPECT_EQ(folder.read("out/txt/B.txt"), QByteArray(100000, 'b'));
}

TEST(ExportStaging, LeavesNothingWithoutACommit)
{
    const Folder folder;
    {
        ExportStaging staging(folder.path("deep/er/out"), "txt");
        writeFile(staging.addFile("A"), "half");
        EXPECT_NE(folder.contents(), QStringList());
    }
    EXPECT_EQ(folder.contents(), QStringList());
}

TEST(ExportStaging, AFileThatCannotBePutInPlaceTakesTheOthersBack)
{
    const Folder folder;
    folder.write("A.txt", "old");
    QDir().mkpath(folder.path("C.txt"));
    {
        ExportStaging staging(folder.path(), "txt");
        for (const char *name : {"A", "B", "C"}) {
            writeFile(staging.addFile(name), "new");
        }
        EXPECT_EQ(faultOf([&] { staging.commit(); }),
            "1 " + folder.path("C.txt") + ": was not written: Is a directory");
    }
    EXPECT_EQ(folder.contents(), (QStringList{"A.txt", "C.txt"}));
    EXPECT_EQ(folder.read("A.txt"), "old");
}

TEST(ExportStaging, AFormatThatLeavesNoFileOrAnEmptyOneFails)
{
    const Folder folder;
    ExportStaging staging(folder.path(), "txt");
    const QString path = staging.addFile("A");
    const QString failure = "1 " + folder.path("A.txt") + ": was not written: ";
    EXPECT_EQ(faultOf([&] { staging.commit(); }), failure + "the format left no file");
    writeFile(path, "");
    EXPECT_EQ(faultOf([&] { staging.commit(); }), failure + "the marker holds nothing for it");
}

TEST(ExportStaging, AFileThatEndsWhereItMayNotGrowFails)
{
    const Folder folder;
    folder.write("A.txt", "old");
    ExportStaging staging(folder.path(), "txt");
    writeFile(staging.addFile("A"), QByteArray(10000, 'a'));

    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limited = {10000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limited);
    const QString fault = faultOf([&] { staging.commit(); });
    setrlimit(RLIMIT_FSIZE, &before);

    EXPECT_EQ(fault, "1 " + folder.path("A.txt") + ": was not written: File too large");
    EXPECT_EQ(folder.read("A.txt"), "old");
}

TEST(ExportStaging, AFileInTheWayOfTheDirectoryIsNamed)
{
    const Folder folder;
    folder.write("out", "a file");
    EXPECT_EQ(faultOf([&] { ExportStaging(folder.path("out/txt"), "txt"); }),
        "1 " + folder.path("out") + ": is a file, expected a directory");
    EXPECT_EQ(faultOf([&] { ExportStaging(folder.path("new/a\nb/") + QString(300, 'x'), "txt"); }),
        "1 " + folder.path("new/a\nb/") + QString(300, 'x') +
            ": the directory cannot be made: File name too long");
    EXPECT_EQ(folder.contents(), QStringList("out"));
}

TEST(ExportStaging, ClearsAwayWhatAKilledRunLeftADayAgo)
{
    const Folder folder;
    const QStringList names = {
        ".kivhost-abc123", ".kivhost-fresh0", ".kivhost-notours", ".other-abc123"};
    for (const QString &name : names) {
        folder.write(name + "/A.txt", "half");
    }
    for (const int index : {0, 2, 3}) {
        const timespec twoDaysAgo = {QDateTime::currentSecsSinceEpoch() - 200000, 0};
        const timespec times[] = {twoDaysAgo, twoDaysAgo};
        utimensat(AT_FDCWD, QFile::encodeName(folder.path(names[index])).constData(), times, 0);
    }
    {
        const ExportStaging staging(folder.path(), "txt");
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot),
        names.mid(1));
}

TEST(ExportStagingDeathTest, AnInterruptionLeavesTheOldFileAndNothingElse)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe"; // the signal's thread needs a fresh start
    const QString root = QDir::temp().filePath("kivhost-interruption-test");
    QDir(root).removeRecursively();
    QDir().mkpath(root + "/txt");
    writeFile(root + "/txt/A.txt", "old");
    EXPECT_EXIT(
        {
            Interruption::install();
            ExportStaging old(root + "/txt", "txt");
            ExportStaging fresh(root + "/new", "txt");
            writeFile(old.addFile("A"), "half");
            writeFile(fresh.addFile("B"), "half");
            kill(getpid(), SIGTERM);
            sleep(60);
        },
        testing::KilledBySignal(SIGTERM), "");
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    EXPECT_EQ(QDir(root).entryList(all), QStringList("txt"));
    EXPECT_EQ(QDir(root + "/txt").entryList(all), QStringList("A.txt"));
    QFile file(root + "/txt/A.txt");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "old");
    QDir(root).removeRecursively();
}

} // namespace
} // namespace KivSystem
