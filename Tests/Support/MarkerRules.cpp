#include "MarkerRules.h"

#include "KivMarker/Drawing.h"
#include "KivMarker/Image.h"
#include "KivMarker/Links.h"
#include "KivMarker/Polygon.h"

#include <cmath>
#include <map>

using namespace KivSystem; // NOLINT(google-build-using-namespace): a test's helper

namespace {

bool isSound(const CDbVectorsObjectTable &points)
{
    for (const CDbMarkerPointObject &point : points) {
        if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.notchDx) ||
            !std::isfinite(point.notchDy) || !std::isfinite(point.notchWidth)) {
            return false;
        }
    }
    return true;
}

QString brokenPiece(const CDbMarkerDrawing &drawing, const CDbPieceObject &piece)
{
    const CDbStyleObject *style = drawing.getStyle(static_cast<short>(piece.getStyleNo() - 1));
    if (style == nullptr) {
        return QStringLiteral("a piece without a style");
    }
    if (piece.getNumberOfSizes() < 1) {
        return QStringLiteral("a piece without sizes");
    }
    for (int size = 1; size <= piece.getNumberOfSizes(); ++size) {
        const CDbPieceSizeObject &record = piece.getPieceSize(static_cast<short>(size));
        if (style->sizePosition(record.sizeNumber) < 0) {
            return QStringLiteral("a size that the style lacks");
        }
        if (record.shape.contour.size() < 3 || !isSound(record.shape.contour) ||
            !isSound(record.shape.internalPoints) || !(record.shape.contour.area() > 0)) {
            return QStringLiteral("an unsound shape");
        }
    }
    for (const auto &[key, quantity] : piece.orderedQuantities()) {
        if (quantity < 0 || key.size > piece.getNumberOfSizes() ||
            key.layer > drawing.getLayersQty(nullptr) || (piece.getKIVPieceSingle() && !key.left)) {
            return QStringLiteral("an unsound chart");
        }
    }
    return QString();
}

QString brokenAttachment(const CDbPolygon &polygon)
{
    if (polygon.contourKinds.back() != CutContour) {
        return QStringLiteral("a polygon whose last contour is not the cut contour");
    }
    for (const CDbVectorsObjectTable *contour : polygon.contourList) {
        if (contour->size() < 3 || !isSound(*contour)) {
            return QStringLiteral("an unsound seam or spacing contour");
        }
    }
    const CDbLinksObjectTable *links = polygon.polygonLinks;
    for (short index = 0; links != nullptr && index < links->size(); ++index) {
        const CDbLinkObject &link = (*links)[index];
        for (const LinkEnd &end : {link.from(), link.to()}) {
            if (end.find(polygon.currentContour(), &polygon.internalPoints) == nullptr) {
                return QStringLiteral("a link to a point that is not there");
            }
        }
    }
    for (const CDbImage *image : polygon.getImages()) {
        if (!(image->width > 0 && image->height > 0)) {
            return QStringLiteral("an image without extent");
        }
    }
    return QString();
}

QString brokenPolygon(const CDbFabricObject &fabric, const CDbPolygon &polygon)
{
    const CDbPieceObject *piece = fabric.findPieceAccordingIndex(polygon.pieceIndex, nullptr);
    if (piece == nullptr || polygon.pieceSize() < 1 ||
        polygon.pieceSize() > piece->getNumberOfSizes()) {
        return QStringLiteral("a polygon without its piece or size");
    }
    if (polygon.contourList.size() != polygon.contourKinds.size() ||
        polygon.currentContour() == nullptr || polygon.currentContour()->size() < 3 ||
        !isSound(*polygon.currentContour()) || !(polygon.area() > 0)) {
        return QStringLiteral("a polygon without a sound contour");
    }
    return brokenAttachment(polygon);
}

QString brokenFabric(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric)
{
    QString broken;
    for (const CDbPieceObject *piece = fabric.firstPiece(); piece != nullptr && broken.isEmpty();
         piece = piece->getNextPiece()) {
        broken = brokenPiece(drawing, *piece);
    }
    if (fabric.layerCount() != drawing.getLayersQty(nullptr)) {
        return QStringLiteral("a fabric with another number of layers");
    }
    for (int number = 1; number <= fabric.layerCount(); ++number) {
        const auto layer = static_cast<short>(number);
        std::map<std::pair<short, ChartKey>, int> lying;
        for (const auto &group : fabric.findLayer(layer)->groups) {
            if (group->firstPolygon == nullptr) {
                return QStringLiteral("an empty group");
            }
            for (const CDbPolygon *polygon = group->firstPolygon;
                 polygon != nullptr && broken.isEmpty(); polygon = polygon->nextPolygon) {
                broken = brokenPolygon(fabric, *polygon);
                const ChartKey key{polygon->pieceSize(), layer, polygon->isLeft()};
                ++lying[{polygon->pieceIndex, key}];
            }
        }
        for (const auto &[place, count] : lying) {
            const auto *piece = fabric.findPieceAccordingIndex(place.first, nullptr);
            if (piece != nullptr && count > piece->orderedQuantity(place.second)) {
                return QStringLiteral("more lies there than is ordered");
            }
        }
        if (!(fabric.getFabricLayerWidth(layer) > 0)) {
            return QStringLiteral("a layer without a width");
        }
    }
    return broken;
}

} // namespace

QString brokenRule(const CDbMarkerDrawing &drawing)
{
    if (drawing.getLayersQty(nullptr) < 1) {
        return QStringLiteral("no layers");
    }
    short error = 0;
    drawing.isSetToSingleLayer(&error, nullptr);
    if (error != 0 || drawing.currentFabric < 1 ||
        drawing.currentFabric > qMax(1, drawing.getFabricsQty())) {
        return QStringLiteral("a current fabric or layer that does not exist");
    }
    QString broken;
    for (const CDbFabricObject *fabric : drawing.getFabricsTable()) {
        broken = broken.isEmpty() ? brokenFabric(drawing, *fabric) : broken;
    }
    return broken;
}
