// Failures that leave an export as exceptions and reach the host. Throw them so that they carry
// their throw site (boost::throw_function, boost::throw_file, boost::throw_line):
//
//     short error = 0;
//     const int layers = drawing->getLayersQty(&error);
//     KIV_CHECK_OPERATION(error == 0);                        // AssertionError from this line
//     BOOST_THROW_EXCEPTION(IOError(file.error()));

#ifndef KIVPLOTOUT_FAILURES_H
#define KIVPLOTOUT_FAILURES_H

#include <QtGlobal>

#include <boost/exception/exception.hpp>
#include <boost/throw_exception.hpp>

#include <stdexcept>

class QString;

namespace KivSystem {

/// Base of the failures that the user can survive; never thrown as itself. what() is the message
/// in UTF-8.
class NonFatalError : public boost::exception, public std::logic_error
{
public:
    explicit NonFatalError(const QString &message);
};

/// A broken expectation: an operation of the marker library that failed, or an object that is
/// missing.
class AssertionError : public NonFatalError
{
public:
    using NonFatalError::NonFatalError;
};

/// A file that could not be opened or written.
class IOError : public NonFatalError
{
public:
    /// `error` is a value of QFileDevice::error(). The message is the platform's text for that
    /// number and does not name the file.
    explicit IOError(int error);
};

/// The one message of AssertionError, "Invalid Operation", translated.
QString invalidOperationMessage();

} // namespace KivSystem

/// Throws AssertionError from the caller's line.
#define KIV_THROW_INVALID_OPERATION()                                                              \
    BOOST_THROW_EXCEPTION(::KivSystem::AssertionError(::KivSystem::invalidOperationMessage()))

/// Throws AssertionError from the caller's line unless the condition holds.
#define KIV_CHECK_OPERATION(condition)                                                             \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            KIV_THROW_INVALID_OPERATION();                                                         \
        }                                                                                          \
    } while (false)

/// Ends the program, in release builds too, with `text` in the message unless the condition holds:
/// for errors of the program itself.
#define KIV_HARD_ASSERT(condition, text)                                                           \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            qt_assert(text, __FILE__, __LINE__);                                                   \
        }                                                                                          \
    } while (false)

#endif
