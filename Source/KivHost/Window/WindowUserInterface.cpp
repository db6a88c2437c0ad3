#include "WindowUserInterface.h"

#include "Console.h"
#include "FileNames.h"
#include "KivCore/Dialog.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
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

QString lastDirectory()
{
    return QSettings().value(QLatin1String(kDirectoryKey)).toString();
}

// Where none names the extension, the last, which takes all files.
int filterFor(const QStringList &filters, const QString &extension)
{
    const QRegularExpression pattern(QStringLiteral("\\*\\.%1\\b").arg(extension));
    const auto found = std::find_if(filters.begin(), filters.end(),
        [&pattern](const QString &filter) { return filter.contains(pattern); });
    return found != filters.end() ? static_cast<int>(found - filters.begin()) : filters.size() - 1;
}

} // namespace

WindowUserInterface::WindowUserInterface(MainWindow *mainWindow) : m_dialogs(mainWindow) {}

WindowUserInterface::~WindowUserInterface() = default;

MainWindow *WindowUserInterface::mainWindow() const
{
    return m_dialogs.mainWindow();
}

void WindowUserInterface::setExportListener(ExportListener *listener)
{
    m_listener = listener;
    m_extension = listener != nullptr ? listener->extension() : QString();
    m_filter = -1;
}

QString WindowUserInterface::getSaveFileName(const QStringList &filters, const QString &title,
    const QString &proposedName, int *selectedFilter, QWidget *parent)
{
    if (m_listener != nullptr) {
        return askForExportFile(filters, title, proposedName, parentFor(parent));
    }
    return askForFile(
        filters, title, proposedPath(lastDirectory(), proposedName), selectedFilter, parent);
}

// Until the user names a file that can be written, or leaves it out.
QString WindowUserInterface::askForExportFile(
    const QStringList &filters, const QString &title, const QString &proposedName, QWidget *parent)
{
    if (m_filter < 0) {
        m_filter = filterFor(filters, m_extension);
    }
    // The name may have a full stop, so that no dialog could tell its extension.
    const QString fileName = fileNameFrom(proposedName) + QLatin1Char('.') + m_extension;
    QString proposal = proposedPath(lastDirectory(), fileName);
    while (m_listener->beginFile(proposedName)) {
        const QString path = askForFile(filters, title, proposal, &m_filter, parent);
        if (path.isEmpty()) {
            if (m_listener->asksAgain(proposedName)) {
                continue;
            }
            return QString();
        }
        try {
            const QString staged = m_listener->stageFile(path);
            QSettings().setValue(QLatin1String(kDirectoryKey), QFileInfo(path).absolutePath());
            const QString extension = QRegularExpression::escape(QFileInfo(path).suffix());
            if (!extension.isEmpty() && filterFor(filters, extension) < filters.size() - 1) {
                m_extension = extension;
            }
            return staged;
        } catch (const HostError &error) {
            m_dialogs.displayWarning(error.sentence(), QString(), parent);
            proposal = path;
        }
    }
    return QString();
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
