// CommandLine: the definitions of the command line. Nothing is done here but to fill the options
// of a verb.
#ifndef KIVHOST_COMMANDLINE_H
#define KIVHOST_COMMANDLINE_H

#include "Verbs.h"

#include <iosfwd>
#include <optional>
#include <variant>

namespace KivSystem {

struct CommandLine
{
    /// Set when there is no verb to run: help was asked for and given, or the usage is wrong and
    /// was told.
    std::optional<int> exitStatus;

    QString plugins; ///< directory of the plug-ins; empty: where they belong
    std::variant<FormatsOptions, InfoOptions, ImportOptions, ExportOptions, SettingsOptions,
        SvgVerbOptions, RenderOptions, WindowOptions>
        verb;
};

/// Whether a window can be opened: there is a display, or Qt was told its platform.
bool hasDisplay();

/// `arguments` as main() has them, in UTF-8. Help goes to `out`, faults go to `err`.
/// Without arguments, or with names of files in place of a verb, the window is asked for; where no
/// window can be opened, that is wrong usage.
CommandLine parseCommandLine(
    int count, const char *const *arguments, std::ostream &out, std::ostream &err);

} // namespace KivSystem

#endif
