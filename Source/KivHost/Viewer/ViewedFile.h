// ViewedFile: an exported file of any kind, told by its bytes and read.
#ifndef KIVHOST_VIEWEDFILE_H
#define KIVHOST_VIEWEDFILE_H

#include "FileReaders.h"

#include <variant>

namespace KivSystem {

enum class FileKind
{
    Unknown,
    AnsiCut,
    EastmanCut,
    Nester,
    Illustrator,
    Table,
};

/// By the first bytes of the file, a byte-order mark not counted. Those of a text that is nothing
/// else make a table of a file named like one (*.txt, *.csv); a cut file (*.cut) without a star in
/// which a line starts with a word of the Eastman dialect is taken for one, any other for an ANSI
/// one.
FileKind kindOf(const QByteArray &start, const QString &path);

/// Larger files are none that an export writes.
constexpr qint64 kLargestFile = 256 * 1024 * 1024;

using FileContent = std::variant<CutProgram, NesterFile, Picture, TableFile>;

/// The separator is that of a table; without one it is found out, first by the one that the text
/// export is set to. Throws HostError (ExitUnreadable) with one sentence that names the file and
/// the place in it, behind a byte-order mark.
FileContent readExportedFile(
    const QString &path, const std::optional<QString> &separator = std::nullopt);

/// What the file shows, whatever it is.
Picture pictureOf(const FileContent &content);

} // namespace KivSystem

#endif
