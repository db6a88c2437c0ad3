// The export dialog with the plug-in, as a user works with it.

#include "Window/ExportDialog.h"

#include "DialogDriver.h"
#include "HostSettings.h"
#include "HostTestSupport.h"
#include "KivCore/Application.h"
#include "KivCore/ExporterFactory.h"
#include "KivCore/MainWindow.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ShareGlobales.h"
#include "NestingExport.h"
#include "PluginLoader.h"
#include "Verbs.h"
#include "Window/MarkerChild.h"
#include "Window/WindowUserInterface.h"

#include <QApplication>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFont>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QProcess>
#include <QRadioButton>
#include <QSettings>
#include <QTest>
#include <QTreeWidget>

#include <deque>

namespace KivSystem {
namespace {

const QString kTshirt = QStringLiteral(KIV_SOURCE_DIR "/Samples/tshirt.mar");
const QString kTrousers = QStringLiteral(KIV_SOURCE_DIR "/Samples/trousers.mar");
const QString kPlugins = QStringLiteral(KIV_BINARY_DIR "/bin/plugins");

// The file dialog alone is answered from a list; all else is real.
class ListedFiles final : public WindowUserInterface
{
public:
    using WindowUserInterface::WindowUserInterface;

    std::deque<QString> answers; // an empty one cancels
    QStringList proposals;
    std::function<void()> asked = [] {};

protected:
    QString askForFile(const QStringList &, const QString &, const QString &proposedPath, int *,
        QWidget *parent) override
    {
        EXPECT_NE(parent, nullptr); // or the dialog would come up behind the other one
        proposals << proposedPath;
        asked();
        if (answers.empty()) {
            ADD_FAILURE() << "asked too often: " << proposedPath.toStdString();
            return QString();
        }
        const QString answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

struct Seen
{
    QStringList files;
    QStringList sentences;
};

class ExportDialogTest : public testing::Test
{
protected:
    ExportDialogTest()
    {
        QSettings().clear();
        QApplication::setFont(QFont("Sans Serif")); // as the program does: drawings name it
        KeptConsole kept;
        applyConventions(kept.console);
        restoreMarkerSettings(kept.console);
        auto owned = std::make_unique<ListedFiles>(&window);
        user = owned.get();
        application = std::make_unique<KivApplication>(std::move(owned), QDir(kPlugins));
        factory = &loadPlugin(QDir(kPlugins));
        window.show();
    }
    ~ExportDialogTest() override
    {
        CDbMarkerShareGlobales::instance()->setZentrimActif(false);
        QSettings().clear();
    }

    void load(const QString &path) { document = loadMarker(path); }

    /// Chooses the format and clicks "Export".
    void choose(const QString &format, const DialogDriver::Step &change = {})
    {
        driver.then("formats", [format, change](QWidget &dialog) {
            auto &list = in<QListWidget>(dialog, "formats");
            list.setCurrentItem(list.findItems(format, Qt::MatchExactly).value(0));
            if (change) {
                change(dialog);
            }
            click(dialog, "export");
        });
    }
    void answerBox(const QString &text, const QString &button)
    {
        driver.then("QMessageBox", [this, text, button](QWidget &box) {
            EXPECT_EQ(static_cast<QMessageBox &>(box).text().remove(folder.path() + "/"), text);
            press(box, button);
        });
    }
    void acceptFields()
    {
        driver.then("TextExportFormat", [](QWidget &dialog) { press(dialog, "OK"); });
    }
    void readReport(const DialogDriver::Step &more = {})
    {
        driver.then("exportReport", [this, more](QWidget &dialog) {
            seen = {};
            auto &files = in<QTreeWidget>(dialog, "writtenFiles");
            for (int row = 0; row < files.topLevelItemCount(); ++row) {
                const QTreeWidgetItem &item = *files.topLevelItem(row);
                seen.files << item.text(0) + " " + item.text(1);
            }
            auto &sentences = in<QListWidget>(dialog, "sentences");
            for (int row = 0; row < sentences.count(); ++row) {
                seen.sentences << sentences.item(row)->text().remove(folder.path() + "/");
            }
            if (more) {
                more(dialog);
            }
            click(dialog, "close");
        });
    }
    void cancelDialog()
    {
        driver.then("formats", [](QWidget &dialog) { click(dialog, "cancel"); });
    }

    void run()
    {
        runExportDialog(window, *document, *factory,
            [this](const QString &path) { opened << QFileInfo(path).fileName(); });
        EXPECT_TRUE(driver.isDone());
    }

    QStringList stored(const QString &key) { return QSettings().value(key).toStringList(); }

    Folder folder;
    MainWindow window;
    ListedFiles *user = nullptr;
    std::unique_ptr<KivApplication> application;
    ExporterFactory *factory = nullptr;
    std::unique_ptr<DocumentMak> document;
    DialogDriver driver;
    Seen seen;
    QStringList opened;
};

// The files that the command line wrote: those of the format below its folder.
QStringList commandLineFiles(const Folder &folder, const QString &marker, const QString &format)
{
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", folder.path("config"));
    environment.insert("LC_ALL", "C");
    program.setProcessEnvironment(environment);
    program.start(
        KIV_BINARY_DIR "/bin/kivhost", {"export", marker, "--format", format, "-o", folder.path()});
    EXPECT_TRUE(program.waitForFinished(60000));
    QStringList paths;
    for (const QByteArray &line : program.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty()) {
            paths << QString::fromUtf8(line.split('\t').constFirst());
        }
    }
    return paths;
}

QByteArray withoutTime(const QByteArray &bytes)
{
    QByteArray kept;
    for (const QByteArray &line : bytes.split('\n')) {
        kept += line.startsWith("%%Creation Date:") ? QByteArray() : line + '\n';
    }
    return kept;
}

TEST_F(ExportDialogTest, EveryFormatWritesTheFilesOfTheCommandLine)
{
    for (const QString &marker : {kTrousers, kTshirt}) {
        for (const QString &name : factory->supportedFormats()) {
            SCOPED_TRACE((marker + " " + name).toStdString());
            const Folder byCommand;
            const QStringList expected = commandLineFiles(byCommand, marker, name);
            load(marker);
            if (!factory->createExporter(name)) {
                EXPECT_EQ(expected, QStringList());
                continue;
            }
            ASSERT_FALSE(expected.isEmpty());
            for (const QString &path : expected) {
                user->answers.push_back(folder.path(QFileInfo(path).fileName()));
            }
            choose(name);
            if (name == "Text File") {
                acceptFields();
            }
            readReport();
            run();
            EXPECT_EQ(seen.files.size(), expected.size());
            for (const QString &path : expected) {
                const QString file = QFileInfo(path).fileName();
                const QString below = QDir(byCommand.path()).relativeFilePath(path);
                EXPECT_EQ(withoutTime(folder.read(file)), withoutTime(byCommand.read(below)))
                    << file;
                QFile::remove(folder.path(file));
            }
            EXPECT_EQ(folder.contents(), QStringList());
        }
    }
}

TEST_F(ExportDialogTest, ChoicesOfAPanelOutliveTheProgram)
{
    load(kTrousers);
    user->answers = {folder.path("a.cut"), folder.path("b.cut")};
    choose("Cut File Eastman", [](QWidget &dialog) {
        in<QDoubleSpinBox>(dialog, "spinScaleX").setValue(97);
        auto &list = in<QListWidget>(dialog, "formats");
        list.setCurrentItem(list.findItems("Cut File ANSI", Qt::MatchExactly).value(0));
        QSettings().setValue("plot/spaceLayers", "5");
        in<QDoubleSpinBox>(dialog, "spinScaleX").setValue(98.5);
        in<QCheckBox>(dialog, "checkLabels").setChecked(true);
        in<QLineEdit>(dialog, "editGeneratePoint").setText("5"); // disabled, and out of its range
    });
    readReport();
    run();
    EXPECT_EQ(seen.files.size(), 2);
    EXPECT_EQ(seen.sentences, QStringList("Your changes to the options of Cut File Eastman were "
                                          "not kept: it was not exported."));
    EXPECT_TRUE(user->proposals.value(0).endsWith("Twill sand.cut"));
    EXPECT_FALSE(QSettings().contains("cut/CutInterPointsFreq"));
    EXPECT_GT(CDbMarkerShareGlobales::instance()->getCutInterPointsFreq(), 5);

    CDbMarkerShareGlobales::instance()->setCutScaleX(100); // as a program starts
    KeptConsole kept;
    restoreMarkerSettings(kept.console);
    EXPECT_EQ(CDbMarkerShareGlobales::instance()->getCutScaleX(), 98.5);
    EXPECT_TRUE(CDbMarkerShareGlobales::instance()->getCutLabelM31());
    EXPECT_EQ(stored("cut/CutScaleY"), QStringList()) << "untouched, and so not stored";
    EXPECT_EQ(stored("plot/spaceLayers"), QStringList("5")) << "of another window";
    EXPECT_EQ(stored("window/export_directory"), QStringList(folder.path()));

    driver.then("formats", [](QWidget &dialog) {
        EXPECT_EQ(in<QListWidget>(dialog, "formats").currentItem()->text(), "Cut File ANSI");
        EXPECT_EQ(in<QDoubleSpinBox>(dialog, "spinScaleX").value(), 98.5);
        in<QDoubleSpinBox>(dialog, "spinScaleX").setValue(50);
        QTest::keyClick(&in<QDoubleSpinBox>(dialog, "spinScaleX"), Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible()) << "Escape in a panel is meant for the dialog";
    });
    run();
    EXPECT_EQ(CDbMarkerShareGlobales::instance()->getCutScaleX(), 98.5);
}

TEST_F(ExportDialogTest, APanelWithAWrongValueKeepsTheDialogOpen)
{
    load(kTrousers);
    choose("Cut File ANSI", [](QWidget &dialog) {
        in<QLineEdit>(dialog, "editThreshold").setText("300 cm");
        in<QLineEdit>(dialog, "editCutterLengthX").setText("200 cm");
        in<QDoubleSpinBox>(dialog, "spinScaleX").setValue(50);
    });
    driver.then("QMessageBox", [](QWidget &box) { press(box, "OK"); });
    driver.then("formats", [](QWidget &dialog) {
        auto &field = in<QLineEdit>(dialog, "editCutterLengthX");
        EXPECT_TRUE(field.isVisible());
        field.setText("1,5.x");
        QTest::keyClick(&field, Qt::Key_Return);
    });
    driver.then("QMessageBox", [](QWidget &box) { press(box, "OK"); });
    driver.then("formats", [](QWidget &dialog) {
        auto &field = in<QLineEdit>(dialog, "editCutterLengthX");
        EXPECT_EQ(field.text(), "1,5.x") << "not mended";
        field.setText("500 cm");
        auto &scale = in<QDoubleSpinBox>(dialog, "spinScaleX");
        scale.findChild<QLineEdit *>()->setText("0%"); // its last value would be taken
        QTest::keyClick(&scale, Qt::Key_Return);
    });
    answerBox("Scale in X: enter a value from 1.00% to 110.00%.", "OK");
    driver.then("formats", [](QWidget &dialog) { click(dialog, "cancel"); });
    run();
    EXPECT_EQ(user->proposals, QStringList());
    EXPECT_EQ(CDbMarkerShareGlobales::instance()->getCutScaleX(), 100) << "nothing of it is kept";
}

TEST_F(ExportDialogTest, CancellingAnyQuestionLeavesNothing)
{
    load(kTrousers);
    choose("Text File"); // its choice of fields
    driver.then("TextExportFormat", [](QWidget &dialog) { press(dialog, "Cancel"); });
    cancelDialog();
    run();

    user->answers = {QString()}; // the file dialog
    choose("KIV System Manager (txt)");
    cancelDialog();
    run();

    user->answers = {QString(), QString(), QString()};
    choose("Cut File Eastman"); // two fabrics
    answerBox("There is no name for the file of Twill sand.", "Back");
    answerBox("There is no name for the file of Twill sand.", "Leave It Out");
    answerBox("There is no name for the file of Check lining.", "Stop the Export");
    cancelDialog();
    run();

    const QString directory = folder.path();
    CDbMarkerShareGlobales::instance()->setZentrimActif(true); // the optimisation prompt
    choose("Cut File ANSI");
    driver.then("QMessageBox", [](QWidget &box) { press(box, "Cancel"); });
    run();
    EXPECT_EQ(QDir(directory).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList());
}

TEST_F(ExportDialogTest, ADrawingBesideAZentrimViewIsAskedAboutAndLedToItsOwn)
{
    const auto addChild = [this](const QString &path) {
        auto *child = new MarkerChild(loadMarker(path), {});
        window.addMdiChild(child);
        return child;
    };
    addChild(kTshirt)->setZentrimView(true);
    MarkerChild &child = *addChild(kTrousers);
    const auto exportAnswering = [&](const QString &button, bool writes) {
        user->proposals.clear();
        user->answers = {};
        choose("Cut File ANSI");
        if (!button.isEmpty()) {
            driver.then("QMessageBox", [button](QWidget &box) { press(box, button); });
        }
        if (writes) {
            user->answers = {folder.path("a.cut"), folder.path("b.cut")};
            readReport();
        }
        runExportDialog(window, child.document(), *factory, {});
        QApplication::processEvents();
        EXPECT_TRUE(driver.isDone());
        return user->proposals;
    };
    const QStringList asTheyAre = exportAnswering("Continue", true);
    EXPECT_EQ(asTheyAre.size(), 2);
    EXPECT_EQ(exportAnswering("Cancel", false), QStringList());
    EXPECT_FALSE(child.isZentrimView());
    EXPECT_EQ(exportAnswering("Go to Zentrim View", false), QStringList());
    EXPECT_TRUE(child.isZentrimView());
    const QStringList optimised = exportAnswering(QString(), true);
    EXPECT_EQ(optimised.size(), 2);
    for (int i = 0; i < qMin(optimised.size(), asTheyAre.size()); ++i) {
        EXPECT_EQ(QFileInfo(optimised[i]).fileName(), "Zent" + QFileInfo(asTheyAre[i]).fileName());
    }
}

TEST_F(ExportDialogTest, CancelBetweenFilesKeepsThoseThatAreWritten)
{
    load(kTrousers);
    user->answers = {folder.path("a.cut"), folder.path("b.cut")};
    user->asked = [this] {
        if (user->proposals.size() == 1) {
            click(*QApplication::activeModalWidget(), "cancel");
        }
    };
    choose("Cut File ANSI");
    readReport();
    run();
    EXPECT_EQ(folder.contents(), QStringList("a.cut"));
    EXPECT_EQ(user->proposals.size(), 1);
    EXPECT_EQ(seen.files.size(), 1);
    EXPECT_EQ(seen.sentences, QStringList("The export was stopped: no more files were asked for."));
}

TEST_F(ExportDialogTest, ANameThatCannotBeWrittenIsToldInOneSentenceAndAskedForAgain)
{
    load(kTrousers);
    folder.write("file", "x");
    QDir().mkpath(folder.path("taken.cut"));
    const std::pair<QString, QString> refusals[] = {
        {"/proc/none/a.cut", "/proc/none: the directory cannot be made: No such file or directory"},
        {"/dev/full/a.cut", "/dev/full: is a file, expected a directory"},
        {folder.path("file/a.cut"), "file: is a file, expected a directory"},
        {folder.path("taken.cut"), "taken.cut: was not written: Is a directory"},
        {folder.path(QString(260, 'x')),
            QString(260, 'x') + ": was not written: File name too long"},
        {folder.path(".cut"),
            ".cut: was not written: a file needs a name before its first full stop"},
        {folder.path("./a.txt"), "a.txt: was not written: a file of this export has the same name"},
    };
    user->answers = {folder.path("a.txt")};
    choose("Cut File ANSI");
    for (const auto &[path, sentence] : refusals) {
        user->answers.push_back(path);
        answerBox(sentence, "OK");
    }
    user->answers.push_back(QString());
    answerBox("There is no name for the file of Check lining.", "Leave It Out");
    readReport();
    run();
    EXPECT_EQ(seen.files.size(), 1);
    EXPECT_EQ(seen.sentences, QStringList("Check lining: was left out."));
    EXPECT_EQ(folder.contents(), QStringList({"a.txt", "file", "taken.cut"}));
    EXPECT_TRUE(user->proposals.value(1).endsWith("Check lining.txt")) << "as the one before";
    EXPECT_EQ(user->proposals.value(2), "/proc/none/a.cut") << "to be mended";
}

TEST_F(ExportDialogTest, AnOlderFileIsReplacedAndStaysWhenTheExportFails)
{
    load(kTrousers);
    folder.write("a.txt", "old");
    user->answers = {folder.path("a.txt")};
    choose("KIV System Manager (txt)");
    readReport([](QWidget &dialog) { click(dialog, "open"); });
    run();
    EXPECT_NE(folder.read("a.txt"), "old");
    EXPECT_EQ(opened, QStringList("a.txt"));

    const QByteArray before = "old"; // behind a link, and to be read by its owner alone
    folder.write("real/a.cut", before);
    QFile::link(folder.path("real/a.cut"), folder.path("a.cut"));
    QFile::setPermissions(folder.path("real/a.cut"), QFile::ReadOwner | QFile::WriteOwner);
    user->answers = {folder.path("a.cut"), folder.path("b.cut")};
    user->asked = [this] { QDir().mkpath(folder.path("b.cut/in the way")); };
    choose("Cut File ANSI");
    user->answers.push_back(folder.path("c.cut"));
    answerBox("b.cut: was not written: Is a directory", "OK");
    driver.then("exportReport", [](QWidget &dialog) { click(dialog, "back"); });
    cancelDialog();
    run();
    EXPECT_EQ(QFileInfo(folder.path("a.cut")).symLinkTarget(), folder.path("real/a.cut"));
    EXPECT_FALSE(QFileInfo(folder.path("real/a.cut")).permissions() & QFile::ReadOther);
    const QByteArray now = folder.read("a.cut");
    EXPECT_NE(now, before);
    const Folder withoutData; // the format finds no description of its machine
    application.reset();
    auto owned = std::make_unique<ListedFiles>(&window);
    user = owned.get();
    application = std::make_unique<KivApplication>(std::move(owned), QDir(withoutData.path()));
    choose("Cut File ANSI");
    readReport();
    run();
    EXPECT_EQ(seen.sentences.size(), 1);
    EXPECT_TRUE(seen.sentences.value(0).contains("ANSI.xml")) << seen.sentences.join('|');
    EXPECT_EQ(folder.read("a.cut"), now);
}

TEST_F(ExportDialogTest, ATextFileWhoseFieldsHaveNoSeparatorIsRemarkedUpon)
{
    load(kTrousers);
    user->answers = {folder.path("a.txt")};
    choose(
        "Text File", [](QWidget &dialog) { in<QRadioButton>(dialog, "radioFiledOther").click(); });
    acceptFields();
    readReport();
    run();
    EXPECT_EQ(seen.files.size(), 1);
    EXPECT_TRUE(seen.sentences.value(0).startsWith("The fields have no separator"));
}

TEST_F(ExportDialogTest, ARefusedFabricFailsTheFormat)
{
    load(kTrousers);
    folder.write("a.cut", "old");
    user->answers = {folder.path("a.cut"), folder.path("b.cut")};
    choose("Cut File ANSI", [](QWidget &dialog) {
        in<QCheckBox>(dialog, "checkGenerate").setChecked(true);
        in<QLineEdit>(dialog, "editThreshold").setText("1 cm");
        in<QLineEdit>(dialog, "editCutterLengthX").setText("5 cm"); // no piece is so short
    });
    readReport();
    run();
    EXPECT_EQ(seen.files, QStringList());
    EXPECT_TRUE(seen.sentences.value(0).startsWith("Cut File ANSI: was not written: fabric "))
        << seen.sentences.join('|');
    EXPECT_EQ(folder.contents(), QStringList("a.cut"));
    EXPECT_EQ(folder.read("a.cut"), "old");
}

TEST_F(ExportDialogTest, WhatTheFormatSaysOfRepeatedNamesIsInTheReport)
{
    QByteArray marker = smallMarker(); // a second piece of the same name
    const int pieces = marker.indexOf("{\"name\": \"Front\"");
    const int end = marker.indexOf("]}]}", pieces) + 2;
    marker.insert(end, ", " + marker.mid(pieces, end - pieces));
    marker.replace("\"version\": 1,", "\"version\": 1, \"singleLayer\": 1,");
    load(folder.write("small.mar", marker));
    if (!findNestingFault(*document).isEmpty()) {
        GTEST_SKIP() << "groups were fused before, which a process can do once";
    }
    choose("DXF-NESTER");
    driver.then("QMessageBox", [](QWidget &box) { press(box, "OK"); });
    readReport();
    run();
    EXPECT_EQ(seen.files, QStringList());
    EXPECT_EQ(seen.sentences, QStringList("DXF-NESTER: was not written: Cannot export. One or more "
                                          "piece names are repeating."));
    EXPECT_EQ(folder.contents(), QStringList("small.mar"));
}

} // namespace
} // namespace KivSystem
