#include "CutProcessor.h"

#include "Failures.h"

#include "KivCore/Application.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ShareGlobales.h"

#include <QDir>
#include <QFile>

namespace KivSystem {
namespace NC {
namespace {

bool isZentrimDrawing(const DocumentMak &doc)
{
    const CDbMarkerDrawing *drawing = doc.drawing();
    KIV_CHECK_OPERATION(drawing != nullptr);
    return drawing->zentrimActif;
}

// Empty when the plug-ins came without the directory.
QString configPath(const QString &configFile)
{
    QDir directory = KivApplication::instance()->pluginsDir();
    if (!directory.cd(QStringLiteral("io/CutFileConfig"))) {
        return {};
    }
    return directory.absolutePath() + configFile;
}

bool readConfig(const QString &configFile, QDomDocument &config)
{
    QFile file(configPath(configFile));
    return !file.fileName().isEmpty() && file.open(QIODevice::ReadOnly) && config.setContent(&file);
}

} // namespace

// The children of `polygone`, and the orders in which they are used.
struct CutProcessor::ObjectConfig
{
    QDomElement begin;
    QDomElement end;
    QDomElement drill;
    QDomElement notch;
    QDomElement outline;
    QDomElement internal;
    int notchOrder = NotchNone;
    int internalOrder = CutLineNone;
};

CutProcessor::CutProcessor(const char *configFileName)
    : configFile(QString::fromUtf8(configFileName))
{
    svgOptions.setCaller(SvgOptions::CallerExport);
}

CutProcessor::~CutProcessor() = default;

QWidget *CutProcessor::optionsPanel()
{
    return nullptr;
}

bool CutProcessor::applyOptionChanges()
{
    return true;
}

bool CutProcessor::checkPolygonOptimization()
{
    return true;
}

bool CutProcessor::isNeedSelectFabirc()
{
    return true;
}

int CutProcessor::getNotchOrder()
{
    return CDbMarkerShareGlobales::instance()->getCutOrderCrans();
}

int CutProcessor::getInternalOrder()
{
    return CDbMarkerShareGlobales::instance()->getCutInternalOrder();
}

const SvgOptions &CutProcessor::getSvgOpt(const DocumentMak &doc)
{
    if (isZentrimDrawing(doc)) {
        svgOptions.setCaller(SvgOptions::CallerZentrim);
    }
    svgOptions.setScaleX(1.0); // the expressions of the configuration scale
    svgOptions.setScaleY(1.0);
    svgOptions.setNotchLength(CDbMarkerShareGlobales::instance()->getCutNotchSize());
    return svgOptions;
}

bool CutProcessor::prepare(const DocumentMak &doc, short fabricIndex)
{
    if (!Processor::prepare(doc, fabricIndex)) {
        return false;
    }
    documents.clear();
    currentDocument = 0;
    documents = doc.toSVG(getSvgOpt(doc), fabricIndex);
    return !documents.isEmpty();
}

bool CutProcessor::buildDocument(const DocumentMak & /*doc*/, QIODevice *device)
{
    if (currentDocument < 0 || currentDocument >= documents.size()) {
        return false;
    }
    stream.setDevice(device);
    const bool isWritten = fileExport(documents.at(currentDocument));
    stream.flush(); // while whoever opened the device still looks at its errors
    return isWritten;
}

bool CutProcessor::exportMoreFiles()
{
    ++currentDocument;
    return currentDocument < documents.size();
}

QString CutProcessor::generateFileName(const DocumentMak &doc, short fabricIndex)
{
    QString name = Processor::generateFileName(doc, fabricIndex);
    if (isZentrimDrawing(doc)) {
        return QStringLiteral("%1%2").arg(QStringLiteral("Zent"), name);
    }
    if (currentDocument <= 0) {
        return name;
    }
    const QDomElement root = documents.value(currentDocument).documentElement();
    const int block = root.attribute(QStringLiteral("block_index")).toInt();
    return name + QStringLiteral("Blk%1").arg(block);
}

void CutProcessor::parseAttributes(const QDomElement &configRoot)
{
    precision = configRoot.attribute(QStringLiteral("precision")).toInt();
    xExpression = configRoot.attribute(QStringLiteral("x"));
    yExpression = configRoot.attribute(QStringLiteral("y"));
    synchro.clear();
    if (CDbMarkerShareGlobales::instance()->getCutPenUpSynchro()) {
        synchro = configRoot.attribute(QStringLiteral("synchro"));
    }
}

bool CutProcessor::fileExport(const QDomDocument &svg)
{
    QDomDocument config;
    if (!readConfig(configFile, config)) {
        return false;
    }
    const QDomElement configRoot = config.documentElement();
    parseAttributes(configRoot);
    stream.setRealNumberNotation(QTextStream::FixedNotation);
    stream.setRealNumberPrecision(precision);

    const QDomElement data = svg.documentElement();
    exportItems(data, configRoot.firstChildElement(QStringLiteral("header")), 1);
    exportPolygones(data, configRoot);
    exportItems(data, configRoot.firstChildElement(QStringLiteral("root")), 1);
    return true;
}

void CutProcessor::exportPolygones(const QDomElement &svgRoot, const QDomElement &configRoot)
{
    const QDomElement polygone = configRoot.firstChildElement(QStringLiteral("polygone"));
    if (svgRoot.isNull() || polygone.isNull()) {
        return;
    }
    ObjectConfig config;
    config.notchOrder = getNotchOrder();
    config.internalOrder = getInternalOrder();
    config.begin = polygone.firstChildElement(QStringLiteral("begin"));
    config.end = polygone.firstChildElement(QStringLiteral("end"));
    config.drill = polygone.firstChildElement(QStringLiteral("drill"));
    config.notch = polygone.firstChildElement(QStringLiteral("notch"));
    config.outline = polygone.firstChildElement(QStringLiteral("outline"));
    config.internal = polygone.firstChildElement(QStringLiteral("internal"));

    int n = 1;
    exportExternalHole(svgRoot, config.drill, config.begin, n);
    const QString tag = QStringLiteral("object");
    QDomElement object = svgRoot.firstChildElement(tag);
    for (; !object.isNull(); object = object.nextSiblingElement(tag)) {
        exportObject(object, config, n);
        ++n;
    }

    const QDomElement scrap = svgRoot.firstChildElement(QStringLiteral("scrap"));
    if (!scrap.isNull()) {
        exportScrap(scrap, configRoot, n);
    }
}

void CutProcessor::exportObject(const QDomElement &object, const ObjectConfig &config, int n)
{
    exportItems(object, config.begin, n);
    exportDrill(object, config.drill);
    if (!synchro.isEmpty()) {
        stream << synchro;
    }
    if (config.internalOrder == CutLineBeforeOutline) {
        exportInternal(object, config.internal);
    }
    switch (config.notchOrder) {
    case NotchAfterOutline:
        exportOutline(object, config.outline);
        exportNotchs(object, config.notch);
        break;
    case NotchBeforeOutline:
        exportNotchs(object, config.notch);
        exportOutline(object, config.outline);
        break;
    case NotchDuringOutline:
        exportDuringOutlines(object, config.notch, config.outline);
        break;
    default:
        exportOutline(object, config.outline);
    }
    if (config.internalOrder == CutLineAfterOutline) {
        exportInternal(object, config.internal);
    }
    exportItems(object, config.end, n);
}

} // namespace NC
} // namespace KivSystem
