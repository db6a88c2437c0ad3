/// Marker files (.mar): JSON in UTF-8, described in Docs/MarkerFile.md.
///
///     auto document = MarkerFile::load(path);   // throws MarkerFileError
///     MarkerFile::save(*document, otherPath);   // all or nothing

#ifndef KIVMARKER_MARKERFILE_H
#define KIVMARKER_MARKERFILE_H

#include <QByteArray>
#include <QString>

#include <memory>
#include <stdexcept>

namespace KivSystem {

class DocumentMak;

/// A marker file that cannot be read or written. what() is one sentence in UTF-8:
/// `FILE: JSON path: what is wrong, what is expected`, or `FILE: cannot be written: reason`.
class MarkerFileError : public std::runtime_error
{
public:
    explicit MarkerFileError(const QString &message);
    QString message() const { return QString::fromUtf8(what()); }
};

namespace MarkerFile {

/// Reads a whole marker. Everything is checked; the first fault is thrown as MarkerFileError and
/// nothing is left of the drawing. The drawing's filePath is the absolute path of the file.
std::unique_ptr<DocumentMak> load(const QString &path);

/// The same from bytes; `path` names the file in messages and becomes the drawing's filePath as it
/// stands.
std::unique_ptr<DocumentMak> parse(const QByteArray &bytes, const QString &path);

/// The file's bytes. What was read with `parse` gives the same bytes again once it was written in
/// this way.
QByteArray toBytes(const DocumentMak &document);

/// Writes the marker, replacing the file only when all of it is on the disk. Does not change the
/// document's filePath. Throws MarkerFileError, also for a document without a drawing.
void save(const DocumentMak &document, const QString &path);

} // namespace MarkerFile
} // namespace KivSystem

#endif
