// PluginLoader: finds the plug-in and its factory of export formats.
#ifndef KIVHOST_PLUGINLOADER_H
#define KIVHOST_PLUGINLOADER_H

class QDir;
class QString;

namespace KivSystem {

class ExporterFactory;

/// The directory that the option names, or else "plugins" beside the program, or else that of the
/// installation. It is not checked.
QDir pluginsDirectory(const QString &option);

/// Loads the plug-in and runs what it registered for the start. The factory belongs to the plug-in,
/// which stays loaded until the program ends. Throws HostError (ExitUnreadable).
ExporterFactory &loadPlugin(const QDir &directory);

} // namespace KivSystem

#endif
