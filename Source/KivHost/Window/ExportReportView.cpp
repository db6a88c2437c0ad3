#include "ExportReportView.h"

#include "ExportJob.h"
#include "WindowText.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace KivSystem {

namespace {

enum Column
{
    NameColumn,
    SizeColumn,
    FolderColumn
};

QString headingOf(const ExportReport &report)
{
    const auto count = static_cast<int>(report.written.size());
    if (count == 0) {
        return windowText("%1: nothing was written.").arg(report.format);
    }
    return count == 1 ? windowText("%1: one file was written.").arg(report.format)
                      : windowText("%1: %2 files were written.").arg(report.format).arg(count);
}

} // namespace

ExportReportView::ExportReportView(const OpenFile &openFile, QWidget *parent)
    : QWidget(parent)
    , m_openFile(openFile)
    , m_heading(new QLabel)
    , m_files(new QTreeWidget)
    , m_sentences(new QListWidget)
{
    setObjectName(QStringLiteral("exportReport"));
    m_heading->setWordWrap(true);
    m_files->setObjectName(QStringLiteral("writtenFiles"));
    m_files->setAccessibleName(windowText("Written files"));
    m_files->setToolTip(windowText("A double click opens the file"));
    m_files->setHeaderLabels({windowText("File"), windowText("Size"), windowText("Folder")});
    m_files->setRootIsDecorated(false);
    m_files->setUniformRowHeights(true);
    m_files->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_sentences->setObjectName(QStringLiteral("sentences"));
    m_sentences->setAccessibleName(windowText("Remarks and failures"));
    m_sentences->setWordWrap(true);
    m_sentences->setTextElideMode(Qt::ElideNone);
    m_sentences->setSelectionMode(QAbstractItemView::NoSelection);
    connect(m_files, &QTreeWidget::itemActivated, this, [this] { openSelected(); });

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_heading);
    layout->addWidget(m_files, 2);
    layout->addWidget(m_sentences, 1);
}

void ExportReportView::showReport(const ExportReport &report)
{
    m_heading->setText(headingOf(report));
    m_files->clear();
    for (const WrittenFile &file : report.written) {
        const QFileInfo info(file.path);
        auto *item = new QTreeWidgetItem(
            m_files, {info.fileName(), windowText("%1 bytes").arg(QLocale().toString(file.bytes)),
                         QDir::toNativeSeparators(info.path())});
        item->setData(NameColumn, Qt::UserRole, file.path);
        item->setTextAlignment(SizeColumn, Qt::AlignRight | Qt::AlignVCenter);
    }
    m_files->setVisible(!report.written.empty());
    if (m_files->topLevelItemCount() > 0) {
        m_files->setCurrentItem(m_files->topLevelItem(0));
    }

    m_sentences->clear();
    const auto add = [this](const QStringList &sentences, QStyle::StandardPixmap icon) {
        for (const QString &sentence : sentences) {
            new QListWidgetItem(style()->standardIcon(icon), sentence, m_sentences);
        }
    };
    add(report.faults, QStyle::SP_MessageBoxWarning);
    add(report.remarks, QStyle::SP_MessageBoxInformation);
    m_sentences->setVisible(m_sentences->count() > 0);
}

void ExportReportView::openSelected()
{
    for (const QTreeWidgetItem *item : m_files->selectedItems()) {
        m_openFile(item->data(NameColumn, Qt::UserRole).toString());
    }
}

} // namespace KivSystem
