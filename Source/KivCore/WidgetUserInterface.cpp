#include "KivCore/WidgetUserInterface.h"

#include "KivCore/Dialog.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QStringList>

#include <array>

namespace KivSystem {

namespace {

/// "cut" for "Cut File (*.cut *.nc)", empty for "All Files (*.*)".
QString firstExtension(const QString &filter)
{
    static const QRegularExpression pattern(QStringLiteral("\\*\\.(\\w[\\w.]*)"));
    return pattern.match(filter).captured(1);
}

/// "cut" for "Shell.cut", empty for "Shell 1.5" and "Style 1. blue".
QString extensionIn(const QString &name)
{
    static const QRegularExpression pattern(QStringLiteral("^[A-Za-z][A-Za-z0-9]{0,4}$"));
    const QString suffix = QFileInfo(name).suffix();
    return pattern.match(suffix).hasMatch() ? suffix : QString();
}

bool hasExtension(const QStringList &filters, const QString &extension)
{
    const QRegularExpression pattern(
        QStringLiteral("\\*\\.%1\\b").arg(extension), QRegularExpression::CaseInsensitiveOption);
    return filters.join(QLatin1Char(' ')).contains(pattern);
}

/// The file that the user means by `path` in a dialog with these filters, of which one is in use.
QString completed(
    QString path, const QString &filter, const QStringList &filters, const QString &proposedName)
{
    const QString proposed = extensionIn(proposedName);
    const QString found = extensionIn(path);
    const bool takesAll = firstExtension(filter).isEmpty();
    const bool isKnown =
        found.compare(proposed, Qt::CaseInsensitive) == 0 || hasExtension(filters, found);
    const QString extension = takesAll ? proposed : firstExtension(filter);
    if (extension.isEmpty() || (!found.isEmpty() && (takesAll || isKnown))) {
        return path;
    }
    while (path.endsWith(QLatin1Char('.'))) {
        path.chop(1);
    }
    return path + QLatin1Char('.') + extension;
}

bool mayReplace(const QString &path, QWidget &dialog)
{
    const QString question = QCoreApplication::translate(
        "KivSystem::WidgetUserInterface", "%1 already exists.\nDo you want to replace it?");
    return QMessageBox::warning(&dialog, dialog.windowTitle(),
               question.arg(QFileInfo(path).fileName()), QMessageBox::Yes | QMessageBox::No,
               QMessageBox::No) == QMessageBox::Yes;
}

/// A proposal is a name, not a path, unless it is absolute: "50/50 cotton" lies in no directory.
QString proposedFile(const QString &proposedName)
{
    QString name = proposedName;
    return QFileInfo(name).isAbsolute() ? name : name.replace(QLatin1Char('/'), QLatin1Char('_'));
}

} // namespace

WidgetUserInterface::WidgetUserInterface(MainWindow *mainWindow) : m_mainWindow(mainWindow) {}

WidgetUserInterface::~WidgetUserInterface() = default;

MainWindow *WidgetUserInterface::mainWindow() const
{
    return m_mainWindow;
}

QString WidgetUserInterface::getSaveFileName(const QStringList &filters, const QString &title,
    const QString &proposedName, int *selectedFilter, QWidget *parent)
{
    QFileDialog dialog(parentOrMainWindow(parent), title, m_lastDirectory);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(filters.value(selectedFilter ? *selectedFilter : 0, filters.value(0)));
    dialog.selectFile(proposedFile(proposedName));
    // The dialog would ask for the name without the extension that is still to come, and would
    // take "Shell 1.5" for a name with one.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);

    while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
        const QString filter = dialog.selectedNameFilter();
        const QString path =
            completed(dialog.selectedFiles().constFirst(), filter, filters, proposedName);
        const QFileInfo file(path);
        const bool isReplaced = file.isFile() && file.isWritable(); // else who writes tells why
        if (!isReplaced || mayReplace(path, dialog)) {
            m_lastDirectory = dialog.directory().absolutePath();
            if (selectedFilter && filters.contains(filter)) {
                *selectedFilter = filters.indexOf(filter);
            }
            return path;
        }
        dialog.selectFile(path);
    }
    return QString();
}

int WidgetUserInterface::confirmContinue(const QString &message, const QString &title,
    const QString &button1, const QString &button2, const QString &button3, QWidget *parent)
{
    struct Choice
    {
        const QString &text;
        QMessageBox::ButtonRole role;
    };
    const std::array<Choice, 3> choices = {{{button1, QMessageBox::AcceptRole},
        {button2, QMessageBox::ActionRole}, {button3, QMessageBox::RejectRole}}};

    QMessageBox box(
        QMessageBox::Question, title, message, QMessageBox::NoButton, parentOrMainWindow(parent));
    std::array<const QAbstractButton *, 3> buttons = {};
    int last = 0;
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (choices[i].text.isEmpty()) {
            continue;
        }
        QPushButton *const button = box.addButton(choices[i].text, choices[i].role);
        box.setDefaultButton(button);
        box.setEscapeButton(button);
        buttons[i] = button;
        last = static_cast<int>(i);
    }
    box.exec();

    for (std::size_t i = 0; i < buttons.size(); ++i) {
        if (buttons[i] && buttons[i] == box.clickedButton()) {
            return static_cast<int>(i);
        }
    }
    return last;
}

void WidgetUserInterface::displayWarning(
    const QString &message, const QString &title, QWidget *parent)
{
    QMessageBox::warning(parentOrMainWindow(parent),
        title.isEmpty() ? QGuiApplication::applicationDisplayName() : title, message);
}

int WidgetUserInterface::execDialog(KivDialog &dialog)
{
    return dialog.execModal();
}

QWidget *WidgetUserInterface::parentOrMainWindow(QWidget *parent) const
{
    return parent ? parent : m_mainWindow.data();
}

} // namespace KivSystem
