#include "KivCore/Log.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <iostream>
#include <utility>

namespace KivSystem {

namespace {

using Loggers = std::array<std::unique_ptr<TextLineComposer<char>>, LogDebug + 1>;

Loggers &loggers()
{
    static Loggers byLevel;
    return byLevel;
}

bool isLevel(LogLevel level)
{
    return level >= LogFatal && level <= LogDebug;
}

void printEscaped(std::ostream &stream, char c)
{
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
        stream << '\\' << c;
    } else if (c == '\n') {
        stream << "\\n";
    } else if (c == '\t') {
        stream << "\\t";
    } else if (code < 0x20 || code == 0x7f) {
        constexpr char kDigits[] = "0123456789abcdef";
        stream << "\\x" << kDigits[code >> 4] << kDigits[code & 0xf];
    } else {
        stream << c;
    }
}

} // namespace

void Private::printQString(std::ostream &stream, const QString &text, bool quoted)
{
    const QByteArray utf8 = text.toUtf8();
    if (!quoted) {
        stream.write(utf8.constData(), utf8.size());
        return;
    }
    stream << '"';
    for (const char c : utf8) {
        printEscaped(stream, c);
    }
    stream << '"';
}

TextLineComposer<char> *DefaultLogger(LogLevel level)
{
    return isLevel(level) ? loggers()[level].get() : nullptr;
}

std::unique_ptr<TextLineComposer<char>> setDefaultLogger(
    LogLevel level, std::unique_ptr<TextLineComposer<char>> logger)
{
    Q_ASSERT(isLevel(level));
    return std::exchange(loggers()[level], std::move(logger));
}

StandardErrorLogger::StandardErrorLogger(LogLevel level) : m_level(level) {}

StandardErrorLogger::~StandardErrorLogger() = default;

void StandardErrorLogger::writeLine(const std::string &line)
{
    static constexpr const char *kNames[] = {"fatal", "error", "warning", "info", "debug"};
    std::cerr << kNames[m_level] << ": " << line << std::endl;
}

void logToStandardError(LogLevel mostVerbose)
{
    for (int i = LogFatal; i <= LogDebug; ++i) {
        const auto level = static_cast<LogLevel>(i);
        setDefaultLogger(
            level, level <= mostVerbose ? std::make_unique<StandardErrorLogger>(level) : nullptr);
    }
}

} // namespace KivSystem
