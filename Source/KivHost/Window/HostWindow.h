// HostWindow: the main window of kivhost. One child a marker or a viewed file; menus, tool bar,
// recent files; everything that is chosen here is stored in QSettings at once.
#ifndef KIVHOST_HOSTWINDOW_H
#define KIVHOST_HOSTWINDOW_H

#include "KivCore/MainWindow.h"

#include <QStringList>
#include <QTimer>

#include <functional>
#include <vector>

class QAction;
class QActionGroup;
class QMdiSubWindow;
class QMenu;

namespace KivSystem {

class ExporterFactory;
class MarkerChild;
class ZoomableView;
struct SceneOptions;
struct WindowOptions;

class HostWindow : public MainWindow
{
    Q_OBJECT

public:
    explicit HostWindow(QWidget *parent = nullptr);
    ~HostWindow() override;

    /// The plug-in's formats, borrowed; null disables the export.
    void setExporterFactory(ExporterFactory *factory);

    /// Opens a child for the file, or brings the one to the front that shows it already. A file
    /// that cannot be opened is told in one sentence; false then.
    bool openFile(const QString &path);

    /// The active child if it shows a marker; null otherwise.
    MarkerChild *activeMarker() const;

    /// The drawing of the active child; null where it has none.
    ZoomableView *activeView() const;

    /// The latest first, absolute paths.
    QStringList recentFiles() const;

    /// Takes units and settings of the marker library over from the store, also into the children.
    void applySettings();

    /// Lays the children as they lay when the program ended.
    void restoreArrangement() { arrange(m_arrangement); }

    void chooseFiles();
    void exportMarker();
    void reload();
    void editSettings();

protected:
    void closeEvent(QCloseEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    using MarkerCommand = std::function<void(MarkerChild &)>;

    enum class Arrangement
    {
        Tabs,
        Tiles,
        Cascade
    };

    QAction *addCommand(QMenu *menu, const char *name, const char *text, const char *shortcut,
        const char *tip, const std::function<void()> &run);
    QAction *addMarkerCommand(QMenu *menu, const char *name, const char *text, const char *shortcut,
        const char *tip, const MarkerCommand &run);
    QAction *addShowOption(QMenu *menu, const char *name, const char *text, const char *shortcut,
        const char *tip, bool byDefault);
    void addFillChoice(QMenu *menu);
    void makeFileMenu();
    void makeEditMenu();
    void makeViewMenu();
    void makeMarkerMenu();
    void makeWindowMenu();
    void makeHelpMenu();
    void makeToolBar();

    bool activateChildOf(const QString &path);
    void addChild(MdiChild *child, const QString &path);
    void replaceChild(QMdiSubWindow &subWindow, std::unique_ptr<MdiChild> child);
    void nameChildren();
    void addRecentFile(const QString &path);
    void fillRecentMenu();
    void fillWindowMenu();
    void updateActions();
    void arrange(Arrangement arrangement);
    void focusChild();
    SceneOptions viewOptions() const;
    void applyViewOptions();
    void storeWindow();
    void restoreWindow();
    void showAbout();

    ExporterFactory *m_factory = nullptr;
    QMenu *m_recentMenu = nullptr;
    QMenu *m_windowMenu = nullptr;
    int m_fixedWindowActions = 0;
    Arrangement m_arrangement = Arrangement::Tabs;
    std::vector<QAction *> m_markerActions; // of use for a marker alone
    QActionGroup *m_fill = nullptr;
    QAction *m_export = nullptr;
    QAction *m_close = nullptr;
    QAction *m_zentrim = nullptr;
    QAction *m_pieceList = nullptr;
    QTimer m_storeTimer; // geometry is stored when a move or a resize has come to rest
};

/// Runs the window until it is closed and gives the exit status. The application object of Qt is
/// there; `plugins` is the directory of the command line, empty for where they belong.
int runWindow(const WindowOptions &options, const QString &plugins);

} // namespace KivSystem

#endif
