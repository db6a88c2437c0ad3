#include "CommandLineInterface.h"
#include "Console.h"
#include "ExportStaging.h"
#include "ExportSteps.h"
#include "HostSettings.h"
#include "KivCore/ExporterFactory.h"
#include "KivMarker/Document.h"
#include "KivMarker/MarkerFile.h"
#include "Verbs.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace KivSystem {

namespace {

std::vector<FileFormat> chosenFormats(const ExportOptions &options, const ExporterFactory &factory)
{
    std::vector<FileFormat> offered = offeredFormats(factory);
    if (options.all) {
        return offered;
    }
    std::vector<FileFormat> chosen;
    for (const QString &wanted : options.formats) {
        const auto isWanted = [&wanted](const FileFormat &format) {
            return format.name == wanted || format.tag == wanted;
        };
        const auto found = std::find_if(offered.begin(), offered.end(), isWanted);
        if (found == offered.end()) {
            throw HostError(ExitWrongUsage,
                QStringLiteral("there is no format \"%1\"; \"kivhost formats\" lists them")
                    .arg(wanted));
        }
        if (std::none_of(chosen.begin(), chosen.end(), isWanted)) {
            chosen.push_back(*found);
        }
    }
    return chosen;
}

// The exports of one run, and what becomes of them.
class ExportRun
{
public:
    ExportRun(const ExportOptions &options, ExporterFactory &factory, CommandLineInterface &user,
        const Console &console, const DocumentMak &document)
        : m_options(options)
        , m_factory(factory)
        , m_user(user)
        , m_console(console)
        , m_document(document)
    {}

    void exportTo(const FileFormat &format);
    int finish() const;

private:
    void exportFiles(const FileFormat &format, Exporter<DocumentMak> &exporter);
    QString reasonOr(const QString &reason) const;
    void report(const FileFormat &format, const WrittenFile &file);
    void reportFailure(const FileFormat &format, const QString &sentence);

    const ExportOptions &m_options;
    ExporterFactory &m_factory;
    CommandLineInterface &m_user;
    const Console &m_console;
    const DocumentMak &m_document;
    QJsonArray m_files;
    QJsonArray m_failures;
};

void ExportRun::exportTo(const FileFormat &format)
{
    const auto exporter = makeExporter(m_factory, format.name);
    if (!exporter) {
        const QString sentence =
            QStringLiteral("the plug-in does not offer %1 yet").arg(format.name);
        if (m_options.all) {
            m_console.message(sentence);
        } else {
            reportFailure(format, sentence);
        }
        return;
    }
    try {
        exportFiles(format, *exporter);
    } catch (const HostError &error) {
        reportFailure(format, error.sentence());
    }
    m_user.beginExport(nullptr, false);
}

void ExportRun::exportFiles(const FileFormat &format, Exporter<DocumentMak> &exporter)
{
    const QString folder = QDir(m_options.directory).filePath(fileNameFrom(format.tag));
    ExportStaging staging(folder, extensionOf(format));
    m_user.beginExport(&staging, m_options.exportNotOptimised);
    const auto tell = [this](const QString &sentence) { m_console.message(sentence); };
    checkBeforeExport(format, m_document, tell);
    try {
        if (!exporter.canExport(m_document) || !closeOptionsPanel(exporter.optionsPanel()) ||
            !exporter.prepare(m_document)) {
            throw HostError(ExitFailed,
                notWritten(format.name, reasonOr(QStringLiteral("the format refused the marker"))));
        }
        writeDocument(exporter, format, m_document, tell);
    } catch (const HostError &) {
        throw;
    } catch (const std::exception &error) {
        // The plug-in tells the kind of the failure, the folder itself its cause.
        const QString problem = staging.findWriteProblem();
        const QString target = staging.isEmpty() ? format.name : staging.currentTarget();
        throw HostError(ExitFailed,
            notWritten(target, problem.isEmpty() ? QString::fromUtf8(error.what()) : problem));
    }
    if (staging.isEmpty()) {
        throw HostError(ExitFailed,
            notWritten(format.name, reasonOr(QStringLiteral("the marker holds nothing for it"))));
    }
    if (!m_user.reason().isEmpty()) {
        m_console.message(m_user.reason());
    }
    for (const WrittenFile &file : staging.commit()) {
        report(format, file);
    }
}

QString ExportRun::reasonOr(const QString &reason) const
{
    return m_user.reason().isEmpty() ? reason : m_user.reason();
}

void ExportRun::report(const FileFormat &format, const WrittenFile &file)
{
    if (!m_options.json) {
        m_console.out << file.path << '\t' << file.bytes << " bytes\n";
        m_console.out.flush();
    }
    m_files.append(QJsonObject{{QStringLiteral("path"), file.path},
        {QStringLiteral("bytes"), file.bytes}, {QStringLiteral("format"), format.name}});
}

void ExportRun::reportFailure(const FileFormat &format, const QString &sentence)
{
    m_console.message(sentence);
    m_failures.append(QJsonObject{
        {QStringLiteral("format"), format.name}, {QStringLiteral("message"), sentence}});
}

int ExportRun::finish() const
{
    if (m_options.json) {
        m_console.json(QJsonObject{
            {QStringLiteral("files"), m_files}, {QStringLiteral("failures"), m_failures}});
    }
    return m_failures.isEmpty() && !m_files.isEmpty() ? ExitDone : ExitFailed;
}

} // namespace

int exportMarker(const ExportOptions &options, ExporterFactory &factory, CommandLineInterface &user,
    const Console &console)
{
    SettingsSource source = options.settings;
    if (!options.fields.isEmpty()) {
        source.assignments.append(QStringLiteral("fields=") + options.fields);
    }
    parseSettings(source.assignments); // a wrong one is told first
    const std::vector<FileFormat> formats = chosenFormats(options, factory);

    // A format hands its choices on through the settings: a copy can always be written, and the
    // user's own stay as they are.
    const RunSettings settings(source, RunSettings::WorkOnCopy, console);
    const std::unique_ptr<DocumentMak> document = loadMarker(options.marker);

    // The directory stays while the run goes from format to format, and goes if nothing came.
    const MadeFolders directory(options.directory);
    const Interruption::Cleanup cleanup([&directory] { directory.removeEmpty(); });
    ExportRun run(options, factory, user, console, *document);
    for (std::size_t index = 0; index < formats.size(); ++index) {
        if (console.progress) {
            console.message(QStringLiteral("%1 (%2 of %3)")
                                .arg(formats[index].name)
                                .arg(index + 1)
                                .arg(formats.size()));
        }
        run.exportTo(formats[index]);
    }
    return run.finish();
}

} // namespace KivSystem
