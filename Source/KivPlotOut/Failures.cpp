#include "Failures.h"

#include <QCoreApplication>
#include <QString>

namespace KivSystem {

// NOLINTNEXTLINE(bugprone-throw-keyword-missing): a base class, not a temporary
NonFatalError::NonFatalError(const QString &message) : std::logic_error(message.toStdString()) {}

IOError::IOError(int error) : NonFatalError(qt_error_string(error)) {}

QString invalidOperationMessage()
{
    return QCoreApplication::translate("KivSystem::KivApplication", "Invalid Operation");
}

} // namespace KivSystem
