#include "WindowUserInterface.h"

#include "KivCore/Dialog.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include <algorithm>

namespace KivSystem {

namespace {

const char *const kDirectoryKey = "window/export_directory";

// A proposal is a name, not a path: "50/50 cotton" lies in no directory.
QString proposedPath(const QString &directory, QString name)
{
    if (QFileInfo(name).isAbsolute() && QFileInfo(name).absoluteDir().exists()) {
        return name;
    }
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    return directory.isEmpty() || !QDir(directory).exists() ? name : QDir(directory).filePath(name);
}

int filterFor(const QStringList &filters, const QString &extension)
{
    const auto found = std::find_if(filters.begin(), filters.end(),
        [&](const QString &filter) { return filter.contains(QLatin1Char('*') + extension); });
    return found != filters.end() ? static_cast<int>(found - filters.begin()) : 0;
}

} // namespace

WindowUserInterface::WindowUserInterface(MainWindow *mainWindow) : m_dialogs(mainWindow) {}

WindowUserInterface::~WindowUserInterface() = default;

MainWindow *WindowUserInterface::mainWindow() const
{
    return m_dialogs.mainWindow();
}

QString WindowUserInterface::getSaveFileName(const QStringList &filters, const QString &title,
    const QString &proposedName, int *selectedFilter, QWidget *parent)
{
    if (m_listener != nullptr && !m_listener->beginFile()) {
        return QString();
    }
    QSettings settings;
    const QString directory = settings.value(QLatin1String(kDirectoryKey)).toString();
    QString proposal = proposedPath(directory, proposedName);
    int filter = selectedFilter != nullptr ? *selectedFilter : 0;
    if (m_listener != nullptr) { // a name may have a full stop, and the first filter is for texts
        const QString extension = QLatin1Char('.') + m_listener->extension();
        proposal += extension;
        filter = filterFor(filters, extension);
    }
    const QString path = askForFile(filters, title, proposal, &filter, parentFor(parent));
    if (selectedFilter != nullptr) {
        *selectedFilter = filter;
    }
    if (path.isEmpty()) {
        if (m_listener != nullptr) {
            m_listener->noteCancelled();
        }
        return path;
    }
    settings.setValue(QLatin1String(kDirectoryKey), QFileInfo(path).absolutePath());
    return m_listener != nullptr ? m_listener->stageFile(path) : path;
}

QString WindowUserInterface::askForFile(const QStringList &filters, const QString &title,
    const QString &proposedPath, int *selectedFilter, QWidget *parent)
{
    return m_dialogs.getSaveFileName(filters, title, proposedPath, selectedFilter, parent);
}

int WindowUserInterface::confirmContinue(const QString &message, const QString &title,
    const QString &button1, const QString &button2, const QString &button3, QWidget *parent)
{
    return m_dialogs.confirmContinue(message, title, button1, button2, button3, parentFor(parent));
}

void WindowUserInterface::displayWarning(
    const QString &message, const QString &title, QWidget *parent)
{
    if (m_listener != nullptr) {
        m_listener->noteWarning(message);
    }
    m_dialogs.displayWarning(message, title, parentFor(parent));
}

int WindowUserInterface::execDialog(KivDialog &dialog)
{
    const int result = m_dialogs.execDialog(dialog);
    if (m_listener != nullptr && result != QDialog::Accepted) {
        m_listener->noteCancelled();
    }
    return result;
}

QWidget *WindowUserInterface::parentFor(QWidget *parent) const
{
    return parent == nullptr && m_listener != nullptr ? m_listener->dialogParent() : parent;
}

} // namespace KivSystem
