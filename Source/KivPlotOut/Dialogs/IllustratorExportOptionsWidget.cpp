#include "IllustratorExportOptionsWidget.h"

#include "KivCore/Locale.h"
#include "KivCore/Validator.h"

#include "ui_IllustratorExportOptions.h"

#include <QSettings>

namespace KivSystem {
namespace KivIllustrator {
namespace {

constexpr double kSmallestFactor = 0.1;
constexpr double kLargestFactor = 1;

QString factorKey()
{
    return QStringLiteral("Illustrator_export_factor");
}

} // namespace

class IllustratorExportOptionsUi : public Ui_IllustratorExportOptions
{};

IllustratorExportOptionsWidget::IllustratorExportOptionsWidget(QWidget *parent)
    : QWidget(parent)
    , m_ui(new IllustratorExportOptionsUi)
{
    m_ui->setupUi(this);
    m_ui->lineEditFactor->setText(KivLocale().formatPercentage(prefOptions(), KivLocale::WithUnit));
    m_ui->lineEditFactor->setValidator(
        new KivPercentageValidator(kSmallestFactor, kLargestFactor, false, m_ui->lineEditFactor));
}

IllustratorExportOptionsWidget::~IllustratorExportOptionsWidget() = default;

double IllustratorExportOptionsWidget::factor() const
{
    return KivLocale().parsePercentage(m_ui->lineEditFactor->text()).value;
}

double IllustratorExportOptionsWidget::prefOptions() const
{
    return QSettings().value(factorKey(), kLargestFactor).toDouble();
}

void IllustratorExportOptionsWidget::setPrefOptions(double /*ignored*/)
{
    QSettings().setValue(factorKey(), factor());
}

} // namespace KivIllustrator
} // namespace KivSystem

// The property is narrower than its reader.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wfloat-conversion"
#include "moc_IllustratorExportOptionsWidget.cpp" // NOLINT(bugprone-suspicious-include)
#pragma GCC diagnostic pop
