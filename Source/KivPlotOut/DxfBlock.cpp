#include "DxfBlock.h"

#include "DxfGroups.h"
#include "Failures.h"

#include "KivMarker/Bundle.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/SemiAutomatic.h"
#include "KivMarker/ShareGlobales.h"
#include "KivMarker/Symbols.h"

#include <QTextStream>

#include <algorithm>
#include <memory>

namespace KivSystem {
namespace DxfNester {
namespace {

constexpr double kLargestTilt = 22; // degrees

// FRONT$0, FRONT$0$0, FRONT$0$1, FRONT$0$2: the second number begins at 0 with the second block on
// purpose.
QString blockName(const QString &pieceName, short numero)
{
    const QChar symbol = QLatin1Char(CMarkerSymbols().instanceSymbol);
    const QString first = pieceName + symbol + QLatin1Char('0');
    return numero == 1 ? first : first + symbol + QString::number(numero - 2);
}

// The polygon of a piece that waits in the chart. Its bundle index is given back at once: the
// polygon stays in the chart.
std::unique_ptr<CDbPolygon> polygonOfChart(CDbMarkerDrawing *drawing, CDbFabricObject *fabric,
    short couche, CDbPieceObject *piece, short indicePiece, bool gauche, short taille)
{
    constexpr short onePiece = 1;
    const CDbMarkerShareGlobales *globals = CDbMarkerShareGlobales::instance();
    short error = 0;
    CDbPolygon *made = nullptr;
    SemiAutomatic::returnAPolyWithAllTransformationFromCharter(drawing, onePiece, fabric, couche,
        piece, taille, indicePiece, gauche, globals->getSpaceNoOverlap(),
        globals->getStepDigitalCurve(), &error, &made);
    std::unique_ptr<CDbPolygon> polygon(made);
    KIV_CHECK_OPERATION(error == 0);
    if (!gauche) {
        polygon->makeSymXOrYFromLeftPoly(fabric, &error); // its error is not looked at
    }
    CDBundleUtility::releaseBundleIndex(fabric, couche, piece, polygon->bundleSize,
        polygon->bundleLeft, polygon->bundleIndex, polygon->bundleCopy);
    const bool clothIsFolded = fabric->fabricType != PlainFabric;
    polygon->calculateAreaOfPoly(clothIsFolded);
    if (polygon->cutDownPolygon != nullptr) {
        polygon->cutDownPolygon->calculateAreaOfPoly(clothIsFolded);
    }
    return polygon;
}

std::unique_ptr<CDbGrPolysObject> groupOf(std::unique_ptr<CDbPolygon> polygon)
{
    auto group = std::make_unique<CDbGrPolysObject>();
    short error = 0;
    group->insertPolygon(polygon.release(), &error);
    KIV_CHECK_OPERATION(error == 0);
    group->estimateArea(&error);
    KIV_CHECK_OPERATION(error == 0);
    group->estimateBounding(&error);
    KIV_CHECK_OPERATION(error == 0);
    return group;
}

} // namespace

t_Data_Block_Nester::t_Data_Block_Nester(QTextStream &flux, CDbMarkerDrawing *drawing,
    CDbFabricObject *fabric, short couche, CDbPieceObject *piece, short indicePiece, bool gauche,
    short taille, short numero, short quantite, short preRot)
    : Le_Drawing(drawing)
    , Le_Fabric(fabric)
    , La_Couche(couche)
    , La_Piece(piece)
    , Est_Gauche(gauche)
    , Indice_Taille(taille)
    , Nb_Instances(quantite)
    , Le_Flux(&flux)
{
    KIV_CHECK_OPERATION(piece != nullptr);
    Est_Pliable = Foldable(drawing, fabric, piece, taille);
    Numero_Taille = piece->getPieceSize(taille).sizeNumber;
    Nom_Piece = piece->getName();
    Nom_Block = blockName(Nom_Piece, numero);

    std::unique_ptr<CDbGrPolysObject> group =
        groupOf(polygonOfChart(drawing, fabric, couche, piece, indicePiece, gauche, taille));
    CDbPolygon *polygon = group->firstPolygon;
    Le_Contour = polygon->contourList.back();
    Set_Pre_Traitement(fabric, preRot);
    Pre_Rot = preRot;
    Set_Nom_Style(drawing);
    Set_Rotation_Et_Symetrie_Piece_Charte(fabric);
    short error = 0; // not looked at
    CDbPieceObject::modifyPolyInTableData(drawing, polygon, couche, fabric, -1, &error, false);
    Le_Groupe = group.release();
}

t_Data_Block_Nester::t_Data_Block_Nester(QTextStream &flux, CDbMarkerDrawing *drawing,
    CDbFabricObject *fabric, short couche, CDbGrPolysObject *groupe, short indice)
    : Le_Drawing(drawing)
    , Le_Fabric(fabric)
    , La_Couche(couche)
    , Le_Groupe(groupe)
    , Indice_Groupe(indice)
    , Nom_Piece(DXF_CS_NOM_POLY_STAND_BY + QString::number(indice))
    , Nom_Block(Nom_Piece)
    , Le_Flux(&flux)
{
    KIV_CHECK_OPERATION(groupe != nullptr && groupe->firstPolygon != nullptr);
    const CDbPolygon *polygon = groupe->firstPolygon;
    if (fabric->isHybridFabric()) {
        Set_Rotation_Et_Symetrie_Fabric_Hybride(fabric);
    } else {
        if (polygon->pieceIndex != 0) {
            short error = 0;
            La_Piece = fabric->findPieceAccordingIndex(polygon->pieceIndex, &error);
            KIV_CHECK_OPERATION(error == 0);
        }
        if (La_Piece != nullptr && polygon->nextPolygon == nullptr) {
            Set_Rotation_Et_Symetrie_Piece_Charte(fabric);
        } else {
            Set_Rotation_Et_Symetrie_Groupe(fabric, couche);
        }
    }
    Le_Contour = groupe->blockingFusion != nullptr ? groupe->getLastContourBlockingFusion()
                                                   : polygon->contourList.back();
    Set_Nom_Style(drawing);
}

t_Data_Block_Nester::~t_Data_Block_Nester()
{
    if (Le_Groupe->groupPlace() == PlacedOnMarker) {
        short error = 0; // not looked at
        CDbPieceObject::modifyPolyInTableData(
            Le_Drawing, Le_Groupe->firstPolygon, La_Couche, Le_Fabric, 1, &error, false);
        delete Le_Groupe;
    }
}

bool t_Data_Block_Nester::Foldable(
    CDbMarkerDrawing *drawing, CDbFabricObject *fabric, CDbPieceObject *piece, short taille)
{
    if (fabric->fabricType == PlainFabric || !piece->getKIVPieceSingle() ||
        piece->getTwoPieceCutDown() != 0) {
        return false;
    }
    if (fabric->foldAnyPiece) {
        return true;
    }
    short error = 0;
    const CDbVectorsObjectTable *contour = nullptr;
    bool isCurved = false;
    drawing->getPieceSizeContourList(piece, taille, &error, &contour, &isCurved);
    if (error != 0) {
        return false;
    }
    const GeoPoint2D centre = piece->getPieceSize(taille).sizeRect.center();
    return contour->isSymmetrical(CDbMarkerPointObject(centre.x, centre.y), false);
}

// A mirrored right-hand outline counts as flipped, unless the piece is cut once.
void t_Data_Block_Nester::Set_Pre_Traitement(CDbFabricObject * /*fabric*/, short /*preRot*/)
{
    Pre_Flip = !Est_Gauche && !La_Piece->getKIVPieceSingle();
}

void t_Data_Block_Nester::Set_Nom_Style(CDbMarkerDrawing *drawing)
{
    if (La_Piece == nullptr) {
        Nom_Style = k_DXF_NEST_CS_STYLE_NAME;
        return;
    }
    const CDbStyleObject *style = drawing->getStyle(static_cast<short>(La_Piece->getStyleNo() - 1));
    Valider_Nom_Style(style->getStyleName(), Nom_Style);
}

// One name alone is changed, letter for letter: the nesting program takes it for its own word.
void t_Data_Block_Nester::Valider_Nom_Style(const QString &nom, QString &resultat)
{
    resultat = nom == QLatin1String("size") ? nom + QStringLiteral("STYLE") : nom;
}

void t_Data_Block_Nester::Set_Rotation_Et_Symetrie_Piece_Charte(CDbFabricObject *fabric)
{
    Permissions own;
    own.rotation = La_Piece->rotationPermittedValue(fabric);
    own.symmetryY = La_Piece->permittedSymmetryY(fabric);
    own.symmetryX = La_Piece->permittedSymmetryX(fabric);
    own.fineRotation = La_Piece->permittedFineRotationValue();
    setPermissions(own, permissionsOf(*fabric));
}

void t_Data_Block_Nester::Set_Rotation_Et_Symetrie_Fabric_Hybride(CDbFabricObject *fabric)
{
    setPermissions(permissionsOf(*fabric), permissionsOf(*fabric));
}

void t_Data_Block_Nester::Set_Rotation_Et_Symetrie_Groupe(CDbFabricObject *fabric, short couche)
{
    Permissions own;
    own.rotation = Le_Groupe->permittedRotationValue(fabric, couche);
    own.symmetryX = Le_Groupe->permittedSymmetryX(fabric, couche);
    own.symmetryY = Le_Groupe->permittedSymmetryY(fabric, couche);
    own.fineRotation = Le_Groupe->permittedFineRotationValue(fabric, couche);
    setPermissions(own, permissionsOf(*fabric));
}

t_Data_Block_Nester::Permissions t_Data_Block_Nester::permissionsOf(CDbFabricObject &fabric)
{
    Permissions permissions;
    permissions.rotation = fabric.rotationPermittedValue();
    permissions.symmetryX = fabric.permittedSymmetryX();
    permissions.symmetryY = fabric.permittedSymmetryY();
    permissions.fineRotation = fabric.permittedFineRotationValue();
    return permissions;
}

void t_Data_Block_Nester::setPermissions(const Permissions &own, const Permissions &fabric)
{
    Rotation = own.rotation;
    Rot_A_Ecrire = own.rotation != fabric.rotation;
    HFlip = own.symmetryX;
    HFlip_A_Ecrire = own.symmetryX != fabric.symmetryX;
    VFlip = own.symmetryY;
    VFlip_A_Ecrire = own.symmetryY != fabric.symmetryY;
    Tilt = own.fineRotation;
    Tilt_A_Ecrire = own.fineRotation != fabric.fineRotation;
}

void t_Data_Block_Nester::Ecrire_Dans_DXF(const ReferenceLines &lignes)
{
    DXF_Ecrire_Entite_BLOCK(DXF_cc_1, Nom_Block, 0.0, 0.0);
    Ecrire_Parametres(lignes);
    DXF_Ecrire_Entite_POLYLINE(DXF_cc_1, true);
    const auto count = static_cast<short>(Le_Contour->size());
    for (short index = 0; index < count; ++index) {
        const CDbMarkerPointObject &point = (*Le_Contour)[index];
        DXF_Ecrire_Entite_VERTEX(DXF_cc_1, point.x, point.y);
    }
    writeGroup(*Le_Flux, Code__0, QStringLiteral("SEQEND"));
    writeGroup(*Le_Flux, Code__8, QString::number(DXF_cc_1));
    writeGroup(*Le_Flux, Code__0, QStringLiteral("ENDBLK"));
    Le_Flux->flush();
}

void t_Data_Block_Nester::Ecrire_Parametres(const ReferenceLines &lignes)
{
    const QString sizeKey = QStringLiteral("SIZE");
    writeKeyword(k_DXF_NEST_CS_PIECE_NAME, Nom_Piece);
    writeKeyword(sizeKey, QString::number(Numero_Taille != 0 ? Numero_Taille : Indice_Groupe));
    writeKeyword(k_DXF_NEST_CS_STYLE_NAME, Nom_Style);
    writeKeyword(k_DXF_CS_NAP_GROUPE, k_DXF_CS_FALSE);
    writeKeyword(k_DXF_CS_FLIP_GROUPE, k_DXF_CS_FALSE);
    writeKeyword(k_DXF_CS_FOLDABLE, trueOrFalse(Est_Pliable));
    if (Rot_A_Ecrire) {
        writeKeyword(k_DXF_CS_PIECE_ROT, QString::number(Rotation));
    }
    if (HFlip_A_Ecrire) {
        writeKeyword(k_DXF_CS_HORI_FLIP, trueOrFalse(HFlip));
    }
    if (VFlip_A_Ecrire) {
        writeKeyword(k_DXF_CS_VERT_FLIP, trueOrFalse(VFlip));
    }
    if (Tilt_A_Ecrire) {
        const QString tilt = shortReal(std::min(Tilt, kLargestTilt));
        // The doubled keyword is wanted: the nesting program reads it so.
        writeKeyword(k_DXF_CS_LEFT_TILT + k_DXF_CS_LEFT_TILT, tilt);
        writeKeyword(k_DXF_CS_RIGHT_TILT, tilt);
    }
    const auto own = lignes.equal_range(Le_Groupe);
    for (auto ligne = own.first; ligne != own.second; ++ligne) {
        QString value;
        Avoir_String_Ligne_Reference(ligne->second, value);
        writeKeyword(k_DXF_CS_REFERENCE_LINE, value);
    }
    writeKeyword(k_DXF_CS_PIECE_OPT, QStringLiteral("0"));
    writeKeyword(k_DXF_CS_PRE_FLIP, trueOrFalse(Pre_Flip));
    writeKeyword(k_DXF_CS_PRE_ROT, shortReal(Pre_Rot));
}

void t_Data_Block_Nester::Avoir_String_Ligne_Reference(
    const Reference_Line &ligne, QString &resultat)
{
    const CMarkerSymbols symbols;
    const auto pointText = [&symbols](const GeoPoint2D &point) {
        return QLatin1Char(symbols.pointOpenSymbol) + real(point.x) + QLatin1Char(',') +
               real(point.y) + QLatin1Char(symbols.pointCloseSymbol);
    };
    resultat = pointText(ligne.stroke.first) + pointText(ligne.stroke.second) + QLatin1Char(',') +
               QString::number(ligne.number);
}

void t_Data_Block_Nester::writeKeyword(const QString &key, const QString &value)
{
    DXF_Ecrire_Entite_TEXT(DXF_cc_Text_Nesters, keywordLine(key, value), 0.0, 0.0, true);
}

void t_Data_Block_Nester::DXF_Ecrire_Entite_TEXT(
    short layer, const QString &text, double x, double y, bool style)
{
    writeText(*Le_Flux, layer, text, x, y, style);
}

void t_Data_Block_Nester::DXF_Ecrire_Entite_VERTEX(short layer, double x, double y)
{
    writeVertex(*Le_Flux, layer, x, y);
}

void t_Data_Block_Nester::DXF_Ecrire_Entite_POLYLINE(short layer, bool closed)
{
    writePolyline(*Le_Flux, layer, closed);
}

void t_Data_Block_Nester::DXF_Ecrire_Entite_BLOCK(
    short layer, const QString &name, double x, double y)
{
    writeBlock(*Le_Flux, layer, name, x, y);
}

} // namespace DxfNester
} // namespace KivSystem
