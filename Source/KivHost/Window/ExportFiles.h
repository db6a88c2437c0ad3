// ExportFiles: the files of one export of the window. The user names each by its path; each is
// written beside its place and put there at the end.
#ifndef KIVHOST_EXPORTFILES_H
#define KIVHOST_EXPORTFILES_H

#include "ExportStaging.h"

#include <memory>
#include <vector>

namespace KivSystem {

class ExportFiles
{
public:
    ExportFiles();
    ~ExportFiles();
    ExportFiles(const ExportFiles &) = delete;
    ExportFiles &operator=(const ExportFiles &) = delete;

    bool isEmpty() const { return m_files.empty(); }

    /// Whether the file was named before.
    bool contains(const QString &path) const;

    /// Returns the path to write to, and a path without a name as it is. Throws HostError when
    /// nothing can be written there.
    QString add(const QString &path);

    /// What spoke against the latest file, and its path; empty when nothing is found or none was
    /// added.
    QString findWriteProblem() const;
    QString currentTarget() const;

    struct Result
    {
        std::vector<WrittenFile> written;
        QStringList faults; ///< a sentence for each file that was not
    };

    /// Puts each file in place or leaves what was there before.
    Result commit();

private:
    struct File
    {
        QString path;
        std::unique_ptr<ExportStaging> staging;
    };
    std::vector<File> m_files;
};

} // namespace KivSystem

#endif
