#include "ViewedFile.h"

#include "Console.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>

namespace KivSystem {

namespace {

constexpr int kStartSize = 4096;
const char *const kSeparatorKey = "text_export/option/_0"; // where the plug-in's panel keeps it

// Some editors put the mark in front of any text.
QByteArray withoutByteOrderMark(const QByteArray &bytes)
{
    const QByteArray mark("\xef\xbb\xbf");
    return bytes.startsWith(mark) ? bytes.mid(mark.size()) : bytes;
}

bool matchesAtStart(const QString &text, const char *pattern)
{
    const QRegularExpression expression{QLatin1String(pattern)};
    return expression
        .match(text, 0, QRegularExpression::NormalMatch, QRegularExpression::AnchoredMatchOption)
        .hasMatch();
}

// A damaged one, too: ANSI files have stars, and no such lines.
bool hasEastmanLines(const QString &text)
{
    static const QRegularExpression record(
        QStringLiteral("^(NAME|UNIT|PIECE|WASTE|SPEED|MOVE|CUT|NOTCH|HOLE|BURN|PENUP|PENDN|PEN|END)"
                       "( |\\r?$)"),
        QRegularExpression::MultilineOption);
    return !text.contains(QLatin1Char('*')) && record.match(text).hasMatch();
}

// Reports and labels may be stored under the extension of cut files.
bool isTabbed(const QString &text)
{
    return text.section(QLatin1Char('\n'), 0, 0).contains(QLatin1Char('\t'));
}

bool isPlainText(const QString &text)
{
    static const QRegularExpression noText(QStringLiteral("[\\x00-\\x08\\x0e-\\x1b\\x7f*]"));
    return text.contains(QLatin1Char('\n')) && !text.contains(noText);
}

FileKind kindByName(const QString &text, const QString &path)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == QLatin1String("txt") || extension == QLatin1String("csv")) {
        return FileKind::Table;
    }
    if (extension == QLatin1String("cut")) {
        return isTabbed(text)          ? FileKind::Table
               : hasEastmanLines(text) ? FileKind::EastmanCut
               : isPlainText(text)     ? FileKind::Table
                                       : FileKind::AnsiCut;
    }
    if (extension == QLatin1String("dxf")) {
        return FileKind::Nester;
    }
    return extension == QLatin1String("ai") ? FileKind::Illustrator : FileKind::Unknown;
}

// What the text export is set to.
QString usualSeparator()
{
    const QVariant stored = QSettings().value(QLatin1String(kSeparatorKey));
    const QString text = QString::fromUtf8(stored.toByteArray());
    return text.isEmpty() ? TableForm().usual : text;
}

// The size of a device or a pipe is not known. Stops behind more than is taken.
QByteArray readParts(QFile &file)
{
    constexpr qint64 partSize = 1024 * 1024;
    QByteArray all;
    for (QByteArray part = file.read(partSize); !part.isEmpty(); part = file.read(partSize)) {
        all += part;
        if (all.size() > kLargestFile) {
            break;
        }
    }
    return all;
}

FileContent read(const QByteArray &bytes, FileKind kind, const TableForm &form)
{
    if (bytes.isEmpty()) {
        throw ReadFault(QStringLiteral("the file is empty"));
    }
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
        return readTableFile(bytes, form);
    case FileKind::Unknown:
        break;
    }
    throw ReadFault(QStringLiteral("line 1: this is the start of no exported file"));
}

} // namespace

FileKind kindOf(const QByteArray &start, const QString &path)
{
    // Latin-1 takes every byte as it is.
    const QString text = QString::fromLatin1(withoutByteOrderMark(start.left(kStartSize)));
    const auto begins = [&text](const char *pattern) { return matchesAtStart(text, pattern); };
    if (begins("%!PS-Adobe")) {
        return FileKind::Illustrator;
    }
    if (begins("\\s*%?\\s*([HNMGD]\\d{1,8}|[XY]-?\\d{1,9})+\\s*\\*")) {
        return FileKind::AnsiCut;
    }
    if (begins("\\s*(NAME  [^\\n]*\\s+UNIT  |UNIT  |(PIECE|WASTE) [ \\d]+\\r?\\n)")) {
        return FileKind::EastmanCut;
    }
    if (begins("(\\s*999\\r?\\n[^\\n]*\\n)*\\s*0\\r?\\n\\s*SECTION\\s*\\r?\\n")) {
        return FileKind::Nester;
    }
    return kindByName(text, path);
}

FileContent readExportedFile(const QString &path, const std::optional<QString> &separator)
{
    requireReadableFile(path);
    const auto fail = [&path](const QString &reason) {
        return HostError(ExitUnreadable, QStringLiteral("%1: %2").arg(path, reason));
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw fail(QStringLiteral("cannot be read: %1").arg(file.errorString()));
    }
    const QByteArray all = readParts(file);
    if (all.size() > kLargestFile) {
        throw fail(QStringLiteral("the file has more than %1 MB").arg(kLargestFile / 1024 / 1024));
    }
    const QByteArray bytes = withoutByteOrderMark(all);
    try {
        return read(bytes, kindOf(bytes, path), {separator, usualSeparator()});
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
