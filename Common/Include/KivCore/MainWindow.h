// MainWindow and MdiChild: the host's window and the document windows inside it, as far as
// plug-ins and dialogs need them.
#ifndef KIVCORE_MAINWINDOW_H
#define KIVCORE_MAINWINDOW_H

#include "KivCore/Export.h"

#include <QMainWindow>
#include <QWidget>

class QMdiArea;

namespace KivSystem {

/// The view of one document.
class KIVCORE_EXPORT MdiChild : public QWidget
{
    Q_OBJECT

public:
    enum signalType
    {
        ShowZentrimView = 0, ///< switch to the Zentrim view
    };
    Q_ENUM(signalType)

    explicit MdiChild(QWidget *parent = nullptr);
    ~MdiChild() override;

    /// Posts a signal to this child: signalSent() is emitted from the event loop, so that a dialog
    /// or an export can end first. Nothing happens when the child is deleted before.
    void sendSignal(signalType signal);

signals:
    void signalSent(KivSystem::MdiChild::signalType signal);
};

class KIVCORE_EXPORT MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Puts `child` into a sub-window of its own, which takes it over, and makes it active.
    void addMdiChild(MdiChild *child);

    /// The child that is in front, also while a dialog has the focus; null when there is none.
    MdiChild *activeMdiChild() const;

    /// The area of the sub-windows.
    QMdiArea *mdiArea() const;

private:
    QMdiArea *m_mdiArea;
};

} // namespace KivSystem

#endif
