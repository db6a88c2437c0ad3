#include "TextExportFormatDialog.h"

#include "Failures.h"

#include "ui_TextExportFormat.h"

#include <QPushButton>

namespace KivSystem {
namespace {

constexpr int kDefaultGroups = 3; // whose fields an empty selection stands for

} // namespace

class ExportFormatUi : public Ui_TextExportFormat
{
public:
    QListEx<QStringList> contents;

    // Fields of the groups before `group`.
    int fieldsBefore(int group) const
    {
        int count = 0;
        for (int earlier = 0; earlier < group; ++earlier) {
            count += contents.at(earlier).size();
        }
        return count;
    }
};

TextExportFormatDialog::TextExportFormatDialog(const QStringList &formats,
    const QListEx<QStringList> &contents, const TextIndexList &selection, QWidget *parent)
    : KivDialog(parent)
    , m_ui(new ExportFormatUi)
{
    m_ui->setupUi(this);
    m_ui->contents = contents;
    KIV_HARD_ASSERT(formats.size() == contents.size(), "formats.size() == contents.size()");
    for (int group = 0; group < formats.size(); ++group) {
        m_ui->selectFormat->addItem(formats.at(group), contents.at(group).size());
    }
    on_selectFormat_currentIndexChanged(0);
    addFields(selection);
    updateButtonState();
}

TextExportFormatDialog::~TextExportFormatDialog() = default;

TextIndexList TextExportFormatDialog::exportContents() const
{
    return mTextIndexList;
}

void TextExportFormatDialog::accept()
{
    for (int row = 0; row < m_ui->listDestination->count(); ++row) {
        mTextIndexList.append(m_ui->listDestination->item(row)->data(Qt::UserRole).toInt());
    }
    KIV_HARD_ASSERT(mTextIndexList.size() == m_ui->listDestination->count(),
        "mTextIndexList.size() == m_ui->listDestination->count()");
    KivDialog::accept();
}

void TextExportFormatDialog::addFields(const TextIndexList &selection)
{
    if (selection.isEmpty()) {
        int index = 0;
        for (int group = 0; group < qMin(kDefaultGroups, m_ui->contents.size()); ++group) {
            for (const QString &name : m_ui->contents.at(group)) {
                addField(name, index++);
            }
        }
        return;
    }
    for (const int index : selection) {
        int position = index;
        int group = 0;
        while (group < m_ui->contents.size() && position >= m_ui->contents.at(group).size()) {
            position -= m_ui->contents.at(group++).size();
        }
        if (position >= 0 && group < m_ui->contents.size()) {
            addField(m_ui->contents.at(group).at(position), index);
        }
    }
}

void TextExportFormatDialog::addField(const QString &name, int index)
{
    auto *item = new QListWidgetItem(name, m_ui->listDestination); // owned by the list
    item->setData(Qt::UserRole, index);
}

void TextExportFormatDialog::on_selectFormat_currentIndexChanged(int index)
{
    if (index < 0 || index >= m_ui->contents.size()) {
        return;
    }
    m_ui->listSource->clear();
    m_ui->listSource->addItems(m_ui->contents.at(index));
}

void TextExportFormatDialog::on_listSource_itemSelectionChanged()
{
    updateButtonState();
}

void TextExportFormatDialog::on_listDestination_itemSelectionChanged()
{
    updateButtonState();
}

void TextExportFormatDialog::on_buttonInsert_clicked()
{
    const int group = m_ui->selectFormat->currentIndex();
    const QList<QListWidgetItem *> selected = m_ui->listSource->selectedItems();
    for (const QListWidgetItem *item : selected) {
        const QString name = item->text();
        const bool isChosen = !m_ui->listDestination->findItems(name, Qt::MatchExactly).isEmpty();
        if (!isChosen && group >= 0) {
            addField(name, m_ui->listSource->row(item) + m_ui->fieldsBefore(group));
        }
    }
    updateButtonState();
}

void TextExportFormatDialog::on_buttonClear_clicked()
{
    const QList<QListWidgetItem *> selected = m_ui->listDestination->selectedItems();
    for (QListWidgetItem *item : selected) {
        delete m_ui->listDestination->takeItem(m_ui->listDestination->row(item));
    }
    updateButtonState();
}

void TextExportFormatDialog::updateButtonState()
{
    m_ui->buttonInsert->setEnabled(!m_ui->listSource->selectedItems().isEmpty());
    m_ui->buttonClear->setEnabled(!m_ui->listDestination->selectedItems().isEmpty());
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setEnabled(m_ui->listDestination->count() > 0);
}

} // namespace KivSystem
