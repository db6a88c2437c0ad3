#include "MarkerFileReader.h"

#include "JsonNode.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/Polygon.h"
#include "KivMarker/Symbols.h"
#include "MarkerFileAttachments.h"
#include "MarkerFileShapes.h"
#include "MarkerFileWords.h"

#include <map>
#include <set>

namespace KivSystem {
namespace {

constexpr int kFullTurn = 360;
constexpr double kSmallestPeriod = 0.01;
constexpr double kMaxSpacing = 100;
constexpr double kSmallestScale = 0.1; // of a piece against its shrinkage
constexpr double kLargestScale = 10;
constexpr double kBlockTolerance = 0.0001; // cm between polygons that touch
constexpr int kLastBallot = 0xFF;          // a ballot is printed as one 8-bit character

// Calls `read` for each item of an array member that may be missing.
template <class Reader>
void forEachItem(const JsonNode &node, const char *key, Reader read)
{
    if (!node.has(key)) {
        return;
    }
    const JsonNode list = node.member(key);
    const int count = list.count(0, kMaxCount);
    for (int index = 0; index < count; ++index) {
        read(list.item(index));
    }
}

SummaryInfo readSummary(const JsonNode &node)
{
    node.allow({"keywords", "comments", "dateStamp"});
    SummaryInfo summary;
    summary.keywords = node.line("keywords", QString());
    summary.comments = node.paragraph("comments");
    if (node.has("dateStamp")) {
        const JsonNode stamp = node.member("dateStamp");
        summary.dateStamp = stampOf(stamp.asLine());
        if (!SummaryInfo::isValidStamped(summary.dateStamp)) {
            stamp.failType(QStringLiteral("a date and time such as \"2026-03-14T09:30:00\""));
        }
    }
    return summary;
}

short readRank(const JsonNode &layer, int layers, bool ranked, std::set<short> &seen)
{
    if (!ranked) {
        if (layer.has("rank")) {
            layer.member("rank").fail(QStringLiteral("the first layer has no rank"),
                QStringLiteral("a rank for all layers or for none"));
        }
        return 0;
    }
    const auto rank = static_cast<short>(layer.integer("rank", 1, layers));
    if (!seen.insert(rank).second) {
        layer.member("rank").fail(
            QStringLiteral("the rank %1 stands twice").arg(rank), QStringLiteral("each rank once"));
    }
    return rank;
}

void readLayerNames(const JsonNode &document, CDbMarkerDrawing &drawing)
{
    const JsonNode layers = document.member("layers");
    const int count = layers.count(1, kMaxCount);
    std::set<short> ranks;
    bool ranked = false;
    for (int index = 0; index < count; ++index) {
        const JsonNode layer = layers.item(index);
        layer.allow({"name", "rank", "unused"});
        ranked = index == 0 ? layer.has("rank") : ranked;
        CDbLayerObject *added = drawing.addLayer(layer.line("name"));
        added->layerRank = readRank(layer, count, ranked, ranks);
        added->layerUnused = layer.boolean("unused", false);
    }
}

// The fabrics with their names alone: styles refer to them by number, and their pieces to styles.
// Their layers are counted before room is made for them.
void readFabricNames(const JsonNode &document, CDbMarkerDrawing &drawing)
{
    const JsonNode fabrics = document.member("fabrics");
    const int count = fabrics.count(0, kMaxCount);
    for (int index = 0; index < count; ++index) {
        const JsonNode fabric = fabrics.item(index);
        const JsonNode layers = fabric.member("layers");
        layers.count(drawing.getLayersQty(nullptr), drawing.getLayersQty(nullptr));
        drawing.addFabric(fabric.line("name"));
    }
}

std::vector<StyleSize> readStyleSizes(const JsonNode &list)
{
    std::vector<StyleSize> sizes;
    std::set<short> numbers;
    const int count = list.count(1, kMaxCount);
    for (int index = 0; index < count; ++index) {
        const JsonNode node = list.item(index);
        node.allow({"number", "name", "special"});
        StyleSize size;
        size.number = static_cast<short>(node.integer("number", 1, kMaxCount));
        size.name = node.line("name");
        size.special = node.line("special", QString());
        if (!numbers.insert(size.number).second) {
            node.fail(QStringLiteral("the size number %1 stands twice").arg(size.number),
                QStringLiteral("each number once in a style"));
        }
        sizes.push_back(size);
    }
    return sizes;
}

void readGarments(const JsonNode &node, const CDbMarkerDrawing &drawing, CDbStyleObject &style,
    std::set<std::pair<short, short>> &seen)
{
    node.allow({"fabric", "layer", "quantities"});
    const auto fabric = static_cast<short>(node.integer("fabric", 1, drawing.getFabricsQty()));
    const auto layer = static_cast<short>(node.integer("layer", 1, drawing.getLayersQty(nullptr)));
    if (!seen.emplace(fabric, layer).second) {
        node.fail(QStringLiteral("fabric %1 and layer %2 stand twice").arg(fabric).arg(layer),
            QStringLiteral("one entry for a fabric and layer"));
    }
    const int sizes = static_cast<int>(style.sizes().size());
    const JsonNode quantities = node.member("quantities");
    quantities.count(sizes, sizes);
    CDbStyleSizeObjectTable *table = style.findStyleSizeObjectTable(fabric, nullptr);
    for (int index = 0; index < sizes; ++index) {
        table->setQuantity(layer, static_cast<short>(index + 1),
            static_cast<short>(quantities.item(index).asInteger(0, kMaxCount)));
    }
}

void readStyles(const JsonNode &document, CDbMarkerDrawing &drawing)
{
    const JsonNode styles = document.member("styles");
    const int count = styles.count(0, kMaxCount);
    for (int index = 0; index < count; ++index) {
        const JsonNode node = styles.item(index);
        node.allow({"name", "sourceFile", "sizes", "garments"});
        const JsonNode sizes = node.member("sizes");
        CDbStyleObject *style = drawing.addStyle(
            node.line("name"), node.line("sourceFile", QString()), readStyleSizes(sizes));
        std::set<std::pair<short, short>> seen;
        forEachItem(node, "garments",
            [&](const JsonNode &entry) { readGarments(entry, drawing, *style, seen); });
    }
}

void readPlaid(const JsonNode &node, CDbPlaidAndStripesInfo &plaid)
{
    node.allow({"active", "xRepetition", "yRepetition", "xOffset", "yOffset", "horizontalLines",
        "verticalLines"});
    plaid.plaidActive = node.boolean("active", false);
    plaid.xRepetition = node.number("xRepetition", 0, kMaxCoordinate, 0.0);
    plaid.yRepetition = node.number("yRepetition", 0, kMaxCoordinate, 0.0);
    plaid.xRepOffset = node.number("xOffset", -kMaxCoordinate, kMaxCoordinate, 0.0);
    plaid.yRepOffset = node.number("yOffset", -kMaxCoordinate, kMaxCoordinate, 0.0);
    plaid.sampleHorLines = readLines(node, "horizontalLines");
    plaid.sampleVerLines = readLines(node, "verticalLines");
    // A walk along the repeats would never end with a period of zero, and hardly with a tiny one.
    const auto needsPeriod = [&](const CDbLineObjectList &lines, double period, const char *key) {
        constexpr double mostLines = 100; // in a centimetre
        if (plaid.plaidActive && period >= kSmallestPeriod && lines.size() > mostLines * period) {
            node.fail(QStringLiteral("%1 is %2 for %3 lines")
                          .arg(QLatin1String(key))
                          .arg(period)
                          .arg(lines.size()),
                QStringLiteral("at most 100 lines in a centimetre"));
        }
        if (plaid.plaidActive && !lines.isEmpty() && period < kSmallestPeriod) {
            node.fail(QStringLiteral("%1 is %2").arg(QLatin1String(key)).arg(period),
                QStringLiteral("at least 0.01 for an active plaid with such lines"));
        }
    };
    needsPeriod(plaid.sampleHorLines, plaid.yRepetition, "yRepetition");
    needsPeriod(plaid.sampleVerLines, plaid.xRepetition, "xRepetition");
}

void readFabricRules(const JsonNode &node, CDbFabricObject &fabric)
{
    if (node.has("status")) {
        const JsonNode status = node.member("status");
        const double value = status.asNumber(-kMaxPrecise, kMaxPrecise);
        fabric.fabricStatus = static_cast<qint64>(value);
        if (static_cast<double>(fabric.fabricStatus) != value) {
            status.failType(QStringLiteral("a whole number"));
        }
    }
    fabric.fabricType = wordMember(node, "type", kFabricTypeWords);
    fabric.oneWay = node.boolean("oneWay", false);
    fabric.setHybrid(node.boolean("hybrid", false));
    fabric.foldAnyPiece = node.boolean("foldAnyPiece", false);
    fabric.edgeGapActive = node.boolean("edgeGap", false);
    fabric.setGaps(node.number("gapX", -kMaxCoordinate, kMaxCoordinate, 0.0),
        node.number("gapY", 0, kMaxCoordinate, 0.0));
    if (node.has("rules")) {
        const JsonNode rules = node.member("rules");
        fabric.rules = readRules(rules);
    }
    if (node.has("plaid")) {
        const JsonNode plaid = node.member("plaid");
        readPlaid(plaid, fabric.plaidInfo);
    }
}

void readPieceSizes(const JsonNode &list, const CDbStyleObject &style, CDbPieceObject &piece)
{
    std::set<short> numbers;
    const int count = list.count(1, kMaxCount);
    for (int index = 0; index < count; ++index) {
        const JsonNode node = list.item(index);
        node.allow({"number", "contour", "seam", "internalPoints", "internalLines"});
        const auto number = static_cast<short>(node.integer("number", 1, kMaxCount));
        if (style.sizePosition(number) < 0) {
            node.fail(QStringLiteral("the style has no size with the number %1").arg(number),
                QStringLiteral("the number of one of its sizes"));
        }
        if (!numbers.insert(number).second) {
            node.fail(QStringLiteral("the size number %1 stands twice").arg(number),
                QStringLiteral("each size once in a piece"));
        }
        piece.addSize(number, readShape(node));
    }
}

void readChartEntry(const JsonNode &node, int layers, CDbPieceObject &piece,
    std::set<std::pair<short, short>> &seen)
{
    node.allow({"layer", "size", "left", "right"});
    ChartKey key;
    key.layer = static_cast<short>(node.integer("layer", 1, layers));
    key.size = static_cast<short>(node.integer("size", 1, piece.getNumberOfSizes()));
    if (!seen.emplace(key.layer, key.size).second) {
        node.fail(QStringLiteral("layer %1 and size %2 stand twice").arg(key.layer).arg(key.size),
            QStringLiteral("one entry for a layer and size"));
    }
    const int most = piece.getKIVPieceSingle() ? 0 : kMaxCount;
    key.left = true;
    piece.setOrderedQuantity(key, static_cast<short>(node.integer("left", 0, kMaxCount, 0)));
    key.left = false;
    piece.setOrderedQuantity(key, static_cast<short>(node.integer("right", 0, most, 0)));
}

// The turn, the mirror image and the scale of a placement.
Placement readTurn(const JsonNode &node, bool mirrored)
{
    Placement placement;
    placement.rotation = node.number("rotation", -kFullTurn, kFullTurn, 0.0);
    placement.mirrored = node.boolean("mirrored", mirrored);
    placement.scaleX = node.number("scaleX", kSmallestScale, kLargestScale, 1.0);
    placement.scaleY = node.number("scaleY", kSmallestScale, kLargestScale, 1.0);
    return placement;
}

Placement readPlacement(const JsonNode &node, bool left)
{
    Placement placement = readTurn(node, !left);
    placement.x = node.number("x", -kMaxCoordinate, kMaxCoordinate, 0.0);
    placement.y = node.number("y", -kMaxCoordinate, kMaxCoordinate, 0.0);
    return placement;
}

// Names of instances are made of a piece's name and this symbol.
QString readPieceName(const JsonNode &node)
{
    const QString name = node.line("name");
    const QLatin1Char symbol(CMarkerSymbols().instanceSymbol);
    if (name.contains(symbol)) {
        node.member("name").failType(QStringLiteral("a name without the character %1").arg(symbol));
    }
    return name;
}

void readPiece(const JsonNode &node, const CDbMarkerDrawing &drawing, CDbFabricObject &fabric)
{
    node.allow(
        {"name", "style", "single", "quantity", "pattern", "description", "code", "codeReference",
            "fabric", "identification", "cutDown", "transform", "rules", "sizes", "chart"});
    const QString name = readPieceName(node);
    const auto style =
        static_cast<short>(node.integer("style", 1, static_cast<int>(drawing.stylesList.size())));
    auto piece = std::make_unique<CDbPieceObject>(name, style);
    piece->setSingle(node.boolean("single", false));
    piece->setQuantity(static_cast<short>(node.integer("quantity", 1, kMaxCount, 1)));
    for (const auto &text : kPieceTextWords) {
        piece->pieceData.*text.value = node.line(text.word, QString());
    }
    piece->setTwoPieceCutDown(wordMember(node, "cutDown", kCutDownWords));
    if (node.has("transform")) {
        const JsonNode transform = node.member("transform");
        transform.allow({"rotation", "mirrored", "scaleX", "scaleY"});
        piece->setChartTransformation(readTurn(transform, false));
    }
    if (node.has("rules")) {
        const JsonNode rules = node.member("rules");
        piece->setOwnRules(readRules(rules));
    }
    const JsonNode sizes = node.member("sizes");
    readPieceSizes(sizes, *drawing.getStyle(static_cast<short>(style - 1)), *piece);
    std::set<std::pair<short, short>> seen;
    forEachItem(node, "chart", [&](const JsonNode &entry) {
        readChartEntry(entry, drawing.getLayersQty(nullptr), *piece, seen);
    });
    fabric.addPiece(std::move(piece));
}

short readBallot(const JsonNode &node)
{
    const QString ballot = node.line("ballot", QString());
    if (ballot.isEmpty()) {
        return 0;
    }
    if (ballot.size() != 1 || ballot.at(0).unicode() > kLastBallot) {
        node.member("ballot").failType(QStringLiteral("one character up to U+00FF"));
    }
    return static_cast<short>(ballot.at(0).unicode());
}

std::unique_ptr<CDbPolygon> readCutDownPartner(
    const JsonNode &node, const CDbPieceObject &piece, const CDbPolygon &polygon)
{
    node.allow({"x", "y", "rotation", "mirrored", "scaleX", "scaleY", "blocked"});
    auto partner =
        std::make_unique<CDbPolygon>(polygon.pieceIndex, polygon.pieceSize(), polygon.isLeft());
    partner->sizeNumber = piece.getPieceSize(polygon.pieceSize()).sizeNumber;
    partner->colorIndex = polygon.colorIndex;
    partner->ballotNumber = polygon.ballotNumber;
    partner->pairedBallot = polygon.pairedBallot;
    partner->blockingPolygon = node.boolean("blocked", false);
    partner->place(piece.getPieceSize(polygon.pieceSize()), readPlacement(node, polygon.isLeft()));
    return partner;
}

std::unique_ptr<CDbPolygon> readPolygon(const JsonNode &node, const CDbFabricObject &fabric)
{
    node.allow({"piece", "size", "side", "x", "y", "rotation", "mirrored", "scaleX", "scaleY",
        "ballot", "pairedBallot", "folded", "color", "spacing", "shape", "cutDown", "texts",
        "links", "images"});
    const auto pieceNumber = static_cast<short>(node.integer("piece", 1, fabric.pieceCount()));
    const CDbPieceObject *piece = fabric.findPieceAccordingIndex(pieceNumber, nullptr);
    const auto size = static_cast<short>(node.integer("size", 1, piece->getNumberOfSizes()));
    const bool left = wordMember(node, "side", kSideWords);

    auto polygon = std::make_unique<CDbPolygon>(pieceNumber, size, left);
    polygon->ballotNumber = readBallot(node);
    polygon->pairedBallot = node.boolean("pairedBallot", false);
    polygon->foldedPiece = node.boolean("folded", false);
    polygon->colorIndex = static_cast<short>(node.integer("color", 0, kMaxCount, 0));
    polygon->polygonTexts = readTexts(node, "texts");
    polygon->setSpacing(node.number("spacing", 0, kMaxSpacing, 0.0));
    const Placement placement = readPlacement(node, left);
    if (node.has("shape")) {
        const JsonNode shape = node.member("shape");
        shape.allow({"contour", "seam", "internalPoints", "internalLines"});
        polygon->setOwnShape(readShape(shape), placement);
    } else if (polygon->foldedPiece) {
        node.fail(QStringLiteral("a folded piece has no shape"),
            QStringLiteral("the half that lies on the folded cloth"));
    } else {
        polygon->place(piece->getPieceSize(size), placement);
    }
    readAttachments(node, *polygon);
    if (node.has("cutDown")) {
        const JsonNode partner = node.member("cutDown");
        polygon->setCutDownPolygon(readCutDownPartner(partner, *piece, *polygon));
    }
    return polygon;
}

// Polygons of a group so far, by piece and place in the chart.
using ChartCount = std::map<std::pair<short, ChartKey>, int>;

// No more may leave the chart than it orders.
void checkChart(const JsonNode &node, const CDbFabricObject &fabric, const CDbPolygon &polygon,
    short layer, ChartCount &inGroup)
{
    const ChartKey key{polygon.pieceSize(), layer, polygon.isLeft()};
    const CDbPieceObject *piece = fabric.findPieceAccordingIndex(polygon.pieceIndex, nullptr);
    const int count = ++inGroup[{polygon.pieceIndex, key}];
    if (count > piece->getQtyPieceSizeLayer(key.size, key.left, layer)) {
        node.fail(QStringLiteral("more of piece %1, size %2, %3 lie in layer %4 than are ordered")
                      .arg(polygon.pieceIndex)
                      .arg(key.size)
                      .arg(wordOf(key.left, kSideWords))
                      .arg(layer),
            QStringLiteral("at most %1").arg(piece->orderedQuantity(key)));
    }
}

void blockGroup(const JsonNode &node, CDbGrPolysObject &group)
{
    group.fusion(false, 0, true, kBlockTolerance, 0, 0, 0, nullptr);
    if (!group.hasMultiPolygon() || !group.isAllPolysInFusion()) {
        node.fail(QStringLiteral("the polygons of a blocked group do not join"),
            QStringLiteral("two or more that touch"));
    }
}

void readGroup(const JsonNode &node, CDbFabricObject &fabric, short layer)
{
    node.allow({"place", "blocked", "master", "polygons", "texts"});
    auto group = std::make_unique<CDbGrPolysObject>(wordMember(node, "place", kPlaceWords));
    group->texts = readTexts(node, "texts");
    const JsonNode polygons = node.member("polygons");
    const int count = polygons.count(1, kMaxCount);
    ChartCount inGroup;
    for (int index = 0; index < count; ++index) {
        const JsonNode entry = polygons.item(index);
        std::unique_ptr<CDbPolygon> polygon = readPolygon(entry, fabric);
        checkChart(entry, fabric, *polygon, layer, inGroup);
        group->addPolygon(std::move(polygon));
    }
    if (node.boolean("blocked", false)) {
        blockGroup(node, *group);
    }
    fabric.addGroup(layer, std::move(group));
}

// A group may name one that comes after it: masters are read when all groups are there.
void readMasters(const JsonNode &layer, const CDbGrPolysObjectList &groups)
{
    const auto masterOf = [&layer](int index) {
        const JsonNode list = layer.member("groups");
        const JsonNode group = list.item(index);
        return group.integer("master", 1, list.count(0, kMaxCount), 0);
    };
    for (int index = 0; index < groups.size(); ++index) {
        const int master = masterOf(index);
        groups[index]->masterGroup = static_cast<short>(master);
        if (master != 0 && (master == index + 1 || masterOf(master - 1) != 0)) {
            const JsonNode list = layer.member("groups");
            const JsonNode group = list.item(index);
            group.member("master").failType(
                QStringLiteral("the number of another group that has no master itself"));
        }
    }
}

TiedPoint readTiedPoint(const JsonNode &node, const CDbFabricObject &fabric)
{
    node.allow({"piece", "point", "internal"});
    TiedPoint tied;
    tied.piece = static_cast<short>(node.integer("piece", 1, fabric.pieceCount()));
    tied.internal = node.boolean("internal", false);
    const CDbPieceObject *piece = fabric.findPieceAccordingIndex(tied.piece, nullptr);
    int points = kMaxCount;
    for (int size = 1; size <= piece->getNumberOfSizes(); ++size) {
        const PieceShape &shape = piece->getPieceSize(static_cast<short>(size)).shape;
        points = qMin(points, (tied.internal ? shape.internalPoints : shape.contour).size());
    }
    tied.point = node.integer("point", 1, points);
    return tied;
}

void readLink(const JsonNode &node, CDbFabricObject &fabric)
{
    node.allow({"first", "second"});
    const JsonNode first = node.member("first");
    const JsonNode second = node.member("second");
    const TwainLink link{readTiedPoint(first, fabric), readTiedPoint(second, fabric)};
    const CDbPieceObject *piece = fabric.findPieceAccordingIndex(link.first.piece, nullptr);
    const CDbPieceObject *partner = fabric.findPieceAccordingIndex(link.second.piece, nullptr);
    if (piece->getStyleNo() != partner->getStyleNo()) {
        node.fail(QStringLiteral("the linked pieces are of different styles"),
            QStringLiteral("two pieces of one style"));
    }
    fabric.addLink(link);
}

void readFabricLayer(const JsonNode &node, CDbFabricObject &fabric, short number)
{
    node.allow({"width", "horizontalLines", "verticalLines", "texts", "groups"});
    FabricLayer *layer = fabric.findLayer(number);
    layer->width = node.number("width", 0, kMaxCoordinate);
    if (!(layer->width > 0)) {
        node.member("width").failType(QStringLiteral("a width above 0"));
    }
    layer->horizontalLines = readLines(node, "horizontalLines");
    layer->verticalLines = readLines(node, "verticalLines");
    layer->texts = readTexts(node, "texts");
    forEachItem(node, "groups", [&](const JsonNode &group) { readGroup(group, fabric, number); });
    readMasters(node, layer->groupList);
}

void readFabric(const JsonNode &node, const CDbMarkerDrawing &drawing, CDbFabricObject &fabric)
{
    node.allow({"name", "status", "type", "oneWay", "hybrid", "foldAnyPiece", "edgeGap", "gapX",
        "gapY", "rules", "plaid", "layers", "pieces", "links"});
    readFabricRules(node, fabric);
    forEachItem(node, "pieces", [&](const JsonNode &piece) { readPiece(piece, drawing, fabric); });
    forEachItem(node, "links", [&](const JsonNode &link) { readLink(link, fabric); });
    const JsonNode layers = node.member("layers");
    for (int index = 0; index < fabric.layerCount(); ++index) {
        readFabricLayer(layers.item(index), fabric, static_cast<short>(index + 1));
        const bool unused = drawing.getLayerObjectTable().at(index)->layerUnused;
        if (unused && !fabric.findLayer(static_cast<short>(index + 1))->groups.empty()) {
            layers.item(index).fail(QStringLiteral("something lies in an unused layer"),
                QStringLiteral("no groups there"));
        }
    }
}

void readFormat(const JsonNode &document)
{
    const JsonNode format = document.member("format");
    if (format.value().toString() != QLatin1String(kFormatName)) {
        format.failType(QStringLiteral("\"%1\"").arg(QLatin1String(kFormatName)));
    }
    const JsonNode version = document.member("version");
    if (version.asInteger(0, kMaxCount) != kFormatVersion) {
        version.failType(QStringLiteral("the version %1").arg(kFormatVersion));
    }
}

} // namespace

std::unique_ptr<CDbMarkerDrawing> readDrawing(const QJsonValue &value)
{
    const JsonNode document(value);
    readFormat(document);
    document.allow({"format", "version", "summary", "currentFabric", "singleLayer", "optimised",
        "layers", "fabrics", "styles"});
    auto drawing = std::make_unique<CDbMarkerDrawing>();
    if (document.has("summary")) {
        const JsonNode summary = document.member("summary");
        drawing->setSummaryInfo(readSummary(summary));
    }
    readLayerNames(document, *drawing);
    readFabricNames(document, *drawing);
    readStyles(document, *drawing);
    drawing->currentFabric = static_cast<short>(
        document.integer("currentFabric", 1, qMax(1, drawing->getFabricsQty()), 1));
    drawing->setSingleLayer(
        static_cast<short>(document.integer("singleLayer", 0, drawing->getLayersQty(nullptr), 0)));
    drawing->zentrimActif = document.boolean("optimised", false);

    const JsonNode fabrics = document.member("fabrics");
    for (int index = 0; index < drawing->getFabricsQty(); ++index) {
        readFabric(fabrics.item(index), *drawing, *drawing->getFabric(static_cast<short>(index)));
    }
    return drawing;
}

} // namespace KivSystem
