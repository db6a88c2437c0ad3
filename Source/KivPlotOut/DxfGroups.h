// DxfNester: the words, the layers and the entities of a DXF-NESTER file.
//
// The file is a dialect of DXF: groups of two lines, a code and a value, in a BLOCKS and an
// ENTITIES section. The settings of the nesting program travel as TEXT entities KEY:value.

#ifndef KIVPLOTOUT_DXFGROUPS_H
#define KIVPLOTOUT_DXFGROUPS_H

#include <QString>

class QTextStream;

namespace KivSystem {
namespace DxfNester {

// Group codes. Those that no entity has yet belong to the dialect, too.
// NOLINTBEGIN(bugprone-reserved-identifier): names of the dialect
extern const QString Code__0;
extern const QString Code__1;
extern const QString Code__2;
extern const QString Code__3;
extern const QString Code__7;
extern const QString Code__8;
extern const QString Code_10;
extern const QString Code_11;
extern const QString Code_20;
extern const QString Code_21;
extern const QString Code_30;
extern const QString Code_31;
extern const QString Code_38;
extern const QString Code_39;
extern const QString Code_40;
extern const QString Code_42;
extern const QString Code_50;
extern const QString Code_51;
extern const QString Code_66;
extern const QString Code_70;
extern const QString Code_999;
// NOLINTEND(bugprone-reserved-identifier)

// Keywords of a block. One word can stand behind several names: the name tells the place.
extern const QString k_DXF_NEST_CS_STYLE_NAME;
extern const QString k_DXF_NEST_CS_PIECE_NAME;
extern const QString k_DXF_CS_SIZE;
extern const QString k_DXF_CS_NAP_GROUPE;
extern const QString k_DXF_CS_FLIP_GROUPE;
extern const QString k_DXF_CS_PIECE_GAP;
extern const QString k_DXF_CS_PIECE_ROT;
extern const QString k_DXF_CS_HORI_FLIP;
extern const QString k_DXF_CS_VERT_FLIP;
extern const QString k_DXF_CS_LEFT_TILT;
extern const QString k_DXF_CS_RIGHT_TILT;
extern const QString k_DXF_CS_PIECE_OPT;
extern const QString k_DXF_CS_PRE_FLIP;
extern const QString k_DXF_CS_PRE_ROT;
extern const QString k_DXF_CS_FOLDABLE;
extern const QString k_DXF_CS_REFERENCE_LINE;
extern const QString DXF_CS_NOM_POLY_STAND_BY;

// The fabric's frame.
extern const QString k_DXF_CS_MARKER_NAME;
extern const QString k_DXF_CS_SPREAD;
extern const QString k_DXF_CS_STRAIGHT_SIDE;
extern const QString k_DXF_CS_SECT_INTERLOCK;
extern const QString k_DXF_CS_PIECES_NB;
extern const QString k_DXF_CS_PIECES_INST_NB;
extern const QString k_DXF_NEST_CS_UNITS;
extern const QString k_DXF_CS_SCALE;
extern const QString k_DXF_CS_WIDTH;
extern const QString k_DXF_CS_FABRIC_GAP;
extern const QString k_DXF_CS_TOP_SPACE;
extern const QString k_DXF_CS_BOT_SPACE;
extern const QString k_DXF_CS_LEFT_SPACE;
extern const QString k_DXF_CS_NAP_ACTIVE;
extern const QString k_DXF_CS_FLIP_ACTIVE;
extern const QString k_DXF_CS_ROT_PREF;
extern const QString k_DXF_CS_FLIP_H_PREF;
extern const QString k_DXF_CS_FLIP_V_PREF;
extern const QString k_DXF_CS_L_TILT_PREF;
extern const QString k_DXF_CS_R_TILT_PREF;
extern const QString k_DXF_CS_SP_GROUP;
extern const QString k_DXF_CS_X_REPETITION;
extern const QString k_DXF_CS_X_REP_OFFSET;
extern const QString k_DXF_CS_Y_REPETITION;
extern const QString k_DXF_CS_Y_REP_OFFSET;

// The insertions.
extern const QString k_DXF_CS_BUNDLE;
extern const QString k_DXF_CS_PL_HOLDER;
extern const QString k_DXF_CS_FOLD;
extern const QString k_DXF_CS_SECTION_ID;

// Values.
extern const QString k_DXF_CS_CM;
extern const QString k_DXF_CS_INCH;
extern const QString k_DXF_CS_FALSE;
extern const QString k_DXF_CS_TRUE;
extern const QString k_DXF_CS_SINGULAR;
extern const QString k_DXF_CS_BOOK_FOLD;
extern const QString k_DXF_CS_TUBULAR;
extern const QString k_DXF_CS_SINGLE_FOLD;
extern const QString k_DXF_CS_TOP;
extern const QString k_DXF_CS_BOTTOM;
extern const QString k_DXF_CS_UP;
extern const QString k_DXF_CS_DOWN;
extern const QString k_DXF_CS_MUST;
extern const QString k_DXF_CS_ONGOING;

// Layers, by what they are for; set by assignLayers(). Only the outline and the texts are written.
extern short DXF_cc_0;            ///< layer 0
extern short DXF_cc_1;            ///< outline: the only geometry layer that is written
extern short DXF_cc_Pts_Durs;     ///< hard points
extern short DXF_cc_Pts_Mous;     ///< soft points
extern short DXF_cc_Crans;        ///< notches
extern short DXF_cc_Ref_Grad;     ///< grading reference
extern short DXF_cc_Mirroir;      ///< mirror line
extern short DXF_cc_Droit_Fil;    ///< grain line
extern short DXF_cc_Lignes_Int;   ///< internal lines
extern short DXF_cc_Ref_Raye;     ///< stripe reference
extern short DXF_cc_Ref_Quad;     ///< plaid reference
extern short DXF_cc_Coupes_Int;   ///< internal cuts
extern short DXF_cc_Ctl_Num;      ///< control numbers
extern short DXF_cc_PunchHoles;   ///< punch holes
extern short DXF_cc_Coutures;     ///< seams
extern short DXF_cc_Text_Nesters; ///< the nester's keyword texts

// Layers of the dialect that have no number.
extern short DXF_cc_Crans_Doubles;
extern short DXF_cc_Evolutions;
extern short DXF_cc_Bound_Bezier_Ctl_Points;
extern short DXF_cc_Int_Lines_Bez_Ctl_Points;
extern short DXF_cc_Int_Cut_Bez_Ctl_Points;
extern short DXF_cc_KIV_Mark_Points;
extern short DXF_cc_KIV_Bez_Ctl_Points;

/// The marker's unit in units of the file: coordinates of outlines and blocks are divided by it.
extern double DXF_Facteur_Unites;

/// Gives the layers their numbers.
void assignLayers();

/// Four decimals in the form of the default locale: QLocale().toString(value, 'f', 4).
QString real(double value);
/// At most six digits, without zeros at the end, in the C locale.
QString shortReal(double value);
const QString &trueOrFalse(bool value);
/// KEY:value
QString keywordLine(const QString &key, const QString &value);

/// The two lines of a group.
void writeGroup(QTextStream &out, const QString &code, const QString &value);

void writeText(QTextStream &out, short layer, const QString &text, double x, double y, bool style);
void writeVertex(QTextStream &out, short layer, double x, double y);
void writePolyline(QTextStream &out, short layer, bool closed);
void writeBlock(QTextStream &out, short layer, const QString &name, double x, double y);

} // namespace DxfNester
} // namespace KivSystem

#endif
