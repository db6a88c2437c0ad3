// WidgetUserInterface: the user interface of the window, with real dialogs.
#ifndef KIVCORE_WIDGETUSERINTERFACE_H
#define KIVCORE_WIDGETUSERINTERFACE_H

#include "KivCore/MainWindow.h"
#include "KivCore/UserInterface.h"

#include <QPointer>
#include <QString>

namespace KivSystem {

class KIVCORE_EXPORT WidgetUserInterface final : public KivUserInterface
{
public:
    /// `mainWindow` is borrowed and may be null or go before this object. It is the parent of the
    /// dialogs that are opened without one.
    explicit WidgetUserInterface(MainWindow *mainWindow);
    ~WidgetUserInterface() override;

    MainWindow *mainWindow() const override;

    /// The dialog opens in the directory of the last saved file and asks before it overwrites. A
    /// name without an extension of a filter or of the proposed name gets that of the filter in
    /// use; where that takes all files, a name without any gets that of the proposed name.
    QString getSaveFileName(const QStringList &filters, const QString &title,
        const QString &proposedName, int *selectedFilter, QWidget *parent) override;

    /// A button whose text is empty is left out; the last of the others is the default.
    int confirmContinue(const QString &message, const QString &title, const QString &button1,
        const QString &button2, const QString &button3, QWidget *parent) override;

    void displayWarning(const QString &message, const QString &title, QWidget *parent) override;

    int execDialog(KivDialog &dialog) override;

private:
    QWidget *parentOrMainWindow(QWidget *parent) const;

    QPointer<MainWindow> m_mainWindow;
    QString m_lastDirectory;
};

} // namespace KivSystem

#endif
