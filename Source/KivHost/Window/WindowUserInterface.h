// WindowUserInterface: asks the user of the window with real dialogs. While an export runs, it
// hands each path that the user chooses to that export, which answers with the path to write to.
#ifndef KIVHOST_WINDOWUSERINTERFACE_H
#define KIVHOST_WINDOWUSERINTERFACE_H

#include "KivCore/WidgetUserInterface.h"

namespace KivSystem {

/// What an export does with the questions of its format.
class ExportListener
{
public:
    virtual ~ExportListener() = default;
    /// Before the user is asked for a file; false answers the question as cancelled.
    virtual bool beginFile(const QString &proposedName) = 0;
    /// The user chose `path`. Returns where to write it. Throws HostError when it cannot be: the
    /// user is told and asked again.
    virtual QString stageFile(const QString &path) = 0;
    /// The user cancelled the question for a file; true has it asked again.
    virtual bool asksAgain(const QString &proposedName) = 0;
    /// Of the files that are asked for: "cut".
    virtual QString extension() const = 0;
    /// The user cancelled a dialog of the format.
    virtual void noteCancelled() = 0;
    /// The format told the user something.
    virtual void noteWarning(const QString &sentence) = 0;
    /// The parent of dialogs that are opened without one.
    virtual QWidget *dialogParent() = 0;
};

class WindowUserInterface : public KivUserInterface
{
public:
    /// `mainWindow` is borrowed and may be null or go before this object.
    explicit WindowUserInterface(MainWindow *mainWindow);
    ~WindowUserInterface() override;

    /// `listener` is borrowed; null ends the export.
    void setExportListener(ExportListener *listener);

    MainWindow *mainWindow() const override;
    QString getSaveFileName(const QStringList &filters, const QString &title,
        const QString &proposedName, int *selectedFilter, QWidget *parent) override;
    int confirmContinue(const QString &message, const QString &title, const QString &button1,
        const QString &button2, const QString &button3, QWidget *parent) override;
    void displayWarning(const QString &message, const QString &title, QWidget *parent) override;
    int execDialog(KivDialog &dialog) override;

protected:
    /// Asks for the final path, empty when the user cancels; the dialog asks before it overwrites.
    virtual QString askForFile(const QStringList &filters, const QString &title,
        const QString &proposedPath, int *selectedFilter, QWidget *parent);

private:
    QString askForExportFile(const QStringList &filters, const QString &title,
        const QString &proposedName, QWidget *parent);
    QWidget *parentFor(QWidget *parent) const;

    WidgetUserInterface m_dialogs;
    ExportListener *m_listener = nullptr;
    QString m_extension; // of the files of the export: the user's choice holds for the next
    int m_filter = -1;   // the same; none yet
};

} // namespace KivSystem

#endif
