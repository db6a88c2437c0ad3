#include "ExportStaging.h"

#include "Console.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace KivSystem {

namespace {

namespace fs = std::filesystem;

constexpr int kBufferBytes = 64 * 1024;
constexpr long kSmallestProbe = 4096;
constexpr int kStaleAfterSeconds = 24 * 60 * 60;

fs::path nativePath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

QString reasonOf(const std::error_code &error)
{
    return QString::fromLocal8Bit(error.message().c_str());
}

// The system's reason for the call that has just failed.
QString lastReason()
{
    return reasonOf(std::error_code(errno, std::generic_category()));
}

bool writeAll(int descriptor, const QByteArray &bytes)
{
    for (int done = 0; done < bytes.size();) {
        const ssize_t count = ::write(
            descriptor, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
        if (count < 0 && errno != EINTR) {
            return false;
        }
        done += count < 0 ? 0 : static_cast<int>(count);
    }
    return true;
}

int blockSize(int descriptor)
{
    struct stat facts = {};
    const long size = ::fstat(descriptor, &facts) == 0 ? facts.st_blksize : 0;
    return static_cast<int>(qBound(kSmallestProbe, size, static_cast<long>(kBufferBytes)));
}

// Why nothing more can be written to the file, found by appending to it and taking that off again;
// empty when there is room, and then the file is on the disk. A plug-in that writes through a
// QTextStream does not notice a full disk: its file ends early, and only the next write tells why.
// QFile does not tell it either once a part was written. A file that ends early fills its last
// block, so that one more block is what must not fit.
QString appendProblem(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT, 0666);
    const off_t size = descriptor < 0 ? -1 : ::lseek(descriptor, 0, SEEK_END);
    QString problem;
    if (size < 0 || !writeAll(descriptor, QByteArray(blockSize(descriptor), '\0')) ||
        ::fsync(descriptor) != 0) {
        problem = lastReason();
    }
    if (size >= 0 && (::ftruncate(descriptor, size) != 0 || ::fsync(descriptor) != 0) &&
        problem.isEmpty()) {
        problem = lastReason();
    }
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    return problem;
}

// The name of a file is on the disk once its folder is. File systems that cannot sync a folder do
// without.
void syncFolder(const QString &folder)
{
    const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

} // namespace

QString notWritten(const QString &target, const QString &reason)
{
    return QStringLiteral("%1: was not written: %2").arg(target, reason);
}

QString replaceProblem(const QString &path)
{
    std::error_code error;
    const fs::file_status status = fs::status(nativePath(path), error);
    if (fs::is_directory(status)) {
        return QStringLiteral("Is a directory");
    }
    const bool isProtected =
        fs::is_regular_file(status) && ::access(QFile::encodeName(path).constData(), W_OK) != 0;
    return isProtected ? lastReason() : QString();
}

MadeFolders::MadeFolders(const QString &path)
{
    std::error_code error;
    fs::path missing;
    for (const fs::path &part : nativePath(QDir::cleanPath(path))) {
        missing /= part;
        if (fs::create_directory(missing, error)) {
            m_made.push_back(QByteArray::fromStdString(missing.string()));
            continue;
        }
        std::error_code ignored;
        if (!fs::is_directory(missing, ignored)) {
            const bool isFile = fs::exists(missing, ignored);
            const QString name = QFile::decodeName(missing.c_str());
            removeEmpty();
            throw HostError(
                ExitFailed, isFile ? QStringLiteral("%1: is a file, expected a directory").arg(name)
                                   : QStringLiteral("%1: the directory cannot be made: %2")
                                         .arg(name, reasonOf(error)));
        }
    }
}

MadeFolders::~MadeFolders()
{
    removeEmpty();
}

void MadeFolders::removeEmpty() const
{
    for (auto folder = m_made.rbegin(); folder != m_made.rend(); ++folder) {
        ::rmdir(folder->constData());
    }
}

ExportStaging::ExportStaging(const QString &folder, const QString &extension)
    : m_folder(QDir::cleanPath(folder))
    , m_made(m_folder)
    , m_staging(m_folder + QStringLiteral("/.kivhost-XXXXXX"))
    , m_fileNames(extension)
{
    if (!m_staging.isValid()) {
        throw HostError(ExitFailed, QStringLiteral("%1: the directory cannot be written: %2")
                                        .arg(m_folder, m_staging.errorString()));
    }
    m_cleanup = std::make_unique<Interruption::Cleanup>([this] {
        // The plug-in may still be writing: what it adds meanwhile goes the second time.
        for (int attempt = 0; attempt < 3 && QFileInfo::exists(m_staging.path()); ++attempt) {
            QDir(m_staging.path()).removeRecursively();
        }
        m_made.removeEmpty();
    });
    removeStaleFolders();
}

ExportStaging::~ExportStaging()
{
    m_staging.remove();
}

QString ExportStaging::addFile(const QString &proposedName)
{
    return addNamedFile(m_fileNames.claim(proposedName));
}

QString ExportStaging::addNamedFile(const QString &fileName)
{
    m_names.append(fileName);
    return stagedPath(fileName);
}

QString ExportStaging::currentTarget() const
{
    return m_names.isEmpty() ? m_folder : QDir(m_folder).filePath(m_names.last());
}

QString ExportStaging::findWriteProblem() const
{
    const QString path = stagedPath(QStringLiteral(".probe"));
    QString problem = appendProblem(path);
    QFile::remove(path);
    return problem;
}

/// One file on its way to its place. What was there before waits in the staging folder, and goes
/// back unless keep() is called.
struct ExportStaging::Move
{
    Move(const QString &stagedFile, const QString &targetFile, const QString &backupFile)
        : target(targetFile)
        , backup(backupFile)
    {
        const QString problem = replaceProblem(target);
        if (!problem.isEmpty()) {
            throw HostError(ExitFailed, notWritten(target, problem));
        }
        std::error_code error;
        const fs::path place = nativePath(target);
        if (fs::is_regular_file(place, error)) { // others may read and write it as before
            fs::permissions(nativePath(stagedFile), fs::status(place, error).permissions(), error);
        }
        if (fs::exists(fs::symlink_status(place, error))) {
            fs::create_hard_link(place, nativePath(backup), error);
            if (error) { // not every file system has links
                fs::rename(place, nativePath(backup), error);
            }
            hadBackup = !error;
        }
        if (!error || error == std::errc::no_such_file_or_directory) {
            fs::rename(nativePath(stagedFile), place, error);
        }
        if (error) {
            undo();
            throw HostError(ExitFailed, notWritten(target, reasonOf(error)));
        }
        moved = true;
    }

    void undo()
    {
        std::error_code ignored;
        if (hadBackup) {
            fs::rename(nativePath(backup), nativePath(target), ignored);
        } else if (moved) {
            fs::remove(nativePath(target), ignored);
        }
    }

    QString target;
    QString backup;
    bool hadBackup = false;
    bool moved = false;
};

std::vector<WrittenFile> ExportStaging::commitAll(const std::vector<ExportStaging *> &stagings)
{
    std::vector<WrittenFile> written;
    for (const ExportStaging *staging : stagings) {
        staging->check(written);
    }
    const auto hold = Interruption::hold();
    std::vector<Move> moves;
    try {
        for (const ExportStaging *staging : stagings) {
            staging->move(moves);
        }
    } catch (const HostError &) {
        for (auto move = moves.rbegin(); move != moves.rend(); ++move) {
            move->undo();
        }
        throw;
    }
    for (const ExportStaging *staging : stagings) {
        syncFolder(staging->m_folder);
    }
    return written;
}

void ExportStaging::check(std::vector<WrittenFile> &written) const
{
    for (const QString &name : m_names) {
        written.push_back({QDir(m_folder).filePath(name), checkStaged(name)});
    }
    syncFolder(m_staging.path());
}

void ExportStaging::move(std::vector<Move> &moves) const
{
    for (const QString &name : m_names) {
        // No file name begins with a dot, so that these are free.
        const QString backup = stagedPath(QStringLiteral(".old-%1").arg(moves.size()));
        moves.emplace_back(stagedPath(name), QDir(m_folder).filePath(name), backup);
    }
}

QString ExportStaging::stagedPath(const QString &name) const
{
    return m_staging.filePath(name);
}

// Returns the file's size once the file is known to be whole, readable and on the disk. A format
// that finds nothing to write leaves an empty file, which is of no use to anybody.
qint64 ExportStaging::checkStaged(const QString &name) const
{
    const auto fail = [this, &name](const QString &reason) {
        throw HostError(ExitFailed, notWritten(QDir(m_folder).filePath(name), reason));
    };
    QFile file(stagedPath(name));
    if (!file.exists()) {
        fail(QStringLiteral("the format left no file"));
    }
    const QString problem = appendProblem(file.fileName());
    if (!problem.isEmpty()) {
        fail(problem);
    }
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        fail(file.errorString());
    }
    QByteArray buffer(kBufferBytes, '\0');
    qint64 bytes = 0;
    for (qint64 got = 1; got > 0;) {
        got = file.read(buffer.data(), buffer.size());
        if (got < 0) {
            fail(file.errorString());
        }
        bytes += got;
    }
    if (bytes != file.size()) {
        fail(QStringLiteral("only %1 of %2 bytes read back").arg(bytes).arg(file.size()));
    }
    if (bytes == 0) {
        fail(QStringLiteral("the marker holds nothing for it"));
    }
    return bytes;
}

void ExportStaging::removeStaleFolders() const
{
    static const QRegularExpression pattern(QStringLiteral("^\\.kivhost-[A-Za-z0-9]{6}$"));
    const QDateTime limit = QDateTime::currentDateTimeUtc().addSecs(-kStaleAfterSeconds);
    const QFileInfoList folders = QDir(m_folder).entryInfoList(
        QDir::Dirs | QDir::Hidden | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    for (const QFileInfo &folder : folders) {
        if (pattern.match(folder.fileName()).hasMatch() && folder.lastModified() < limit) {
            QDir(folder.filePath()).removeRecursively();
        }
    }
}

} // namespace KivSystem
