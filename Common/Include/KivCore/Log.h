// The host's loggers, one for each level. Before the host has set them there are none.
//
//     if (TextLineComposer<char> *logger = DefaultLogger(LogWarning)) {
//         *logger << tr("cannot read font table file:") << fileName;
//     }
#ifndef KIVCORE_LOG_H
#define KIVCORE_LOG_H

#include "KivCore/Export.h"
#include "KivCore/TextLineComposer.h"

#include <memory>
#include <string>

namespace KivSystem {

enum LogLevel
{
    LogFatal = 0,
    LogError = 1,
    LogWarning = 2,
    LogInfo = 3,
    LogDebug = 4,
};

/// The logger of a level, borrowed; null when nobody listens at that level.
KIVCORE_EXPORT TextLineComposer<char> *DefaultLogger(LogLevel level);

/// Puts `logger` (null: none) in place of the logger of `level` and returns the one that was there.
KIVCORE_EXPORT std::unique_ptr<TextLineComposer<char>> setDefaultLogger(
    LogLevel level, std::unique_ptr<TextLineComposer<char>> logger);

/// Writes each line to standard error, behind the name of its level: "warning: ...".
class KIVCORE_EXPORT StandardErrorLogger final : public TextLineComposer<char>
{
public:
    explicit StandardErrorLogger(LogLevel level);
    ~StandardErrorLogger() override;

protected:
    void writeLine(const std::string &line) override;

private:
    const LogLevel m_level;
};

/// Sets standard error loggers for `mostVerbose` and all graver levels, and none for the others.
KIVCORE_EXPORT void logToStandardError(LogLevel mostVerbose);

} // namespace KivSystem

#endif
