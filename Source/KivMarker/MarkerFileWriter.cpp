#include "MarkerFileWriter.h"

#include "JsonTree.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/Polygon.h"
#include "MarkerFileAttachments.h"
#include "MarkerFileShapes.h"
#include "MarkerFileWords.h"

#include <map>

namespace KivSystem {
namespace {

// A member is left out when it has the value that a missing one has.
void addText(JsonTree &object, const char *key, const QString &text)
{
    if (!text.isEmpty()) {
        object.add(key, JsonTree::text(text));
    }
}

void addFlag(JsonTree &object, const char *key, bool value, bool fallback = false)
{
    if (value != fallback) {
        object.add(key, JsonTree::boolean(value));
    }
}

void addInteger(JsonTree &object, const char *key, qint64 value, qint64 fallback)
{
    if (value != fallback) {
        object.add(key, JsonTree::integer(value));
    }
}

void addNumber(JsonTree &object, const char *key, double value, double fallback = 0)
{
    if (value != fallback) {
        object.add(key, JsonTree::number(value));
    }
}

void addList(JsonTree &object, const char *key, JsonTree list)
{
    if (!list.isEmpty()) {
        object.add(key, std::move(list));
    }
}

template <class Value, std::size_t Count>
void addWord(
    JsonTree &object, const char *key, Value value, const std::array<Word<Value>, Count> &words)
{
    if (value != words.front().value) {
        object.add(key, JsonTree::text(wordOf(value, words)));
    }
}

JsonTree writeSummary(const SummaryInfo &summary)
{
    JsonTree object = JsonTree::object();
    addText(object, "keywords", summary.keywords);
    addText(object, "comments", summary.comments);
    if (SummaryInfo::isValidStamped(summary.dateStamp)) {
        object.add("dateStamp", JsonTree::text(stampText(summary.dateStamp)));
    }
    return object;
}

void writeTurn(JsonTree &object, const Placement &placement, bool mirroredByDefault)
{
    addNumber(object, "rotation", placement.rotation);
    addFlag(object, "mirrored", placement.mirrored, mirroredByDefault);
    addNumber(object, "scaleX", placement.scaleX, 1);
    addNumber(object, "scaleY", placement.scaleY, 1);
}

void writePlacement(JsonTree &object, const Placement &placement, bool left)
{
    addNumber(object, "x", placement.x);
    addNumber(object, "y", placement.y);
    writeTurn(object, placement, !left);
}

JsonTree writePolygon(const CDbPolygon &polygon)
{
    JsonTree object = JsonTree::object();
    object.add("piece", JsonTree::integer(polygon.pieceIndex))
        .add("size", JsonTree::integer(polygon.pieceSize()));
    addWord(object, "side", polygon.isLeft(), kSideWords);
    writePlacement(object, polygon.placement(), polygon.isLeft());
    if (polygon.ballotNumber != 0) {
        addText(object, "ballot", QString(QChar(static_cast<ushort>(polygon.ballotNumber))));
    }
    addFlag(object, "pairedBallot", polygon.pairedBallot);
    addFlag(object, "folded", polygon.foldedPiece);
    addInteger(object, "color", polygon.colorIndex, 0);
    addNumber(object, "spacing", polygon.spacing());
    if (polygon.hasOwnShape()) {
        JsonTree shape = JsonTree::object();
        writeShape(shape, *polygon.currentContour(), polygon.findContour(SeamContour),
            polygon.internalPoints, polygon.internalLines());
        object.add("shape", std::move(shape));
    }
    if (const CDbPolygon *partner = polygon.cutDownPolygon) {
        JsonTree cutDown = JsonTree::object();
        writePlacement(cutDown, partner->placement(), partner->isLeft());
        addFlag(cutDown, "blocked", partner->blockingPolygon);
        object.add("cutDown", std::move(cutDown));
    }
    writeTexts(object, "texts", polygon.polygonTexts);
    writeAttachments(object, polygon);
    return object;
}

JsonTree writeGroup(const CDbGrPolysObject &group)
{
    JsonTree polygons = JsonTree::array();
    for (const CDbPolygon *polygon = group.firstPolygon; polygon != nullptr;
         polygon = polygon->nextPolygon) {
        polygons.append(writePolygon(*polygon));
    }
    JsonTree object = JsonTree::object();
    addWord(object, "place", static_cast<GroupPlace>(group.groupPlace()), kPlaceWords);
    addFlag(object, "blocked", group.blockingFusion != nullptr);
    addInteger(object, "master", group.masterGroup, 0);
    object.add("polygons", std::move(polygons));
    writeTexts(object, "texts", group.texts);
    return object;
}

JsonTree writeFabricLayer(const FabricLayer &layer)
{
    JsonTree object = JsonTree::object();
    object.add("width", JsonTree::number(layer.width));
    writeLines(object, "horizontalLines", layer.horizontalLines);
    writeLines(object, "verticalLines", layer.verticalLines);
    writeTexts(object, "texts", layer.texts);
    JsonTree groups = JsonTree::array();
    for (const auto &group : layer.groups) {
        groups.append(writeGroup(*group));
    }
    addList(object, "groups", std::move(groups));
    return object;
}

JsonTree writeChart(const CDbPieceObject &piece)
{
    // Left and right of a layer and size stand in one entry.
    std::map<std::pair<short, short>, std::pair<short, short>> entries;
    for (const auto &[key, quantity] : piece.orderedQuantities()) {
        auto &[left, right] = entries[{key.layer, key.size}];
        (key.left ? left : right) = quantity;
    }
    JsonTree chart = JsonTree::array();
    for (const auto &[place, quantities] : entries) {
        JsonTree entry = JsonTree::object();
        entry.add("layer", JsonTree::integer(place.first))
            .add("size", JsonTree::integer(place.second));
        addInteger(entry, "left", quantities.first, 0);
        addInteger(entry, "right", quantities.second, 0);
        chart.append(std::move(entry));
    }
    return chart;
}

JsonTree writePiece(const CDbPieceObject &piece)
{
    JsonTree object = JsonTree::object();
    object.add("name", JsonTree::text(piece.getName()))
        .add("style", JsonTree::integer(piece.getStyleNo()));
    addFlag(object, "single", piece.getKIVPieceSingle());
    addInteger(object, "quantity", piece.getKIVPieceQuantity(), 1);
    for (const auto &text : kPieceTextWords) {
        addText(object, text.word, piece.pieceData.*text.value);
    }
    addWord(object, "cutDown", static_cast<CutDownKind>(piece.getTwoPieceCutDown()), kCutDownWords);
    JsonTree transform = JsonTree::object();
    writeTurn(transform, piece.chartTransformation(), false);
    addList(object, "transform", std::move(transform));
    if (piece.ownRules()) {
        object.add("rules", writeRules(*piece.ownRules()));
    }
    JsonTree sizes = JsonTree::array();
    for (int number = 1; number <= piece.getNumberOfSizes(); ++number) {
        const CDbPieceSizeObject &size = piece.getPieceSize(static_cast<short>(number));
        JsonTree entry = JsonTree::object();
        entry.add("number", JsonTree::integer(size.sizeNumber));
        writeShape(entry, size.shape.contour, &size.shape.seam, size.shape.internalPoints,
            size.shape.internalLines);
        sizes.append(std::move(entry));
    }
    object.add("sizes", std::move(sizes));
    addList(object, "chart", writeChart(piece));
    return object;
}

JsonTree writePlaid(const CDbPlaidAndStripesInfo &plaid)
{
    JsonTree object = JsonTree::object();
    addFlag(object, "active", plaid.plaidActive);
    addNumber(object, "xRepetition", plaid.xRepetition);
    addNumber(object, "yRepetition", plaid.yRepetition);
    addNumber(object, "xOffset", plaid.xRepOffset);
    addNumber(object, "yOffset", plaid.yRepOffset);
    writeLines(object, "horizontalLines", plaid.sampleHorLines);
    writeLines(object, "verticalLines", plaid.sampleVerLines);
    return object;
}

JsonTree writeTiedPoint(const TiedPoint &tied)
{
    JsonTree object = JsonTree::object();
    object.add("piece", JsonTree::integer(tied.piece)).add("point", JsonTree::integer(tied.point));
    addFlag(object, "internal", tied.internal);
    return object;
}

JsonTree writeLinks(const CDbFabricObject &fabric)
{
    JsonTree list = JsonTree::array();
    for (const auto &[style, links] : fabric.links()) {
        for (int position = 0; position < links.getTwainLinkPiecesCount(); ++position) {
            const TwainLink &link = links.at(position);
            list.append(JsonTree::object()
                            .add("first", writeTiedPoint(link.first))
                            .add("second", writeTiedPoint(link.second)));
        }
    }
    return list;
}

JsonTree writeFabric(const CDbFabricObject &fabric)
{
    JsonTree object = JsonTree::object();
    object.add("name", JsonTree::text(fabric.fabricName));
    addInteger(object, "status", fabric.fabricStatus, 1);
    addWord(object, "type", static_cast<FabricType>(fabric.fabricType), kFabricTypeWords);
    addFlag(object, "oneWay", fabric.oneWay);
    addFlag(object, "hybrid", fabric.isHybridFabric());
    addFlag(object, "foldAnyPiece", fabric.foldAnyPiece);
    addFlag(object, "edgeGap", fabric.edgeGapActive);
    addNumber(object, "gapX", fabric.getGapInX());
    addNumber(object, "gapY", fabric.getGapInY());
    addList(object, "rules", writeRules(fabric.rules));
    addList(object, "plaid", writePlaid(fabric.plaidInfo));
    JsonTree layers = JsonTree::array();
    for (int number = 1; number <= fabric.layerCount(); ++number) {
        layers.append(writeFabricLayer(*fabric.findLayer(static_cast<short>(number))));
    }
    object.add("layers", std::move(layers));
    JsonTree pieces = JsonTree::array();
    for (const CDbPieceObject *piece = fabric.firstPiece(); piece != nullptr;
         piece = piece->getNextPiece()) {
        pieces.append(writePiece(*piece));
    }
    addList(object, "pieces", std::move(pieces));
    addList(object, "links", writeLinks(fabric));
    return object;
}

JsonTree writeGarments(const CDbStyleSizeObjectTable &table, const CDbFabricObject &fabric,
    short fabricNumber, short layer)
{
    JsonTree quantities = JsonTree::array();
    for (int size = 1; size <= table.getNumberStyleSize(); ++size) {
        quantities.append(JsonTree::integer(
            table.quantityClothingBySize(&fabric, layer, nullptr, static_cast<short>(size))));
    }
    return JsonTree::object()
        .add("fabric", JsonTree::integer(fabricNumber))
        .add("layer", JsonTree::integer(layer))
        .add("quantities", std::move(quantities));
}

JsonTree writeStyle(const CDbMarkerDrawing &drawing, const CDbStyleObject &style)
{
    JsonTree sizes = JsonTree::array();
    for (const StyleSize &size : style.sizes()) {
        JsonTree entry = JsonTree::object();
        entry.add("number", JsonTree::integer(size.number)).add("name", JsonTree::text(size.name));
        addText(entry, "special", size.special);
        sizes.append(std::move(entry));
    }
    JsonTree garments = JsonTree::array();
    for (const CDbFabricObject *fabric : drawing.getFabricsTable()) {
        const short number = drawing.getFabricsTable().findFabricIndex(fabric);
        const auto *table = style.findStyleSizeObjectTable(number, nullptr);
        for (int layer = 1; layer <= fabric->layerCount(); ++layer) {
            if (table->garmentsInLayer(static_cast<short>(layer)) != 0) {
                garments.append(writeGarments(*table, *fabric, number, static_cast<short>(layer)));
            }
        }
    }
    JsonTree object = JsonTree::object();
    object.add("name", JsonTree::text(style.getStyleName()));
    addText(object, "sourceFile", style.getOriginalFileNameLinkInfo());
    object.add("sizes", std::move(sizes));
    addList(object, "garments", std::move(garments));
    return object;
}

} // namespace

QByteArray writeDrawing(const CDbMarkerDrawing &drawing)
{
    JsonTree document = JsonTree::object();
    document.add("format", JsonTree::text(QString::fromLatin1(kFormatName)))
        .add("version", JsonTree::integer(kFormatVersion));
    addList(document, "summary", writeSummary(drawing.summaryInfo()));
    addInteger(document, "currentFabric", drawing.currentFabric, 1);
    short singleLayer = 0;
    drawing.isSetToSingleLayer(nullptr, &singleLayer);
    addInteger(document, "singleLayer", singleLayer, 0);
    addFlag(document, "optimised", drawing.zentrimActif);
    JsonTree layers = JsonTree::array();
    for (const CDbLayerObject *layer : drawing.getLayerObjectTable()) {
        JsonTree entry = JsonTree::object();
        entry.add("name", JsonTree::text(layer->layerName));
        addInteger(entry, "rank", layer->layerRank, 0);
        addFlag(entry, "unused", layer->layerUnused);
        layers.append(std::move(entry));
    }
    document.add("layers", std::move(layers));
    JsonTree fabrics = JsonTree::array();
    for (const CDbFabricObject *fabric : drawing.getFabricsTable()) {
        fabrics.append(writeFabric(*fabric));
    }
    document.add("fabrics", std::move(fabrics));
    JsonTree styles = JsonTree::array();
    for (const CDbStyleObject *style : drawing.stylesList) {
        styles.append(writeStyle(drawing, *style));
    }
    document.add("styles", std::move(styles));
    return document.toBytes();
}

} // namespace KivSystem
