#include "ExportSteps.h"

#include "Console.h"
#include "ExportStaging.h"
#include "FormatData.h"
#include "KivCore/Application.h"
#include "KivCore/Dialog.h"
#include "KivMarker/Document.h"
#include "NestingExport.h"

#include <QMap>
#include <QRegularExpression>

#include <boost/pointer_cast.hpp>

namespace KivSystem {

namespace {

void tellCutMessages(const FileFormat &format, const DocumentMak &document, const Tell &tell)
{
    QString refusal;
    for (const CutMessage &message : document.takeCutMessages()) {
        if (message.refused && refusal.isEmpty()) {
            refusal = message.text;
        } else {
            tell(message.text);
        }
    }
    if (!refusal.isEmpty()) {
        throw HostError(ExitFailed, notWritten(format.name, refusal));
    }
}

} // namespace

// The extension that machines and programs expect, which is not always the one that the format's
// filter names first.
QString extensionOf(const FileFormat &format)
{
    static const QMap<QString, QString> extensions = {
        {QStringLiteral("kiv_txt"), QStringLiteral("txt")},
        {QStringLiteral("txt"), QStringLiteral("txt")},
        {QStringLiteral("cut_ansi"), QStringLiteral("cut")},
        {QStringLiteral("cut_eastman"), QStringLiteral("cut")},
        {QStringLiteral("cut_labels"), QStringLiteral("txt")},
        {QStringLiteral("dxf_nester"), QStringLiteral("dxf")},
        {QStringLiteral("ill_tm"), QStringLiteral("ai")},
    };
    static const QRegularExpression firstPattern(QStringLiteral("\\*\\.(\\w+)"));
    const auto known = extensions.constFind(format.tag);
    if (known != extensions.constEnd()) {
        return *known;
    }
    const QRegularExpressionMatch match = firstPattern.match(format.filter);
    return match.hasMatch() ? match.captured(1) : QStringLiteral("txt");
}

std::vector<FileFormat> offeredFormats(const ExporterFactory &factory)
{
    std::vector<FileFormat> offered;
    for (const QString &name : factory.supportedFormats()) {
        FileFormat format;
        factory.describeFormat(name, format);
        offered.push_back(format);
    }
    return offered;
}

boost::shared_ptr<Exporter<DocumentMak>> makeExporter(
    ExporterFactory &factory, const QString &format)
{
    // Every exporter of the factory is one of its document class; nothing may be called before.
    return boost::reinterpret_pointer_cast<Exporter<DocumentMak>>(factory.createExporter(format));
}

void checkBeforeExport(const FileFormat &format, const DocumentMak &document, const Tell &tell)
{
    QString fault = findFormatDataFault(format.tag, KivApplication::instance()->pluginsDir());
    if (format.tag == nestingFormatTag()) {
        fault = fault.isEmpty() ? findNestingFault(document) : fault;
        const QString remark = nestingRemark(document);
        if (!remark.isEmpty()) {
            tell(remark);
        }
    }
    if (!fault.isEmpty()) {
        throw HostError(ExitFailed, notWritten(format.name, fault));
    }
}

bool closeOptionsPanel(QWidget *panel)
{
    // The page in front is checked as a dialog is accepted, all else as it closes.
    auto *dialog = qobject_cast<KivDialog *>(panel);
    return (dialog == nullptr || dialog->validateInputs()) && (panel == nullptr || panel->close());
}

void writeDocument(Exporter<DocumentMak> &exporter, const FileFormat &format,
    const DocumentMak &document, const Tell &tell)
{
    document.takeCutMessages(); // those of a picture of the cuts are no matter of this export
    exporter.prompt();
    const bool isForNesting = format.tag == nestingFormatTag();
    if (isForNesting) {
        noteNestingExport(document);
    }
    exporter.exportDocument(document, nullptr, format.filter);
    tellCutMessages(format, document, tell);
    if (isForNesting) {
        for (const QString &loss : nestingLosses(document)) {
            tell(loss);
        }
    }
}

} // namespace KivSystem
