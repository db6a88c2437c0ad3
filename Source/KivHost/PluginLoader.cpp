#include "PluginLoader.h"

#include "Console.h"
#include "KivCore/ExporterFactory.h"
#include "KivCore/Init.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

namespace KivSystem {

namespace {

const char *const kPluginFile = "libKivPlotOut.so";
const char *const kEntryPoint = "markerplugin";

} // namespace

QDir pluginsDirectory(const QString &option)
{
    if (!option.isEmpty()) {
        return QDir(option);
    }
    const QDir program(QCoreApplication::applicationDirPath());
    const QDir beside(program.filePath(QStringLiteral("plugins")));
    return beside.exists()
               ? beside
               : QDir(QDir::cleanPath(program.filePath(QStringLiteral(KIV_PLUGINS_FROM_PROGRAM))));
}

ExporterFactory &loadPlugin(const QDir &directory)
{
    const QString path = directory.absoluteFilePath(QString::fromLatin1(kPluginFile));
    const auto fail = [&path](const QString &reason) {
        throw HostError(ExitUnreadable, QStringLiteral("%1: %2").arg(path, reason));
    };
    if (!QFileInfo(path).isFile()) {
        fail(QStringLiteral("there is no such plug-in; --plugins names its directory"));
    }
    QLibrary library(path);
    if (!library.load()) {
        fail(QStringLiteral("the plug-in cannot be loaded: %1").arg(library.errorString()));
    }
    using EntryPoint = ExporterFactory *(*)();
    const auto entryPoint = reinterpret_cast<EntryPoint>(library.resolve(kEntryPoint));
    if (entryPoint == nullptr) {
        fail(QStringLiteral("is no plug-in of this program: it has no \"%1\"").arg(kEntryPoint));
    }
    KivInit::instance()->run(KivInit::StageAfterQt);
    KivInit::instance()->run(KivInit::StagePluginsLoaded);
    ExporterFactory *factory = entryPoint();
    if (factory == nullptr) {
        fail(QStringLiteral("the plug-in offers no formats"));
    }
    return *factory;
}

} // namespace KivSystem
