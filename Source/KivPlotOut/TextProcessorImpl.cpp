#include "TextProcessorImpl.h"

#include "Dialogs/TextExportFormatDialog.h"
#include "Dialogs/TextExportOptionsWidget.h"
#include "TextIndexList.h"
#include "TextProcessor.h"
#include "TextProcessorOptions.h"

#include <QApplication>
#include <QCoreApplication>

namespace KivSystem {
namespace NC {
namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("TextProcessorImpl", text);
}

QStringList titles()
{
    return {translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Marker Information")),
        translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Fabric Information")),
        translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Fabric and Layer"))};
}

// The names of the fields: the position of a name in all three lists together is the field's
// index, so that their order must stay.
QListEx<QStringList> fieldNames()
{
    return {
        {translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "File Name")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Location")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Comments")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Keywords")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Creation date")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Modification date")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Date stamp")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Style name"))},
        {translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Fabric name")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Marker type")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "One Way")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Spacing")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Width"))},
        {translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Layer name")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Length")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Estimate")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Efficiency")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Placed pieces")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Pieces to be placed")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Size")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Special")),
            translated(QT_TRANSLATE_NOOP("TextProcessorImpl", "Breakdown value"))},
    };
}

TextProcessorOptions storedOptions()
{
    TextProcessorOptions options;
    options.restore(QString());
    return options;
}

} // namespace

TextProcessorImpl::TextProcessorImpl()
    : m_optionsWidget(new TextExportOptionsWidget(storedOptions(), nullptr))
{}

TextProcessorImpl::~TextProcessorImpl()
{
    m_optionsWidget->options().save(QString());
}

QWidget *TextProcessorImpl::optionsPanel()
{
    return m_optionsWidget.data();
}

bool TextProcessorImpl::prepare(const DocumentMak & /*doc*/, short /*fabric*/)
{
    TextExportFormatDialog dialog(
        titles(), fieldNames(), TextIndexList::loadFromPreferences(), QApplication::activeWindow());
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (accepted) {
        dialog.exportContents().saveAsPreferences(); // from where buildDocument takes them
    }
    return accepted;
}

bool TextProcessorImpl::buildDocument(const DocumentMak &doc, QIODevice *device)
{
    TextProcessor::exportDocument(
        doc, device, TextIndexList::loadFromPreferences(), m_optionsWidget->options());
    return true;
}

} // namespace NC
} // namespace KivSystem
