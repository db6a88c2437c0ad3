#include "CommandLine.h"
#include "CommandLineInterface.h"
#include "Console.h"
#include "HostTranslations.h"
#include "Interruption.h"
#include "KivCore/Application.h"
#include "KivCore/Init.h"
#include "KivCore/Log.h"
#include "PluginLoader.h"
#include "Window/HostWindow.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QSettings>
#include <QTextCodec>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <unistd.h>

namespace KivSystem {

namespace {

bool applicationStands = false;

// Messages of Qt bear the program's name, too. A missing runtime directory is no concern of a verb.
void showQtMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type != QtDebugMsg && !message.contains(QLatin1String("XDG_RUNTIME_DIR"))) {
        std::cerr << "kivhost: " << onOneLine(message).toStdString() << std::endl;
    }
    if (type == QtFatalMsg && !applicationStands) {
        std::_Exit(ExitFailed); // there is no display behind the name: no fault of the program
    }
    if (type == QtFatalMsg) {
        std::abort();
    }
}

// Where the settings of a verb come from; some have only the user's.
template <class Options>
auto settingsOf(const Options &options, int) -> decltype(options.settings)
{
    return options.settings;
}

template <class Options>
SettingsSource settingsOf(const Options &, long)
{
    return {};
}

// What every verb finds in place: the application object with the command line as its user.
class Host
{
public:
    Host(const QDir &pluginsDirectory, const QLocale &language, const Console &console)
        : m_console(console)
    {
        installTranslations(pluginsDirectory, language);
        auto user = std::make_unique<CommandLineInterface>(console);
        m_user = user.get();
        m_application = std::make_unique<KivApplication>(std::move(user), pluginsDirectory);
        KivInit::instance()->run(KivInit::StageAfterQt);
    }

    int operator()(const FormatsOptions &options) const
    {
        return listFormats(options, factory(), m_console);
    }
    int operator()(const InfoOptions &options) const { return showInfo(options, m_console); }
    int operator()(const ImportOptions &options) const { return importMarker(options, m_console); }
    int operator()(const ExportOptions &options) const
    {
        return exportMarker(options, factory(), *m_user, m_console);
    }
    int operator()(const SettingsOptions &options) const
    {
        return listSettings(options, m_console);
    }
    int operator()(const SvgVerbOptions &options) const { return writeSvg(options, m_console); }
    int operator()(const RenderOptions &options) const { return renderPicture(options, m_console); }
    int operator()(const WindowOptions &) const { return ExitFailed; } // is no verb

private:
    ExporterFactory &factory() const { return loadPlugin(m_application->pluginsDir()); }

    const Console &m_console;
    CommandLineInterface *m_user = nullptr; // owned by the application object
    std::unique_ptr<KivApplication> m_application;
};

int runVerb(const CommandLine &commandLine)
{
    QTextStream out(stdout);
    QTextStream err(stderr);
    const Console console{out, err, ::isatty(STDERR_FILENO) != 0};
    int status = runReporting(console, [&] {
        const SettingsSource source = std::visit(
            [](const auto &options) { return settingsOf(options, 0); }, commandLine.verb);
        const Host host(pluginsDirectory(commandLine.plugins), chosenLanguage(source), console);
        return std::visit(host, commandLine.verb);
    });
    out.flush();
    if (out.status() != QTextStream::Ok || std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        console.message(QStringLiteral("standard output: cannot be written"));
        status = ExitFailed;
    }
    return status;
}

} // namespace

} // namespace KivSystem

int main(int argc, char **argv)
{
    using KivSystem::CommandLine;
    const CommandLine commandLine = KivSystem::parseCommandLine(argc, argv, std::cout, std::cerr);
    if (commandLine.exitStatus) {
        return *commandLine.exitStatus;
    }
    KivSystem::Interruption::install();
    std::signal(SIGXFSZ, SIG_IGN); // a file that may not grow is a failed write, not the end

    qInstallMessageHandler(KivSystem::showQtMessage);
    KivSystem::logToStandardError(KivSystem::LogWarning);

    // A verb works without a display, and the names in its arguments are not Qt's options.
    const auto *window = std::get_if<KivSystem::WindowOptions>(&commandLine.verb);
    if (window == nullptr) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    int qtArgumentCount = 1;
    const QApplication application(qtArgumentCount, argv);
    KivSystem::applicationStands = true;
    QCoreApplication::setOrganizationName(QStringLiteral("KivSystem"));
    QCoreApplication::setApplicationName(QStringLiteral("kivhost"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KIV_VERSION));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    // Drawings name the font of the application: the same on every machine.
    QApplication::setFont(QFont(QStringLiteral("Sans Serif")));
    // The same marker gives the same bytes whatever the machine's encoding and numbers are; only
    // what formats take from QLocale follows the user.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    std::setlocale(LC_NUMERIC, "C");
    return window != nullptr ? KivSystem::runWindow(*window, commandLine.plugins)
                             : KivSystem::runVerb(commandLine);
}
