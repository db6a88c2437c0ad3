// Console: where a verb writes, and how it ends. Results go to standard output, messages to
// standard error with the program's name in front:
//
//     kivhost: tee.mar: there is no such file
#ifndef KIVHOST_CONSOLE_H
#define KIVHOST_CONSOLE_H

#include <QString>
#include <QTextStream>

#include <functional>
#include <stdexcept>

class QJsonValue;

namespace KivSystem {

/// Exit status of the program.
enum ExitStatus : int
{
    ExitDone = 0,       ///< all that was asked for was written
    ExitFailed = 1,     ///< something could not be written, or nothing was there to write
    ExitWrongUsage = 2, ///< the command line is wrong; nothing was touched
    ExitUnreadable = 3, ///< a file could not be read
};

/// Ends a verb with an exit status and one sentence for the user. what() is the sentence in UTF-8.
class HostError : public std::runtime_error
{
public:
    HostError(ExitStatus status, const QString &sentence);
    ExitStatus status() const { return m_status; }
    QString sentence() const { return QString::fromUtf8(what()); }

private:
    ExitStatus m_status;
};

/// The two streams are borrowed.
struct Console
{
    QTextStream &out;
    QTextStream &err;
    bool progress = false; ///< standard error is a terminal: tell what is going on

    /// One message on standard error; control characters in it become blanks.
    void message(const QString &sentence) const;
    /// One indented JSON text on standard output.
    void json(const QJsonValue &value) const;
};

/// Runs a verb. A HostError, and any other exception that escapes, becomes its message and its exit
/// status.
int runReporting(const Console &console, const std::function<int()> &verb);

/// The text with each control character replaced by a blank: it stays on its line, and a name out
/// of a file cannot command the terminal.
QString onOneLine(QString text);

/// Throws HostError (ExitUnreadable) with a plain sentence when there is no readable file.
void requireReadableFile(const QString &path);

} // namespace KivSystem

#endif
