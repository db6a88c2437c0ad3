// What is cut besides the paths of the pieces: holes and waste.

#include "CutProcessor.h"

#include "CutConfig.h"
#include "CutShapePath.h"

#include "KivMarker/ShareGlobales.h"

namespace KivSystem {
namespace NC {
namespace {

const QString &outAttribute()
{
    static const QString name = QStringLiteral("out");
    return name;
}

} // namespace

void CutProcessor::exportDrill(const QDomElement &object, const QDomElement &drillConfig)
{
    if (drillConfig.isNull()) {
        return;
    }
    const bool wrap = isWrapped(drillConfig);
    const bool hasUserTools = CDbMarkerShareGlobales::instance()->getPunchUserTool();
    const QString place = QStringLiteral("drill");
    const QString tag = QStringLiteral("path");
    QDomElement path = object.firstChildElement(tag);
    for (; !path.isNull(); path = path.nextSiblingElement(tag)) {
        if (!path.hasAttribute(place)) {
            continue;
        }
        // An empty tag would find the first tool, too: a path that names none has none.
        const QString name = path.attribute(QStringLiteral("t"));
        if (hasUserTools && name.isEmpty()) {
            continue;
        }
        const QDomElement tool = drillConfig.firstChildElement(hasUserTools ? name : QString());
        if (tool.isNull()) {
            continue;
        }
        const QString format = tool.attribute(outAttribute()).replace(QLatin1String("%3"), synchro);
        std::vector<GeoPoint2D> points;
        parseShapePath(path.attribute(place), points);
        if (!points.empty()) {
            exportPoint(points.front(), format, wrap);
        }
    }
}

void CutProcessor::exportExternalHole(const QDomElement &svgRoot, const QDomElement &drillConfig,
    const QDomElement &beginConfig, int &n)
{
    const QDomElement external = svgRoot.firstChildElement(QStringLiteral("external"));
    const QString name = external.attribute(QStringLiteral("outil"));
    if (name.isEmpty()) {
        return;
    }
    const QDomElement tool = drillConfig.firstChildElement(name);
    if (tool.isNull()) {
        return;
    }
    const QString format = tool.attribute(outAttribute());
    const QString tag = QStringLiteral("circle");
    QDomElement circle = external.firstChildElement(tag);
    for (; !circle.isNull(); circle = circle.nextSiblingElement(tag)) {
        exportItems(svgRoot, beginConfig, n);
        stream << formatPoint(format, circle.attribute(QStringLiteral("cx")),
            circle.attribute(QStringLiteral("cy")), synchro);
        ++n;
    }
}

void CutProcessor::exportScrap(const QDomElement &scrap, const QDomElement &configRoot, int n)
{
    const QDomElement config = configRoot.firstChildElement(QStringLiteral("scrap"));
    if (config.isNull()) {
        return;
    }
    const QDomElement outline = config.firstChildElement(QStringLiteral("outline"));
    const QString move = outline.attribute(QStringLiteral("pathto"));
    const QString line = outline.attribute(QStringLiteral("lineto0"));
    const bool wrap = isWrapped(outline);
    exportItems(scrap, config.firstChildElement(QStringLiteral("begin")), n);

    const GeoPoint2D openEnd(-1, -1);
    const QString tag = QStringLiteral("s");
    QDomElement cut = scrap.firstChildElement(tag);
    for (; !cut.isNull(); cut = cut.nextSiblingElement(tag)) {
        const QString text = cut.text();
        std::vector<GeoPoint2D> points;
        parseShapePath(text, points);
        if (points.empty()) {
            continue; // nothing that could be cut
        }
        const bool hasLine = text.contains(QLatin1Char('L'));
        if (points.size() == 2) {
            exportPoint(points[0], move, wrap);
            exportPoint(points[1], line, wrap);
        } else {
            exportPoint(hasLine ? openEnd : points[0], move, wrap);
            exportPoint(hasLine ? points[0] : openEnd, line, wrap);
        }
    }
}

} // namespace NC
} // namespace KivSystem
