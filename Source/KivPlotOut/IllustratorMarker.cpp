#include "IllustratorMarker.h"

#include "Failures.h"
#include "IllustratorLayers.h"
#include "IllustratorLines.h"
#include "IllustratorPiece.h"
#include "IllustratorPrimitives.h"
#include "IllustratorText.h"

#include "KivGeo/Rectangle.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/Group.h"
#include "KivMarker/Text.h"
#include "KivMarker/TextIterators.h"

#include <QColor>
#include <QTextStream>

namespace KivSystem {
namespace KivIllustrator {
namespace {

void ILLMK_Liste_De_Textes(
    QTextStream &out, bool onlyWorkSection, CDbTextObjectIter *iterator, double x0)
{
    ILLUST_First_Fin_Groupe(out, true);
    for (CDbTextObject *text = nullptr; iterator->next(&text);) {
        if (onlyWorkSection) {
            short error = 0;
            const TextWorkSection section = CDbTextObject::getWorkSection(*text, &error);
            KIV_CHECK_OPERATION(error == 0);
            if (section != WorkAreaSection) {
                continue;
            }
        }
        ILLUST_Texte(out, text, x0);
    }
    ILLUST_First_Fin_Groupe(out, false);
}

// A cut-down piece is drawn with its partner, which is on nobody's account.
void writePolygons(QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric,
    const CDbGrPolysObject &group, double x0)
{
    short error = 0;
    short index = 0;
    CDbBlockingObject::RelationshipType relation = CDbBlockingObject::NoRelationship;
    CDbBlockingObject::BlockingType blockingType = CDbBlockingObject::NotBlocked;
    group.getGrPolysIndexSlaveMasterOrAnotherAndItsType(
        fabric, &index, &relation, &blockingType, &error);
    KIV_CHECK_OPERATION(error == 0);
    CDbPolygonIter polygons(group);
    for (CDbPolygon *polygon = nullptr; polygons.next(&polygon);) {
        ILLMK_Polygone(out, drawing, fabric, polygon, x0, relation, index);
        if (polygon->cutDownPolygon != nullptr) {
            ILLMK_Polygone(out, drawing, fabric, polygon->cutDownPolygon, x0, 0, index);
        }
    }
}

void ILLMK_Groupe(QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric,
    CDbGrPolysObject *group, double x0)
{
    KIV_CHECK_OPERATION(drawing != nullptr && fabric != nullptr && group != nullptr);
    ILLUST_First_Fin_Groupe(out, true);
    if (group->blockingFusion != nullptr) {
        ILLMK_L_Vect(out, group->getFirstContourBlockingFusion(), x0);
    }
    writePolygons(out, drawing, fabric, *group, x0);
    CDbTextesGrPolysTableIter texts(textPointers(group->texts));
    ILLMK_Liste_De_Textes(out, false, &texts, x0);
    ILLUST_First_Fin_Groupe(out, false);
}

void ILLMK_Liste_Textes_Layer(QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric)
{
    checkLayers(*drawing, *fabric);
    const double space = spaceOfLayers();
    double x0 = 0;
    for (const short layer : layersByRank(*drawing, false)) {
        const double length = fabric->getLengthOccupiedLayer(layer);
        if (!counts(length)) {
            continue;
        }
        const auto position = static_cast<short>(layer - 1);
        if (fabric->hasTextListInLayer(position)) {
            CTextLayerTableIter texts(*fabric, position);
            ILLMK_Liste_De_Textes(out, true, &texts, x0);
        }
        x0 += length + space;
    }
}

// The last line returns to the start, and the path is closed all the same.
void writeFrame(QTextStream &out, double length, double width)
{
    ILLUST_First_Fin_Groupe(out, true);
    ILLUST_Move_To(out, 0, 0);
    ILLUST_Line_To(out, 0, width);
    ILLUST_Line_To(out, length, width);
    ILLUST_Line_To(out, length, 0);
    ILLUST_Line_To(out, 0, 0);
    closePath(out);
    ILLUST_First_Fin_Groupe(out, false);
}

void writeGroupsOfLayer(
    QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric, short layer, double x0)
{
    CDbGrPolysObject *group = fabric->layerFirstGrPolys(layer);
    while (group != nullptr) {
        if (group->groupPlace() == PlacedOnMarker) {
            ILLMK_Groupe(out, drawing, fabric, group, x0);
        }
        short error = 0;
        group = fabric->layerNextGrPolys(layer, &error);
        KIV_CHECK_OPERATION(error == 0);
    }
}

void writeGroups(QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric)
{
    double x0 = 0;
    for (const short layer : layersByRank(*drawing, false)) {
        writeGroupsOfLayer(out, drawing, fabric, layer, x0);
        const double length = fabric->getLengthOccupiedLayer(layer);
        if (counts(length)) {
            x0 += length + spaceOfLayers();
        }
    }
}

double lengthOf(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric)
{
    double length = 0;
    drawing.calculateTheLengthOccupiedTheLayers(&fabric, false, &length);
    return length;
}

// All between the head and the tail.
void ILLMK_Fabric(QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric)
{
    KIV_CHECK_OPERATION(drawing != nullptr && fabric != nullptr);
    const double length = lengthOf(*drawing, *fabric);
    if (!counts(length)) {
        return;
    }
    writeFrame(out, length, fabric->getMultiLayerFabricMaxWidth(drawing, false));
    if (fabric->plaidInfo.plaidActive) {
        ILLMK_Plaid_Stripes(out, drawing, fabric);
    }
    ILLMK_Lignes_Guides(out, drawing, fabric, length);
    ILLMK_Lignes_Separation_Layers(out, drawing, fabric);
    ILLMK_Liste_Textes_Layer(out, drawing, fabric);
    writeGroups(out, drawing, fabric);
}

} // namespace

void Export_Illustrator_Mk(
    QTextStream &out, const QString &title, CDbMarkerDrawing *drawing, CDbFabricObject *fabric)
{
    KIV_CHECK_OPERATION(drawing != nullptr && fabric != nullptr);
    GeoRectangle box;
    box.setRect(
        0, lengthOf(*drawing, *fabric), 0, fabric->getMultiLayerFabricMaxWidth(drawing, false));
    ILLUST_Prologue_Header_Subsection(out, title, box);
    ILLUST_Script_Setup_Subsection(out);
    ILLUST_Standard_First_Script(out);
    ILLUST_Set_RGBColor(out, QColor(0, 0, 0, 255)); // once more, as readers of these files have it
    ILLMK_Fabric(out, drawing, fabric);
    out << ILLUST_Trailer << Qt::endl;
    out << ILLUST_EOF << Qt::endl;
}

} // namespace KivIllustrator
} // namespace KivSystem
