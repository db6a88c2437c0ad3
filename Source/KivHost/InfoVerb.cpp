#include "Console.h"
#include "CutRequests.h"
#include "HostSettings.h"
#include "KivCore/Locale.h"
#include "KivMarker/CutStatistics.h"
#include "KivMarker/Document.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/MarkerFile.h"
#include "KivMarker/ShareGlobales.h"
#include "MarkerFacts.h"
#include "Verbs.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLocale>

namespace KivSystem {

namespace {

QString typeWord(int fabricType)
{
    switch (fabricType) {
    case FoldOnBottom:
        return QStringLiteral("foldBottom");
    case FoldOnTop:
        return QStringLiteral("foldTop");
    case TubularFabric:
        return QStringLiteral("tubular");
    default:
        return QStringLiteral("plain");
    }
}

QString dateText(const SummaryInfo &summary)
{
    return SummaryInfo::isValidStamped(summary.dateStamp)
               ? QLocale::c().toString(summary.dateStamp, QStringLiteral("yyyy-MM-ddTHH:mm:ss"))
               : QString();
}

// ---- JSON: lengths in centimetres, angles in degrees, efficiency in percent ----

QJsonObject rulesJson(const PlacementRules &rules)
{
    return {{QStringLiteral("rotationStep"), rules.rotationStep},
        {QStringLiteral("fineRotation"), rules.fineRotation},
        {QStringLiteral("flipX"), rules.flipX}, {QStringLiteral("flipY"), rules.flipY}};
}

QJsonObject layerJson(const QString &name, const LayerFacts &facts)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("width"), facts.width},
        {QStringLiteral("length"), facts.length}, {QStringLiteral("efficiency"), facts.efficiency},
        {QStringLiteral("garments"), facts.garments}, {QStringLiteral("placed"), facts.placed},
        {QStringLiteral("toPlace"), facts.toPlace}, {QStringLiteral("standBy"), facts.standBy}};
}

QJsonObject pieceJson(const PieceFacts &facts)
{
    QJsonObject json{{QStringLiteral("name"), facts.piece->getName()},
        {QStringLiteral("style"), facts.style},
        {QStringLiteral("sizes"), QJsonArray::fromStringList(facts.sizes)},
        {QStringLiteral("ordered"), facts.ordered}, {QStringLiteral("placed"), facts.placed},
        {QStringLiteral("left"), facts.left}};
    if (facts.piece->ownRules()) {
        json.insert(QStringLiteral("rules"), rulesJson(*facts.piece->ownRules()));
    }
    return json;
}

QJsonObject fabricJson(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric)
{
    QJsonArray layers;
    forEachNumber(fabric.layerCount(), [&](short layer) {
        layers.append(layerJson(
            drawing.getLayerObjectTable()[layer - 1]->layerName, layerFacts(fabric, layer)));
    });
    QJsonArray pieces;
    for (const PieceFacts &facts : pieceFacts(drawing, fabric)) {
        pieces.append(pieceJson(facts));
    }
    return {{QStringLiteral("name"), fabric.fabricName},
        {QStringLiteral("type"), typeWord(fabric.fabricType)},
        {QStringLiteral("status"), fabric.fabricStatus}, {QStringLiteral("oneWay"), fabric.oneWay},
        {QStringLiteral("gapX"), fabric.getGapInX()}, {QStringLiteral("gapY"), fabric.getGapInY()},
        {QStringLiteral("rules"), rulesJson(fabric.rules)}, {QStringLiteral("layers"), layers},
        {QStringLiteral("pieces"), pieces}};
}

QJsonObject documentJson(const DocumentMak &document)
{
    const CDbMarkerDrawing &drawing = *document.drawing();
    const SummaryInfo &summary = drawing.summaryInfo();
    QJsonArray layers;
    for (const CDbLayerObject *layer : drawing.getLayerObjectTable()) {
        layers.append(layer->layerName);
    }
    QJsonArray fabrics;
    for (const CDbFabricObject *fabric : drawing.getFabricsTable()) {
        fabrics.append(fabricJson(drawing, *fabric));
    }
    return {{QStringLiteral("name"), document.name()}, {QStringLiteral("path"), drawing.filePath},
        {QStringLiteral("summary"), QJsonObject{{QStringLiteral("keywords"), summary.keywords},
                                        {QStringLiteral("comments"), summary.comments},
                                        {QStringLiteral("dateStamp"), dateText(summary)}}},
        {QStringLiteral("layers"), layers}, {QStringLiteral("fabrics"), fabrics}};
}

// ---- text ----

QString rulesText(const PlacementRules &rules)
{
    QStringList words;
    words.append(rules.rotationStep == 0
                     ? QStringLiteral("no turning")
                     : QStringLiteral("turning by %1")
                           .arg(KivLocale().formatAngle(rules.rotationStep, KivLocale::WithUnit)));
    if (rules.fineRotation > 0) {
        words.append(QStringLiteral("tilt up to %1")
                         .arg(KivLocale().formatAngle(rules.fineRotation, KivLocale::WithUnit)));
    }
    if (rules.flipX) {
        words.append(QStringLiteral("flip in X"));
    }
    if (rules.flipY) {
        words.append(QStringLiteral("flip in Y"));
    }
    return words.join(QStringLiteral(", "));
}

QString layerText(const QString &name, const LayerFacts &facts)
{
    const KivLocale locale;
    return QStringLiteral("layer \"%1\": width %2, length %3, efficiency %4, garments %5, placed "
                          "%6, to place %7, stand-by %8")
        .arg(name, locale.formatLength(facts.width, KivLocale::WithUnit),
            locale.formatLength(facts.length, KivLocale::WithUnit),
            locale.formatPercentage(facts.efficiency / 100, KivLocale::WithUnit),
            QString::number(facts.garments), QString::number(facts.placed),
            QString::number(facts.toPlace), QString::number(facts.standBy));
}

QString pieceText(const PieceFacts &facts)
{
    const auto &rules = facts.piece->ownRules();
    return QStringLiteral("piece \"%1\", style \"%2\", sizes %3: ordered %4, placed %5, left %6%7")
        .arg(facts.piece->getName(), facts.style, facts.sizes.join(QStringLiteral(", ")),
            QString::number(facts.ordered), QString::number(facts.placed),
            QString::number(facts.left),
            rules ? QStringLiteral("; ") + rulesText(*rules) : QString());
}

void printFabric(QTextStream &out, const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric)
{
    out << "fabric \"" << onOneLine(fabric.fabricName) << "\": " << typeWord(fabric.fabricType)
        << ", status " << fabric.fabricStatus << (fabric.oneWay ? ", one way, " : ", two ways, ")
        << rulesText(fabric.rules) << '\n';
    forEachNumber(fabric.layerCount(), [&](short layer) {
        const QString name = drawing.getLayerObjectTable()[layer - 1]->layerName;
        out << "    " << onOneLine(layerText(name, layerFacts(fabric, layer))) << '\n';
    });
    for (const PieceFacts &facts : pieceFacts(drawing, fabric)) {
        out << "    " << onOneLine(pieceText(facts)) << '\n';
    }
}

void printDocument(QTextStream &out, const DocumentMak &document)
{
    const CDbMarkerDrawing &drawing = *document.drawing();
    const SummaryInfo &summary = drawing.summaryInfo();
    QStringList layers;
    for (const CDbLayerObject *layer : drawing.getLayerObjectTable()) {
        layers.append(layer->layerName);
    }
    const std::pair<const char *, QString> lines[] = {
        {"name", document.name()},
        {"path", drawing.filePath},
        {"keywords", summary.keywords},
        {"comments", summary.comments},
        {"date stamp", dateText(summary)},
        {"layers", layers.join(QStringLiteral(", "))},
    };
    for (const auto &[title, text] : lines) {
        if (!text.isEmpty()) {
            out << title << ": " << onOneLine(text) << '\n';
        }
    }
    for (const CDbFabricObject *fabric : drawing.getFabricsTable()) {
        printFabric(out, drawing, *fabric);
    }
}

// ---- what the cutter has to do, by the settings for ANSI cutters ----

struct NamedCaller
{
    const char *name;
    SvgOptions::SvgCaller caller;
};

// The order of the cuts as the marker holds its groups, as an export shortens it, and as it comes
// out of the Zentrim view.
constexpr NamedCaller kCallers[] = {
    {"stored", SvgOptions::CallerDefault},
    {"shortened", SvgOptions::CallerExport},
    {"optimised", SvgOptions::CallerZentrim},
};

// All documents of a fabric together.
CutStatistics cutsOf(const DocumentMak &document, short fabric, SvgOptions::SvgCaller caller)
{
    const CDbMarkerShareGlobales &settings = *CDbMarkerShareGlobales::instance();
    SvgOptions options = cutRequestFor("ansi", *document.drawing());
    options.setCaller(caller);
    options.setCheckRange(false);
    CutStatistics sum;
    for (const QDomDocument &cuts : document.toSVG(options, fabric)) {
        sum += measureCuts(cuts, static_cast<NotchOrder>(settings.getCutOrderCrans()),
            static_cast<CutLine>(settings.getCutInternalOrder()));
    }
    return sum;
}

QJsonArray cutJson(const DocumentMak &document)
{
    QJsonArray fabrics;
    forEachNumber(document.drawing()->getFabricsQty(), [&](short fabric) {
        QJsonObject orders;
        for (const NamedCaller &order : kCallers) {
            const CutStatistics cuts = cutsOf(document, fabric, order.caller);
            orders.insert(QLatin1String(order.name),
                QJsonObject{{QStringLiteral("objects"), cuts.objects},
                    {QStringLiteral("holes"), cuts.holes},
                    {QStringLiteral("plunges"), cuts.plunges},
                    {QStringLiteral("frameAdvances"), cuts.frameAdvances},
                    {QStringLiteral("cutLength"), cuts.cutLength},
                    {QStringLiteral("idleLength"), cuts.idleLength}});
        }
        fabrics.append(orders);
    });
    return fabrics;
}

void printCuts(QTextStream &out, const DocumentMak &document)
{
    const KivLocale locale;
    forEachNumber(document.drawing()->getFabricsQty(), [&](short fabric) {
        out << "cuts of fabric \""
            << onOneLine(document.drawing()->getFabric(static_cast<short>(fabric - 1))->fabricName)
            << "\":\n";
        for (const NamedCaller &order : kCallers) {
            const CutStatistics cuts = cutsOf(document, fabric, order.caller);
            out << "    " << order.name << ": cut " << locale.formatLength(cuts.cutLength, {})
                << ", idle " << locale.formatLength(cuts.idleLength, {}) << ", " << cuts.plunges
                << " plunges, " << cuts.holes << " holes, " << cuts.objects << " objects, "
                << cuts.frameAdvances << " frame advances\n";
        }
    });
}

} // namespace

std::unique_ptr<DocumentMak> loadMarker(const QString &path)
{
    requireReadableFile(path);
    try {
        return MarkerFile::load(path);
    } catch (const MarkerFileError &error) {
        throw HostError(ExitUnreadable, error.message());
    }
}

int showInfo(const InfoOptions &options, const Console &console)
{
    const RunSettings settings(options.settings, RunSettings::ReadOnly, console);
    const std::unique_ptr<DocumentMak> document = loadMarker(options.marker);
    if (options.json) {
        QJsonObject json = documentJson(*document);
        if (options.cut) {
            json.insert(QStringLiteral("cut"), cutJson(*document));
        }
        console.json(json);
    } else {
        printDocument(console.out, *document);
        if (options.cut) {
            printCuts(console.out, *document);
        }
    }
    for (const CutMessage &message : document->takeCutMessages()) {
        console.message(message.text);
    }
    return ExitDone;
}

} // namespace KivSystem
