#include "EastmanProcessor.h"

#include "CutShapePath.h"
#include "Dialogs/EastmanOptionsWidget.h"
#include "Failures.h"

#include "KivCore/Application.h"
#include "KivCore/MainWindow.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ShareGlobales.h"

namespace KivSystem {
namespace NC {
namespace {

constexpr QLatin1Char FILL_CHAR(' ');
constexpr int kWidthBesideDecimals = 7; // of a coordinate's column
constexpr int kNumberWidth = 4;         // of a piece's number

} // namespace

EastmanProcessor::EastmanProcessor()
    : CutProcessor("/Eastman.xml")
    , optionsWidget(new EastmanOptionsWidget(KivApplication::instance()->mainWindow()))
{}

EastmanProcessor::~EastmanProcessor() = default;

const EastmanOptionsWidget &EastmanProcessor::panel() const
{
    KIV_HARD_ASSERT(!optionsWidget.isNull(), "px != 0");
    return *optionsWidget;
}

QWidget *EastmanProcessor::optionsPanel()
{
    return optionsWidget.data();
}

bool EastmanProcessor::applyOptionChanges()
{
    panel();
    return optionsWidget->applyChanges();
}

const SvgOptions &EastmanProcessor::getSvgOpt(const DocumentMak &doc)
{
    constexpr double percent = 100;
    KIV_CHECK_OPERATION(doc.drawing() != nullptr);
    if (doc.drawing()->zentrimActif) {
        svgOptions.setCaller(SvgOptions::CallerZentrim);
    }
    svgOptions.setScaleX(panel().getScaleX() / percent);
    svgOptions.setScaleY(panel().getScaleY() / percent);
    svgOptions.setNotchLength(panel().getNotchLength());
    svgOptions.setDrillSize(
        static_cast<short>(panel().getDrillAngle())); // the angle is wanted here
    svgOptions.setDrillType(panel().getDrillType());
    svgOptions.setExportType(SvgOptions::ExportEastman);
    return svgOptions;
}

int EastmanProcessor::getNotchOrder()
{
    return CDbMarkerShareGlobales::instance()->getEastCutOrderCrans();
}

int EastmanProcessor::getInternalOrder()
{
    return CDbMarkerShareGlobales::instance()->getEastCutInternalOrder();
}

void EastmanProcessor::parseAttributes(const QDomElement &configRoot)
{
    precision = configRoot.attribute(QStringLiteral("precision")).toInt();
    xExpression.clear();
    yExpression.clear();
    synchro.clear();
}

// Each hole is a command, the angle behind it, and a line for its kind.
void EastmanProcessor::exportDrill(const QDomElement &object, const QDomElement &drillConfig)
{
    const DrillType type = panel().getDrillType();
    if (type == DrillNone) {
        return;
    }
    const QString command = drillConfig.attribute(
        type == DrillLaser ? QStringLiteral("laserPathTo") : QStringLiteral("pathto"));
    const QString followUp =
        drillConfig.attribute(QStringLiteral("lineto%1").arg(static_cast<int>(type) - 1));
    const QString place = QStringLiteral("drill");
    const QString tag = QStringLiteral("path");
    QDomElement path = object.firstChildElement(tag);
    for (; !path.isNull(); path = path.nextSiblingElement(tag)) {
        std::vector<GeoPoint2D> points;
        if (path.hasAttribute(place)) {
            parseShapePath(path.attribute(place), points);
        }
        if (points.empty()) {
            continue;
        }
        exportPoint(points.front(), command, false);
        stream << QStringLiteral("     %1\r\n")
                      .arg(panel().getDrillAngle(), 0, 'f', precision, FILL_CHAR);
        if (!followUp.isEmpty()) {
            stream << followUp << "\r\n";
        }
    }
}

void EastmanProcessor::exportPoint(const GeoPoint2D &point, const QString &format, bool wrap)
{
    writePoint(point, format, wrap, precision + kWidthBesideDecimals);
}

QString EastmanProcessor::parseItem(const QDomElement &data, QDomElement &item, int n)
{
    return itemText(data, item, n, kNumberWidth);
}

} // namespace NC
} // namespace KivSystem
