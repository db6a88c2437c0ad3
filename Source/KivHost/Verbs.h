// Verbs: what a person can ask kivhost for, one function a verb. Each takes its options as they
// stand on the command line, prints to a console, and returns an exit status or throws HostError.
#ifndef KIVHOST_VERBS_H
#define KIVHOST_VERBS_H

#include <QString>
#include <QStringList>

namespace KivSystem {

class CommandLineInterface;
class ExporterFactory;
struct Console;

struct FormatsOptions
{
    bool json = false;
};

struct InfoOptions
{
    QString marker;
    bool json = false;
};

struct ImportOptions
{
    QString instance;
    QString layout;  ///< empty: nothing is placed
    double unit = 0; ///< centimetres for a unit of the source
    QString output;
};

struct ExportOptions
{
    QString marker;
    QStringList formats; ///< names or tags, each once
    bool all = false;    ///< all formats that the plug-in offers, in place of `formats`
    QString directory;
    QStringList settings; ///< NAME=VALUE
    QString fields;       ///< empty: as set
    QString settingsFile; ///< empty: the user's own settings
    bool exportNotOptimised = false;
    bool json = false;
};

struct SettingsOptions
{
    bool json = false;
};

int listFormats(
    const FormatsOptions &options, const ExporterFactory &factory, const Console &console);

int showInfo(const InfoOptions &options, const Console &console);

int importMarker(const ImportOptions &options, const Console &console);

/// `user` is the interface of the KivApplication that the plug-in asks.
int exportMarker(const ExportOptions &options, ExporterFactory &factory, CommandLineInterface &user,
    const Console &console);

int listSettings(const SettingsOptions &options, const Console &console);

} // namespace KivSystem

#endif
