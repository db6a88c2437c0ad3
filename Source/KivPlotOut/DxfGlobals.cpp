// The keywords of a DXF-NESTER file that tell the fabric's frame and what every piece may do.

#include "DxfGenerator.h"
#include "DxfGroups.h"
#include "Failures.h"

#include "KivMarker/Drawing.h"

#include <algorithm>

namespace KivSystem {
namespace DxfNester {
namespace {

constexpr double kSmallestGap = 0.01; // cm; the fabric is told that much narrower, too
constexpr double kLargestTilt = 22;   // degrees
constexpr double kScale = 1;

double atLeastSmallestGap(double gap)
{
    return std::max(gap, kSmallestGap);
}

const QString &spreadWord(const CDbFabricObject &fabric)
{
    switch (fabric.fabricType) {
    case TubularFabric:
        return k_DXF_CS_TUBULAR;
    case FoldOnBottom:
    case FoldOnTop:
        return k_DXF_CS_BOOK_FOLD;
    default:
        return k_DXF_CS_SINGULAR;
    }
}

} // namespace

double getMaxGapToTheEdgeOfFabric(CDbFabricObject *fabric)
{
    KIV_CHECK_OPERATION(fabric != nullptr);
    return fabric->edgeGapActive ? fabric->getMaxGapInFabric() : 0.0;
}

void t_Generateur_Fichier_DXF_Nester::Ecrire_Parametres_Globaux_Pour_Entites()
{
    writeKeyword(k_DXF_CS_MARKER_NAME, Le_Fabric->fabricName);
    writeKeyword(k_DXF_CS_SPREAD, spreadWord(*Le_Fabric));
    if (marker_section) {
        writeKeyword(k_DXF_CS_SECT_INTERLOCK, real(section_interlock));
    }
    const auto blocks = static_cast<short>(Les_Blocks.size());
    writeKeyword(k_DXF_CS_PIECES_NB, QString::number(blocks));
    writeKeyword(k_DXF_CS_PIECES_INST_NB, QString::number(Nb_Instances_Total));
    writeKeyword(k_DXF_NEST_CS_UNITS, k_DXF_CS_CM);
    writeKeyword(k_DXF_CS_SCALE, real(kScale));
    writeKeyword(k_DXF_CS_WIDTH, real(Le_Fabric->getFabricLayerWidth(La_Couche) - kSmallestGap));
    writeKeyword(k_DXF_CS_FABRIC_GAP, real(atLeastSmallestGap(Le_Fabric->getMaxGapInFabric())));
    writeEdges();
    writeRules();
    writePattern();
}

// A folded edge has no selvedge. That the top or the bottom one is 0 is all that tells the side of
// the fold: no keyword does.
void t_Generateur_Fichier_DXF_Nester::writeEdges()
{
    const double edge = atLeastSmallestGap(getMaxGapToTheEdgeOfFabric(Le_Fabric));
    const int type = Le_Fabric->fabricType;
    const bool noTop = type == FoldOnTop || type == TubularFabric;
    const bool noBottom = type == FoldOnBottom || type == TubularFabric;
    writeKeyword(k_DXF_CS_TOP_SPACE, real(noTop ? 0.0 : edge));
    writeKeyword(k_DXF_CS_BOT_SPACE, real(noBottom ? 0.0 : edge));
    writeKeyword(k_DXF_CS_LEFT_SPACE, real(edge));
}

void t_Generateur_Fichier_DXF_Nester::writeRules()
{
    writeKeyword(k_DXF_CS_NAP_ACTIVE, k_DXF_CS_FALSE);
    writeKeyword(k_DXF_CS_FLIP_ACTIVE, k_DXF_CS_FALSE);
    writeKeyword(k_DXF_CS_ROT_PREF, QString::number(Le_Fabric->rotationPermittedValue()));
    writeKeyword(k_DXF_CS_FLIP_H_PREF, trueOrFalse(Le_Fabric->permittedSymmetryX()));
    writeKeyword(k_DXF_CS_FLIP_V_PREF, trueOrFalse(Le_Fabric->permittedSymmetryY()));
    const QString tilt = real(std::min(Le_Fabric->permittedFineRotationValue(), kLargestTilt));
    writeKeyword(k_DXF_CS_L_TILT_PREF, tilt);
    writeKeyword(k_DXF_CS_R_TILT_PREF, tilt);
}

// Lines that exist are told also when nothing is matched to them.
void t_Generateur_Fichier_DXF_Nester::writePattern()
{
    for (unsigned int motif = 1; motif < Prochain_Id_Motif; ++motif) {
        writeKeyword(
            k_DXF_CS_SP_GROUP, QString::number(motif) + QLatin1Char(',') + k_DXF_CS_ONGOING);
    }
    const CDbPlaidAndStripesInfo &plaid = Le_Fabric->plaidInfo;
    if (plaid.atLeastOneVerLine()) {
        writeKeyword(k_DXF_CS_X_REPETITION, real(plaid.xRepetition));
        writeKeyword(k_DXF_CS_X_REP_OFFSET, real(plaid.xRepOffset));
    }
    if (plaid.atLeastOneHorLine()) {
        writeKeyword(k_DXF_CS_Y_REPETITION, real(plaid.yRepetition));
        writeKeyword(k_DXF_CS_Y_REP_OFFSET, real(plaid.yRepOffset));
    }
}

void t_Generateur_Fichier_DXF_Nester::writeKeyword(const QString &key, const QString &value)
{
    DXF_Ecrire_Entite_TEXT(DXF_cc_Text_Nesters, keywordLine(key, value), 0.0, 0.0, true);
}

} // namespace DxfNester
} // namespace KivSystem
