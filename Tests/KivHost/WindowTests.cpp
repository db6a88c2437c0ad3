// The main window, as a user works with it.

#include "Window/HostWindow.h"

#include "CommandLine.h"
#include "DialogDriver.h"
#include "PluginLoader.h"
#include "Window/MarkerItems.h"
#include "Window/PieceList.h"
#include "Window/WindowUserInterface.h"
#include "WindowTestSupport.h"

#include <QDropEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>
#include <QTreeWidget>
#include <QUrl>

#include <map>
#include <sstream>

namespace KivSystem {
namespace {

TEST_F(WindowTest, WhatCannotBeOpenedIsOneSentenceAndTheWindowGoesOn)
{
    folder.write("small.mar", smallMarker());
    QDir().mkpath(folder.path("folder.mar"));
    const struct
    {
        QString path;
        QString sentence; // how it begins, behind the file's name
    } cases[] = {
        {folder.path("none.mar"), ": there is no such file"},
        {folder.path("folder.mar"), ": is a directory"},
        {folder.write("broken.mar", smallMarker().left(300)), ": "},
        {folder.write("picture.png", "\x89PNG"), ": "},
        {folder.write("empty.mar", ""), ": "},
    };
    for (const auto &entry : cases) {
        user->warnings.clear();
        EXPECT_FALSE(window->openFile(entry.path)) << entry.path;
        ASSERT_EQ(user->warnings.size(), 1U) << entry.path;
        const QString message = user->warnings[0].message;
        EXPECT_TRUE(message.startsWith(entry.path + entry.sentence)) << message;
        EXPECT_FALSE(message.contains('\n')) << message;
    }
    EXPECT_TRUE(window->recentFiles().isEmpty());
    EXPECT_TRUE(window->mdiArea()->subWindowList().isEmpty());
    open(folder.path("small.mar"));
    EXPECT_EQ(window->activeMarker()->pieceList()->placedTree()->topLevelItemCount(), 1);
}

TEST_F(WindowTest, WithoutAPlugInNothingIsExported)
{
    open(kTshirt);
    EXPECT_FALSE(action("export").isEnabled());
    EXPECT_TRUE(action("export").toolTip().contains("plug-in"));
    window->setExporterFactory(&loadPlugin(QDir(QStringLiteral(KIV_BINARY_DIR "/bin/plugins"))));
    EXPECT_TRUE(action("export").isEnabled());
    close();
    EXPECT_FALSE(action("export").isEnabled()) << "there is no marker";
    EXPECT_FALSE(action("fit").isEnabled());
}

TEST_F(WindowTest, ExportAndSettingsOpenTheirDialogs)
{
    application.reset();
    KivApplication withWindow(std::make_unique<WindowUserInterface>(window.get()), QDir());
    window->setExporterFactory(&loadPlugin(QDir(QStringLiteral(KIV_BINARY_DIR "/bin/plugins"))));
    MarkerChild &child = open(kTshirt);
    for (const char *name : {"export", "settings"}) {
        DialogDriver driver;
        driver.then(QString(name) + "Dialog",
            [](QWidget &dialog) { static_cast<QDialog &>(dialog).reject(); });
        action(name).trigger();
        EXPECT_TRUE(driver.isDone()) << name;
    }
    EXPECT_EQ(window->activeMarker(), &child);

    // What the dialog stores is shown everywhere.
    QSettings().setValue("units/length", "mm");
    window->applySettings();
    EXPECT_TRUE(child.statusText().contains(" mm, ")) << child.statusText();
    QSettings().remove("units/length");
    window->applySettings();
    window->close();
}

TEST_F(WindowTest, RecentFilesAndTheWindowsStateSurviveARestart)
{
    open(kTshirt);
    open(kTrousers);
    open(kTshirt); // is there already: no second child
    EXPECT_EQ(window->mdiArea()->subWindowList().size(), 2);
    action("fillByStyle").trigger();
    action("pieceList").trigger();
    action("cascade").trigger();
    window->resize(777, 555);
    window->findChild<QToolBar *>("tools")->hide();
    QApplication::processEvents();
    // Not even a crash may lose what was chosen.
    EXPECT_EQ(QSettings().value("window/fill").toInt(), SceneOptions::ByStyle);
    EXPECT_EQ(QSettings().value("window/show_pieceList").toBool(), false);

    restart();
    EXPECT_EQ(window->recentFiles(), (QStringList{kTrousers, kTshirt}));
    EXPECT_EQ(window->size(), QSize(777, 555));
    EXPECT_TRUE(window->findChild<QToolBar *>("tools")->isHidden());
    EXPECT_TRUE(action("fillByStyle").isChecked());
    EXPECT_EQ(window->mdiArea()->viewMode(), QMdiArea::SubWindowView);
    const MarkerChild &child = open(kTshirt);
    EXPECT_TRUE(child.pieceList()->isHidden());
    EXPECT_EQ(window->recentFiles().first(), kTshirt);
    for (int i = 0; i < 12; ++i) {
        open(folder.write(QString("%1.mar").arg(i), smallMarker()));
    }
    EXPECT_EQ(window->recentFiles().size(), 10);
    EXPECT_EQ(window->recentFiles().first(), folder.path("11.mar"));
}

TEST_F(WindowTest, FilesOfOneNameAreToldApartByTheirFolders)
{
    QDir().mkpath(folder.path("run2/a"));
    QDir().mkpath(folder.path("run3/a"));
    const QStringList paths = {folder.write("a.mar", smallMarker()),
        folder.write("run2/a/a.mar", smallMarker()), folder.write("run3/a/a.mar", smallMarker())};
    const auto titles = [this] {
        QStringList all;
        const QTabBar *tabs = window->mdiArea()->findChild<QTabBar *>();
        for (int i = 0; i < tabs->count(); ++i) {
            all.append(tabs->tabText(i) + (tabs->tabToolTip(i).startsWith('/') ? "" : " no path"));
        }
        return all;
    };
    open(paths[0]);
    EXPECT_EQ(titles(), QStringList("a.mar"));
    open(paths[1]);
    open(paths[2]);
    const QString top = QDir(folder.path()).dirName();
    EXPECT_EQ(titles(), (QStringList{"a.mar (" + top + ")", "a.mar (run2/a)", "a.mar (run3/a)"}));
    action("reload").trigger();
    EXPECT_EQ(titles().last(), "a.mar (run3/a)");
    close();
    EXPECT_EQ(titles(), (QStringList{"a.mar (" + top + ")", "a.mar (a)"}));
    close();
    EXPECT_EQ(titles(), QStringList("a.mar"));
}

TEST_F(WindowTest, AnExportedFileIsShownAsItIsNow)
{
    const auto rows = [this] {
        return window->activeMdiChild()->findChild<QTableView *>()->model()->rowCount();
    };
    const QString path = folder.write("a.txt", "a\tb\n");
    ASSERT_TRUE(window->openFile(path));
    EXPECT_EQ(rows(), 1);
    folder.write("a.txt", "a\tb\nc\td\n");
    ASSERT_TRUE(window->openFile(path)); // from the report of the next export
    EXPECT_EQ(rows(), 2);
    folder.write("a.txt", "a\tb\nc\td\ne\tf\n");
    action("reload").trigger();
    EXPECT_EQ(rows(), 3);
    EXPECT_EQ(window->mdiArea()->subWindowList().size(), 1);
    const QString other = folder.write("a.xyz", "abc");
    EXPECT_FALSE(window->openFile(other));
    EXPECT_EQ(user->warnings.back().message, other + ": is neither a marker nor an exported file");
}

TEST_F(WindowTest, FilesAreDroppedOnTheWindow)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(kTshirt), QUrl::fromLocalFile(kTrousers),
        QUrl("https://example.org/a.mar")});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
    EXPECT_EQ(window->mdiArea()->subWindowList().size(), 2);
    EXPECT_TRUE(user->warnings.empty());
}

TEST_F(WindowTest, EveryActionHasAKeyAndAToolTipAndNoKeyTwice)
{
    QStringList keys;
    for (const QAction *entry : window->findChildren<QAction *>()) {
        if (entry->objectName().isEmpty() || entry->isSeparator()) {
            continue; // of the tool bar itself
        }
        EXPECT_TRUE(entry->text().contains('&')) << entry->text();
        EXPECT_FALSE(entry->shortcut().isEmpty()) << entry->text();
        EXPECT_NE(entry->toolTip(), entry->text().remove('&')) << entry->text();
        EXPECT_FALSE(keys.contains(entry->shortcut().toString())) << entry->text();
        keys.append(entry->shortcut().toString());
    }
    EXPECT_GT(keys.size(), 20);
}

TEST_F(WindowTest, NoMnemonicIsThereTwice)
{
    const QString cutFile = KIV_SOURCE_DIR "/Tests/Golden/cut_ansi/tshirt/ZentRib 1x1.cut";
    const QString report = KIV_SOURCE_DIR "/Tests/Golden/txt/tshirt/tshirt.txt";
    for (const QString &path : {QString(), kTshirt, cutFile, report}) {
        ASSERT_TRUE(path.isEmpty() || window->openFile(path)) << path;
        std::map<const QMenu *, QStringList> texts; // null: the menu bar, and what is in front
        for (const QAction *title : window->menuBar()->actions()) {
            texts[nullptr].append(title->text());
        }
        for (const QLabel *label : window->mdiArea()->findChildren<QLabel *>()) {
            texts[nullptr].append(label->buddy() && label->isVisible() ? label->text() : QString());
        }
        for (const QTabWidget *tabs : window->mdiArea()->findChildren<QTabWidget *>()) {
            for (int i = 0; tabs->isVisible() && i < tabs->count(); ++i) {
                texts[nullptr].append(tabs->tabText(i));
            }
        }
        for (QMenu *menu : window->findChildren<QMenu *>()) {
            emit menu->aboutToShow(); // some are filled now
            for (const QAction *entry : menu->actions()) {
                texts[menu].append(entry->text());
            }
        }
        for (const auto &[menu, entries] : texts) {
            QStringList keys;
            for (const QString &text : entries) {
                keys.append(QKeySequence::mnemonic(text).toString());
            }
            keys.removeAll(QString());
            EXPECT_EQ(keys.removeDuplicates(), 0) << path << (menu ? menu->title() : QString());
        }
    }
}

TEST(WindowCommandLine, FilesInPlaceOfAVerbAreForTheWindow)
{
    const Folder folder;
    const QByteArray odd = folder.write("notes", "x").toUtf8();
    const struct
    {
        std::vector<const char *> arguments;
        bool window;
        QStringList files;
    } cases[] = {
        {{}, true, {}},
        {{"a.mar"}, true, {"a.mar"}},
        {{"a.cut", "b.DXF", "-c.ai"}, false, {}}, // -c.ai is an option that there is not
        {{"a.cut", "b.DXF", "notes"}, true, {"a.cut", "b.DXF", "notes"}},
        {{"--", "-c.ai"}, true, {"-c.ai"}},
        {{"--plugins", "info", "a.txt"}, true, {"a.txt"}},
        {{odd.constData()}, true, {QString::fromUtf8(odd)}},
        {{"fly"}, false, {}},
        {{"info"}, false, {}},
        {{"info", "a.mar"}, false, {}},
    };
    for (const auto &entry : cases) {
        std::vector<const char *> arguments = {"kivhost"};
        arguments.insert(arguments.end(), entry.arguments.begin(), entry.arguments.end());
        std::ostringstream out;
        const CommandLine line =
            parseCommandLine(static_cast<int>(arguments.size()), arguments.data(), out, out);
        const auto *window = std::get_if<WindowOptions>(&line.verb);
        EXPECT_EQ(window != nullptr && !line.exitStatus, entry.window) << arguments.back();
        EXPECT_EQ(window != nullptr ? window->files : QStringList(), entry.files)
            << arguments.back() << out.str();
    }

    // Nothing opens where nothing can be seen.
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    const QByteArray display = qgetenv("DISPLAY");
    qunsetenv("QT_QPA_PLATFORM");
    qunsetenv("DISPLAY");
    const char *const arguments[] = {"kivhost", "a.mar"};
    for (const int count : {1, 2}) {
        std::ostringstream out;
        EXPECT_EQ(parseCommandLine(count, arguments, out, out).exitStatus, int(ExitWrongUsage));
    }
    qputenv("QT_QPA_PLATFORM", platform);
    if (!display.isEmpty()) {
        qputenv("DISPLAY", display);
    }
}

} // namespace
} // namespace KivSystem
