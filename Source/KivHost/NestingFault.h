// NestingFault: what the two readers of nesting files share: their limits and their messages.
#ifndef KIVHOST_NESTINGFAULT_H
#define KIVHOST_NESTINGFAULT_H

#include <QFile>
#include <QString>

namespace KivSystem {

constexpr qint64 kLargestNestingFile = 33554432; // bytes
constexpr double kLargestCoordinate = 100000;    // cm, as in a marker file
constexpr int kLargestCount = 32767;             // of anything, as in a marker file

/// The faults of one file.
class NestingFault
{
public:
    explicit NestingFault(const QString &path) : m_path(path) {}

    /// Throws HostError: `FILE: place: what, expected something`.
    [[noreturn]] void fail(
        const QString &place, const QString &what, const QString &expected) const;

    /// Opens a file of the path, which must not be larger than the limit.
    void open(QFile &file) const;

private:
    QString m_path;
};

} // namespace KivSystem

#endif
