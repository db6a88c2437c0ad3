#include "ExportFiles.h"

#include "Console.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace KivSystem {

namespace {

QString placeOf(const QString &path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

} // namespace

ExportFiles::ExportFiles() = default;

ExportFiles::~ExportFiles() = default;

bool ExportFiles::contains(const QString &path) const
{
    const QString place = placeOf(path);
    return std::any_of(
        m_files.begin(), m_files.end(), [&place](const File &file) { return file.path == place; });
}

QString ExportFiles::add(const QString &path)
{
    const QFileInfo info(placeOf(path));
    if (info.baseName().isEmpty()) {
        return path; // a format takes such a name for a cancelled dialog
    }
    if (info.isDir()) {
        throw HostError(ExitFailed, notWritten(info.filePath(), QStringLiteral("Is a directory")));
    }
    auto staging = std::make_unique<ExportStaging>(info.path(), info.suffix());
    const QString staged = staging->addNamedFile(info.fileName());
    m_files.push_back({info.filePath(), std::move(staging)});
    return staged;
}

QString ExportFiles::findWriteProblem() const
{
    return m_files.empty() ? QString() : m_files.back().staging->findWriteProblem();
}

QString ExportFiles::currentTarget() const
{
    return m_files.empty() ? QString() : m_files.back().path;
}

ExportFiles::Result ExportFiles::commit()
{
    Result result;
    for (const File &file : m_files) {
        try {
            const std::vector<WrittenFile> written = file.staging->commit();
            result.written.insert(result.written.end(), written.begin(), written.end());
        } catch (const HostError &error) {
            result.faults << error.sentence();
        }
    }
    return result;
}

} // namespace KivSystem
