#include "HostWindow.h"

#include "KivCore/Application.h"
#include "MarkerChild.h"
#include "WindowText.h"
#include "ZoomableView.h"

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QDateTime>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QTabBar>
#include <QUrl>

#include <algorithm>

namespace KivSystem {

namespace {

constexpr int kRecentFiles = 10;
constexpr int kStoreDelay = 400; // ms after the last move
constexpr int kFirstWidth = 1200;
constexpr int kFirstHeight = 760;
constexpr int kLeastWidth = 320;
constexpr int kLeastHeight = 200;

const char *const kRecentKey = "window/recent_files";
const char *const kGeometryKey = "window/geometry";
const char *const kStateKey = "window/state";
const char *const kArrangementKey = "window/arrangement";

// An ampersand in a file's name is no mnemonic.
QString menuText(int number, const QString &text)
{
    QString shown = text;
    shown.replace(QLatin1Char('&'), QLatin1String("&&"));
    return number < 10 ? QStringLiteral("&%1  %2").arg(number).arg(shown)
                       : QStringLiteral("%1  %2").arg(number).arg(shown);
}

// Differs when the file was written anew.
QString stateOf(const QString &path)
{
    const QFileInfo file(path);
    return QStringLiteral("%1 %2").arg(file.size()).arg(file.lastModified().toMSecsSinceEpoch());
}

// The name of a file with so many of its folders.
QString nameWithFolders(const QString &path, int count)
{
    const QFileInfo file(path);
    const QStringList folders = file.path().split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const QString shown = folders.mid(std::max(folders.size() - count, 0)).join(QLatin1Char('/'));
    return count == 0 ? file.fileName() : QStringLiteral("%1 (%2)").arg(file.fileName(), shown);
}

// The name, with the folders that it takes to tell the file from the others.
QString titleOf(const QString &path, const QStringList &others)
{
    const int most = path.count(QLatin1Char('/'));
    int count = 0;
    const auto isSame = [&](const QString &other) {
        return nameWithFolders(other, count) == nameWithFolders(path, count);
    };
    while (count < most && std::any_of(others.begin(), others.end(), isSame)) {
        ++count;
    }
    return nameWithFolders(path, count);
}

} // namespace

HostWindow::HostWindow(QWidget *parent) : MainWindow(parent)
{
    setObjectName(QStringLiteral("hostWindow"));
    setWindowTitle(QStringLiteral("kivhost"));
    setAcceptDrops(true);
    mdiArea()->setTabsClosable(true);
    mdiArea()->setTabsMovable(true);
    mdiArea()->setDocumentMode(true);
    makeFileMenu();
    makeEditMenu();
    makeViewMenu();
    makeMarkerMenu();
    makeWindowMenu();
    makeHelpMenu();
    makeToolBar();
    statusBar()->setSizeGripEnabled(true);
    connect(mdiArea(), &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow *) {
        nameChildren();
        updateActions();
    });
    m_storeTimer.setSingleShot(true);
    m_storeTimer.setInterval(kStoreDelay);
    connect(&m_storeTimer, &QTimer::timeout, this, [this] { storeWindow(); });
    restoreWindow();
    updateActions();
}

HostWindow::~HostWindow()
{
    // The area and its children go when this class is gone already.
    mdiArea()->disconnect(this);
    for (QMdiSubWindow *subWindow : mdiArea()->subWindowList()) {
        subWindow->disconnect(this);
    }
}

void HostWindow::setExporterFactory(ExporterFactory *factory)
{
    m_factory = factory;
    updateActions();
}

MarkerChild *HostWindow::activeMarker() const
{
    return qobject_cast<MarkerChild *>(activeMdiChild());
}

ZoomableView *HostWindow::activeView() const
{
    const MdiChild *child = activeMdiChild();
    for (QWidget *part : child ? child->findChildren<QWidget *>() : QList<QWidget *>()) {
        if (auto *view = dynamic_cast<ZoomableView *>(part)) {
            return view;
        }
    }
    return nullptr;
}

QStringList HostWindow::recentFiles() const
{
    return QSettings().value(QLatin1String(kRecentKey)).toStringList();
}

bool HostWindow::activateChildOf(const QString &path)
{
    for (QMdiSubWindow *subWindow : mdiArea()->subWindowList()) {
        // One that is closed goes with the next event.
        if (!subWindow->isHidden() && subWindow->property("path").toString() == path) {
            mdiArea()->setActiveSubWindow(subWindow);
            // What was exported anew must not be shown as it was; a marker waits for its F5.
            const bool isOld = subWindow->property("state").toString() != stateOf(path);
            if (isOld && activeMarker() == nullptr) {
                reload();
            }
            return true;
        }
    }
    return false;
}

void HostWindow::replaceChild(QMdiSubWindow &subWindow, std::unique_ptr<MdiChild> child)
{
    const std::unique_ptr<QWidget> old(subWindow.widget());
    subWindow.setWidget(nullptr);
    child->setMinimumSize(kLeastWidth, kLeastHeight);
    MdiChild *shown = child.release();
    subWindow.setWidget(shown);
    shown->show();
    shown->setFocus();
    subWindow.setProperty("state", stateOf(subWindow.property("path").toString()));
    nameChildren();
    updateActions();
}

void HostWindow::addChild(MdiChild *child, const QString &path)
{
    child->setMinimumSize(kLeastWidth, kLeastHeight); // one that asks for more widens the window
    addMdiChild(child);
    QMdiSubWindow *subWindow = mdiArea()->currentSubWindow();
    subWindow->setProperty("path", path);
    subWindow->setProperty("state", stateOf(path));
    for (QAction *action : subWindow->systemMenu()->actions()) {
        action->setShortcut(QKeySequence()); // two actions of one key do nothing at all
    }
    if (mdiArea()->viewMode() == QMdiArea::SubWindowView &&
        mdiArea()->subWindowList().size() == 1) {
        subWindow->showMaximized();
    }
    connect(subWindow, &QMdiSubWindow::windowStateChanged, this, [this] { updateActions(); });
    if (auto *marker = qobject_cast<MarkerChild *>(child)) {
        connect(marker, &MarkerChild::zentrimViewChanged, this, [this] { updateActions(); });
        marker->showPieceList(m_pieceList->isChecked());
    }
    addRecentFile(path);
    nameChildren();
    updateActions();
    child->setFocus();
}

// Again whenever one comes or goes.
void HostWindow::nameChildren()
{
    const QList<QMdiSubWindow *> subWindows = mdiArea()->subWindowList();
    QStringList paths;
    for (const QMdiSubWindow *subWindow : subWindows) {
        // One that is closed goes with the next event.
        paths.append(subWindow->isHidden() ? QString() : subWindow->property("path").toString());
    }
    QTabBar *tabs = mdiArea()->findChild<QTabBar *>(QString(), Qt::FindDirectChildrenOnly);
    for (int i = 0; i < paths.size(); ++i) {
        if (paths[i].isEmpty()) {
            continue;
        }
        QStringList others = paths;
        others.removeAt(i);
        subWindows[i]->setWindowTitle(titleOf(paths[i], others));
        if (tabs != nullptr) {
            tabs->setTabToolTip(i, paths[i]);
        }
    }
}

void HostWindow::addRecentFile(const QString &path)
{
    QStringList files = recentFiles();
    files.removeAll(path);
    files.prepend(path);
    QSettings().setValue(QLatin1String(kRecentKey), QStringList(files.mid(0, kRecentFiles)));
    fillRecentMenu();
}

void HostWindow::fillRecentMenu()
{
    m_recentMenu->clear();
    int number = 0;
    const QStringList files = recentFiles();
    for (const QString &path : files) {
        QStringList others = files;
        others.removeAll(path);
        QAction *action = m_recentMenu->addAction(
            menuText(++number, titleOf(path, others)), this, [this, path] { openFile(path); });
        action->setToolTip(path);
        action->setStatusTip(path);
    }
    m_recentMenu->setEnabled(number > 0);
}

void HostWindow::fillWindowMenu()
{
    const QList<QAction *> actions = m_windowMenu->actions();
    for (int i = m_fixedWindowActions; i < actions.size(); ++i) {
        delete actions[i]; // one that this function added
    }
    int number = 0;
    for (QMdiSubWindow *subWindow : mdiArea()->subWindowList()) {
        QAction *action = m_windowMenu->addAction(menuText(++number, subWindow->windowTitle()),
            this, [this, subWindow] { mdiArea()->setActiveSubWindow(subWindow); });
        action->setCheckable(true);
        action->setChecked(subWindow == mdiArea()->currentSubWindow());
        action->setToolTip(subWindow->property("path").toString());
    }
}

// The area makes its bar of tabs anew each time, and many tiles would make the window grow.
void HostWindow::arrange(Arrangement arrangement)
{
    const QSize before = size();
    m_arrangement = arrangement;
    mdiArea()->setViewMode(
        arrangement == Arrangement::Tabs ? QMdiArea::TabbedView : QMdiArea::SubWindowView);
    for (QTabBar *tabs : mdiArea()->findChildren<QTabBar *>()) {
        tabs->setExpanding(false);
    }
    if (arrangement == Arrangement::Tiles) {
        mdiArea()->tileSubWindows();
    } else if (arrangement == Arrangement::Cascade) {
        mdiArea()->cascadeSubWindows();
    }
    if (!isMaximized() && !isFullScreen()) {
        resize(before);
    }
    nameChildren();
    m_storeTimer.start();
}

void HostWindow::focusChild()
{
    if (MdiChild *child = activeMdiChild()) {
        child->setFocus();
    }
}

void HostWindow::updateActions()
{
    MarkerChild *const marker = activeMarker();
    for (QAction *action : m_markerActions) {
        action->setEnabled(marker != nullptr);
    }
    for (const char *name : {"zoomIn", "zoomOut", "fit"}) {
        findChild<QAction *>(QLatin1String(name))->setEnabled(activeView() != nullptr);
    }
    findChild<QAction *>(QStringLiteral("reload"))->setEnabled(activeMdiChild() != nullptr);
    const bool isZentrim = marker != nullptr && marker->isZentrimView();
    for (const char *name : {"selectAll", "selectNone", "find", "fitSelection"}) {
        findChild<QAction *>(QLatin1String(name))->setEnabled(marker != nullptr && !isZentrim);
    }
    // The Zentrim view has nothing of these.
    for (const char *name : {"fillByColour", "fillByStyle", "fillBySize", "guideLines"}) {
        findChild<QAction *>(QLatin1String(name))->setEnabled(!isZentrim);
    }
    m_export->setEnabled(marker != nullptr && m_factory != nullptr);
    m_export->setToolTip(m_factory != nullptr ? windowText("Write the marker in other formats")
                                              : windowText("The plug-in that exports is missing"));
    m_export->setStatusTip(m_export->toolTip());
    m_close->setEnabled(activeMdiChild() != nullptr);
    m_zentrim->setChecked(isZentrim);
    const QMdiSubWindow *current = mdiArea()->currentSubWindow();
    const bool addsItsName = current != nullptr && current->isMaximized() &&
                             mdiArea()->viewMode() == QMdiArea::SubWindowView;
    setWindowTitle(current != nullptr && !addsItsName
                       ? QStringLiteral("%1 - kivhost").arg(current->property("path").toString())
                       : QStringLiteral("kivhost"));
}

void HostWindow::storeWindow()
{
    QSettings settings;
    settings.setValue(QLatin1String(kGeometryKey), saveGeometry());
    settings.setValue(QLatin1String(kStateKey), saveState());
    settings.setValue(QLatin1String(kArrangementKey), static_cast<int>(m_arrangement));
}

void HostWindow::restoreWindow()
{
    const QSettings settings;
    resize(QSize(kFirstWidth, kFirstHeight).boundedTo(screen()->availableGeometry().size()));
    restoreGeometry(settings.value(QLatin1String(kGeometryKey)).toByteArray());
    restoreState(settings.value(QLatin1String(kStateKey)).toByteArray());
    const int arrangement = settings.value(QLatin1String(kArrangementKey)).toInt();
    arrange(static_cast<Arrangement>(
        qBound(int(Arrangement::Tabs), arrangement, int(Arrangement::Cascade))));
}

void HostWindow::closeEvent(QCloseEvent *event)
{
    storeWindow();
    m_storeTimer.stop();
    mdiArea()->closeAllSubWindows();
    if (mdiArea()->currentSubWindow() != nullptr) { // a child does not let itself be closed
        event->ignore();
        return;
    }
    MainWindow::closeEvent(event);
}

void HostWindow::moveEvent(QMoveEvent *event)
{
    MainWindow::moveEvent(event);
    m_storeTimer.start();
}

void HostWindow::resizeEvent(QResizeEvent *event)
{
    MainWindow::resizeEvent(event);
    m_storeTimer.start();
}

void HostWindow::dragEnterEvent(QDragEnterEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (std::any_of(urls.begin(), urls.end(), [](const QUrl &url) { return url.isLocalFile(); })) {
        event->acceptProposedAction();
    }
}

void HostWindow::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    for (const QUrl &url : event->mimeData()->urls()) {
        if (url.isLocalFile()) {
            openFile(url.toLocalFile());
        }
    }
}

} // namespace KivSystem
