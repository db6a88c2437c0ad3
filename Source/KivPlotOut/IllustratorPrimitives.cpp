#include "IllustratorPrimitives.h"

#include "KivGeo/Rectangle.h"

#include <QApplication>
#include <QColor>
#include <QDateTime>
#include <QFont>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace KivSystem {
namespace KivIllustrator {
namespace {

float PostScript_Facteur = 1.0F;

// Outside of 32 bits there is no integer part to count; its longest text gives the most digits.
qint32 integerPart(double value)
{
    const double part = std::trunc(value);
    const bool fits =
        part >= std::numeric_limits<qint32>::min() && part <= std::numeric_limits<qint32>::max();
    return fits ? static_cast<qint32>(part) : std::numeric_limits<qint32>::min();
}

// The number of significant digits that the format gives a value.
int precisionOf(double value)
{
    constexpr qint32 ten = 10;
    qint32 whole = integerPart(value);
    int digits = whole < 0 ? 2 : 1; // the sign counts
    for (whole /= ten; whole != 0; whole /= ten) {
        ++digits;
    }
    return digits < 2 ? 4 : digits + 4;
}

// Appends what toString() gives. to_chars is several times as fast as QString::number; they differ
// in rounding where the value ends one digit further, with a 5.
void appendNumber(QVarLengthArray<char, 80> &line, double value)
{
    constexpr int room = 32;
    value += 0.0; // a zero has no sign
    const int precision = precisionOf(value);
    std::array<char, room> digits{};
    const auto shortest = std::to_chars(
        digits.data(), digits.data() + digits.size(), value, std::chars_format::scientific);
    const char *const exponent = std::find(digits.data(), shortest.ptr, 'e');
    const bool isHalfWay = exponent[-1] == '5';
    if (isHalfWay || !std::isfinite(value)) {
        const QByteArray text = toString(value).toLatin1();
        line.append(text.constData(), text.size());
        return;
    }
    const auto end = std::to_chars(
        digits.data(), digits.data() + digits.size(), value, std::chars_format::general, precision);
    line.append(digits.data(), static_cast<int>(end.ptr - digits.data()));
}

// The line that ends a path flushes the stream.
void writePoint(QTextStream &out, double x, double y, QLatin1String command)
{
    QVarLengthArray<char, 80> line;
    appendNumber(line, ILLUST_KIV_CM_A_72(x));
    line.append(' ');
    appendNumber(line, ILLUST_KIV_CM_A_72(y));
    line.append(' ');
    line.append(command.data(), command.size());
    line.append('\n');
    out << QLatin1String(line.constData(), line.size());
}

// A shift and not a multiplication by 257: white is not quite white.
double inkOf(int component)
{
    constexpr double kFull = 65535.0;
    return 1.0 - (component << 8) / kFull;
}

QString wholePoints(double cm)
{
    return QString::number(static_cast<qint64>(std::floor(ILLUST_KIV_CM_A_72(cm))));
}

void writeTime(QTextStream &out)
{
    const QDateTime now = QDateTime::currentDateTime();
    out << ILLUST_Date_Time << '(' << now.toString(QStringLiteral("MM/dd/yyyy")) << ") ("
        << now.toString(QStringLiteral("hh:mm")) << ')' << Qt::endl;
}

} // namespace

void setScale(double factor)
{
    PostScript_Facteur = static_cast<float>(factor);
}

double ILLUST_KIV_CM_A_72(double cm)
{
    constexpr double kCmPerInch = 2.5396825396825; // the system's own, not 2.54
    constexpr double kPointsPerInch = 72.0;
    return (cm / kCmPerInch) * kPointsPerInch * static_cast<double>(PostScript_Facteur);
}

QString toString(double value)
{
    return QString::number(value, 'g', precisionOf(value));
}

QString fontFamilyWord()
{
    return QApplication::font().family().replace(QLatin1Char(' '), QLatin1Char('_'));
}

void ILLUST_Move_To(QTextStream &out, double x, double y)
{
    writePoint(out, x, y, ILLUST_MoveTo);
}

void ILLUST_Line_To(QTextStream &out, double x, double y)
{
    writePoint(out, x, y, ILLUST_LineTo);
}

void closePath(QTextStream &out)
{
    out << ILLUST_s << Qt::endl;
}

void strokePath(QTextStream &out)
{
    out << ILLUST_S << Qt::endl;
}

void ILLUST_First_Fin_Groupe(QTextStream &out, bool opening)
{
    out << (opening ? ILLUST_First_Groupe : ILLUST_Fin_Groupe) << Qt::endl;
}

void ILLUST_Set_RGBColor(QTextStream &out, const QColor &colour)
{
    const double c = inkOf(colour.red());
    const double m = inkOf(colour.green());
    const double y = inkOf(colour.blue());
    const double k = std::min({c, m, y});
    const QString inks =
        QStringList{toString(c - k), toString(m - k), toString(y - k), toString(k)}.join(
            QLatin1Char(' '));
    out << inks << ILLUST_k << Qt::endl;
    out << inks << ILLUST_KK << Qt::endl;
}

void ILLUST_Prologue_Header_Subsection(
    QTextStream &out, const QString &fileName, const GeoRectangle &box)
{
    out << ILLUST_Adobe << Qt::endl;
    out << ILLUST_Createur << Qt::endl;
    out << ILLUST_Titre_Doc << '(' << fileName << ')' << Qt::endl;
    writeTime(out);
    out << ILLUST_Fonte << fontFamilyWord() << Qt::endl;
    out << ILLUST_ProcSets << Qt::endl;
    out << QStringList{ILLUST_BoundingBox, wholePoints(box.left()), wholePoints(box.bottom()),
               wholePoints(box.right()), wholePoints(box.top())}
               .join(QLatin1Char(' '))
        << Qt::endl;
    out << ILLUST_End_Comment << Qt::endl;
    out << ILLUST_End_Prolog << Qt::endl;
}

void ILLUST_Script_Setup_Subsection(QTextStream &out)
{
    out << ILLUST_BeginSetup << Qt::endl;
    out << ILLUST_EndSetup << Qt::endl;
}

void ILLUST_Standard_First_Script(QTextStream &out)
{
    ILLUST_Set_RGBColor(out, QColor(0, 0, 0, 255));
    for (const QLatin1String line : {ILLUST_i, ILLUST_JJ, ILLUST_j, ILLUST_w, ILLUST_M}) {
        out << line << Qt::endl;
    }
    out << ILLUST_First_Dash << ILLUST_Fin_Dash << Qt::endl;
}

} // namespace KivIllustrator
} // namespace KivSystem
