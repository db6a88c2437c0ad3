// KivUserInterface: how a user is asked. The window answers with real dialogs, the command line
// from its options, a test from a script; KivApplication forwards to whichever is in place.
#ifndef KIVCORE_USERINTERFACE_H
#define KIVCORE_USERINTERFACE_H

#include "KivCore/Export.h"

class QString;
class QStringList;
class QWidget;

namespace KivSystem {

class KivDialog;
class MainWindow;

class KIVCORE_EXPORT KivUserInterface
{
public:
    KivUserInterface();
    KivUserInterface(const KivUserInterface &) = delete;
    KivUserInterface &operator=(const KivUserInterface &) = delete;
    virtual ~KivUserInterface();

    /// The main window, borrowed; null when the program runs without one. An interface without a
    /// window must not answer a question with a choice that leads to another view.
    virtual MainWindow *mainWindow() const = 0;

    /// The path to save to, empty when the user cancels. `filters` are single filter texts such as
    /// "Cut File (*.cut)". `selectedFilter`, when not null, receives the 0-based index of the
    /// filter in use (its value on entry preselects one) and keeps its value on a cancel.
    virtual QString getSaveFileName(const QStringList &filters, const QString &title,
        const QString &proposedName, int *selectedFilter, QWidget *parent) = 0;

    /// The 0-based index of the chosen button. Closing the question counts as the last button.
    virtual int confirmContinue(const QString &message, const QString &title,
        const QString &button1, const QString &button2, const QString &button3,
        QWidget *parent) = 0;

    /// Tells the user. An empty title stands for the application's name.
    virtual void displayWarning(const QString &message, const QString &title, QWidget *parent) = 0;

    /// Runs a modal dialog and returns its result code (QDialog::DialogCode). The real one calls
    /// KivDialog::execModal(); others may fill in the controls and call accept() or reject().
    virtual int execDialog(KivDialog &dialog) = 0;
};

} // namespace KivSystem

#endif
