#include "KivCore/Application.h"
#include "KivCore/MainWindow.h"
#include "KivCore/WidgetUserInterface.h"
#include "Support/ScriptedUserInterface.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QMdiArea>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace KivSystem {
namespace {

/// Does `action` to the dialog of type Dialog that opens next.
template <class Dialog>
void onNextDialog(const std::function<void(Dialog &)> &action)
{
    QTimer::singleShot(0, qApp, [action]() {
        auto *const dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        action(*dialog);
    });
}

QAbstractButton *buttonNamed(const QMessageBox &box, const char *text)
{
    for (QAbstractButton *const button : box.buttons()) {
        if (button->text() == text) {
            return button;
        }
    }
    return nullptr;
}

TEST(KivApplication, IsThereForItsLifeWithAnAbsolutePluginsDirectory)
{
    EXPECT_EQ(KivApplication::instance(), nullptr);
    {
        const KivApplication application(
            std::make_unique<ScriptedUserInterface>(), QDir("plugins"));
        EXPECT_EQ(KivApplication::instance(), &application);
        EXPECT_EQ(application.pluginsDir(), QDir(QDir::current().filePath("plugins")));
        EXPECT_TRUE(application.pluginsDir().isAbsolute());
    }
    EXPECT_EQ(KivApplication::instance(), nullptr);
}

TEST(WidgetUserInterface, AnswersWithThePressedButtonAndWithTheLastWhenClosed)
{
    const struct
    {
        const char *press; ///< null: the box is closed
        const char *third;
        int answer;
    } cases[] = {{"Continue", "Cancel", 0}, {"  Go  ", "Cancel", 1}, {"Cancel", "Cancel", 2},
        {nullptr, "Cancel", 2}, {nullptr, "", 1}};
    WidgetUserInterface user(nullptr);
    for (const auto &c : cases) {
        onNextDialog<QMessageBox>([&c](QMessageBox &box) {
            EXPECT_EQ(box.text(), "Sure?");
            EXPECT_EQ(box.buttons().size(), *c.third ? 3 : 2);
            QAbstractButton *const button = c.press ? buttonNamed(box, c.press) : nullptr;
            button ? button->click() : static_cast<void>(box.close());
        });
        EXPECT_EQ(user.confirmContinue("Sure?", "Title", "Continue", "  Go  ", c.third, nullptr),
            c.answer)
            << (c.press ? c.press : "closed");
    }
}

TEST(WidgetUserInterface, AWarningWithoutATitleBearsTheNameOfTheApplication)
{
    WidgetUserInterface user(nullptr);
    QString title;
    onNextDialog<QMessageBox>([&title](QMessageBox &box) {
        title = box.windowTitle();
        box.close();
    });
    user.displayWarning("names repeat", QString(), nullptr);
    EXPECT_EQ(title, QGuiApplication::applicationDisplayName());
    EXPECT_FALSE(title.isEmpty());
}

TEST(WidgetUserInterface, SavesUnderTheProposedNameWithTheExtensionOfTheFilter)
{
    const QTemporaryDir directory;
    const QStringList filters = {"Text File (*.txt)", "Cut File (*.cut)", "All Files (*.*)"};
    const struct
    {
        const char *proposed;
        int filter;
        const char *saved;
        const char *typed; ///< over the proposal
    } cases[] = {{"marker", 0, "marker.txt", ""}, {"marker", 1, "marker.cut", ""},
        {"marker", 2, "marker", ""}, {"marker.nc", 1, "marker.nc", ""},
        {"50/50 cotton", 1, "50_50 cotton.cut", ""}, {"Shell 1.5", 1, "Shell 1.5.cut", ""},
        {"marker.ai", 2, "marker.ai", ""}, {"marker.ai", 2, "own.ai", "own"},
        {"marker.cut", 1, "Order 7.Anna.cut", "Order 7.Anna"}, {"marker.cut", 1, "A.c.cut", "A.c"},
        {"marker.cut", 1, "A.TXT", "A.TXT"}, {"marker.cut", 1, "A.cut", "A.."}};
    WidgetUserInterface user(nullptr);
    for (const auto &c : cases) {
        onNextDialog<QFileDialog>([&directory, &c](QFileDialog &dialog) {
            const QString name = QFileInfo(dialog.selectedFiles().value(0)).fileName();
            dialog.setDirectory(directory.path());
            dialog.selectFile(*c.typed != 0 ? QString(c.typed) : name);
            static_cast<QDialog &>(dialog).accept();
        });
        int filter = c.filter;
        EXPECT_EQ(user.getSaveFileName(filters, "Save", c.proposed, &filter, nullptr),
            directory.filePath(c.saved));
        EXPECT_EQ(filter, c.filter);
    }

    onNextDialog<QFileDialog>([&filters, &directory](QFileDialog &dialog) {
        dialog.selectNameFilter(filters.at(1));
        emit dialog.filterSelected(filters.at(1));
        dialog.selectFile(directory.filePath("switched"));
        static_cast<QDialog &>(dialog).accept();
    });
    EXPECT_EQ(user.getSaveFileName(filters, "Save", "a", nullptr, nullptr),
        directory.filePath("switched.cut"));

    onNextDialog<QFileDialog>([](QFileDialog &dialog) { dialog.reject(); });
    int filter = 7;
    EXPECT_EQ(user.getSaveFileName(filters, "Save", "a", &filter, nullptr), QString());
    EXPECT_EQ(filter, 7);
}

TEST(MainWindow, KnowsTheChildInFront)
{
    MainWindow window;
    EXPECT_EQ(window.activeMdiChild(), nullptr);
    auto *const first = new MdiChild;
    auto *const second = new MdiChild;
    window.addMdiChild(first);
    window.addMdiChild(second);
    window.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(window.activeMdiChild(), second);
    window.mdiArea()->setActiveSubWindow(window.mdiArea()->subWindowList().constFirst());
    EXPECT_EQ(window.activeMdiChild(), first);
}

TEST(MdiChild, PostedSignalComesFromTheEventLoop)
{
    auto child = std::make_unique<MdiChild>();
    int count = 0;
    QObject::connect(child.get(), &MdiChild::signalSent,
        [&count](MdiChild::signalType signal) { count += signal == MdiChild::ShowZentrimView; });
    child->sendSignal(static_cast<MdiChild::signalType>(0));
    EXPECT_EQ(count, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(count, 1);

    child->sendSignal(MdiChild::ShowZentrimView);
    child.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(count, 1) << "gone before it was delivered";
}

} // namespace
} // namespace KivSystem
