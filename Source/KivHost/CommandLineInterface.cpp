#include "CommandLineInterface.h"

#include "Console.h"
#include "ExportStaging.h"
#include "KivCore/Dialog.h"

#include <QDialogButtonBox>
#include <QPushButton>

namespace KivSystem {

CommandLineInterface::CommandLineInterface(const Console &console) : m_console(console) {}

CommandLineInterface::~CommandLineInterface() = default;

void CommandLineInterface::beginExport(ExportStaging *staging, bool continueWhenAsked)
{
    m_staging = staging;
    m_continueWhenAsked = continueWhenAsked;
    m_reason.clear();
}

MainWindow *CommandLineInterface::mainWindow() const
{
    return &m_mainWindow;
}

QString CommandLineInterface::getSaveFileName(
    const QStringList &, const QString &, const QString &proposedName, int *, QWidget *)
{
    return m_staging == nullptr ? QString() : m_staging->addFile(proposedName);
}

int CommandLineInterface::confirmContinue(const QString &message, const QString &,
    const QString &button1, const QString &, const QString &button3, QWidget *)
{
    const QString &answer = m_continueWhenAsked ? button1 : button3;
    const QString question =
        QStringLiteral("%1 (answered: %2)").arg(message.simplified(), answer.trimmed());
    if (m_continueWhenAsked) {
        m_console.message(question);
        return 0;
    }
    m_reason = question; // told when the export ends
    return 2;
}

void CommandLineInterface::displayWarning(const QString &message, const QString &, QWidget *)
{
    if (!m_reason.isEmpty()) {
        m_console.message(m_reason);
    }
    m_reason = message.simplified(); // told when the export ends
}

int CommandLineInterface::execDialog(KivDialog &dialog)
{
    dialog.setResult(QDialog::Rejected);
    const auto *buttons = dialog.findChild<QDialogButtonBox *>();
    const QPushButton *ok = buttons != nullptr ? buttons->button(QDialogButtonBox::Ok) : nullptr;
    if (ok != nullptr && !ok->isEnabled()) { // nobody could accept it
        m_reason = QStringLiteral("nothing is chosen in \"%1\"").arg(dialog.windowTitle());
        dialog.reject();
    } else {
        dialog.accept();
    }
    return dialog.result();
}

} // namespace KivSystem
