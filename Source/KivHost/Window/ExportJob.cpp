#include "ExportJob.h"

#include "Console.h"
#include "ExportSteps.h"
#include "KivCore/Application.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
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
    m_isOneOfMany = exporter.prompt() && m_document.drawing()->getFabricsQty() > 1;
    if (write(exporter)) {
        putInPlace();
    }
    m_report.remarks = remarks();
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
    try {
        m_report.written = m_files.commit();
    } catch (const HostError &error) {
        m_report.faults << error.sentence();
    }
    if (m_files.isEmpty() && !m_wasCancelled) {
        m_report.faults << notWritten(
            m_format.name, m_warnings.isEmpty() ? windowText("the marker holds nothing for it")
                                                : m_warnings.takeLast());
    }
}

QStringList ExportJob::remarks() const
{
    QStringList remarks = m_warnings + m_report.remarks;
    if (m_report.written.empty() && m_report.faults.isEmpty()) {
        return remarks; // all was cancelled, and the user knows
    }
    for (const QString &name : m_leftOut) {
        remarks << windowText("%1: was left out.").arg(name);
    }
    if (m_isStopped) {
        remarks << windowText("The export was stopped: no more files were asked for.");
    }
    return remarks;
}

bool ExportJob::beginFile(const QString &proposedName)
{
    const QString text = windowText("File %1: %2").arg(m_asked + 1).arg(proposedName);
    m_isStopped = m_isStopped || m_wantsStop || !m_progress(text);
    m_wasCancelled = m_wasCancelled || m_isStopped;
    return !m_isStopped;
}

QString ExportJob::stageFile(const QString &path)
{
    const QString staged = m_files.add(path);
    ++m_asked;
    m_wantsStop = !m_progress(windowText("Writing %1").arg(QFileInfo(path).fileName()));
    return staged;
}

// A file among others may be left out for good reason, or the user has had enough.
bool ExportJob::asksAgain(const QString &proposedName)
{
    enum Answer
    {
        Back,
        LeaveOut,
        Stop
    };
    int answer = LeaveOut;
    if (m_isOneOfMany || m_asked > 0) {
        answer = KivApplication::instance()->confirmContinue(
            windowText("There is no name for the file of %1.").arg(proposedName),
            windowText("No File Name"), windowText("&Back"), windowText("&Leave It Out"),
            windowText("&Stop the Export"), m_dialogParent);
    }
    if (answer == Back) {
        return true;
    }
    m_wasCancelled = true;
    m_isStopped = answer == Stop;
    m_leftOut << proposedName;
    ++m_asked;
    return false;
}

QString ExportJob::extension() const
{
    return extensionOf(m_format);
}

void ExportJob::noteWarning(const QString &sentence)
{
    m_warnings << sentence.simplified();
}

} // namespace KivSystem
