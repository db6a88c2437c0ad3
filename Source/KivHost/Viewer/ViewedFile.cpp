#include "ViewedFile.h"

#include "Console.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace KivSystem {

namespace {

constexpr qint64 kStartSize = 4096;

FileContent read(const QByteArray &bytes, FileKind kind)
{
    switch (kind) {
    case FileKind::AnsiCut:
        return readAnsiCutFile(bytes);
    case FileKind::EastmanCut:
        return readEastmanCutFile(bytes);
    case FileKind::Nester:
        return readNesterFile(bytes);
    case FileKind::Illustrator:
        return readIllustratorFile(bytes);
    case FileKind::Table:
        return readTableFile(bytes);
    case FileKind::Unknown:
        break;
    }
    throw ReadFault(QStringLiteral("line 1: this is the start of no exported file"));
}

} // namespace

FileKind kindOf(const QByteArray &start, const QString &path)
{
    // Latin-1 takes every byte as it is.
    const QString text = QString::fromLatin1(start.left(static_cast<int>(kStartSize)));
    const auto begins = [&text](const char *pattern) {
        const QRegularExpression expression{QLatin1String(pattern)};
        return expression
            .match(
                text, 0, QRegularExpression::NormalMatch, QRegularExpression::AnchoredMatchOption)
            .hasMatch();
    };
    if (begins("%!PS-Adobe")) {
        return FileKind::Illustrator;
    }
    if (begins("\\s*%?\\s*([HNMGD]\\d{1,8}|[XY]-?\\d{1,9})+\\s*\\*")) {
        return FileKind::AnsiCut;
    }
    if (begins("(NAME  [^\\n]*\\r?\\nUNIT  |UNIT  |PIECE [ \\d]+\\r?\\n|WASTE [ \\d]+\\r?\\n)")) {
        return FileKind::EastmanCut;
    }
    if (begins("(\\s*999\\r?\\n[^\\n]*\\n)*\\s*0\\r?\\n\\s*SECTION\\s*\\r?\\n")) {
        return FileKind::Nester;
    }
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == QLatin1String("txt") || extension == QLatin1String("csv")) {
        return FileKind::Table;
    }
    if (extension == QLatin1String("cut")) {
        // Reports may be stored under the same extension.
        return text.section(QLatin1Char('\n'), 0, 0).contains(QLatin1Char('\t'))
                   ? FileKind::Table
                   : FileKind::AnsiCut;
    }
    if (extension == QLatin1String("dxf")) {
        return FileKind::Nester;
    }
    return extension == QLatin1String("ai") ? FileKind::Illustrator : FileKind::Unknown;
}

FileContent readExportedFile(const QString &path)
{
    requireReadableFile(path);
    const auto fail = [&path](const QString &reason) {
        return HostError(ExitUnreadable, QStringLiteral("%1: %2").arg(path, reason));
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw fail(QStringLiteral("cannot be read: %1").arg(file.errorString()));
    }
    // One byte more than is taken: the size of a device or a pipe is not known.
    const QByteArray bytes = file.read(kLargestFile + 1);
    if (bytes.size() > kLargestFile) {
        throw fail(QStringLiteral("the file has more than %1 MB").arg(kLargestFile / 1024 / 1024));
    }
    try {
        return read(bytes, kindOf(bytes, path));
    } catch (const ReadFault &fault) {
        throw fail(QString::fromUtf8(fault.what()));
    }
}

Picture pictureOf(const FileContent &content)
{
    struct Visitor
    {
        Picture operator()(const Picture &picture) const { return picture; }
        Picture operator()(const CutProgram &program) const { return pictureOf(program); }
        Picture operator()(const NesterFile &file) const { return pictureOf(file); }
        Picture operator()(const TableFile &table) const { return pictureOf(table); }
    };
    return std::visit(Visitor(), content);
}

} // namespace KivSystem
