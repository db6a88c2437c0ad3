// KivIllustrator, the lowest layer: the fixed words of the format "Illustrator(TM)", the head of a
// file, the one unit conversion, the one number format, colours and the two path operators through
// which every coordinate goes. A file is text, a line for each operator:
//
//     %!PS-Adobe-2.0
//     0 0 0 10 k
//     28.35 28.35 m
//     113.4 28.35 L
//     S
//
// Coordinates are marker centimetres: x along the fabric, y across it, nothing is turned over.

#ifndef KIVPLOTOUT_ILLUSTRATORPRIMITIVES_H
#define KIVPLOTOUT_ILLUSTRATORPRIMITIVES_H

#include <QLatin1String>

class QColor;
class QString;
class QTextStream;

namespace KivSystem {

class GeoRectangle;

namespace KivIllustrator {

inline const QLatin1String ILLUST_Adobe("%!PS-Adobe-2.0");
inline const QLatin1String ILLUST_Createur("%%Creator: KIV System ");
inline const QLatin1String ILLUST_Titre_Doc("%%Title: ");
inline const QLatin1String ILLUST_Date_Time("%%Creation Date: ");
inline const QLatin1String ILLUST_Fonte("%%DocumentFonts: ");
inline const QLatin1String ILLUST_BoundingBox("%%BoundingBox:");
inline const QLatin1String ILLUST_ProcSets("%%DocumentProcSets: Adobe_Illustrator881");
inline const QLatin1String ILLUST_End_Comment("%%EndComments");
inline const QLatin1String ILLUST_End_Prolog("%%EndProlog");
inline const QLatin1String ILLUST_BeginSetup("%%BeginSetup");
inline const QLatin1String ILLUST_EndSetup("%%EndSetup");
inline const QLatin1String ILLUST_k("0 k");  ///< fill colour
inline const QLatin1String ILLUST_KK("0 K"); ///< stroke colour
inline const QLatin1String ILLUST_i("1 i");  ///< flatness
inline const QLatin1String ILLUST_JJ("0 J"); ///< line cap
inline const QLatin1String ILLUST_j("0 j");  ///< line join
inline const QLatin1String ILLUST_w("1 w");  ///< line width
inline const QLatin1String ILLUST_M("4 M");  ///< miter limit
inline const QLatin1String ILLUST_First_Dash("[");
inline const QLatin1String ILLUST_Fin_Dash("]0 d");
inline const QLatin1String ILLUST_MoveTo("m");
inline const QLatin1String ILLUST_LineTo("L");
inline const QLatin1String ILLUST_CurveTo("V"); ///< never written: curves are flattened
inline const QLatin1String ILLUST_s("s");       ///< closes the path and strokes it
inline const QLatin1String ILLUST_S("S");       ///< strokes the path, open
inline const QLatin1String ILLUST_First_Groupe("u");
inline const QLatin1String ILLUST_Fin_Groupe("U");
inline const QLatin1String ILLUST_Trailer("%%Trailer");
inline const QLatin1String ILLUST_EOF("%%EOF");
inline const QLatin1String ILLUST_String_Affichee("t");
inline const QLatin1String ILLUST_Size_Fonte("z");
inline const QLatin1String ILLUST_Position_String("e");
inline const QLatin1String ILLUST_Fin_Bloc_Texte("T");

/// The scale of all files from now on, 1 at first; kept in single precision, so that 0.1 acts as
/// 0.100000001490116. Main thread only.
void setScale(double factor);

/// Centimetres as scaled points.
double ILLUST_KIV_CM_A_72(double cm);

/// A number of the file: four significant digits below 10 in size, otherwise four decimals at most;
/// a minus sign counts as a digit of the integer part.
QString toString(double value);

/// The family of the application's font, its blanks replaced by "_".
QString fontFamilyWord();

/// One path line each; centimetres.
void ILLUST_Move_To(QTextStream &out, double x, double y);
void ILLUST_Line_To(QTextStream &out, double x, double y);

/// A line with the operator alone: closes and strokes the path, or strokes it open.
void closePath(QTextStream &out);
void strokePath(QTextStream &out);

void ILLUST_First_Fin_Groupe(QTextStream &out, bool opening);

/// Fill and stroke colour, two lines. The digit 0 of the operators stands right behind the last
/// number, as readers of these files expect it: black is 10 and not 1.
void ILLUST_Set_RGBColor(QTextStream &out, const QColor &colour);

/// The head of the file, nine lines, with the local time. No character of the name is escaped; the
/// box is in centimetres and is rounded down to whole points.
void ILLUST_Prologue_Header_Subsection(
    QTextStream &out, const QString &fileName, const GeoRectangle &box);
void ILLUST_Script_Setup_Subsection(QTextStream &out);
/// Black, and the graphic state that a file begins with.
void ILLUST_Standard_First_Script(QTextStream &out);

} // namespace KivIllustrator
} // namespace KivSystem

#endif
