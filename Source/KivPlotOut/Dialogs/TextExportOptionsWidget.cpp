#include "TextExportOptionsWidget.h"

#include "TextProcessorOptions.h"

#include "ui_TextExportOptions.h"

namespace KivSystem {
namespace {

const char *const kTab = "\t";
const char *const kRepeatCharacter = "\x1D";

// Ends at the first zero byte.
QString textOf(const QByteArray &separator)
{
    return QString::fromLocal8Bit(separator.constData());
}

} // namespace

class TextExportOptionsUi : public Ui_TextExportOptions
{};

TextExportOptionsWidget::TextExportOptionsWidget(
    const TextProcessorOptions &options, QWidget *parent)
    : QWidget(parent)
    , m_ui(new TextExportOptionsUi)
{
    m_ui->setupUi(this);
    m_ui->checkOneLine->setChecked(options.oneLine());

    const QByteArray field = options.filedSeperator();
    if (qstrcmp(field, kTab) == 0) {
        m_ui->radioFiledTab->setChecked(true);
    } else {
        m_ui->radioFiledOther->setChecked(true);
        m_ui->editFiledOther->setText(textOf(field));
    }

    const QByteArray repeat = options.repeatSeperator();
    if (qstrcmp(repeat, kTab) == 0) {
        m_ui->radioRepeatTab->setChecked(true);
    } else if (qstrcmp(repeat, kRepeatCharacter) == 0) {
        m_ui->radioRepeatFiled->setChecked(true);
    } else {
        m_ui->radioRepeatOther->setChecked(true);
        m_ui->editRepeatOther->setText(textOf(repeat));
    }
}

TextExportOptionsWidget::~TextExportOptionsWidget() = default;

TextProcessorOptions TextExportOptionsWidget::options() const
{
    TextProcessorOptions options;
    options.setOneLine(m_ui->checkOneLine->isChecked());
    options.setFiledSeperator(m_ui->radioFiledTab->isChecked()
                                  ? QByteArray(kTab)
                                  : m_ui->editFiledOther->text().toLocal8Bit());
    if (m_ui->radioRepeatTab->isChecked()) {
        options.setrepeatSeperator(kTab);
    } else if (m_ui->radioRepeatOther->isChecked()) {
        options.setrepeatSeperator(m_ui->editRepeatOther->text().toLocal8Bit());
    } else {
        options.setrepeatSeperator(kRepeatCharacter);
    }
    return options;
}

void TextExportOptionsWidget::on_editFiledOther_textEdited(const QString & /*text*/)
{
    m_ui->radioFiledOther->setChecked(true);
}

void TextExportOptionsWidget::on_editFiledOther_selectionChanged()
{
    m_ui->radioFiledOther->setChecked(true);
}

void TextExportOptionsWidget::on_editRepeatOther_textEdited(const QString & /*text*/)
{
    m_ui->radioRepeatOther->setChecked(true);
}

void TextExportOptionsWidget::on_editRepeatOther_selectionChanged()
{
    m_ui->radioRepeatOther->setChecked(true);
}

} // namespace KivSystem
