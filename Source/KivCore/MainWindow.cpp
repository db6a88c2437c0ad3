#include "KivCore/MainWindow.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace KivSystem {

MdiChild::MdiChild(QWidget *parent) : QWidget(parent) {}

MdiChild::~MdiChild() = default;

void MdiChild::sendSignal(signalType signal)
{
    QMetaObject::invokeMethod(
        this, [this, signal]() { emit signalSent(signal); }, Qt::QueuedConnection);
}

MainWindow::MainWindow(QWidget *parent) : QMainWindow(parent), m_mdiArea(new QMdiArea(this))
{
    setCentralWidget(m_mdiArea);
}

MainWindow::~MainWindow() = default;

void MainWindow::addMdiChild(MdiChild *child)
{
    QMdiSubWindow *const subWindow = m_mdiArea->addSubWindow(child);
    subWindow->setAttribute(Qt::WA_DeleteOnClose);
    child->show();
    m_mdiArea->setActiveSubWindow(subWindow);
}

MdiChild *MainWindow::activeMdiChild() const
{
    // The current sub-window stays when a window outside the area, such as a dialog, takes over.
    const QMdiSubWindow *const current = m_mdiArea->currentSubWindow();
    return current ? qobject_cast<MdiChild *>(current->widget()) : nullptr;
}

QMdiArea *MainWindow::mdiArea() const
{
    return m_mdiArea;
}

} // namespace KivSystem
