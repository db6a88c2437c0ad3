// The export verb with a plug-in from a script: what a format does, step by step, and what the host
// makes of it.

#include "CommandLineInterface.h"
#include "HostTestSupport.h"
#include "KivCore/Application.h"
#include "KivCore/Dialog.h"
#include "KivCore/ExporterFactory.h"
#include "KivMarker/Document.h"
#include "Verbs.h"

#include <QCloseEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QWidget>

#include <boost/make_shared.hpp>
#include <boost/pointer_cast.hpp>

namespace KivSystem {
namespace {

// A panel that stores its setting as it closes, or refuses to close.
class ScriptedPanel final : public QWidget
{
public:
    bool closes = true;

protected:
    void closeEvent(QCloseEvent *event) override
    {
        event->setAccepted(closes);
        QSettings().setValue("panel", "closed");
    }
};

// What a format does in each step.
struct Script
{
    bool canExport = true;
    bool hasPanel = false;
    bool panelCloses = true;
    std::function<bool()> prepare = [] { return true; };
    std::function<void()> write = [] {};
};

class ScriptedExporter final : public Exporter<DocumentMak>
{
public:
    explicit ScriptedExporter(const Script &script) : m_script(script)
    {
        m_panel.closes = script.panelCloses;
    }
    bool canExport(const DocumentMak &) const override { return m_script.canExport; }
    QWidget *optionsPanel() override { return m_script.hasPanel ? &m_panel : nullptr; }
    bool prepare(const DocumentMak &) override { return m_script.prepare(); }
    bool prompt() override { return false; }
    void exportDocument(const DocumentMak &, QIODevice *device, const QString &filter) override
    {
        EXPECT_EQ(device, nullptr);
        EXPECT_EQ(filter, "Plot (*.plt)\tAll (*.x)");
        m_script.write();
    }

private:
    Script m_script;
    ScriptedPanel m_panel;
};

class ScriptedFactory final : public ExporterFactory
{
public:
    Script script;

    std::vector<QString> supportedFormats() const override { return {"Plot", "Later"}; }
    bool describeFormat(const QString &name, FileFormat &format) const override
    {
        format = {name, "Plot (*.plt)\tAll (*.x)", name == "Plot" ? "plot" : "later", 9};
        return true;
    }
    boost::shared_ptr<Exporter<Document>> createExporter(const QString &name) override
    {
        if (name == "Later") {
            return {};
        }
        return boost::reinterpret_pointer_cast<Exporter<Document>>(
            boost::shared_ptr<Exporter<DocumentMak>>(boost::make_shared<ScriptedExporter>(script)));
    }
};

// Asks for a file as a format does, and writes it.
void writeAs(const QString &proposedName, const QByteArray &bytes)
{
    QFile file(KivApplication::instance()->getSaveFileName(
        {"Plot (*.plt)"}, "Export", proposedName, nullptr, nullptr));
    if (!file.open(QIODevice::ReadWrite | QIODevice::Truncate)) {
        throw std::logic_error("Input/output error");
    }
    file.write(bytes);
}

class ExportVerbTest : public testing::Test
{
protected:
    ExportVerbTest()
    {
        auto interface = std::make_unique<CommandLineInterface>(kept.console);
        user = interface.get();
        application = std::make_unique<KivApplication>(std::move(interface), QDir());
        options.marker = folder.write("small.mar", smallMarker());
        options.formats = QStringList("plot");
        options.directory = folder.path("out");
    }

    int run()
    {
        kept.err.clear();
        const int status = runReporting(
            kept.console, [&] { return exportMarker(options, factory, *user, kept.console); });
        kept.err.remove(folder.path() + "/");
        return status;
    }

    Folder folder;
    KeptConsole kept;
    CommandLineInterface *user = nullptr;
    std::unique_ptr<KivApplication> application;
    ScriptedFactory factory;
    ExportOptions options;
};

TEST_F(ExportVerbTest, TellsEachFileThatItWrote)
{
    factory.script.write = [] {
        writeAs("Shell", "one");
        writeAs("Shell", "second");
    };
    options.formats = QStringList({"Plot", "plot"}); // the same format by name and by tag
    EXPECT_EQ(run(), ExitDone) << kept.err;
    EXPECT_EQ(kept.out.remove(folder.path() + "/"),
        "out/plot/Shell.plt\t3 bytes\nout/plot/Shell (2).plt\t6 bytes\n");
    EXPECT_EQ(kept.err, "");
    EXPECT_EQ(folder.read("out/plot/Shell (2).plt"), "second");
}

TEST_F(ExportVerbTest, TellsInJsonWhatWasWrittenAndWhatFailed)
{
    factory.script.write = [] { writeAs("Shell", "one"); };
    options.formats = QStringList({"Plot", "Later"});
    options.json = true;
    EXPECT_EQ(run(), ExitFailed);
    const QJsonObject told = QJsonDocument::fromJson(kept.out.toUtf8()).object();
    const QJsonObject file{
        {"path", folder.path("out/plot/Shell.plt")}, {"bytes", 3}, {"format", "Plot"}};
    const QJsonObject failure{
        {"format", "Later"}, {"message", "the plug-in does not offer Later yet"}};
    EXPECT_EQ(told, (QJsonObject{{"files", QJsonArray{file}}, {"failures", QJsonArray{failure}}}));
}

TEST_F(ExportVerbTest, AFormatThatIsNotOfferedYetIsPassedOverOnlyWithAll)
{
    factory.script.write = [] { writeAs("Shell", "one"); };
    options.all = true;
    EXPECT_EQ(run(), ExitDone);
    EXPECT_EQ(kept.err, "kivhost: the plug-in does not offer Later yet\n");
    options.all = false;
    options.formats = QStringList("Later");
    EXPECT_EQ(run(), ExitFailed);
}

TEST_F(ExportVerbTest, AnExportThatEndsEarlyLeavesTheOldFileAndSaysWhy)
{
    const auto ask = [] {
        return KivApplication::instance()->confirmContinue("Not optimised?\nGo on?", "Continue",
                   "Go", "  View  ", " Cancel ", nullptr) == 0;
    };
    Script refused;
    refused.canExport = false;
    Script stuckPanel;
    stuckPanel.hasPanel = true;
    stuckPanel.panelCloses = false;
    Script asked;
    asked.prepare = ask;
    Script nothing;
    Script warned;
    warned.write = [] {
        KivApplication::instance()->displayWarning("It is\ntoo large.", "", nullptr);
    };
    Script thrown;
    thrown.write = [] {
        writeAs("Shell", "half");
        throw std::logic_error("Invalid Operation");
    };
    Script unasked;
    unasked.write = [] { throw std::logic_error("Invalid Operation"); };
    Script removed;
    removed.write = [this] {
        writeAs("Shell", "half");
        QDir staged(folder.path("out/plot"));
        staged.cd(staged.entryList({".kivhost-*"}, QDir::Dirs | QDir::Hidden).value(0));
        staged.removeRecursively();
        throw std::logic_error("Input/output error");
    };

    const std::pair<Script, QString> cases[] = {
        {refused, "Plot: was not written: the format refused the marker\n"},
        {stuckPanel, "Plot: was not written: the format refused the marker\n"},
        {asked, "Plot: was not written: Not optimised? Go on? (answered: Cancel)\n"},
        {nothing, "Plot: was not written: the marker holds nothing for it\n"},
        {warned, "Plot: was not written: It is too large.\n"},
        {thrown, "out/plot/Shell.plt: was not written: Invalid Operation\n"},
        {unasked, "Plot: was not written: Invalid Operation\n"},
        {removed, "out/plot/Shell.plt: was not written: No such file or directory\n"},
    };
    for (const auto &[script, message] : cases) {
        factory.script = script;
        folder.write("out/plot/Shell.plt", "old");
        EXPECT_EQ(run(), ExitFailed);
        EXPECT_EQ(kept.err, "kivhost: " + message);
        EXPECT_EQ(
            folder.contents(), (QStringList{"out", "out/plot", "out/plot/Shell.plt", "small.mar"}));
        EXPECT_EQ(folder.read("out/plot/Shell.plt"), "old");
        QDir(folder.path("out")).removeRecursively();
        EXPECT_EQ(run(), ExitFailed);
        EXPECT_EQ(folder.contents(), QStringList("small.mar")) << message;
    }
}

TEST_F(ExportVerbTest, GoesOnWithPolygonsThatAreNotOptimisedWhenTold)
{
    factory.script.prepare = [] {
        return KivApplication::instance()->confirmContinue(
                   "Go on?", "", "Go", "View", "No", nullptr) == 0;
    };
    factory.script.write = [] { writeAs("Shell", "one"); };
    options.exportNotOptimised = true;
    EXPECT_EQ(run(), ExitDone);
    EXPECT_EQ(kept.err, "kivhost: Go on? (answered: Go)\n");
}

TEST_F(ExportVerbTest, DialogsAreAcceptedAsTheyStand)
{
    factory.script.prepare = [] {
        KivDialog dialog(nullptr);
        return dialog.exec() == QDialog::Accepted;
    };
    factory.script.write = [] { writeAs("Shell", "one"); };
    EXPECT_EQ(run(), ExitDone) << kept.err;
}

TEST_F(ExportVerbTest, SettingsOfTheRunReachTheFormatAndStayOutOfTheUsersStore)
{
    QSettings().clear();
    factory.script.hasPanel = true;
    factory.script.write = [] {
        writeAs("Shell", QSettings().value("marker_export_list").toStringList().join('+').toUtf8() +
                             ' ' + QSettings().value("panel").toByteArray());
    };
    options.settings.assignments = QStringList("fields=1");
    options.fields = "3,0";
    EXPECT_EQ(run(), ExitDone) << kept.err;
    EXPECT_EQ(folder.read("out/plot/Shell.plt"), "3+0 closed");
    EXPECT_TRUE(QSettings().allKeys().isEmpty());

    // A run without settings of its own works on a copy, too.
    options.settings = SettingsSource();
    options.fields.clear();
    EXPECT_EQ(run(), ExitDone) << kept.err;
    EXPECT_EQ(folder.read("out/plot/Shell.plt"), " closed");
    EXPECT_TRUE(QSettings().allKeys().isEmpty());
}

TEST_F(ExportVerbTest, WrongUsageAndUnreadableFilesEndTheRunBeforeAnythingIsWritten)
{
    factory.script.write = [] { writeAs("Shell", "one"); };
    const struct
    {
        std::function<void(ExportOptions &)> change;
        int status;
        QString message;
    } cases[] = {
        {[](ExportOptions &o) { o.formats.append("Plott"); }, ExitWrongUsage,
            "there is no format \"Plott\"; \"kivhost formats\" lists them"},
        {[](ExportOptions &o) { o.settings.assignments.append("size=3"); }, ExitWrongUsage,
            "there is no setting \"size\"; \"kivhost settings\" lists them"},
        {[](ExportOptions &o) { o.fields = "99"; }, ExitWrongUsage,
            "setting fields: found \"99\", expected field numbers from 0 to 21 with commas "
            "between"},
        {[](ExportOptions &o) { o.marker += "k"; }, ExitUnreadable,
            "small.mark: there is no such file"},
        {[this](ExportOptions &o) { o.marker = folder.path("."); }, ExitUnreadable,
            ".: is a directory, expected a file"},
        {[this](ExportOptions &o) { o.settings.file = folder.path("no.ini"); }, ExitUnreadable,
            "no.ini: there is no such file"},
        {[this](ExportOptions &o) { o.directory = folder.path("small.mar/out"); }, ExitFailed,
            "small.mar: is a file, expected a directory"},
    };
    const ExportOptions good = options;
    for (const auto &entry : cases) {
        options = good;
        entry.change(options);
        EXPECT_EQ(run(), entry.status);
        EXPECT_EQ(kept.err, "kivhost: " + entry.message + "\n");
        EXPECT_EQ(folder.contents(), QStringList("small.mar"));
    }
}

} // namespace
} // namespace KivSystem
