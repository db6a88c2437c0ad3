#include "IllustratorPiece.h"

#include "Failures.h"
#include "IllustratorNotches.h"
#include "IllustratorPieceInfo.h"
#include "IllustratorPrimitives.h"
#include "IllustratorPunch.h"
#include "IllustratorText.h"

#include "KivMarker/Fabric.h"
#include "KivMarker/Image.h"
#include "KivMarker/MarkerOptions.h"
#include "KivMarker/Polygon.h"
#include "KivMarker/ShareGlobales.h"
#include "KivMarker/Text.h"
#include "KivMarker/TextIterators.h"

#include <QColor>
#include <QTextStream>

#include <cstddef>
#include <memory>
#include <vector>

namespace KivSystem {
namespace KivIllustrator {
namespace {

QColor colourOf(const CDbPolygon &polygon)
{
    if (polygon.colorIndex == 0) {
        return {0, 0, 0, 255};
    }
    const auto &table = CDbMarkerShareGlobales::instance()->getColorTable();
    return table[static_cast<std::size_t>(polygon.colorIndex - 1) % table.size()];
}

// --- Contours --------------------------------------------------------------------------------

int lastContour(const CDbPolygon &polygon)
{
    return static_cast<int>(polygon.contourList.size()) - 1;
}

// A ContourKind; 0 where there is no contour.
int kindAt(const CDbPolygon &polygon, int index)
{
    return index < 0 || index >= static_cast<int>(polygon.contourKinds.size())
               ? 0
               : polygon.contourKinds[static_cast<std::size_t>(index)];
}

const CDbVectorsObjectTable *contourAt(const CDbPolygon &polygon, int index)
{
    return index < 0 || index > lastContour(polygon)
               ? nullptr
               : polygon.contourList[static_cast<std::size_t>(index)];
}

// The seam, on either side of the cut contour in the list, and the cut contour.
void writeContours(QTextStream &out, const CDbPolygon &polygon, double x0)
{
    int i = lastContour(polygon);
    if (kindAt(polygon, i) == SpacingContour) {
        --i;
    }
    int kind = kindAt(polygon, i);
    if (kind == SeamContour) {
        ILLMK_L_Vect(out, contourAt(polygon, i), x0);
        --i;
        kind = kindAt(polygon, i);
    }
    if (kind == CutContour && kindAt(polygon, i - 1) == SeamContour) {
        ILLMK_L_Vect(out, contourAt(polygon, i - 1), x0);
    }
    if (kind == SpacingContour) {
        --i;
    }
    const CDbVectorsObjectTable *contour = contourAt(polygon, i);
    if (contour != nullptr && contour->size() >= 2) {
        ILLMK_L_Vect(out, contour, x0);
    }
}

void writeContourSymbol(QTextStream &out, const CDbMarkerPointObject &point, double x0)
{
    const double x = point.x + x0;
    const auto dx = static_cast<double>(point.notchDx);
    const auto dy = static_cast<double>(point.notchDy);
    switch (point.pointType) {
    case SimpleNotch:
        ILLUST_Simple_Notch(out, x, point.y, dx, dy);
        break;
    case DoubleNotch:
        ILLUST_Double_Notch(out, x, point.y, dx, dy);
        break;
    case VNotch:
        ILLUST_V_Notch(out, x, point.y, dx, dy);
        break;
    case Punch:
    case UserPunch:
        ILLUST_PunchHole(out, x, point.y, point.punch());
        break;
    case UserNotch: // stays where it is when its layer is shifted, on purpose
        ILLUST_User_Notch(out, point.x, point.y, dx, dy, static_cast<double>(point.notchWidth));
        break;
    default:
        break;
    }
    if (point.matchPoint) {
        ILLUST_V_De_Match(out, x, point.y);
    }
}

// --- What lies on the piece ------------------------------------------------------------------

// As they lie in the marker, in whatever layer: images are not shifted.
void writeImages(QTextStream &out, const CDbPolygon &polygon)
{
    for (const CDbImage *image : polygon.getImages()) {
        ILLUST_First_Fin_Groupe(out, true);
        out << ILLUST_First_Dash << ILLUST_Fin_Dash << Qt::endl;
        const GeoPoint2D start = image->getVector(CDbImage::Corner(0));
        ILLUST_Move_To(out, start.x, start.y);
        for (const int corner : {1, 2, 3, 0}) {
            const GeoPoint2D point = image->getVector(CDbImage::Corner(corner));
            ILLUST_Line_To(out, point.x, point.y);
        }
        strokePath(out);
        ILLUST_First_Fin_Groupe(out, false);
    }
}

// Notches are not drawn here.
void writeInternalPoints(QTextStream &out, const CDbPolygon &polygon, double x0)
{
    for (const CDbMarkerPointObject &point : polygon.internalPoints) {
        if (point.pointType == Punch || point.pointType == UserPunch) {
            ILLUST_PunchHole(out, point.x + x0, point.y, point.punch());
        }
        if (point.matchPoint) {
            ILLUST_V_De_Match(out, point.x + x0, point.y);
        }
    }
}

void writeTexts(QTextStream &out, const CDbPolygon &polygon, double x0)
{
    ILLUST_First_Fin_Groupe(out, true);
    CDbTextPolyTableIter texts(textPointers(polygon.polygonTexts));
    for (CDbTextObject *text = nullptr; texts.next(&text);) {
        ILLUST_Texte(out, text, x0);
    }
    ILLUST_First_Fin_Groupe(out, false);
}

// --- Links -----------------------------------------------------------------------------------

// The contour that the links refer to.
const CDbVectorsObjectTable *linkedContour(const CDbPolygon &polygon)
{
    int i = lastContour(polygon);
    for (const int passedOver : {SpacingContour, SeamContour, SpacingContour}) {
        if (kindAt(polygon, i) == passedOver) {
            --i;
        }
    }
    return contourAt(polygon, i);
}

void writeSewingLines(QTextStream &out, const CDbPolygon &polygon, double x0)
{
    const CDbVectorsObjectTable *contour = linkedContour(polygon);
    const CDbLinksObjectTable &links = *polygon.polygonLinks;
    ILLUST_First_Fin_Groupe(out, true);
    for (short i = 0; i < links.size(); ++i) {
        const CDbLinkObject &link = links[i];
        if (link.linkKind != SewingLink) {
            continue;
        }
        CDbMarkerPointObject first;
        CDbMarkerPointObject second;
        link.getVectorsFromLink(contour, &polygon.internalPoints, &first, &second);
        ILLUST_Move_To(out, first.x + x0, first.y);
        ILLUST_Line_To(out, second.x + x0, second.y);
        strokePath(out);
    }
    ILLUST_First_Fin_Groupe(out, false);
}

void copyTrait(const CDbLinkObject &link, TraitInfo &trait)
{
    trait.copyTraitInfo(*link.linkLine->lineTrait);
    trait.traitScalar = link.traitScalar;
    trait.traitTriple = link.traitTriple;
    trait.traitFlag = link.traitFlag;
    trait.traitCounter = 0;
}

std::vector<CDbMarkerLink> displayedLinks(const CDbLinksObjectTable &links,
    const CDbVectorsObjectTable *contour, const CDbVectorsObjectTable &internalPoints,
    e_Type_Preference preference)
{
    std::vector<CDbMarkerLink> displayed;
    for (short i = 0; i < links.size(); ++i) {
        const CDbLinkObject &link = links[i];
        if (link.linkKind != TreeLink || !CDbLinkObject::isLinkDisplays(link, preference)) {
            continue;
        }
        CDbMarkerLink marker;
        marker.line = std::make_unique<LineObject>();
        CDbLinkObject::getExtremitiesMarkerLink(
            contour, &internalPoints, link, &marker.first, &marker.second);
        if (link.linkLine != nullptr) {
            copyTrait(link, *marker.line->lineTrait);
        }
        displayed.push_back(std::move(marker));
    }
    CDbMarkerLink::reOrderLinks(displayed);
    return displayed;
}

void drawLink(const CDbMarkerLink &link, t_Trait_Params_Illustrator_Mk &params)
{
    CDbPointKIV first(link.first.x, link.first.y, link.first.z);
    CDbPointKIV second(link.second.x, link.second.y, link.second.z);
    link.line->setV1AndV2(&first, &second);
    CDbDevice::drawKivLineObject(link.line.get(), &params, 0.0);
    link.line->setV1AndV2(nullptr, nullptr);
}

void writeTreeLines(QTextStream &out, CDbFabricObject &fabric, const CDbPolygon &polygon, double x0)
{
    const CDbVectorsObjectTable *contour = linkedContour(polygon);
    const CDbPieceObject *piece = nullptr;
    if (polygon.pieceIndex > 0) {
        short unseen = 0; // without its piece a polygon's lines stay as they are
        piece = fabric.findPieceAccordingIndex(polygon.pieceIndex, &unseen);
    }
    t_Trait_Params_Illustrator_Mk params(&out, GeoPoint2D(x0, 0));
    if (piece != nullptr) {
        polygon.polygonLinks->refreshMkTreesLines(*piece, contour, &polygon.internalPoints);
    }
    for (const CDbMarkerLink &link : displayedLinks(
             *polygon.polygonLinks, contour, polygon.internalPoints, params.preferenceOutput())) {
        drawLink(link, params);
    }
}

} // namespace

t_Trait_Params_Illustrator_Mk::t_Trait_Params_Illustrator_Mk(
    QTextStream *stream, const GeoPoint2D &translation)
    : mTranslation(translation)
    , mStream(stream)
{}

t_Trait_Params_Illustrator_Mk::~t_Trait_Params_Illustrator_Mk() = default;

void t_Trait_Params_Illustrator_Mk::drawingSingleLine(const GeoPoint2D &from, const GeoPoint2D &to)
{
    ILLUST_First_Fin_Groupe(*mStream, true);
    ILLUST_Move_To(*mStream, from.x, from.y);
    ILLUST_Line_To(*mStream, to.x, to.y);
    strokePath(*mStream);
    ILLUST_First_Fin_Groupe(*mStream, false);
}

GeoPoint2D t_Trait_Params_Illustrator_Mk::Get_Translation() const
{
    return mTranslation;
}

// The colours come each time, whether or not something follows them.
void ILLMK_Polygone(QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric,
    CDbPolygon *polygon, double x0, short relation, short index)
{
    KIV_CHECK_OPERATION(drawing != nullptr && fabric != nullptr && polygon != nullptr);
    const QColor black(0, 0, 0, 255);
    const QColor colour = colourOf(*polygon);
    ILLUST_Set_RGBColor(out, colour);
    writeContours(out, *polygon, x0);
    ILLUST_First_Fin_Groupe(out, true);
    writeImages(out, *polygon);
    ILLUST_Set_RGBColor(out, black);
    ILLMK_Piece_Info_Mk(out, drawing, fabric, polygon, x0, relation, index);
    ILLUST_Set_RGBColor(out, colour);
    ILLMK_Liens_Mk(out, fabric, polygon, x0, TreeLink);
    if (CDbMarkerOptions::mDefaultOptions.sewingLine()) {
        ILLMK_Liens_Mk(out, fabric, polygon, x0, SewingLink);
    }
    writeInternalPoints(out, *polygon, x0);
    ILLUST_Set_RGBColor(out, black);
    writeTexts(out, *polygon, x0);
    ILLUST_First_Fin_Groupe(out, false);
}

void ILLMK_L_Vect(QTextStream &out, const CDbVectorsObjectTable *table, double x0)
{
    KIV_CHECK_OPERATION(table != nullptr);
    const auto count = static_cast<short>(table->size());
    if (count <= 0) {
        return;
    }
    ILLUST_Move_To(out, table->first().x + x0, table->first().y);
    for (int i = 1; i < count; ++i) {
        ILLUST_Line_To(out, (*table)[i].x + x0, (*table)[i].y);
    }
    closePath(out);
    ILLUST_First_Fin_Groupe(out, true);
    for (int i = 1; i < count; ++i) {
        writeContourSymbol(out, (*table)[i], x0);
    }
    ILLUST_First_Fin_Groupe(out, false);
}

void ILLMK_Liens_Mk(
    QTextStream &out, CDbFabricObject *fabric, CDbPolygon *polygon, double x0, LinkObjectType type)
{
    KIV_CHECK_OPERATION(fabric != nullptr && polygon != nullptr);
    if (polygon->polygonLinks == nullptr || !polygon->polygonLinks->isLinkExistByType(type)) {
        return;
    }
    if (type == SewingLink) {
        writeSewingLines(out, *polygon, x0);
    } else {
        writeTreeLines(out, *fabric, *polygon, x0);
    }
}

} // namespace KivIllustrator
} // namespace KivSystem
