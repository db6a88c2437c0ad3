// ExportJob: one export of the window, from the questions to the files in place.
#ifndef KIVHOST_EXPORTJOB_H
#define KIVHOST_EXPORTJOB_H

#include "ExportFiles.h"
#include "KivCore/ExporterFactory.h"
#include "WindowUserInterface.h"

#include <QStringList>

#include <functional>

namespace KivSystem {

class DocumentMak;

/// What became of an export.
struct ExportReport
{
    QString format;
    std::vector<WrittenFile> written;
    QStringList faults;  ///< a sentence for each thing that was not written
    QStringList remarks; ///< what the user should know of the written files

    bool isEmpty() const { return written.empty() && faults.isEmpty() && remarks.isEmpty(); }
};

class ExportJob final : public ExportListener
{
public:
    /// Shows what is going on, lets the user's clicks through, and tells whether to go on.
    using Progress = std::function<bool(const QString &text)>;

    /// All is borrowed.
    ExportJob(const FileFormat &format, const DocumentMak &document, QWidget *dialogParent,
        const Progress &progress);

    /// Writes the files that the user names. The exporter was asked all else before.
    ExportReport run(Exporter<DocumentMak> &exporter);

    bool beginFile(const QString &proposedName) override;
    QString stageFile(const QString &path) override;
    bool asksAgain(const QString &proposedName) override;
    QString extension() const override;
    void noteCancelled() override { m_wasCancelled = true; }
    void noteWarning(const QString &sentence) override;
    QWidget *dialogParent() override { return m_dialogParent; }

private:
    bool write(Exporter<DocumentMak> &exporter);
    void putInPlace();
    QStringList remarks() const;

    const FileFormat &m_format;
    const DocumentMak &m_document;
    QWidget *m_dialogParent;
    Progress m_progress;
    ExportFiles m_files;
    ExportReport m_report;
    QStringList m_warnings;
    QStringList m_leftOut; // what the format proposed for files that were cancelled
    int m_asked = 0;       // files
    bool m_isOneOfMany = false;
    bool m_wasCancelled = false;
    bool m_wantsStop = false;
    bool m_isStopped = false; // before a file was asked for
};

} // namespace KivSystem

#endif
