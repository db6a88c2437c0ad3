#include "KivCore/Application.h"

#include "KivCore/UserInterface.h"

#include <QString>
#include <QStringList>

#include <utility>

namespace KivSystem {

namespace {

KivApplication *theApplication = nullptr;

} // namespace

KivApplication::KivApplication(
    std::unique_ptr<KivUserInterface> userInterface, const QDir &pluginsDir)
    : m_userInterface(std::move(userInterface))
    , m_pluginsDir(pluginsDir.absolutePath())
{
    // Errors of the program: they end it, in a release build too.
    if (!m_userInterface) {
        qFatal("KivApplication: no user interface");
    }
    if (theApplication) {
        qFatal("KivApplication: there is an instance already");
    }
    theApplication = this;
}

KivApplication::~KivApplication()
{
    theApplication = nullptr;
}

KivApplication *KivApplication::instance()
{
    return theApplication;
}

KivUserInterface &KivApplication::userInterface() const
{
    return *m_userInterface;
}

MainWindow *KivApplication::mainWindow() const
{
    return m_userInterface->mainWindow();
}

QDir KivApplication::pluginsDir() const
{
    return m_pluginsDir;
}

QString KivApplication::getSaveFileName(const QStringList &filters, const QString &title,
    const QString &proposedName, int *selectedFilter, QWidget *parent)
{
    return m_userInterface->getSaveFileName(filters, title, proposedName, selectedFilter, parent);
}

int KivApplication::confirmContinue(const QString &message, const QString &title,
    const QString &button1, const QString &button2, const QString &button3, QWidget *parent)
{
    return m_userInterface->confirmContinue(message, title, button1, button2, button3, parent);
}

void KivApplication::displayWarning(
    const QString &message, const QString &title, QWidget *parent) const
{
    m_userInterface->displayWarning(message, title, parent);
}

int KivApplication::execDialog(KivDialog &dialog)
{
    return m_userInterface->execDialog(dialog);
}

} // namespace KivSystem
