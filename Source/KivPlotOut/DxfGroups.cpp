#include "DxfGroups.h"

#include <QLocale>
#include <QTextStream>

#include <array>
#include <charconv>
#include <cmath>

namespace KivSystem {
namespace DxfNester {

// NOLINTBEGIN(bugprone-reserved-identifier): names of the dialect
const QString Code__0 = QStringLiteral("  0");
const QString Code__1 = QStringLiteral("  1");
const QString Code__2 = QStringLiteral("  2");
const QString Code__3 = QStringLiteral("  3");
const QString Code__7 = QStringLiteral("  7");
const QString Code__8 = QStringLiteral("  8");
const QString Code_10 = QStringLiteral(" 10");
const QString Code_11 = QStringLiteral(" 11");
const QString Code_20 = QStringLiteral(" 20");
const QString Code_21 = QStringLiteral(" 21");
const QString Code_30 = QStringLiteral(" 30");
const QString Code_31 = QStringLiteral(" 31");
const QString Code_38 = QStringLiteral(" 38");
const QString Code_39 = QStringLiteral(" 39");
const QString Code_40 = QStringLiteral(" 40");
const QString Code_42 = QStringLiteral(" 42");
const QString Code_50 = QStringLiteral(" 50");
const QString Code_51 = QStringLiteral(" 51");
const QString Code_66 = QStringLiteral(" 66");
const QString Code_70 = QStringLiteral(" 70");
const QString Code_999 = QStringLiteral("999");
// NOLINTEND(bugprone-reserved-identifier)

const QString k_DXF_NEST_CS_STYLE_NAME = QStringLiteral("STYLE");
const QString k_DXF_NEST_CS_PIECE_NAME = QStringLiteral("NAME");
const QString k_DXF_CS_SIZE = QStringLiteral("SIZE");
const QString k_DXF_CS_NAP_GROUPE = QStringLiteral("NGROUP");
const QString k_DXF_CS_FLIP_GROUPE = QStringLiteral("FGROUP");
const QString k_DXF_CS_PIECE_GAP = QStringLiteral("GAP");
const QString k_DXF_CS_PIECE_ROT = QStringLiteral("ROT");
const QString k_DXF_CS_HORI_FLIP = QStringLiteral("HFLIP");
const QString k_DXF_CS_VERT_FLIP = QStringLiteral("VFLIP");
const QString k_DXF_CS_LEFT_TILT = QStringLiteral("LTILT");
const QString k_DXF_CS_RIGHT_TILT = QStringLiteral("RTILT");
const QString k_DXF_CS_PIECE_OPT = QStringLiteral("OPTIONAL");
const QString k_DXF_CS_PRE_FLIP = QStringLiteral("PREFLIP");
const QString k_DXF_CS_PRE_ROT = QStringLiteral("PREROT");
const QString k_DXF_CS_FOLDABLE = QStringLiteral("FOLDABLE");
const QString k_DXF_CS_REFERENCE_LINE = QStringLiteral("REFERENCE_LINE");
const QString DXF_CS_NOM_POLY_STAND_BY = QStringLiteral("POLYSTANDBY");

const QString k_DXF_CS_MARKER_NAME = QStringLiteral("MARKER");
const QString k_DXF_CS_SPREAD = QStringLiteral("SPREAD");
const QString k_DXF_CS_STRAIGHT_SIDE = QStringLiteral("FOLD");
const QString k_DXF_CS_SECT_INTERLOCK = QStringLiteral("SECTIONAL_INTERLOCK");
const QString k_DXF_CS_PIECES_NB = QStringLiteral("NPIECE");
const QString k_DXF_CS_PIECES_INST_NB = QStringLiteral("NINSTANCE");
const QString k_DXF_NEST_CS_UNITS = QStringLiteral("UNIT");
const QString k_DXF_CS_SCALE = QStringLiteral("SCALE");
const QString k_DXF_CS_WIDTH = QStringLiteral("WIDTH");
const QString k_DXF_CS_FABRIC_GAP = QStringLiteral("GAP");
const QString k_DXF_CS_TOP_SPACE = QStringLiteral("TSALV");
const QString k_DXF_CS_BOT_SPACE = QStringLiteral("BSALV");
const QString k_DXF_CS_LEFT_SPACE = QStringLiteral("LSALV");
const QString k_DXF_CS_NAP_ACTIVE = QStringLiteral("NAPACTIVE");
const QString k_DXF_CS_FLIP_ACTIVE = QStringLiteral("FLIPACTIVE");
const QString k_DXF_CS_ROT_PREF = QStringLiteral("ROT");
const QString k_DXF_CS_FLIP_H_PREF = QStringLiteral("HFLIP");
const QString k_DXF_CS_FLIP_V_PREF = QStringLiteral("VFLIP");
const QString k_DXF_CS_L_TILT_PREF = QStringLiteral("LTILT");
const QString k_DXF_CS_R_TILT_PREF = QStringLiteral("RTILT");
const QString k_DXF_CS_SP_GROUP = QStringLiteral("SP_GROUP");
const QString k_DXF_CS_X_REPETITION = QStringLiteral("X_REPETITION");
const QString k_DXF_CS_X_REP_OFFSET = QStringLiteral("X_REP_OFFSET");
const QString k_DXF_CS_Y_REPETITION = QStringLiteral("Y_REPETITION");
const QString k_DXF_CS_Y_REP_OFFSET = QStringLiteral("Y_REP_OFFSET");

const QString k_DXF_CS_BUNDLE = QStringLiteral("BUNDLE");
const QString k_DXF_CS_PL_HOLDER = QStringLiteral("PLACEHOLDER");
const QString k_DXF_CS_FOLD = QStringLiteral("FOLD");
const QString k_DXF_CS_SECTION_ID = QStringLiteral("SECTION_ID");

const QString k_DXF_CS_CM = QStringLiteral("CM");
const QString k_DXF_CS_INCH = QStringLiteral("INCH");
const QString k_DXF_CS_FALSE = QStringLiteral("FALSE");
const QString k_DXF_CS_TRUE = QStringLiteral("TRUE");
const QString k_DXF_CS_SINGULAR = QStringLiteral("SINGULAR");
const QString k_DXF_CS_BOOK_FOLD = QStringLiteral("BOOK_FOLD");
const QString k_DXF_CS_TUBULAR = QStringLiteral("TUBULAR");
const QString k_DXF_CS_SINGLE_FOLD = QStringLiteral("SINGLE_FOLD");
const QString k_DXF_CS_TOP = QStringLiteral("UP");
const QString k_DXF_CS_BOTTOM = QStringLiteral("DOWN");
const QString k_DXF_CS_UP = QStringLiteral("UP");
const QString k_DXF_CS_DOWN = QStringLiteral("DOWN");
const QString k_DXF_CS_MUST = QStringLiteral("MUST");
const QString k_DXF_CS_ONGOING = QStringLiteral("ONGOING");

short DXF_cc_0 = 0;
short DXF_cc_1 = 0;
short DXF_cc_Pts_Durs = 0;
short DXF_cc_Pts_Mous = 0;
short DXF_cc_Crans = 0;
short DXF_cc_Ref_Grad = 0;
short DXF_cc_Mirroir = 0;
short DXF_cc_Droit_Fil = 0;
short DXF_cc_Lignes_Int = 0;
short DXF_cc_Ref_Raye = 0;
short DXF_cc_Ref_Quad = 0;
short DXF_cc_Coupes_Int = 0;
short DXF_cc_Ctl_Num = 0;
short DXF_cc_PunchHoles = 0;
short DXF_cc_Coutures = 0;
short DXF_cc_Text_Nesters = 0;

short DXF_cc_Crans_Doubles = 0;
short DXF_cc_Evolutions = 0;
short DXF_cc_Bound_Bezier_Ctl_Points = 0;
short DXF_cc_Int_Lines_Bez_Ctl_Points = 0;
short DXF_cc_Int_Cut_Bez_Ctl_Points = 0;
short DXF_cc_KIV_Mark_Points = 0;
short DXF_cc_KIV_Bez_Ctl_Points = 0;

double DXF_Facteur_Unites = 1.0;

namespace {

constexpr short kUnusedLayer = -9999;
constexpr int kDecimals = 4;
constexpr double kTextHeight = 0.1;

// A number as std::to_chars writes it is the locale's when the locale has these digits and signs
// and does not group them; the locale's own way takes several times as long. A number half-way
// between two texts, which is an odd number of 32nds, is rounded by either in its own way.
bool hasPlainDigits(const QLocale &locale, double value)
{
    constexpr double firstGrouped = 999;
    constexpr double halfWay = 32;
    const double parts = value * halfWay;
    const bool isHalfWay = parts == std::trunc(parts) && std::fmod(parts, 2) != 0;
    return std::abs(value) < firstGrouped && !isHalfWay && locale.zeroDigit() == QLatin1Char('0') &&
           locale.negativeSign() == QLatin1Char('-');
}

} // namespace

void assignLayers()
{
    DXF_cc_0 = kUnusedLayer;
    DXF_cc_1 = 1;
    DXF_cc_Pts_Durs = 2;
    DXF_cc_Pts_Mous = 3;
    DXF_cc_Crans = 4;
    DXF_cc_Ref_Grad = kUnusedLayer;
    DXF_cc_Mirroir = 6;
    DXF_cc_Droit_Fil = 7;
    DXF_cc_Lignes_Int = 8;
    DXF_cc_Ref_Raye = kUnusedLayer;
    DXF_cc_Ref_Quad = kUnusedLayer;
    DXF_cc_Coupes_Int = 11;
    DXF_cc_Ctl_Num = kUnusedLayer;
    DXF_cc_PunchHoles = 13;
    DXF_cc_Coutures = kUnusedLayer;
    DXF_cc_Text_Nesters = 99;
}

QString real(double value)
{
    const QLocale locale;
    if (!hasPlainDigits(locale, value)) {
        return locale.toString(value, 'f', kDecimals);
    }
    value += 0.0; // a zero has no sign
    std::array<char, 16> digits{};
    const auto result = std::to_chars(
        digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, kDecimals);
    QString text = QString::fromLatin1(digits.data(), static_cast<int>(result.ptr - digits.data()));
    text[text.size() - kDecimals - 1] = locale.decimalPoint();
    return text;
}

QString shortReal(double value)
{
    return QStringLiteral("%1").arg(value, 0, 'g', -1, QLatin1Char(' '));
}

const QString &trueOrFalse(bool value)
{
    return value ? k_DXF_CS_TRUE : k_DXF_CS_FALSE;
}

QString keywordLine(const QString &key, const QString &value)
{
    return key + QLatin1Char(':') + value;
}

void writeGroup(QTextStream &out, const QString &code, const QString &value)
{
    out << code << '\n' << value << '\n';
}

// A keyword's layer goes by its name. The number of any other layer is not followed by a line end:
// this is wanted, and no text has such a layer.
void writeText(QTextStream &out, short layer, const QString &text, double x, double y, bool style)
{
    const bool isKeyword = layer == DXF_cc_Text_Nesters;
    writeGroup(out, Code__0, QStringLiteral("TEXT"));
    out << Code__8 << '\n';
    if (isKeyword) {
        out << QStringLiteral("NESTER_SETTINGS") << '\n';
    } else {
        out << layer;
    }
    writeGroup(out, Code_10, real(x));
    writeGroup(out, Code_20, real(y));
    writeGroup(out, Code_40, real(kTextHeight));
    writeGroup(out, Code__1, text);
    if (!isKeyword && style) {
        writeGroup(out, Code__7, QStringLiteral("STANDARD"));
    }
}

void writeVertex(QTextStream &out, short layer, double x, double y)
{
    writeGroup(out, Code__0, QStringLiteral("VERTEX"));
    writeGroup(out, Code__8, QString::number(layer));
    writeGroup(out, Code_10, real(x / DXF_Facteur_Unites));
    writeGroup(out, Code_20, real(y / DXF_Facteur_Unites));
}

// Both flags are 1, as the outline's layer is: its number serves for them on purpose.
void writePolyline(QTextStream &out, short layer, bool closed)
{
    writeGroup(out, Code__0, QStringLiteral("POLYLINE"));
    writeGroup(out, Code__8, QString::number(layer));
    writeGroup(out, Code_66, QString::number(DXF_cc_1));
    if (closed) {
        writeGroup(out, Code_70, QString::number(DXF_cc_1));
    }
}

void writeBlock(QTextStream &out, short layer, const QString &name, double x, double y)
{
    writeGroup(out, Code__0, QStringLiteral("BLOCK"));
    writeGroup(out, Code__8, QString::number(layer));
    writeGroup(out, Code__2, name);
    writeGroup(out, Code_70, QStringLiteral("64"));
    writeGroup(out, Code_10, real(x / DXF_Facteur_Unites));
    writeGroup(out, Code_20, real(y / DXF_Facteur_Unites));
}

} // namespace DxfNester
} // namespace KivSystem
