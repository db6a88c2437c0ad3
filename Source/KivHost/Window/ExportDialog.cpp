#include "ExportDialog.h"

#include "Console.h"
#include "ExportJob.h"
#include "ExportPanel.h"
#include "ExportReportView.h"
#include "ExportSteps.h"
#include "HostSettings.h"
#include "KivCore/Application.h"
#include "KivCore/Dialog.h"
#include "KivCore/MainWindow.h"
#include "KivMarker/Document.h"
#include "WindowText.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <map>

namespace KivSystem {

namespace {

const char *const kFormatKey = "window/export_format";
constexpr int kFirstWidth = 920;
constexpr int kFirstHeight = 680;

enum Page
{
    ChoosePage,
    ProgressPage,
    ReportPage
};

// The panel of the text file takes an empty one.
bool hasNoSeparator(const FileFormat &format)
{
    const Setting &separator = *findSetting(QStringLiteral("field_separator"));
    return format.tag == QLatin1String("txt") && currentText(separator, QSettings()).isEmpty();
}

class ExportDialog final : public KivDialog
{
public:
    ExportDialog(MainWindow &window, const DocumentMak &document, ExporterFactory &factory,
        const ExportReportView::OpenFile &openFile);
    ~ExportDialog() override;

    void accept() override;
    void reject() override;

private:
    using DocumentExporter = Exporter<DocumentMak>;

    QWidget *makeChoosePage();
    QWidget *makeProgressPage();
    void makeButtons(QVBoxLayout *layout);
    void showPage(Page page);
    int chosenFormat() const;
    boost::shared_ptr<DocumentExporter> exporterOf(int format);
    void showChosenFormat();
    QStringList unusedChanges() const;
    void startExport();
    ExportReport exportAs(const FileFormat &format, DocumentExporter &exporter);
    bool askExporter(const FileFormat &format, DocumentExporter &exporter, QStringList &remarks);
    bool showProgress(const QString &text);
    void showReport(const ExportReport &report);
    void goBack();

    const DocumentMak &m_document;
    ExporterFactory &m_factory;
    std::vector<FileFormat> m_formats;
    std::map<int, boost::shared_ptr<DocumentExporter>> m_exporters; // those that were looked at
    std::map<int, QVariantList> m_values; // of their panels, before the user changes some
    QStackedWidget *m_pages;
    QListWidget *m_list = nullptr;
    ExportPanel *m_panel = nullptr;
    QLabel *m_progress = nullptr;
    ExportReportView *m_report;
    QPushButton *m_export = nullptr;
    QPushButton *m_cancel = nullptr;
    QPushButton *m_back = nullptr;
    QPushButton *m_open = nullptr;
    QPushButton *m_close = nullptr;
    bool m_isRunning = false;
    bool m_isCancelled = false;
};

ExportDialog::ExportDialog(MainWindow &window, const DocumentMak &document,
    ExporterFactory &factory, const ExportReportView::OpenFile &openFile)
    : KivDialog(&window)
    , m_document(document)
    , m_factory(factory)
    , m_formats(offeredFormats(factory))
    , m_pages(new QStackedWidget)
    , m_report(new ExportReportView(
          [this, openFile](const QString &path) {
              QDialog::accept(); // or the dialog would hide what it opens
              openFile(path);
          },
          nullptr))
{
    setObjectName(QStringLiteral("exportDialog"));
    setWindowTitle(windowText("Export"));
    m_pages->addWidget(makeChoosePage());
    m_pages->addWidget(makeProgressPage());
    m_pages->addWidget(m_report);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    makeButtons(layout);
    resize(QSize(kFirstWidth, kFirstHeight).boundedTo(screen()->availableGeometry().size()));

    const QString last = QSettings().value(QLatin1String(kFormatKey)).toString();
    const QList<QListWidgetItem *> found = m_list->findItems(last, Qt::MatchExactly);
    m_list->setCurrentRow(found.isEmpty() ? 0 : m_list->row(found.constFirst()));
    showPage(ChoosePage);
    m_list->setFocus();
}

ExportDialog::~ExportDialog()
{
    m_panel->release(); // before the exporters, which own what it shows, go
}

QWidget *ExportDialog::makeChoosePage()
{
    auto *page = new QWidget;
    auto *label = new QLabel(windowText("&Format"));
    m_list = new QListWidget;
    m_list->setObjectName(QStringLiteral("formats"));
    label->setBuddy(m_list);
    for (const FileFormat &format : m_formats) {
        auto *item = new QListWidgetItem(format.name, m_list);
        item->setToolTip(QString(format.filter).replace(QLatin1Char('\t'), QLatin1String(", ")));
    }
    m_list->setFixedWidth(m_list->sizeHintForColumn(0) + 40);
    m_panel = new ExportPanel(nullptr);
    m_panel->onAccept = [this] { accept(); };
    m_panel->onReject = [this] { reject(); };
    connect(m_list, &QListWidget::currentRowChanged, this, [this] { showChosenFormat(); });
    connect(m_list, &QListWidget::itemDoubleClicked, this, [this] { accept(); });

    auto *left = new QVBoxLayout;
    left->addWidget(label);
    left->addWidget(m_list);
    auto *layout = new QHBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(left);
    layout->addWidget(m_panel, 1);
    return page;
}

QWidget *ExportDialog::makeProgressPage()
{
    auto *page = new QWidget;
    m_progress = new QLabel;
    m_progress->setWordWrap(true);
    m_progress->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // names may be long
    auto *bar = new QProgressBar;
    bar->setRange(0, 0); // how many files will come is not known
    auto *layout = new QVBoxLayout(page);
    layout->addStretch();
    layout->addWidget(m_progress);
    layout->addWidget(bar);
    layout->addStretch();
    return page;
}

void ExportDialog::makeButtons(QVBoxLayout *layout)
{
    auto *box = new QDialogButtonBox;
    const auto add = [box](const char *name, const char *text, const char *tip,
                         QDialogButtonBox::ButtonRole role) {
        QPushButton *button = box->addButton(windowText(text), role);
        button->setObjectName(QLatin1String(name));
        button->setToolTip(windowText(tip));
        return button;
    };
    m_back = add("back", "&Back", "Export once more", QDialogButtonBox::ActionRole);
    m_open = add("open", "&Open", "Open the selected files and close this report",
        QDialogButtonBox::ActionRole);
    m_export = add(
        "export", "&Export...", "Choose the files and write them", QDialogButtonBox::AcceptRole);
    m_cancel = add("cancel", "Cancel", "Write no more files", QDialogButtonBox::RejectRole);
    m_close = add("close", "&Close", "Close this report", QDialogButtonBox::RejectRole);
    connect(box, &QDialogButtonBox::accepted, this, [this] { accept(); });
    connect(box, &QDialogButtonBox::rejected, this, [this] { reject(); });
    // By a click it would take the focus from a field, which would mend a wrong value unseen.
    m_export->setFocusPolicy(Qt::TabFocus);
    connect(m_back, &QPushButton::clicked, this, [this] { goBack(); });
    connect(m_open, &QPushButton::clicked, this, [this] { m_report->openSelected(); });
    layout->addWidget(box);
}

void ExportDialog::showPage(Page page)
{
    m_pages->setCurrentIndex(page);
    m_export->setVisible(page == ChoosePage);
    m_cancel->setVisible(page != ReportPage);
    m_back->setVisible(page == ReportPage);
    m_open->setVisible(page == ReportPage);
    m_close->setVisible(page == ReportPage);
    (page == ReportPage ? m_close : m_export)->setDefault(true);
}

int ExportDialog::chosenFormat() const
{
    return m_list->currentRow();
}

boost::shared_ptr<Exporter<DocumentMak>> ExportDialog::exporterOf(int format)
{
    const auto known = m_exporters.find(format);
    if (known != m_exporters.end()) {
        return known->second;
    }
    const QString &name = m_formats[static_cast<std::size_t>(format)].name;
    return m_exporters.emplace(format, makeExporter(m_factory, name)).first->second;
}

void ExportDialog::showChosenFormat()
{
    const auto exporter = chosenFormat() < 0 ? nullptr : exporterOf(chosenFormat());
    m_export->setEnabled(exporter != nullptr);
    m_panel->showPanel(exporter == nullptr ? nullptr : exporter->optionsPanel(),
        exporter == nullptr ? windowText("The plug-in does not offer this format yet.")
                            : windowText("This format has no options."));
    if (QWidget *last = m_panel->lastField()) { // what is added to a window stands at the end there
        setTabOrder(last, m_export);
        setTabOrder(m_export, m_cancel);
    }
    if (exporter != nullptr && exporter->optionsPanel() != nullptr) {
        m_values.emplace(chosenFormat(), ExportPanel::valuesIn(*exporter->optionsPanel()));
    }
}

void ExportDialog::accept()
{
    if (m_pages->currentIndex() == ReportPage) {
        QDialog::accept();
    } else if (!m_isRunning && m_export->isEnabled() && validateInputs()) {
        startExport();
    }
}

void ExportDialog::reject()
{
    if (m_isRunning) {
        m_isCancelled = true;
        m_cancel->setEnabled(false);
    } else {
        QDialog::reject();
    }
}

// The steps before files are written; false when one of them ended the export. What the panel keeps
// is in the user's store from here on.
bool ExportDialog::askExporter(
    const FileFormat &format, DocumentExporter &exporter, QStringList &remarks)
{
    checkBeforeExport(
        format, m_document, [&remarks](const QString &sentence) { remarks << sentence; });
    if (!exporter.canExport(m_document)) {
        throw HostError(
            ExitFailed, notWritten(format.name, windowText("the format refused the marker")));
    }
    QWidget *panel = exporter.optionsPanel();
    if (!closeOptionsPanel(panel)) {
        dropMarkerSettings(); // a panel that refuses has written a part of its values
        return false;
    }
    if (panel != nullptr && panel->property("prefOptions").isValid()) {
        panel->setProperty("prefOptions", panel->property("prefOptions"));
    }
    storeMarkerSettings();
    QSettings store;
    store.sync();
    if (store.status() != QSettings::NoError) {
        remarks << windowText("%1: the settings cannot be written; your options hold until the "
                              "program ends.")
                       .arg(store.fileName());
    }
    remarks << unusedChanges();
    m_panel->showPanel(nullptr, QString());
    m_exporters.clear(); // their panels show what was stored before
    m_values.clear();
    if (!exporter.prepare(m_document)) {
        QDialog::reject(); // the user may be on the way to another view
        return false;
    }
    return true;
}

// Panels that hand their values on when they are asked to; others store each at once.
bool isAskedForValues(const QWidget &panel)
{
    return qobject_cast<const KivDialog *>(&panel) != nullptr ||
           panel.property("prefOptions").isValid();
}

// Several panels show the same settings: the one of the exported format is kept.
QStringList ExportDialog::unusedChanges() const
{
    QStringList remarks;
    for (const auto &[format, values] : m_values) {
        const QWidget &panel = *m_exporters.at(format)->optionsPanel();
        if (format != chosenFormat() && isAskedForValues(panel) &&
            values != ExportPanel::valuesIn(panel)) {
            remarks << windowText("Your changes to the options of %1 were not kept: it was not "
                                  "exported.")
                           .arg(m_formats[static_cast<std::size_t>(format)].name);
        }
    }
    return remarks;
}

void ExportDialog::startExport()
{
    const FileFormat &format = m_formats[static_cast<std::size_t>(chosenFormat())];
    auto exporter = exporterOf(chosenFormat());
    QSettings().setValue(QLatin1String(kFormatKey), format.name);
    QStringList remarks;
    ExportReport report;
    try {
        if (!askExporter(format, *exporter, remarks)) {
            return;
        }
        report = exportAs(format, *exporter);
    } catch (const HostError &error) {
        report.faults << error.sentence();
    } catch (const std::exception &error) {
        report.faults << notWritten(format.name, QString::fromUtf8(error.what()));
    }
    report.format = format.name;
    exporter.reset(); // some store their options as they go
    if (!report.written.empty() && hasNoSeparator(format)) {
        remarks << windowText("The fields have no separator: nobody can tell them apart.");
    }
    if (report.isEmpty()) { // every question was cancelled
        goBack();
    } else {
        report.remarks = remarks + report.remarks;
        showReport(report);
    }
}

ExportReport ExportDialog::exportAs(const FileFormat &format, DocumentExporter &exporter)
{
    auto &user = dynamic_cast<WindowUserInterface &>(KivApplication::instance()->userInterface());
    ExportJob job(
        format, m_document, this, [this](const QString &text) { return showProgress(text); });
    m_isRunning = true;
    m_isCancelled = false;
    m_cancel->setEnabled(true);
    showPage(ProgressPage);
    user.setExportListener(&job);
    const auto end = qScopeGuard([this, &user] {
        user.setExportListener(nullptr);
        m_isRunning = false;
    });
    return job.run(exporter);
}

bool ExportDialog::showProgress(const QString &text)
{
    m_progress->setText(text);
    QCoreApplication::processEvents();
    return !m_isCancelled;
}

void ExportDialog::showReport(const ExportReport &report)
{
    m_report->showReport(report);
    showPage(ReportPage);
    m_open->setEnabled(!report.written.empty());
    m_close->setFocus();
}

void ExportDialog::goBack()
{
    showPage(ChoosePage);
    showChosenFormat();
    m_list->setFocus();
}

} // namespace

void runExportDialog(MainWindow &window, const DocumentMak &document, ExporterFactory &factory,
    const std::function<void(const QString &path)> &openFile)
{
    const auto *user =
        dynamic_cast<WindowUserInterface *>(&KivApplication::instance()->userInterface());
    if (user == nullptr) {
        throw HostError(ExitFailed, windowText("There is no window to ask for file names."));
    }
    ExportDialog(window, document, factory, openFile).execModal();
    window.activateWindow(); // a question that closes together with the dialog may leave no focus
}

} // namespace KivSystem
