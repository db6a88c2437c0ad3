// KivApplication: the services of the host that its plug-ins use: the main window, the user, the
// plug-ins directory. It stands beside the application object of Qt and does not derive from it.
//
//     const QApplication qt(argc, argv);
//     KivApplication application(std::make_unique<WidgetUserInterface>(&window), pluginsDir);
#ifndef KIVCORE_APPLICATION_H
#define KIVCORE_APPLICATION_H

#include "KivCore/Export.h"

#include <QDir>

#include <memory>

class QString;
class QStringList;
class QWidget;

namespace KivSystem {

class KivDialog;
class KivUserInterface;
class MainWindow;

/// Main thread only.
class KIVCORE_EXPORT KivApplication
{
public:
    /// The host makes one instance at a time; a second one is a programming error. The user
    /// interface must not be null.
    KivApplication(std::unique_ptr<KivUserInterface> userInterface, const QDir &pluginsDir);
    ~KivApplication();

    KivApplication(const KivApplication &) = delete;
    KivApplication &operator=(const KivApplication &) = delete;

    /// The host's instance; null before it is made and after it is gone. It is there for as long
    /// as plug-ins run.
    static KivApplication *instance();

    /// The user interface that answers the questions below.
    KivUserInterface &userInterface() const;

    /// The main window, borrowed; null when the program runs without one.
    MainWindow *mainWindow() const;

    /// The directory of the plug-ins; the data of the formats lie below it, in "io".
    QDir pluginsDir() const;

    /// See KivUserInterface for what these four ask, answer and accept.
    QString getSaveFileName(const QStringList &filters, const QString &title,
        const QString &proposedName, int *selectedFilter, QWidget *parent);
    int confirmContinue(const QString &message, const QString &title, const QString &button1,
        const QString &button2, const QString &button3, QWidget *parent);
    void displayWarning(const QString &message, const QString &title, QWidget *parent) const;
    int execDialog(KivDialog &dialog);

private:
    std::unique_ptr<KivUserInterface> m_userInterface;
    QDir m_pluginsDir;
};

} // namespace KivSystem

#endif
