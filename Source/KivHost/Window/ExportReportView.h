// ExportReportView: what became of an export: the files, which can be opened, and in plain words
// what was not written and what the user should know.
#ifndef KIVHOST_EXPORTREPORTVIEW_H
#define KIVHOST_EXPORTREPORTVIEW_H

#include <QWidget>

#include <functional>

class QLabel;
class QListWidget;
class QTreeWidget;

namespace KivSystem {

struct ExportReport;

class ExportReportView : public QWidget
{
public:
    using OpenFile = std::function<void(const QString &path)>;

    ExportReportView(const OpenFile &openFile, QWidget *parent);

    void showReport(const ExportReport &report);
    /// Opens the files that are selected.
    void openSelected();

private:
    OpenFile m_openFile;
    QLabel *m_heading;
    QTreeWidget *m_files;
    QListWidget *m_sentences;
};

} // namespace KivSystem

#endif
