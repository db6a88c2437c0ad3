// Verbs: what a person can ask kivhost for, one function a verb. Each takes its options as they
// stand on the command line, prints to a console, and returns an exit status or throws HostError.
#ifndef KIVHOST_VERBS_H
#define KIVHOST_VERBS_H

#include "HostSettings.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <string>

namespace KivSystem {

class CommandLineInterface;
class DocumentMak;
class ExporterFactory;
struct Console;

struct FormatsOptions
{
    bool json = false;
};

struct InfoOptions
{
    QString marker;
    bool cut = false; ///< tell of the cuts, too
    SettingsSource settings;
    bool json = false;
};

struct SvgVerbOptions
{
    QString marker;
    int fabric = 1;
    std::string cutter = "ansi"; ///< or "eastman" or "labels"
    int block = 0;               ///< 0 for the document of the fabric
    SettingsSource settings;
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
    SettingsSource settings;
    QString fields; ///< empty: as set
    bool exportNotOptimised = false;
    bool json = false;
};

struct RenderOptions
{
    QString file;   ///< a marker (*.mar) or an exported file
    QString output; ///< ends in .png or .svg
    QString size;   ///< "1600x800"; empty: by the picture
    int fabric = 0; ///< of a marker, from 1; 0: the current one
    SettingsSource settings;
};

struct SettingsOptions
{
    bool json = false;
};

/// No verb: the window with these files open. See HostWindow.h.
struct WindowOptions
{
    QStringList files;
};

/// Throws HostError (ExitUnreadable) with the loader's sentence.
std::unique_ptr<DocumentMak> loadMarker(const QString &path);

int listFormats(
    const FormatsOptions &options, const ExporterFactory &factory, const Console &console);

int showInfo(const InfoOptions &options, const Console &console);

int writeSvg(const SvgVerbOptions &options, const Console &console);

int importMarker(const ImportOptions &options, const Console &console);

/// `user` is the interface of the KivApplication that the plug-in asks.
int exportMarker(const ExportOptions &options, ExporterFactory &factory, CommandLineInterface &user,
    const Console &console);

/// Draws a marker or an exported file into a picture file.
int renderPicture(const RenderOptions &options, const Console &console);

int listSettings(const SettingsOptions &options, const Console &console);

} // namespace KivSystem

#endif
