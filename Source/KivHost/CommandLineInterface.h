// CommandLineInterface: the user that the command line stands for. It answers what a window would
// ask from the options of the run, and gives file names out of the staging folder of the export.
#ifndef KIVHOST_COMMANDLINEINTERFACE_H
#define KIVHOST_COMMANDLINEINTERFACE_H

#include "KivCore/MainWindow.h"
#include "KivCore/UserInterface.h"

#include <QString>

namespace KivSystem {

struct Console;
class ExportStaging;

class CommandLineInterface final : public KivUserInterface
{
public:
    /// Warnings go to `console`, which is borrowed.
    explicit CommandLineInterface(const Console &console);
    ~CommandLineInterface() override;

    /// Begins an export: its files come from `staging` (borrowed; null ends it), and questions
    /// whether to continue are answered with the first button, or with the last one.
    void beginExport(ExportStaging *staging, bool continueWhenAsked);

    /// What spoke against the export since beginExport(): the latest warning, or the question that
    /// was answered with a stop; empty for nothing.
    QString reason() const { return m_reason; }

    MainWindow *mainWindow() const override;
    QString getSaveFileName(const QStringList &filters, const QString &title,
        const QString &proposedName, int *selectedFilter, QWidget *parent) override;
    int confirmContinue(const QString &message, const QString &title, const QString &button1,
        const QString &button2, const QString &button3, QWidget *parent) override;
    void displayWarning(const QString &message, const QString &title, QWidget *parent) override;
    /// Accepts the dialog as it stands. One that does not let itself be accepted counts as
    /// rejected.
    int execDialog(KivDialog &dialog) override;

private:
    const Console &m_console;
    mutable MainWindow m_mainWindow; // never shown; plug-ins ask it for the active child
    ExportStaging *m_staging = nullptr;
    bool m_continueWhenAsked = false;
    QString m_reason;
};

} // namespace KivSystem

#endif
