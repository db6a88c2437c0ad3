#include "ExportJob.h"

#include "Console.h"
#include "ExportSteps.h"
#include "KivMarker/Document.h"
#include "WindowText.h"

#include <QFileInfo>

namespace KivSystem {

ExportJob::ExportJob(const FileFormat &format, const DocumentMak &document, QWidget *dialogParent,
    const Progress &progress)
    : m_format(format)
    , m_document(document)
    , m_dialogParent(dialogParent)
    , m_progress(progress)
{
    m_report.format = format.name;
}

ExportReport ExportJob::run(Exporter<DocumentMak> &exporter)
{
    if (write(exporter)) {
        putInPlace();
    } else {
        m_report.remarks = m_warnings + m_report.remarks;
    }
    return m_report;
}

// False when the format failed as a whole.
bool ExportJob::write(Exporter<DocumentMak> &exporter)
{
    try {
        writeDocument(exporter, m_format, m_document,
            [this](const QString &sentence) { m_report.remarks << sentence; });
        return true;
    } catch (const HostError &error) {
        m_report.faults << error.sentence();
    } catch (const std::exception &error) {
        // The plug-in tells the kind of the failure, the folder itself its cause.
        const QString problem = m_files.findWriteProblem();
        m_report.faults << notWritten(m_files.isEmpty() ? m_format.name : m_files.currentTarget(),
            problem.isEmpty() ? QString::fromUtf8(error.what()) : problem);
    }
    return false;
}

void ExportJob::putInPlace()
{
    ExportFiles::Result result = m_files.commit();
    m_report.written = std::move(result.written);
    m_report.faults += result.faults;
    if (m_files.isEmpty() && m_report.faults.isEmpty() && !m_report.wasCancelled) {
        m_report.faults << notWritten(
            m_format.name, m_warnings.isEmpty() ? windowText("the marker holds nothing for it")
                                                : m_warnings.takeLast());
    }
    m_report.remarks = m_warnings + m_report.remarks;
}

bool ExportJob::beginFile()
{
    m_goesOn = m_goesOn && m_progress(windowText("Asking for the name of the next file"));
    m_report.wasCancelled = m_report.wasCancelled || !m_goesOn;
    return m_goesOn;
}

QString ExportJob::stageFile(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    if (m_files.contains(path)) {
        m_report.faults << notWritten(path, windowText("a file of this export has the same name"));
        return QString();
    }
    try {
        const QString staged = m_files.add(path);
        m_goesOn = m_progress(windowText("Writing %1").arg(name));
        return staged;
    } catch (const HostError &error) {
        m_report.faults << error.sentence();
        return QString();
    }
}

QString ExportJob::extension() const
{
    return extensionOf(m_format);
}

void ExportJob::noteCancelled()
{
    m_report.wasCancelled = true;
}

void ExportJob::noteWarning(const QString &sentence)
{
    m_warnings << sentence.simplified();
}

} // namespace KivSystem
