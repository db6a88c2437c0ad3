#include "DxfGenerator.h"

#include "DxfGroups.h"
#include "Failures.h"

#include "KivMarker/AutoMarkerOptions.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/ErrorCodes.h"

#include <QTextStream>

#include <algorithm>
#include <tuple>

namespace KivSystem {
namespace DxfNester {

bool t_Generateur_Fichier_DXF_Nester::marker_section = false;
double t_Generateur_Fichier_DXF_Nester::section_interlock = 0;
std::set<SectionReference> t_Generateur_Fichier_DXF_Nester::sizes_list;
std::list<CDbGrPolysObject *> t_Generateur_Fichier_DXF_Nester::Les_Groupes_Blockes_Tempo;

t_Generateur_Fichier_DXF::t_Generateur_Fichier_DXF(
    QTextStream &stream, CDbMarkerDrawing *drawing, CDbFabricObject *fabric, short layer)
    : Le_Drawing(drawing)
    , Le_Fabric(fabric)
    , La_Couche(layer)
    , Le_Flux(&stream)
{
    assignLayers();
}

t_Generateur_Fichier_DXF::~t_Generateur_Fichier_DXF() = default;

bool operator<(const SectionReference &left, const SectionReference &right)
{
    return std::tie(left.Nom_Style_Section, left.Taille_Section, left.Instance_Section,
               left.Position_Section.x) < std::tie(right.Nom_Style_Section, right.Taille_Section,
                                              right.Instance_Section, right.Position_Section.x);
}

t_Generateur_Fichier_DXF_Nester::t_Generateur_Fichier_DXF_Nester(
    QTextStream &stream, CDbMarkerDrawing *drawing, CDbFabricObject *fabric, short layer)
    : t_Generateur_Fichier_DXF(stream, drawing, fabric, layer)
{
    DXF_Facteur_Unites = 1.0;
}

t_Generateur_Fichier_DXF_Nester::~t_Generateur_Fichier_DXF_Nester() = default;

std::list<CDbGrPolysObject *> &t_Generateur_Fichier_DXF_Nester::Avoir_Liste_Groupes_Blocking()
{
    return Les_Groupes_Blockes_Tempo;
}

void t_Generateur_Fichier_DXF_Nester::Genere_Fichier()
{
    Genere_Fichier(true);
}

void t_Generateur_Fichier_DXF_Nester::Genere_Fichier(bool sansPiecesDroites)
{
    if (CAutoMarkerOptions::instance()->markerPiecesInCharte()) {
        Creer_Blocks_Pieces_Charte(sansPiecesDroites);
    }
    if (CAutoMarkerOptions::instance()->markerPiecesInStandby()) {
        Creer_Blocks_Groupes_StandBy();
    }
    creerContraintesDeMotifGroupes();
    Ecrire_Section_Blocks();
    Ecrire_Section_Entites();
    writeGroup(*Le_Flux, Code__0, QStringLiteral("EOF"));
    Le_Flux->flush();
}

void t_Generateur_Fichier_DXF_Nester::Creer_Blocks_Pieces_Charte(bool sansPiecesDroites)
{
    short indicePiece = 1;
    for (CDbPieceObject *piece = Le_Fabric->firstPiece(); piece != nullptr;
         piece = piece->getNextPiece(), ++indicePiece) {
        const CDbStyleObject *style =
            Le_Drawing->getStyle(static_cast<short>(piece->getStyleNo() - 1));
        short error = 0;
        const CDbStyleSizeObjectTable *sizes =
            style->findStyleSizeObjectTable(Le_Drawing->currentFabric, &error);
        KIV_CHECK_OPERATION(error == 0 && sizes != nullptr);

        const bool withoutRight = sansPiecesDroites && (piece->getKIVPieceSingle() ||
                                                           Le_Fabric->fabricType != PlainFabric);
        short numero = 0;
        for (int size = 1; size <= piece->getNumberOfSizes(); ++size) {
            const auto taille = static_cast<short>(size);
            if (sizes->quantityClothingBySize(Le_Fabric, La_Couche, piece, taille) <= 0) {
                continue;
            }
            const short left = piece->getQtyPieceSizeLayer(taille, true, La_Couche);
            numero = createBlocksOfSide(piece, indicePiece, taille, true, left, numero);
            if (withoutRight) {
                continue;
            }
            const short right = piece->getQtyPieceSizeLayer(taille, false, La_Couche);
            numero = createBlocksOfSide(piece, indicePiece, taille, false, right, numero);
        }
    }
}

// On a cloth that has a direction each piece is a block of its own. Returns the last number given.
short t_Generateur_Fichier_DXF_Nester::createBlocksOfSide(CDbPieceObject *piece, short indicePiece,
    short taille, bool gauche, short quantite, short numero)
{
    constexpr short preRot = 0;
    if (quantite <= 0) {
        return numero;
    }
    const short blocks = Le_Fabric->oneWay ? quantite : short(1);
    const short each = Le_Fabric->oneWay ? short(1) : quantite;
    for (short block = 0; block < blocks; ++block) {
        ++numero;
        Creer_Block_Nester(piece, indicePiece, taille, gauche, numero, each, preRot);
    }
    return numero;
}

void t_Generateur_Fichier_DXF_Nester::Creer_Blocks_Groupes_StandBy()
{
    KIV_HARD_ASSERT(
        Avoir_Liste_Groupes_Blocking().empty(), "Avoir_Liste_Groupes_Blocking().empty()");
    CDbGrPolysObjectIter groups(Le_Fabric->getPlaceGroupList(t_1_Based(La_Couche)));
    short indice = 1;
    CDbGrPolysObject *group = nullptr;
    while (groups.next(&group)) {
        if (group->groupPlace() != PlacedInStandBy) {
            continue;
        }
        if (group->hasMultiPolygon() && group->blockingFusion == nullptr) {
            constexpr double tolerance = 0.0001; // cm
            short error = 0;
            group->fusion(false, 0, true, tolerance, 0.0, 0.0, 0.0, &error);
            KIV_CHECK_OPERATION(error == 0);
            if (group->isAllPolysInFusion()) {
                Creer_Block_Nester(group, indice);
            }
            Les_Groupes_Blockes_Tempo.push_back(group);
        } else {
            Creer_Block_Nester(group, indice);
        }
        ++indice; // also of a group that gave no block
    }
}

void t_Generateur_Fichier_DXF_Nester::Creer_Block_Nester(CDbPieceObject *piece, short indicePiece,
    short taille, bool gauche, short numero, short quantite, short preRot)
{
    auto block = std::make_unique<t_Data_Block_Nester>(*Le_Flux, Le_Drawing, Le_Fabric, La_Couche,
        piece, indicePiece, gauche, taille, numero, quantite, preRot);
    Nb_Instances_Total = static_cast<short>(Nb_Instances_Total + quantite);
    Les_Blocks.push_back(std::move(block));
}

void t_Generateur_Fichier_DXF_Nester::Creer_Block_Nester(CDbGrPolysObject *groupe, short indice)
{
    Les_Blocks.push_back(std::make_unique<t_Data_Block_Nester>(
        *Le_Flux, Le_Drawing, Le_Fabric, La_Couche, groupe, indice));
}

// The links are those of the style of the first block, also for blocks of another one.
void t_Generateur_Fichier_DXF_Nester::creerContraintesDeMotifGroupes()
{
    const CDbPlaidAndStripesInfo &plaid = Le_Fabric->plaidInfo;
    if (!plaid.plaidActive || Les_Blocks.empty()) {
        return;
    }
    Prochain_Id_Motif = 1;
    short code_erreur = 0;
    const CDbPieceObject *piece = Le_Fabric->findPieceAccordingIndex(
        Les_Blocks.front()->Le_Groupe->firstPolygon->pieceIndex, &code_erreur);
    KIV_HARD_ASSERT(code_erreur == k_no_error, "code_erreur == k_no_error");
    CDbTwainLinkPiecesObjectTable *links = nullptr;
    Le_Drawing->getLinksListOfPiecesInFabricStyle(
        Le_Drawing->getFabricsTable().findFabricIndex(Le_Fabric), piece->getStyleNo(), &links);
    if (links->getTwainLinkPiecesCount() == 0) {
        return;
    }
    for (auto first = Les_Blocks.begin(); first != Les_Blocks.end(); ++first) {
        for (auto second = std::next(first); second != Les_Blocks.end(); ++second) {
            tieGroups(*links, (*first)->Le_Groupe, (*second)->Le_Groupe);
        }
    }
}

void t_Generateur_Fichier_DXF_Nester::tieGroups(
    const CDbTwainLinkPiecesObjectTable &links, CDbGrPolysObject *first, CDbGrPolysObject *second)
{
    for (CDbPolygon *a = first->firstPolygon; a != nullptr; a = a->nextPolygon) {
        for (CDbPolygon *b = second->firstPolygon; b != nullptr; b = b->nextPolygon) {
            CDbMarkerPointObject onA;
            CDbMarkerPointObject onB;
            bool found = false;
            for (int number = 1; number <= links.getTwainLinkPiecesCount() && !found; ++number) {
                const auto link = static_cast<short>(number);
                short code_erreur = 0;
                links.getTheVectorsLinkTwoPolys(
                    Le_Fabric, link, a, b, &code_erreur, &onA, &onB, &found);
                KIV_HARD_ASSERT(code_erreur == k_no_error, "code_erreur == k_no_error");
            }
            if (found) {
                addStrokes({first, onA}, {second, onB});
            }
        }
    }
}

// One number for each direction in which the pattern has lines.
void t_Generateur_Fichier_DXF_Nester::addStrokes(const TiedGroup &first, const TiedGroup &second)
{
    constexpr double strokeLength = 0.1; // cm
    const CDbPlaidAndStripesInfo &plaid = Le_Fabric->plaidInfo;
    const auto add = [&](const GeoPoint2D &way) {
        for (const TiedGroup &tied : {first, second}) {
            Lignes_Reference.emplace(tied.group,
                Reference_Line{Prochain_Id_Motif, {tied.point, tied.point.translated(way)}});
        }
        ++Prochain_Id_Motif;
    };
    if (!plaid.sampleHorLines.isEmpty()) {
        add(GeoPoint2D(strokeLength, 0));
    }
    if (!plaid.sampleVerLines.isEmpty()) {
        add(GeoPoint2D(0, strokeLength));
    }
}

void t_Generateur_Fichier_DXF_Nester::Ecrire_Section_Blocks()
{
    writeGroup(*Le_Flux, Code__0, QStringLiteral("SECTION"));
    writeGroup(*Le_Flux, Code__2, QStringLiteral("BLOCKS"));
    for (const auto &block : Les_Blocks) {
        block->Ecrire_Dans_DXF(Lignes_Reference);
    }
    writeGroup(*Le_Flux, Code__0, QStringLiteral("ENDSEC"));
    Le_Flux->flush();
}

void t_Generateur_Fichier_DXF_Nester::Ecrire_Section_Entites()
{
    writeGroup(*Le_Flux, Code__0, QStringLiteral("SECTION"));
    writeGroup(*Le_Flux, Code__2, QStringLiteral("ENTITIES"));
    Ecrire_Parametres_Globaux_Pour_Entites();
    for (const auto &block : Les_Blocks) {
        const short sign = block->Est_Gauche ? short(1) : short(-1);
        for (short instance = 0; instance < block->Nb_Instances; ++instance) {
            const short section =
                marker_section ? Get_Section(block->Nom_Style, block->Numero_Taille, instance)
                               : short(0);
            Ecrire_Entite_INSERT(
                DXF_cc_1, block->Nom_Block, 0.0, 0.0, 0.0, sign, instance, true, section, false);
        }
    }
    writeGroup(*Le_Flux, Code__0, QStringLiteral("ENDSEC"));
    Le_Flux->flush();
}

short t_Generateur_Fichier_DXF_Nester::Get_Section(
    const QString &style, short taille, short instance) const
{
    const auto found = sizes_list.find(SectionReference{style, taille, instance, {}, 0});
    return found != sizes_list.end() ? found->Numero_Section : short(0);
}

void t_Generateur_Fichier_DXF_Nester::DXF_Ecrire_Entite_TEXT(
    short layer, const QString &text, double x, double y, bool style)
{
    writeText(*Le_Flux, layer, text, x, y, style);
}

// The group 42 is no bulge here: it tells the side of the piece.
void t_Generateur_Fichier_DXF_Nester::Ecrire_Entite_INSERT(short layer, const QString &name,
    double x, double y, double rotation, short sign, short bundle, bool placeholder, short section,
    bool /*unused*/)
{
    writeGroup(*Le_Flux, Code__0, QStringLiteral("INSERT"));
    writeGroup(*Le_Flux, Code__8, QString::number(layer));
    writeGroup(*Le_Flux, Code__2, name);
    writeGroup(*Le_Flux, Code_10, real(x / DXF_Facteur_Unites));
    writeGroup(*Le_Flux, Code_20, real(y / DXF_Facteur_Unites));
    writeGroup(*Le_Flux, Code_50, real(rotation));
    writeGroup(*Le_Flux, Code_42, QString::number(sign));
    writeGroup(*Le_Flux, Code_999, keywordLine(k_DXF_CS_BUNDLE, QString::number(bundle)));
    writeGroup(*Le_Flux, Code_999, keywordLine(k_DXF_CS_PL_HOLDER, trueOrFalse(placeholder)));
    writeGroup(*Le_Flux, Code_999, keywordLine(k_DXF_CS_SECTION_ID, QString::number(section + 1)));
}

} // namespace DxfNester
} // namespace KivSystem
