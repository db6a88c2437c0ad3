#include "KivCore/WidgetUserInterface.h"

#include "KivCore/Dialog.h"

#include <QAbstractButton>
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

    const auto useExtension = [&dialog](const QString &filter) {
        dialog.setDefaultSuffix(firstExtension(filter));
    };
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, useExtension);
    QString filterInUse = filters.value(0);
    if (selectedFilter) {
        filterInUse = filters.value(*selectedFilter, filterInUse);
        dialog.selectNameFilter(filterInUse);
    }
    useExtension(filterInUse);
    dialog.selectFile(proposedFile(proposedName));

    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return QString();
    }
    m_lastDirectory = dialog.directory().absolutePath();
    const int selected = filters.indexOf(dialog.selectedNameFilter());
    if (selectedFilter && selected >= 0) {
        *selectedFilter = selected;
    }
    return dialog.selectedFiles().constFirst();
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
