// ExportFiles: the files of one export of the window. The user names each by its path; each is
// written beside its place, and all are put there at the end, or none.
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

    /// Returns the path to write to. Throws HostError when the file cannot be written there or was
    /// named before. The file behind a link is written, and the link stays.
    QString add(const QString &path);

    /// What spoke against the latest file, and its path; empty when nothing is found or none was
    /// added.
    QString findWriteProblem() const;
    QString currentTarget() const;

    /// Puts the files in place. Throws HostError; what was there before stays then.
    std::vector<WrittenFile> commit();

private:
    void checkNew(const QString &path) const;

    struct File
    {
        QString path;
        std::unique_ptr<ExportStaging> staging;
    };
    std::vector<File> m_files;
};

} // namespace KivSystem

#endif
