#include "IllustratorText.h"

#include "Failures.h"
#include "IllustratorPrimitives.h"

#include "KivGeo/Rectangle.h"
#include "KivMarker/GeneralPlotOptions.h"
#include "KivMarker/Symbols.h"
#include "KivMarker/Text.h"

#include <QSettings>
#include <QTextStream>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace KivSystem {
namespace KivIllustrator {
namespace {

// Position on the ladder, from 0; -1 for a size beside it.
int stepOf(short letterSize)
{
    const auto *const found =
        std::find(kLetterSizeLadder.begin(), kLetterSizeLadder.end(), letterSize);
    return found == kLetterSizeLadder.end() ? -1
                                            : static_cast<int>(found - kLetterSizeLadder.begin());
}

short nextSizeDown(short letterSize)
{
    const int step = stepOf(letterSize);
    return step < 1 ? letterSize : kLetterSizeLadder[static_cast<std::size_t>(step - 1)];
}

// What stands in the file for a letter size.
short numberOf(short letterSize)
{
    const int step = stepOf(letterSize);
    return step < 0 ? letterSize : static_cast<short>(step + 1);
}

QLatin1Char separator()
{
    return QLatin1Char(CMarkerSymbols().separatorSymbol);
}

// Where the separator nearest to the middle stands, -1 for none; of two as near the left one.
int middleSeparator(const QString &text)
{
    const int length = text.size();
    int left = length / 2;
    int right = left + 1;
    for (; left >= 2 && right < length; --left, ++right) {
        if (text[left] == separator()) {
            return left;
        }
        if (text[right] == separator()) {
            return right;
        }
    }
    return -1;
}

enum class Side
{
    Left,
    Centre,
    Right
};

Side sideOf(QFlags<Qt::AlignmentFlag> alignment)
{
    if ((alignment & Qt::AlignLeft) != 0) {
        return Side::Left;
    }
    if ((alignment & Qt::AlignCenter) != 0) { // of either direction
        return Side::Centre;
    }
    KIV_HARD_ASSERT((alignment & Qt::AlignRight) != 0, "false");
    return Side::Right;
}

double referenceX(const GeoRectangle &box, Side side)
{
    switch (side) {
    case Side::Left:
        return box.leftBottom().x;
    case Side::Centre:
        return box.center().x;
    case Side::Right:
        break;
    }
    return box.rightBottom().x;
}

double firstLineY(const GeoRectangle &box, short lineCount)
{
    if (lineCount == 1) {
        return box.bottom();
    }
    const double height = std::max(box.top() - box.bottom(), 0.0);
    return box.top() - height / (lineCount - 1);
}

// The box of a text on a path, about the path's middle.
GeoRectangle boxOnPath(const CDbTextObject &text)
{
    const double dx = text.textPathOrigin.x - text.textPosition.x;
    const double dy = text.textPathOrigin.y - text.textPosition.y;
    const double halfWidth = text.textBoxWidth * 0.5;
    const double halfHeight = text.textBoxHeight * 0.5;
    const std::vector<GeoPoint2D> points = text.pathPoints();
    const GeoPoint2D &middle = points[points.size() / 2];
    return {middle.x - halfWidth - dx, halfWidth + middle.x - dx, middle.y - halfHeight - dy,
        halfHeight + middle.y - dy};
}

GeoRectangle placingBox(const CDbTextObject &text)
{
    constexpr int kFewestPathPoints = 3;
    return text.getPath().size() >= kFewestPathPoints ? boxOnPath(text)
                                                      : text.boundingRect(DisplayRect(0));
}

} // namespace

double Mk_TEXT_Get_Longueur_String_CM(const QString &text, short letterSize)
{
    const auto characters = static_cast<short>(text.size());
    return characters * (letterSize * CDbTextObject::LetterHeight * CDbTextObject::LetterWidth *
                            CDbTextObject::LetterSpacing);
}

// A size beside the ladder, which a settings file edited by hand can hold, has no next size down.
short Mk_TEXT_Avoir_Letter_Size_Max_String(const QString &text, short letterSize, double maxLength)
{
    short size = letterSize;
    while (Mk_TEXT_Get_Longueur_String_CM(text, size) > maxLength && nextSizeDown(size) != size) {
        size = nextSizeDown(size);
    }
    return size;
}

void Mk_TEXT_Avoir_Plus_Longue_String(const CDbTextObject &text, QString &longest)
{
    longest.clear();
    for (const QString &line : text.textLines) {
        if (line.size() > longest.size()) {
            longest = line;
        }
    }
}

void Mk_TEXT_Detruire(CDbTextObject **text)
{
    delete *text;
    *text = nullptr;
}

bool Decouper_texte(QString &text, QString &firstPart)
{
    constexpr int kShortestPart = 3;
    const int cut = middleSeparator(text);
    if (cut < kShortestPart || cut >= text.size() - 1) {
        firstPart = text;
        return false;
    }
    firstPart = text.left(cut);
    text.remove(0, cut + 1);
    return true;
}

short lettersOfFile()
{
    return static_cast<short>(
        QSettings()
            .value(QStringLiteral("symbols_letterSize"), CDbTextObject::DefaultLetterSize)
            .toInt());
}

void ILLUST_Set_Fonte_Et_Alignement(
    QTextStream &out, short letterSize, QFlags<Qt::AlignmentFlag> alignment)
{
    constexpr double kLeading = 1.2;
    constexpr int kAlignmentCode = 1; // of every side, on purpose
    sideOf(alignment);
    const short number = numberOf(letterSize);
    const auto leading = static_cast<short>(static_cast<int>(number * kLeading));
    out << "/_" << fontFamilyWord() << separator() << number << separator() << leading << " 0 "
        << kAlignmentCode << separator() << ILLUST_Size_Fonte << Qt::endl;
}

void ILLUST_Place_Point_Depart_Texte(QTextStream &out, const GeoRectangle &box, double x0,
    short lineCount, QFlags<Qt::AlignmentFlag> alignment)
{
    const double x = ILLUST_KIV_CM_A_72(referenceX(box, sideOf(alignment)) + x0);
    const double y = ILLUST_KIV_CM_A_72(firstLineY(box, lineCount));
    out << "[1 0 0 1 " << toString(x) << ' ' << toString(y) << ']' << ILLUST_Position_String
        << Qt::endl;
}

void writeTextLine(QTextStream &out, const QString &line)
{
    out << line.size() << " (" << line << ')' << ILLUST_String_Affichee << Qt::endl;
}

void endTextBlock(QTextStream &out)
{
    out << ILLUST_Fin_Bloc_Texte << Qt::endl;
}

void ILLUST_Texte(QTextStream &out, CDbTextObject *text, double x0)
{
    KIV_CHECK_OPERATION(text != nullptr);
    const QStringList lines = text->textLines;
    const GeoRectangle box = placingBox(*text);
    const short size = lettersOfFile();
    ILLUST_First_Fin_Groupe(out, true);
    ILLUST_Set_Fonte_Et_Alignement(out, size, text->textAlignment);
    ILLUST_Place_Point_Depart_Texte(
        out, box, x0, static_cast<short>(lines.size()), text->textAlignment);
    for (const QString &line : lines) {
        writeTextLine(out, line);
    }
    endTextBlock(out);
    ILLUST_First_Fin_Groupe(out, false);
}

} // namespace KivIllustrator
} // namespace KivSystem
