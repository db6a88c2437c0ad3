// FileNames: file names made from the names that formats propose, such as a fabric's name.
//
//     FileNames names("cut");
//     names.claim("Shell 1/2");  // "Shell 1_2.cut"
//     names.claim("SHELL 1_2");  // "SHELL 1_2 (2).cut"
#ifndef KIVHOST_FILENAMES_H
#define KIVHOST_FILENAMES_H

#include <QSet>
#include <QString>

namespace KivSystem {

/// Longest name that is made, in bytes of UTF-8 without number and extension. File systems take
/// 255.
constexpr int kLongestFileName = 200;

/// What no file name can hold becomes an underscore: / \ : * ? " < > | and control characters, and
/// a leading dot, which would hide the file and leave its name without a base. An empty name
/// becomes one underscore; a long one is cut at a character.
QString fileNameFrom(const QString &proposedName);

/// The names of one folder in one run.
class FileNames
{
public:
    /// `extension` is without the dot.
    explicit FileNames(const QString &extension) : m_extension(extension) {}

    /// A file name from a proposed one. Names are unique without regard to case: one that is taken
    /// gets " (2)", " (3)", ... before the extension.
    QString claim(const QString &proposedName);

private:
    QString m_extension;
    QSet<QString> m_taken;
};

} // namespace KivSystem

#endif
