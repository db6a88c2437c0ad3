// The generators of DXF files. t_Generateur_Fichier_DXF_Nester turns one fabric of a marker that is
// set to one layer into work for a nesting program: it tells what is still to be placed, never
// where something lies.

#ifndef KIVPLOTOUT_DXFGENERATOR_H
#define KIVPLOTOUT_DXFGENERATOR_H

#include "DxfBlock.h"

#include <list>
#include <memory>
#include <set>

namespace KivSystem {

class CDbTwainLinkPiecesObjectTable;

namespace DxfNester {

/// The stream, the drawing and the fabric are not owned and outlive the generator. Two generators
/// must not run at once: the layers and the factor of units are the process's.
class t_Generateur_Fichier_DXF
{
public:
    /// `layer` counts from 1.
    t_Generateur_Fichier_DXF(
        QTextStream &stream, CDbMarkerDrawing *drawing, CDbFabricObject *fabric, short layer);
    virtual ~t_Generateur_Fichier_DXF();
    t_Generateur_Fichier_DXF(const t_Generateur_Fichier_DXF &) = delete;
    t_Generateur_Fichier_DXF &operator=(const t_Generateur_Fichier_DXF &) = delete;

    /// Writes the whole file.
    virtual void Genere_Fichier() = 0;

protected:
    CDbMarkerDrawing *Le_Drawing;
    CDbFabricObject *Le_Fabric;
    short La_Couche;
    QTextStream *Le_Flux;
};

/// Where a garment of a style and size belongs: the number of its section of the marker.
struct SectionReference
{
    QString Nom_Style_Section;
    short Taille_Section = 0;
    short Instance_Section = 0;
    GeoPoint2D Position_Section; ///< cm; its x alone orders
    short Numero_Section = 0;
};

bool operator<(const SectionReference &left, const SectionReference &right);

/// The blocks that were made of the chart give their polygons back when the generator goes.
class t_Generateur_Fichier_DXF_Nester : public t_Generateur_Fichier_DXF
{
public:
    t_Generateur_Fichier_DXF_Nester(
        QTextStream &stream, CDbMarkerDrawing *drawing, CDbFabricObject *fabric, short layer);
    ~t_Generateur_Fichier_DXF_Nester() override;

    void Genere_Fichier() override;
    /// `sansPiecesDroites` leaves out the right-hand blocks of single pieces, and all of them on a
    /// folded cloth. Throws AssertionError for a marker that cannot make the blocks.
    void Genere_Fichier(bool sansPiecesDroites);

    // The steps, in their order.
    void Creer_Blocks_Pieces_Charte(bool sansPiecesDroites);
    void Creer_Blocks_Groupes_StandBy();
    void creerContraintesDeMotifGroupes();
    void Ecrire_Section_Blocks();
    void Ecrire_Section_Entites();

    void Ecrire_Parametres_Globaux_Pour_Entites();
    void Creer_Block_Nester(CDbPieceObject *piece, short indicePiece, short taille, bool gauche,
        short numero, short quantite, short preRot);
    void Creer_Block_Nester(CDbGrPolysObject *groupe, short indice);
    /// The section of a garment; 0 when sizes_list does not have it. `instance` counts from 0.
    short Get_Section(const QString &style, short taille, short instance) const;

    void DXF_Ecrire_Entite_TEXT(short layer, const QString &text, double x, double y, bool style);
    void Ecrire_Entite_INSERT(short layer, const QString &name, double x, double y, double rotation,
        short sign, short bundle, bool placeholder, short section, bool unused);

    // The sections of markers that are made section by section: for whoever makes such.
    static bool marker_section;
    static double section_interlock; ///< cm
    static std::set<SectionReference> sizes_list;
    /// Groups that an export fused and that nobody has freed since. While there are such, no export
    /// may fuse groups again: the host empties the list.
    static std::list<CDbGrPolysObject *> Les_Groupes_Blockes_Tempo;
    static std::list<CDbGrPolysObject *> &Avoir_Liste_Groupes_Blocking();

private:
    short createBlocksOfSide(CDbPieceObject *piece, short indicePiece, short taille, bool gauche,
        short quantite, short numero);
    struct TiedGroup
    {
        CDbGrPolysObject *group;
        GeoPoint2D point;
    };
    void tieGroups(const CDbTwainLinkPiecesObjectTable &links, CDbGrPolysObject *first,
        CDbGrPolysObject *second);
    void addStrokes(const TiedGroup &first, const TiedGroup &second);
    void writeKeyword(const QString &key, const QString &value);
    void writeEdges();
    void writeRules();
    void writePattern();

    std::list<std::unique_ptr<t_Data_Block_Nester>> Les_Blocks;
    short Nb_Instances_Total = 0; ///< of the chart's blocks alone
    ReferenceLines Lignes_Reference;
    unsigned int Prochain_Id_Motif = 0; ///< number of the next tie
};

/// The gap that holds towards the edge of the fabric, in cm; 0 when none does. Throws
/// AssertionError for a null fabric.
double getMaxGapToTheEdgeOfFabric(CDbFabricObject *fabric);

} // namespace DxfNester
} // namespace KivSystem

#endif
