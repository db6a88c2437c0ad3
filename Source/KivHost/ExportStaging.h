// ExportStaging: makes an export all or nothing. The plug-in writes into a staging folder beside
// the target, under the final file name (formats write their name into the file):
//
//     DIR/cut_ansi/.kivhost-pXq3aZ/Shell.cut   while the export runs
//     DIR/cut_ansi/Shell.cut                   after commit()
//
// Until commit() a file that was there before stays as it is, and without it nothing is left.
#ifndef KIVHOST_EXPORTSTAGING_H
#define KIVHOST_EXPORTSTAGING_H

#include "FileNames.h"
#include "Interruption.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace KivSystem {

struct WrittenFile
{
    QString path;
    qint64 bytes = 0;
};

/// Folders that are made for a run; those that are still empty go with this object.
class MadeFolders
{
public:
    /// Makes `path` and what is missing above it. Throws HostError (ExitFailed).
    explicit MadeFolders(const QString &path);
    ~MadeFolders();
    MadeFolders(const MadeFolders &) = delete;
    MadeFolders &operator=(const MadeFolders &) = delete;

    void removeEmpty() const;

private:
    std::vector<QByteArray> m_made; // native names, the outermost first
};

class ExportStaging
{
public:
    /// Makes `folder` and the staging folder in it, and clears away what a killed run left there.
    /// Throws HostError (ExitFailed) when the folder cannot be written.
    ExportStaging(const QString &folder, const QString &extension);
    ~ExportStaging();
    ExportStaging(const ExportStaging &) = delete;
    ExportStaging &operator=(const ExportStaging &) = delete;

    /// The path that the next file is to be written to.
    QString addFile(const QString &proposedName);

    /// The same for a file whose name is settled. It does not begin with a dot, and each name is
    /// added once.
    QString addNamedFile(const QString &fileName);

    /// Whether a file was asked for at all.
    bool isEmpty() const { return m_names.isEmpty(); }

    /// The final path of the latest file; the folder before the first.
    QString currentTarget() const;

    /// Checks all files, puts them on the disk and then in place, replacing older ones. Throws
    /// HostError (ExitFailed); nothing has changed then.
    std::vector<WrittenFile> commit() { return commitAll({this}); }

    /// The same for the files of several: all of them or none.
    static std::vector<WrittenFile> commitAll(const std::vector<ExportStaging *> &stagings);

    /// Why a file in the staging folder cannot be written, found by writing one; empty when it can.
    QString findWriteProblem() const;

private:
    struct Move;

    void check(std::vector<WrittenFile> &written) const;
    void move(std::vector<Move> &moves) const;
    QString stagedPath(const QString &name) const;
    qint64 checkStaged(const QString &name) const;
    void removeStaleFolders() const;

    QString m_folder;
    MadeFolders m_made;
    QTemporaryDir m_staging;
    FileNames m_fileNames;
    QStringList m_names;
    std::unique_ptr<Interruption::Cleanup> m_cleanup;
};

/// Why the file that is there, if one is, must not be replaced; empty when it may.
QString replaceProblem(const QString &path);

/// The sentence for a file that was not written.
QString notWritten(const QString &target, const QString &reason);

} // namespace KivSystem

#endif
