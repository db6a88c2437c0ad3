#include "KivMarker/MarkerFile.h"

#include "JsonKeys.h"
#include "JsonNode.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "MarkerFileReader.h"
#include "MarkerFileWriter.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace KivSystem {
namespace {

constexpr qint64 kLargestFile = qint64(256) * 1024 * 1024;

[[noreturn]] void failFile(const QString &path, const QString &fault)
{
    throw MarkerFileError(QStringLiteral("%1: %2").arg(path, fault));
}

// Line and column of a place in the text, both counted from 1, the column in bytes.
QString placeOf(const QByteArray &bytes, int offset)
{
    const QByteArray before = bytes.left(offset);
    const int line = before.count('\n') + 1;
    const int column = before.size() - before.lastIndexOf('\n');
    return QStringLiteral("line %1, column %2").arg(line).arg(column);
}

} // namespace

MarkerFileError::MarkerFileError(const QString &message) : std::runtime_error(message.toStdString())
{}

std::unique_ptr<DocumentMak> MarkerFile::load(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        failFile(path, QStringLiteral("$: this is not a regular file, expected a marker file"));
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        failFile(path, QStringLiteral("$: cannot be opened (%1), expected a marker file")
                           .arg(file.errorString()));
    }
    // read() takes memory for all that it is allowed to read.
    const QByteArray bytes =
        file.size() > kLargestFile ? file.read(kLargestFile + 1) : file.readAll();
    if (file.error() != QFileDevice::NoError) {
        failFile(path, QStringLiteral("$: cannot be read (%1), expected a marker file")
                           .arg(file.errorString()));
    }
    std::unique_ptr<DocumentMak> document = parse(bytes, path);
    document->drawing()->filePath = info.absoluteFilePath();
    return document;
}

std::unique_ptr<DocumentMak> MarkerFile::parse(const QByteArray &bytes, const QString &path)
{
    if (bytes.size() > kLargestFile) {
        failFile(path, QStringLiteral("$: the file is too large, expected at most 256 MiB"));
    }
    QJsonParseError fault;
    const QJsonDocument json = QJsonDocument::fromJson(bytes, &fault);
    if (fault.error != QJsonParseError::NoError) {
        failFile(path, QStringLiteral("$ (%1): %2, expected JSON text")
                           .arg(placeOf(bytes, fault.offset), fault.errorString()));
    }
    if (const auto repeated = findRepeatedKey(bytes)) {
        failFile(path, QStringLiteral("%1: the key \"%2\" stands twice, expected each key once")
                           .arg(repeated->path, repeated->key));
    }
    try {
        auto drawing =
            readDrawing(json.isArray() ? QJsonValue(json.array()) : QJsonValue(json.object()));
        drawing->filePath = path;
        return std::make_unique<DocumentMak>(std::move(drawing));
    } catch (const JsonFault &error) {
        failFile(path, QString::fromUtf8(error.what()));
    }
}

QByteArray MarkerFile::toBytes(const DocumentMak &document)
{
    return document.drawing() != nullptr ? writeDrawing(*document.drawing()) : QByteArray();
}

void MarkerFile::save(const DocumentMak &document, const QString &path)
{
    if (document.drawing() == nullptr) {
        failFile(path, QStringLiteral("cannot be written: there is no drawing"));
    }
    QSaveFile file(path);
    const QByteArray bytes = toBytes(document);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    if (!written) {
        failFile(path, QStringLiteral("cannot be written: %1").arg(file.errorString()));
    }
}

} // namespace KivSystem
