// t_Data_Block_Nester: one block of a DXF-NESTER file, the outline that the nesting program places
// and the settings that differ from the fabric's. A block stands for a piece that waits in the
// chart, in one size and on one side, or for a group in stand-by.

#ifndef KIVPLOTOUT_DXFBLOCK_H
#define KIVPLOTOUT_DXFBLOCK_H

#include "KivMarker/Point.h"

#include <QString>

#include <map>
#include <utility>

class QTextStream;

namespace KivSystem {

class CDbFabricObject;
class CDbGrPolysObject;
class CDbMarkerDrawing;
class CDbPieceObject;

namespace DxfNester {

/// A stroke on a polygon that has to meet the same stripe as the stroke of the same number on
/// another one; cm.
struct Reference_Line
{
    unsigned int number = 0;
    std::pair<GeoPoint2D, GeoPoint2D> stroke;
};

using ReferenceLines = std::multimap<CDbGrPolysObject *, Reference_Line>;

/// Sizes, layers and numbers count from 1. The stream, the drawing and the fabric are not owned and
/// outlive the block.
class t_Data_Block_Nester
{
public:
    /// A block of `quantite` pieces. It takes a polygon out of the chart, which the destructor
    /// gives back. Throws AssertionError when the marker cannot make the polygon.
    t_Data_Block_Nester(QTextStream &flux, CDbMarkerDrawing *drawing, CDbFabricObject *fabric,
        short couche, CDbPieceObject *piece, short indicePiece, bool gauche, short taille,
        short numero, short quantite, short preRot);
    /// A block of the stand-by group, which is not owned, with that number. Throws AssertionError
    /// for a null or an empty group.
    t_Data_Block_Nester(QTextStream &flux, CDbMarkerDrawing *drawing, CDbFabricObject *fabric,
        short couche, CDbGrPolysObject *groupe, short indice);
    ~t_Data_Block_Nester();
    t_Data_Block_Nester(const t_Data_Block_Nester &) = delete;
    t_Data_Block_Nester &operator=(const t_Data_Block_Nester &) = delete;

    CDbMarkerDrawing *Le_Drawing;
    CDbFabricObject *Le_Fabric;
    short La_Couche;
    CDbPieceObject *La_Piece = nullptr;    ///< null for many groups
    CDbGrPolysObject *Le_Groupe = nullptr; ///< owned when it is a piece's
    bool Est_Gauche = true;
    short Indice_Taille = 0; ///< size of the piece; 0 for a group
    short Numero_Taille = 0; ///< number of the style's size; 0 for a group
    short Indice_Groupe = 0; ///< number of the group; 0 for a piece
    short Nb_Instances = 1;  ///< how often the block is inserted
    QString Nom_Style;
    QString Nom_Piece;
    QString Nom_Block; ///< unique in the file
    bool Rot_A_Ecrire = false;
    short Rotation = 0;
    bool HFlip_A_Ecrire = false;
    bool HFlip = false; ///< mirror images about X are permitted
    bool VFlip_A_Ecrire = false;
    bool VFlip = false; ///< mirror images about Y are permitted
    bool Tilt_A_Ecrire = false;
    double Tilt = 0; ///< degrees
    bool Pre_Flip = false;
    double Pre_Rot = 0; ///< degrees
    bool Est_Pliable = false;
    /// The outline; belongs to the polygon or to the fusion.
    const GeoPolygon2D<CDbMarkerPointObject> *Le_Contour = nullptr;
    QTextStream *Le_Flux;

    /// Whether the piece may lie on the fold of the cloth: the cloth is folded, the piece is cut
    /// once, and either any piece may or the piece is symmetrical about its centre.
    bool Foldable(
        CDbMarkerDrawing *drawing, CDbFabricObject *fabric, CDbPieceObject *piece, short taille);
    void Set_Pre_Traitement(CDbFabricObject *fabric, short preRot);
    void Set_Nom_Style(CDbMarkerDrawing *drawing);
    void Valider_Nom_Style(const QString &nom, QString &resultat);
    void Set_Rotation_Et_Symetrie_Piece_Charte(CDbFabricObject *fabric);
    void Set_Rotation_Et_Symetrie_Fabric_Hybride(CDbFabricObject *fabric);
    void Set_Rotation_Et_Symetrie_Groupe(CDbFabricObject *fabric, short couche);

    /// Writes the block with the lines whose key is its group.
    void Ecrire_Dans_DXF(const ReferenceLines &lignes);
    void Ecrire_Parametres(const ReferenceLines &lignes);
    /// The value of a REFERENCE_LINE: (x1,y1)(x2,y2),number
    void Avoir_String_Ligne_Reference(const Reference_Line &ligne, QString &resultat);

    void DXF_Ecrire_Entite_TEXT(short layer, const QString &text, double x, double y, bool style);
    void DXF_Ecrire_Entite_VERTEX(short layer, double x, double y);
    void DXF_Ecrire_Entite_POLYLINE(short layer, bool closed);
    void DXF_Ecrire_Entite_BLOCK(short layer, const QString &name, double x, double y);

private:
    struct Permissions
    {
        short rotation = 0;
        bool symmetryX = false;
        bool symmetryY = false;
        double fineRotation = 0;
    };

    void setPermissions(const Permissions &own, const Permissions &fabric);
    static Permissions permissionsOf(CDbFabricObject &fabric);
    void writeKeyword(const QString &key, const QString &value);
};

} // namespace DxfNester
} // namespace KivSystem

#endif
