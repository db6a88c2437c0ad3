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

/// By the first bytes of the file. Those of a text that is nothing else make a table of a file
/// named like one (*.txt, *.csv); a cut file (*.cut) that is neither is taken for an ANSI one.
FileKind kindOf(const QByteArray &start, const QString &path);

/// Larger files are none that an export writes.
constexpr qint64 kLargestFile = 256 * 1024 * 1024;

using FileContent = std::variant<CutProgram, NesterFile, Picture, TableFile>;

/// Throws HostError (ExitUnreadable) with one sentence that names the file.
FileContent readExportedFile(const QString &path);

/// What the file shows, whatever it is.
Picture pictureOf(const FileContent &content);

} // namespace KivSystem

#endif
