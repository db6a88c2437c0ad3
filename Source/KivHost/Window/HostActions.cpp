// What the main window does with the help of others: it opens markers and views exported files,
// runs the dialogs, and starts up.

#include "Console.h"
#include "ExportDialog.h"
#include "HostSettings.h"
#include "HostTranslations.h"
#include "HostWindow.h"
#include "KivCore/Application.h"
#include "KivCore/Init.h"
#include "KivMarker/Document.h"
#include "MarkerChild.h"
#include "PluginLoader.h"
#include "SettingsDialog.h"
#include "Verbs.h"
#include "Viewer/CutFileChild.h"
#include "Viewer/Viewer.h"
#include "WindowText.h"
#include "WindowUserInterface.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QSettings>

namespace KivSystem {

namespace {

constexpr int kStartSize = 4096;
const char *const kDirectoryKey = "window/open_directory";

void warn(const QString &sentence, QWidget *parent)
{
    KivApplication::instance()->displayWarning(sentence, QStringLiteral("kivhost"), parent);
}

// Calls the action, and tells the user what spoke against it.
bool runWarning(QWidget *parent, const std::function<void()> &action)
{
    try {
        action();
        return true;
    } catch (const HostError &error) {
        warn(error.sentence(), parent);
    } catch (const std::bad_alloc &) {
        warn(windowText("There is not enough memory."), parent);
    } catch (const std::exception &error) {
        warn(windowText("Unexpected failure: %1").arg(QString::fromUtf8(error.what())), parent);
    }
    return false;
}

bool isMarkerName(const QString &path)
{
    return QFileInfo(path).suffix().compare(QLatin1String("mar"), Qt::CaseInsensitive) == 0;
}

// A file of another kind is told as such, and not by what a marker's reader stumbles upon.
void requireMarkerFile(const QString &path)
{
    QFile file(path);
    const bool isOther = !isMarkerName(path) && QFileInfo(path).isFile() &&
                         file.open(QIODevice::ReadOnly) &&
                         !file.read(kStartSize).trimmed().startsWith('{');
    if (isOther) {
        throw HostError(
            ExitUnreadable, windowText("%1: is neither a marker nor an exported file").arg(path));
    }
}

// As on the desktop, also for a program that is not installed.
QIcon programIcon()
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128}) {
        icon.addFile(QStringLiteral(":/kivhost/%1.png").arg(side));
    }
    return icon;
}

} // namespace

bool HostWindow::openFile(const QString &path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    if (activateChildOf(absolute)) {
        return true;
    }
    return runWarning(this, [&] {
        if (!isMarkerName(absolute) && QFileInfo(absolute).isFile() && canView(absolute)) {
            addChild(makeViewer(absolute).release(), absolute);
        } else {
            requireMarkerFile(absolute);
            addChild(new MarkerChild(loadMarker(absolute), viewOptions()), absolute);
        }
    });
}

void HostWindow::chooseFiles()
{
    QSettings settings;
    const QStringList paths = QFileDialog::getOpenFileNames(this, windowText("Open"),
        settings.value(QLatin1String(kDirectoryKey)).toString(),
        windowText("Markers and exported files (*.mar *.cut *.dxf *.ai *.txt);;Markers (*.mar);;"
                   "All files (*)"));
    if (!paths.isEmpty()) {
        settings.setValue(
            QLatin1String(kDirectoryKey), QFileInfo(paths.constFirst()).absolutePath());
    }
    for (const QString &path : paths) {
        openFile(path);
    }
}

void HostWindow::exportMarker()
{
    const QPointer<MarkerChild> marker = activeMarker();
    if (!marker || m_factory == nullptr) {
        return;
    }
    runWarning(this, [&] {
        runExportDialog(
            *this, marker->document(), *m_factory, [this](const QString &path) { openFile(path); });
    });
    if (marker) {
        marker->refresh(); // how it will be cut may have changed, and groups may have been fused
    }
}

// A file that cannot be read any more leaves the child as it was.
void HostWindow::reload()
{
    MarkerChild *marker = activeMarker();
    QMdiSubWindow *subWindow = mdiArea()->currentSubWindow();
    if (marker != nullptr) {
        runWarning(this, [&] { marker->setDocument(loadMarker(marker->path())); });
    } else if (subWindow != nullptr) {
        runWarning(this,
            [&] { replaceChild(*subWindow, makeViewer(subWindow->property("path").toString())); });
    }
}

void HostWindow::editSettings()
{
    if (runSettingsDialog(this)) {
        applySettings();
    }
}

void HostWindow::applySettings()
{
    QString problems;
    {
        QTextStream stream(&problems);
        const Console console{stream, stream};
        dropStoredFaults(console);
        applyConventions(console);
        restoreMarkerSettings(console);
    }
    for (QMdiSubWindow *subWindow : mdiArea()->subWindowList()) {
        if (auto *marker = qobject_cast<MarkerChild *>(subWindow->widget())) {
            marker->refresh();
        } else if (auto *cutFile = qobject_cast<CutFileChild *>(subWindow->widget())) {
            cutFile->refresh();
        }
    }
    if (!problems.isEmpty()) {
        problems.remove(QStringLiteral("kivhost: ")); // the window says that it is speaking
        warn(windowText("Settings that cannot be read have their defaults again:") +
                 QLatin1Char('\n') + problems.trimmed(),
            this);
    }
}

int runWindow(const WindowOptions &options, const QString &plugins)
{
    const QDir directory = pluginsDirectory(plugins);
    installTranslations(directory, chosenLanguage());
    QGuiApplication::setDesktopFileName(QStringLiteral("kivhost"));
    QApplication::setWindowIcon(programIcon());
    HostWindow window;
    KivApplication application(std::make_unique<WindowUserInterface>(&window), directory);
    KivInit::instance()->run(KivInit::StageAfterQt);
    window.show();
    window.applySettings();
    runWarning(&window, [&] { window.setExporterFactory(&loadPlugin(directory)); });
    for (const QString &file : options.files) {
        window.openFile(file);
    }
    window.restoreArrangement();
    return QApplication::exec();
}

} // namespace KivSystem
