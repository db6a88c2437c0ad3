#include "ExportFiles.h"

#include "Console.h"
#include "WindowText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace KivSystem {

namespace {

// The file that a path leads to.
QString placeOf(const QString &path)
{
    const QFileInfo info(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    return info.isSymLink() && info.exists() ? info.canonicalFilePath() : info.filePath();
}

// Two folders may be one.
bool isSameFile(const QString &place, const QString &other)
{
    const QFileInfo info(place);
    const QFileInfo otherInfo(other);
    return place == other || (info.fileName() == otherInfo.fileName() && info.dir().exists() &&
                                 info.dir().canonicalPath() == otherInfo.dir().canonicalPath());
}

} // namespace

ExportFiles::ExportFiles() = default;

ExportFiles::~ExportFiles() = default;

QString ExportFiles::add(const QString &path)
{
    const QFileInfo info(placeOf(path));
    checkNew(info.filePath());
    auto staging = std::make_unique<ExportStaging>(info.path(), info.suffix());
    const QString staged = staging->addNamedFile(info.fileName());
    QFile file(staged); // the name may be too long, or none that the disk can have
    if (!file.open(QIODevice::WriteOnly)) {
        throw HostError(ExitFailed, notWritten(info.filePath(), file.errorString()));
    }
    file.remove();
    m_files.push_back({info.filePath(), std::move(staging)});
    return staged;
}

void ExportFiles::checkNew(const QString &path) const
{
    QString problem = replaceProblem(path);
    if (QFileInfo(path).baseName().isEmpty()) { // a format would take it for a cancelled dialog
        problem = windowText("a file needs a name before its first full stop");
    } else if (std::any_of(m_files.begin(), m_files.end(),
                   [&path](const File &file) { return isSameFile(file.path, path); })) {
        problem = windowText("a file of this export has the same name");
    }
    if (!problem.isEmpty()) {
        throw HostError(ExitFailed, notWritten(path, problem));
    }
}

QString ExportFiles::findWriteProblem() const
{
    return m_files.empty() ? QString() : m_files.back().staging->findWriteProblem();
}

QString ExportFiles::currentTarget() const
{
    return m_files.empty() ? QString() : m_files.back().path;
}

std::vector<WrittenFile> ExportFiles::commit()
{
    std::vector<ExportStaging *> stagings;
    for (const File &file : m_files) {
        stagings.push_back(file.staging.get());
    }
    return ExportStaging::commitAll(stagings);
}

} // namespace KivSystem
