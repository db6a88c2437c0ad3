// What the tests of the window share: a window with a scripted user before it.
#ifndef KIVHOST_WINDOWTESTSUPPORT_H
#define KIVHOST_WINDOWTESTSUPPORT_H

#include "HostTestSupport.h"
#include "KivCore/Application.h"
#include "KivMarker/ShareGlobales.h"
#include "ScriptedUserInterface.h"
#include "Window/HostWindow.h"
#include "Window/MarkerChild.h"

#include <QAction>
#include <QApplication>
#include <QMdiArea>
#include <QSettings>

namespace KivSystem {

const inline QString kTshirt = QStringLiteral(KIV_SOURCE_DIR "/Samples/tshirt.mar");
const inline QString kTrousers = QStringLiteral(KIV_SOURCE_DIR "/Samples/trousers.mar");

class WindowTest : public testing::Test
{
protected:
    WindowTest()
    {
        QSettings().clear();
        auto owned = std::make_unique<ScriptedUserInterface>();
        user = owned.get();
        application = std::make_unique<KivApplication>(std::move(owned), QDir());
        restart();
    }

    ~WindowTest() override
    {
        window.reset();
        QSettings().clear();
        CDbMarkerShareGlobales::instance()->setZentrimActif(false);
    }

    void restart()
    {
        if (window) {
            window->close();
        }
        window = std::make_unique<HostWindow>();
        user->window = window.get();
        window->show();
        QApplication::processEvents();
    }

    MarkerChild &open(const QString &path)
    {
        EXPECT_TRUE(window->openFile(path)) << path;
        QApplication::processEvents();
        return *window->activeMarker();
    }

    QAction &action(const char *name)
    {
        return *window->findChild<QAction *>(QString::fromLatin1(name));
    }

    void close()
    {
        window->mdiArea()->closeActiveSubWindow();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }

    Folder folder;
    ScriptedUserInterface *user = nullptr; // owned by the application
    std::unique_ptr<KivApplication> application;
    std::unique_ptr<HostWindow> window;
};

} // namespace KivSystem

#endif
