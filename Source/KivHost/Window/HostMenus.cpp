// The menus and the tool bar of the main window.

#include "HostWindow.h"
#include "MarkerChild.h"
#include "MarkerView.h"
#include "WindowIcons.h"
#include "WindowText.h"
#include "ZoomableView.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QToolBar>

namespace KivSystem {

namespace {

constexpr double kZoomStep = 1.5;

const char *const kFillKey = "window/fill";

QString optionKey(const QAction &action)
{
    return QStringLiteral("window/show_%1").arg(action.objectName());
}

QMenu *addMenu(QMainWindow &window, const char *text)
{
    QMenu *menu = window.menuBar()->addMenu(windowText(text));
    menu->setToolTipsVisible(true);
    return menu;
}

} // namespace

QAction *HostWindow::addCommand(QMenu *menu, const char *name, const char *text,
    const char *shortcut, const char *tip, const std::function<void()> &run)
{
    QAction *action = menu->addAction(windowText(text));
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(QKeySequence(QString::fromLatin1(shortcut)));
    action->setToolTip(windowText(tip));
    action->setStatusTip(action->toolTip());
    action->setIcon(toolIcon(action->objectName(), palette()));
    connect(action, &QAction::triggered, this, [run] { run(); });
    return action;
}

QAction *HostWindow::addMarkerCommand(QMenu *menu, const char *name, const char *text,
    const char *shortcut, const char *tip, const MarkerCommand &run)
{
    QAction *action = addCommand(menu, name, text, shortcut, tip, [this, run] {
        if (MarkerChild *marker = activeMarker()) {
            run(*marker);
        }
    });
    m_markerActions.push_back(action);
    return action;
}

// Something that all markers show or hide, as the user chose last.
QAction *HostWindow::addShowOption(QMenu *menu, const char *name, const char *text,
    const char *shortcut, const char *tip, bool byDefault)
{
    QAction *action = addCommand(menu, name, text, shortcut, tip, [] {});
    action->setCheckable(true);
    action->setChecked(QSettings().value(optionKey(*action), byDefault).toBool());
    connect(action, &QAction::toggled, this, [this, action](bool checked) {
        QSettings().setValue(optionKey(*action), checked);
        applyViewOptions();
    });
    return action;
}

void HostWindow::makeFileMenu()
{
    QMenu *menu = addMenu(*this, "&File");
    addCommand(menu, "open", "&Open...", "Ctrl+O", "Open markers and exported files",
        [this] { chooseFiles(); });
    m_recentMenu = menu->addMenu(windowText("Open &Recent"));
    m_recentMenu->setToolTipsVisible(true);
    m_recentMenu->menuAction()->setToolTip(windowText("Files that were open before"));
    fillRecentMenu();
    m_close = addCommand(menu, "close", "&Close", "Ctrl+W", "Close the file in front",
        [this] { mdiArea()->closeActiveSubWindow(); });
    m_close->setShortcuts({m_close->shortcut(), QKeySequence(QStringLiteral("Ctrl+F4"))});
    menu->addSeparator();
    m_export = addCommand(menu, "export", "&Export...", "Ctrl+E",
        "Write the marker in other formats", [this] { exportMarker(); });
    menu->addSeparator();
    addCommand(
        menu, "quit", "&Quit", "Ctrl+Q", "Close all files and the window", [this] { close(); });
}

void HostWindow::makeEditMenu()
{
    QMenu *menu = addMenu(*this, "&Edit");
    addMarkerCommand(menu, "selectAll", "Select &All", "Ctrl+A", "Select all pieces of the fabric",
        [](MarkerChild &marker) { marker.selectAll(true); });
    addMarkerCommand(menu, "selectNone", "Select &None", "Esc", "Select no piece",
        [](MarkerChild &marker) { marker.selectAll(false); });
    addMarkerCommand(menu, "find", "&Find Piece", "Ctrl+F",
        "List the pieces with some words in their name, size or style",
        [this](MarkerChild &marker) {
            m_pieceList->setChecked(true);
            marker.findPiece();
        });
    menu->addSeparator();
    addCommand(menu, "settings", "&Settings...", "Ctrl+,",
        "Units, language, and what the formats obey", [this] { editSettings(); });
}

void HostWindow::addFillChoice(QMenu *menu)
{
    const struct
    {
        SceneOptions::Fill fill;
        const char *name;
        const char *text;
        const char *shortcut;
        const char *tip;
    } choices[] = {
        {SceneOptions::ByColour, "fillByColour", "Fill by &Colour", "Ctrl+1",
            "Fill pieces with their colours in the marker"},
        {SceneOptions::ByStyle, "fillByStyle", "Fill by S&tyle", "Ctrl+2",
            "Fill the pieces of a style with one colour"},
        {SceneOptions::BySize, "fillBySize", "Fill by &Size", "Ctrl+3",
            "Fill the pieces of a size with one colour"},
    };
    m_fill = new QActionGroup(this);
    const int stored = QSettings().value(QLatin1String(kFillKey), SceneOptions::BySize).toInt();
    for (const auto &choice : choices) {
        const int fill = choice.fill;
        QAction *action =
            addCommand(menu, choice.name, choice.text, choice.shortcut, choice.tip, [this, fill] {
                QSettings().setValue(QLatin1String(kFillKey), fill);
                applyViewOptions();
            });
        action->setCheckable(true);
        action->setData(fill);
        action->setChecked(fill == stored);
        m_fill->addAction(action);
    }
    if (m_fill->checkedAction() == nullptr) { // the store holds what is no choice
        m_fill->actions().constLast()->setChecked(true);
    }
}

void HostWindow::makeViewMenu()
{
    QMenu *menu = addMenu(*this, "&View");
    QAction *zoomIn = addCommand(menu, "zoomIn", "Zoom &In", "Ctrl++", "Show less, but larger",
        [this] { activeView()->zoomBy(kZoomStep); });
    zoomIn->setShortcuts({zoomIn->shortcut(), QKeySequence(QStringLiteral("Ctrl+="))});
    addCommand(menu, "zoomOut", "Zoom &Out", "Ctrl+-", "Show more, but smaller",
        [this] { activeView()->zoomBy(1 / kZoomStep); });
    addCommand(menu, "fit", "&Fit", "F", "Show all that there is", [this] { activeView()->fit(); });
    addMarkerCommand(menu, "fitSelection", "Fit Se&lection", "Shift+F",
        "Show what is selected as large as it fits",
        [](MarkerChild &marker) { marker.fitSelection(); });
    menu->addSeparator();
    addFillChoice(menu);
    menu->addSeparator();
    addShowOption(menu, "texts", "T&exts", "Ctrl+T", "Show names, sizes and texts", true);
    addShowOption(menu, "notches", "&Notches and Marks", "Ctrl+Shift+N",
        "Show notches and drill marks", true);
    addShowOption(menu, "guideLines", "&Guide Lines", "Ctrl+G", "Show guide lines", true);
    m_pieceList = addShowOption(
        menu, "pieceList", "&Piece List", "F4", "Show the list of pieces beside the drawing", true);
    menu->addSeparator();
    m_zentrim = addMarkerCommand(menu, "zentrim", "&Zentrim View", "F9",
        "Show the fabric as it will be cut; exports then count as optimised",
        [](MarkerChild &marker) { marker.setZentrimView(!marker.isZentrimView()); });
    m_zentrim->setCheckable(true);
}

void HostWindow::makeMarkerMenu()
{
    QMenu *menu = addMenu(*this, "&Marker");
    const auto step = [](short by) {
        return [by](MarkerChild &marker) {
            marker.showFabric(static_cast<short>(marker.fabric() + by));
        };
    };
    addMarkerCommand(
        menu, "nextFabric", "&Next Fabric", "Ctrl+PgDown", "Show the next fabric", step(1));
    addMarkerCommand(menu, "previousFabric", "&Previous Fabric", "Ctrl+PgUp",
        "Show the fabric before this one", step(-1));
    menu->addSeparator();
    addCommand(menu, "reload", "&Reload", "F5", "Read the file again", [this] { reload(); });
}

void HostWindow::makeWindowMenu()
{
    m_windowMenu = addMenu(*this, "&Window");
    addCommand(m_windowMenu, "tabs", "Ta&bs", "Ctrl+Shift+T", "Show one file at a time, with tabs",
        [this] { arrange(Arrangement::Tabs); });
    addCommand(m_windowMenu, "tile", "&Tile", "Ctrl+Shift+L", "Show all files beside each other",
        [this] { arrange(Arrangement::Tiles); });
    addCommand(m_windowMenu, "cascade", "&Cascade", "Ctrl+Shift+C",
        "Show the files one over the other", [this] { arrange(Arrangement::Cascade); });
    m_windowMenu->addSeparator();
    addCommand(m_windowMenu, "nextWindow", "&Next", "Ctrl+F6", "Go to the next file", [this] {
        mdiArea()->activateNextSubWindow();
        focusChild();
    });
    addCommand(m_windowMenu, "previousWindow", "&Previous", "Ctrl+Shift+F6",
        "Go to the file before", [this] {
            mdiArea()->activatePreviousSubWindow();
            focusChild();
        });
    addCommand(m_windowMenu, "closeAll", "Close &All", "Ctrl+Shift+W", "Close all files",
        [this] { mdiArea()->closeAllSubWindows(); });
    m_windowMenu->addSeparator();
    m_fixedWindowActions = m_windowMenu->actions().size();
    connect(m_windowMenu, &QMenu::aboutToShow, this, [this] { fillWindowMenu(); });
}

void HostWindow::makeHelpMenu()
{
    QMenu *menu = addMenu(*this, "&Help");
    addCommand(
        menu, "about", "&About kivhost", "F1", "What this program is", [this] { showAbout(); });
    addCommand(menu, "aboutQt", "About &Qt", "Ctrl+F1", "The library behind the window",
        [] { QApplication::aboutQt(); });
}

void HostWindow::makeToolBar()
{
    QToolBar *bar = addToolBar(windowText("Tools"));
    bar->setObjectName(QStringLiteral("tools"));
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const char *const names[] = {
        "open", "export", "", "zoomIn", "zoomOut", "fit", "", "pieceList", "zentrim"};
    for (const char *name : names) {
        if (*name == '\0') {
            bar->addSeparator();
        } else {
            bar->addAction(findChild<QAction *>(QString::fromLatin1(name)));
        }
    }
    connect(bar, &QToolBar::visibilityChanged, this, [this] { m_storeTimer.start(); });
    connect(bar, &QToolBar::topLevelChanged, this, [this] { m_storeTimer.start(); });
}

SceneOptions HostWindow::viewOptions() const
{
    const auto isShown = [this](const char *name) {
        return findChild<QAction *>(QString::fromLatin1(name))->isChecked();
    };
    SceneOptions options;
    options.fill = static_cast<SceneOptions::Fill>(m_fill->checkedAction()->data().toInt());
    options.texts = isShown("texts");
    options.notches = isShown("notches");
    options.guideLines = isShown("guideLines");
    return options;
}

void HostWindow::applyViewOptions()
{
    const SceneOptions options = viewOptions();
    for (QMdiSubWindow *subWindow : mdiArea()->subWindowList()) {
        if (auto *marker = qobject_cast<MarkerChild *>(subWindow->widget())) {
            marker->setOptions(options);
            marker->showPieceList(m_pieceList->isChecked());
        }
    }
}

void HostWindow::showAbout()
{
    QMessageBox::about(this, windowText("About kivhost"),
        windowText("<b>kivhost %1</b><p>Shows markers, and exports them through the plug-ins of "
                   "the marker making application.</p>"
                   "<p>The wheel zooms; the middle button, or the left one with the space key, "
                   "moves the drawing; a drag with the left button selects pieces.</p>")
            .arg(QStringLiteral(KIV_VERSION)));
}

} // namespace KivSystem
