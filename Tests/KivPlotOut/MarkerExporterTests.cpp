// The driver of an export: what it asks, which files it opens, and what it does when they fail.

#include "Support.h"

#include "MarkerExporter.h"
#include "OutputFile.h"
#include "Processor.h"
#include "ScriptedUserInterface.h"

#include "KivCore/Application.h"
#include "KivMarker/ShareGlobales.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTextStream>

#include <boost/make_shared.hpp>

#include <csignal>
#include <functional>
#include <set>
#include <stdexcept>

#include <sys/resource.h>

namespace KivSystem {
namespace {

class ScriptedProcessor : public Processor
{
public:
    std::vector<std::string> calls;
    bool initAnswer = true;
    bool perFabric = false;
    bool optimization = true;
    std::set<short> refused; // by prepare
    std::deque<bool> more;   // answers of exportMoreFiles, false at the end
    std::function<void(QIODevice *)> build = [](QIODevice *device) { device->write("text"); };

    QWidget *optionsPanel() override { return nullptr; }
    bool initProcessing(QIODevice *device, const QString &filter) override
    {
        calls.push_back((device ? "init device " : "init ") + filter.toStdString());
        return initAnswer;
    }
    bool prepare(const DocumentMak &, short fabric) override
    {
        calls.push_back("prepare " + std::to_string(fabric));
        return refused.count(fabric) == 0;
    }
    bool buildDocument(const DocumentMak &, QIODevice *device) override
    {
        calls.push_back("build");
        build(device);
        return false; // which nobody looks at
    }
    bool checkPolygonOptimization() override
    {
        calls.push_back("check");
        return optimization;
    }
    bool isNeedSelectFabirc() override { return perFabric; }
    bool exportMoreFiles() override
    {
        calls.push_back("more");
        const bool answer = !more.empty() && more.front();
        if (!more.empty()) {
            more.pop_front();
        }
        return answer;
    }
};

class MarkerExporterTest : public testing::Test
{
protected:
    MarkerExporterTest()
    {
        auto owned = std::make_unique<ScriptedUserInterface>();
        user = owned.get();
        application = std::make_unique<KivApplication>(std::move(owned), QDir());
    }

    QString path(const QString &name) const { return directory.path() + '/' + name; }

    QByteArray contents(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    void run(QIODevice *device = nullptr, const QString &filter = "A (*.a)\tB (*.b)")
    {
        exporter.exportDocument(*document, device, filter);
    }

    // Runs the export and expects an IOError with this code.
    void expectIOError(int code)
    {
        try {
            run();
            ADD_FAILURE() << "nothing was thrown";
        } catch (const IOError &error) {
            EXPECT_EQ(error.what(), qt_error_string(code).toStdString());
            expectThrowSite(error, "MarkerExporter.cpp");
        }
    }

    using Calls = std::vector<std::string>;

    const QTemporaryDir directory;
    ScriptedUserInterface *user = nullptr;
    std::unique_ptr<KivApplication> application;
    std::unique_ptr<DocumentMak> document =
        MarkerBuilder().fabric("F1").fabric("F2").fabric("F3").take();
    boost::shared_ptr<ScriptedProcessor> processor = boost::make_shared<ScriptedProcessor>();
    MarkerExporter exporter{processor};
};

TEST_F(MarkerExporterTest, WritesTheWholeDocumentIntoAnOpenDeviceWithoutAQuestion)
{
    processor->perFabric = true; // does not count here
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    run(&device);
    EXPECT_EQ(device.data(), QByteArray("text"));
    EXPECT_EQ(processor->calls, (Calls{"init device A (*.a)\tB (*.b)", "prepare 0", "build"}));
    EXPECT_TRUE(device.isOpen());

    processor->calls.clear();
    processor->refused = {0};
    run(&device);
    EXPECT_EQ(processor->calls, (Calls{"init device A (*.a)\tB (*.b)", "prepare 0"}));
}

TEST_F(MarkerExporterTest, RefusedStartEndsEveryRoad)
{
    processor->initAnswer = false;
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    for (const bool perFabric : {false, true}) {
        processor->perFabric = perFabric;
        EXPECT_EQ(exporter.prompt(), perFabric);
        run();
        run(&device);
    }
    EXPECT_EQ(processor->calls.size(), 4U);
}

TEST_F(MarkerExporterTest, WritesTheWholeDocumentIntoOneFileThatTheUserNames)
{
    document->drawing()->filePath = path("shirt.mar");
    QFile old(path("out.txt"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("longer than the new") > 0);
    old.close();
    processor->more = {true}; // is not asked for
    processor->build = [](QIODevice *device) {
        EXPECT_EQ(device->openMode(), QIODevice::ReadWrite | QIODevice::Truncate);
        device->write("text");
    };
    user->saveNames = {path("out.txt")};
    run();
    EXPECT_EQ(contents("out.txt"), QByteArray("text"));
    EXPECT_EQ(processor->calls, (Calls{"init A (*.a)\tB (*.b)", "prepare 0", "build"}));
    ASSERT_EQ(user->saveQuestions.size(), 1U);
    EXPECT_EQ(user->saveQuestions[0].title, "Export Document as");
    EXPECT_EQ(user->saveQuestions[0].proposedName, document->name());
    EXPECT_FALSE(document->name().isEmpty());
}

TEST_F(MarkerExporterTest, OffersTheFiltersAndAllFiles)
{
    const struct
    {
        const char *filter;
        QStringList expected;
    } rows[] = {
        {"A (*.a)\tB (*.b)", {"A (*.a)", "B (*.b)", "All Files (*.*)"}},
        {"DXF File (*.dxf)", {"DXF File (*.dxf)", "All Files (*.*)"}},
        {"A\t", {"A", "", "All Files (*.*)"}},
    };
    for (const auto &row : rows) {
        user->saveNames = {""};
        run(nullptr, row.filter);
        EXPECT_EQ(user->saveQuestions.back().filters, row.expected);
    }
}

TEST_F(MarkerExporterTest, NameWithoutABaseIsACancelledDialog)
{
    for (const QString &name : {QString(), path(".txt"), path("")}) {
        user->saveNames = {name};
        run();
    }
    EXPECT_EQ(std::count(processor->calls.begin(), processor->calls.end(), "build"), 0);
    EXPECT_FALSE(QFile::exists(path(".txt")));
    processor->refused = {0};
    run(); // and a refused document asks nothing at all
    EXPECT_EQ(user->saveQuestions.size(), 3U);
}

TEST_F(MarkerExporterTest, CancelledDialogSkipsOneFileOfAFabricAndNoMore)
{
    processor->perFabric = true;
    processor->refused = {2};
    processor->more = {true, true, false, true};
    user->saveNames = {path("1a"), "", path("1c"), path(".txt"), path("3b")};
    run();
    EXPECT_EQ(
        processor->calls, (Calls{"init A (*.a)\tB (*.b)", "prepare 1", "build", "more", "more",
                              "build", "more", "prepare 2", "prepare 3", "more", "build", "more"}));
    QStringList proposed;
    for (const auto &question : user->saveQuestions) {
        proposed << question.proposedName;
        EXPECT_EQ(question.title, "Export Document as");
        EXPECT_EQ(question.filters, QStringList({"A (*.a)", "B (*.b)", "All Files (*.*)"}));
    }
    EXPECT_EQ(proposed, QStringList({"F1", "F1", "F1", "F3", "F3"}));
    EXPECT_EQ(contents("1a") + contents("1c") + contents("3b"), QByteArray("texttexttext"));
}

TEST_F(MarkerExporterTest, MarkerWithoutFabricsGivesNoFileAndNoQuestion)
{
    processor->perFabric = true;
    document = MarkerBuilder().take();
    run();
    EXPECT_EQ(processor->calls, Calls{"init A (*.a)\tB (*.b)"});
    document = std::make_unique<DocumentMak>(nullptr);
    EXPECT_THROW(run(), AssertionError);
}

TEST_F(MarkerExporterTest, FileThatCannotBeOpenedEndsTheExport)
{
    processor->perFabric = true;
    user->saveNames = {path("1"), path("no/such/2")};
    expectIOError(QFileDevice::OpenError);
    EXPECT_EQ(contents("1"), QByteArray("text"));
    EXPECT_EQ(processor->calls.back(), "prepare 2");
}

TEST_F(MarkerExporterTest, FullDiskIsAFailureAndDoesNotMaskOthers)
{
    user->saveNames = {"/dev/full", "/dev/full"};
    expectIOError(QFileDevice::ResourceError);
    processor->build = [](QIODevice *device) {
        device->write("text");
        throw AssertionError("first");
    };
    EXPECT_THROW(run(), AssertionError);
}

TEST_F(MarkerExporterTest, FileThatIsCutOffAnywhereIsAFailure)
{
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    const auto limitFiles = [&unlimited](rlim_t bytes) {
        const rlimit limit{bytes, unlimited.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    const auto restore = qScopeGuard([&] {
        setrlimit(RLIMIT_FSIZE, &unlimited);
        std::signal(SIGXFSZ, previous);
    });
    // A block beyond the file's buffer, then small ones.
    constexpr int kBlock = OutputFile::kBufferSize + 20000;
    constexpr int kSmall = 700;
    constexpr int kSmalls = 30;
    constexpr int kSize = kBlock + kSmalls * kSmall;
    processor->build = [](QIODevice *device) {
        device->write(QByteArray(kBlock, 'x'));
        for (int i = 0; i < kSmalls; ++i) {
            device->write(QByteArray(kSmall, 'y'));
        }
    };
    for (const int room :
        {0, 1, kBlock / 2, kBlock - 1, kBlock, kBlock + kSmall, kSize - 1, kSize}) {
        user->saveNames = {path("out")};
        limitFiles(static_cast<rlim_t>(room));
        bool failed = false;
        try {
            run();
        } catch (const IOError &) {
            failed = true;
        }
        setrlimit(RLIMIT_FSIZE, &unlimited);
        EXPECT_EQ(failed, room < kSize) << room;
    }
    // Room that comes back does not make up for what was lost.
    processor->build = [&](QIODevice *device) {
        device->write(QByteArray(kBlock, 'x'));
        device->write("y");
        setrlimit(RLIMIT_FSIZE, &unlimited);
        device->write("z");
    };
    user->saveNames = {path("out")};
    limitFiles(kBlock / 2);
    EXPECT_THROW(run(), IOError);
}

TEST_F(MarkerExporterTest, FlushedLinesReachTheFileTogetherAndAlsoWhenTheExportFails)
{
    const QString name = path("out");
    QByteArray readBack;
    processor->build = [&](QIODevice *device) {
        QTextStream stream(device);
        stream << "one" << Qt::endl << "two" << Qt::endl;
        EXPECT_EQ(QFileInfo(name).size(), 0);
        EXPECT_EQ(device->size(), 8);
        device->seek(4);
        readBack = device->readLine();
        device->seek(3);
        stream << "+" << Qt::endl;
        EXPECT_EQ(device->size(), 8);
        throw std::runtime_error("the format gave up");
    };
    user->saveNames = {name};
    EXPECT_THROW(run(), std::runtime_error);
    EXPECT_EQ(readBack, "two\n");
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "one+\nwo\n");
}

class OptimizationPromptTest : public MarkerExporterTest
{
protected:
    OptimizationPromptTest() { CDbMarkerShareGlobales::instance()->setZentrimActif(true); }
    ~OptimizationPromptTest() override
    {
        CDbMarkerShareGlobales::instance()->setZentrimActif(false);
    }
};

TEST_F(OptimizationPromptTest, AsksOnlyForAFormatThatMindsInAZentrimViewOfAnotherDrawing)
{
    for (int bits = 0; bits < 8; ++bits) {
        document->drawing()->zentrimActif = (bits & 1) != 0;
        CDbMarkerShareGlobales::instance()->setZentrimActif((bits & 2) != 0);
        processor->optimization = (bits & 4) != 0;
        const bool asks = bits == 6;
        user->choices = asks ? std::deque<int>{2} : std::deque<int>{};
        EXPECT_EQ(exporter.prepare(*document), !asks) << bits;
    }
    // The format is asked last, and only when the answer counts.
    EXPECT_EQ(processor->calls, (Calls{"check", "check"}));
    ASSERT_EQ(user->questions.size(), 1U);
    EXPECT_EQ(user->questions[0].message,
        "Polygon optimization is performed only in Zentrim View?\n"
        "To export non optimized polygons, press Continue?");
    EXPECT_EQ(user->questions[0].title, "Continue");
    EXPECT_EQ(
        user->questions[0].buttons, QStringList({"Continue", "  Go to Zentrim View  ", "Cancel"}));
    EXPECT_THROW(exporter.prepare(DocumentMak(nullptr)), AssertionError);
}

TEST_F(OptimizationPromptTest, GoesOnSwitchesTheViewOrDropsTheExport)
{
    MainWindow window;
    user->window = &window;
    user->choices = {1};
    EXPECT_FALSE(exporter.prepare(*document)) << "without an active child";

    auto *child = new MdiChild; // the window takes it over
    window.addMdiChild(child);
    window.show();
    std::vector<int> signalsSent;
    QObject::connect(child, &MdiChild::signalSent,
        [&signalsSent](MdiChild::signalType signal) { signalsSent.push_back(signal); });
    const struct
    {
        int answer;
        bool expected;
        std::vector<int> sent;
    } rows[] = {{0, true, {}}, {2, false, {}}, {-1, false, {}}, {1, false, {0}}};
    for (const auto &row : rows) {
        user->choices = {row.answer};
        EXPECT_EQ(exporter.prepare(*document), row.expected) << row.answer;
        QCoreApplication::processEvents();
        EXPECT_EQ(signalsSent, row.sent) << row.answer;
    }

    user->window = nullptr;
    user->choices = {1};
    EXPECT_FALSE(exporter.prepare(*document)) << "without a window";
}

TEST(MarkerExporterDeathTest, NeedsAProcessor)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(MarkerExporter(boost::shared_ptr<Processor>()), "proc != NULL");
}

} // namespace
} // namespace KivSystem
