#include "IllustratorPieceInfo.h"

#include "Failures.h"
#include "IllustratorText.h"

#include "KivMarker/Drawing.h"
#include "KivMarker/GeneralPlotOptions.h"
#include "KivMarker/MarkerOptions.h"
#include "KivMarker/Polygon.h"
#include "KivMarker/Symbols.h"
#include "KivMarker/Text.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStringList>

namespace KivSystem {
namespace KivIllustrator {
namespace {

const CDbMarkerOptions &options()
{
    return CDbMarkerOptions::mDefaultOptions;
}

// A text that was empty begins with the separator.
void joinBySeparator(QString &line, const QString &word)
{
    line += QLatin1Char(CMarkerSymbols().separatorSymbol) + word;
}

// --- Size, ballot, names, codes, quantity ----------------------------------------------------

void addBallot(QString &line, const CDbPolygon &polygon)
{
    if (!options().ballot() || polygon.ballotNumber == 0) {
        return;
    }
    constexpr int kByte = 0xFF;
    const QChar ballot(polygon.ballotNumber & kByte);
    line += ballot;
    if (polygon.pairedBallot) {
        line += QLatin1Char('/');
        line += ballot;
    }
}

void addSpecialName(QString &line, const CDbMarkerDrawing &drawing, const CDbFabricObject *fabric,
    const CDbPolygon *polygon, const CDbPieceObject &piece, const CDbStyleObject *style)
{
    if (!options().special()) {
        return;
    }
    short error = 0;
    QString name;
    piece.getPolyName(
        polygon, style, drawing.getFabricsTable().findFabricIndex(fabric), name, &error);
    KIV_CHECK_OPERATION(error == 0);
    Ajoute_A_String_Piece_Info(line, true, name);
}

void addPieceTexts(QString &line, const PieceData &data)
{
    Ajoute_A_String_Piece_Info(line, options().pieceName(), data.nameText);
    Ajoute_A_String_Piece_Info(line, options().pattern(), data.patternText);
    Ajoute_A_String_Piece_Info(line, options().description(), data.descriptionText);
    Ajoute_A_String_Piece_Info(line, options().pieceCode(), data.codeText);
    Ajoute_A_String_Piece_Info(line, options().pieceCodeReference(), data.codeReferenceText);
    Ajoute_A_String_Piece_Info(line, options().pieceIdentification(), data.identificationText);
    Ajoute_A_String_Piece_Info(line, options().tissus(), data.tissusText);
}

void addStyleFile(QString &line, const CDbStyleObject *style)
{
    if (!options().styleName()) {
        return;
    }
    KIV_CHECK_OPERATION(style != nullptr);
    const QString path = style->getOriginalFileNameLinkInfo();
    if (!path.isEmpty()) {
        line += QLatin1Char(' ') + QFileInfo(path).fileName();
    }
}

void addQuantity(QString &line, const CDbPieceObject &piece)
{
    if (!options().quantite()) {
        return;
    }
    joinBySeparator(line, QString::number(piece.getKIVPieceQuantity()));
    joinBySeparator(line, piece.getKIVPieceSingle()
                              ? QCoreApplication::translate("IllustratorProcessor", "Single")
                              : QCoreApplication::translate("IllustratorProcessor", "Paired"));
}

QString pieceLine(
    const CDbMarkerDrawing &drawing, const CDbFabricObject *fabric, const CDbPolygon &polygon)
{
    short error = 0;
    const CDbPieceObject *piece = fabric->findPieceAccordingIndex(polygon.pieceIndex, &error);
    KIV_CHECK_OPERATION(error == 0);
    const CDbStyleObject *style = drawing.getStyle(static_cast<short>(piece->getStyleNo() - 1));
    QString line;
    if (options().taille()) {
        line = QString::number(polygon.sizeNumber);
    }
    addBallot(line, polygon);
    addSpecialName(line, drawing, fabric, &polygon, *piece, style);
    addPieceTexts(line, piece->pieceData);
    addStyleFile(line, style);
    addQuantity(line, *piece);
    return line;
}

// In two lines when it is long and has a place to be cut at.
void prependPieceLine(QStringList &lines, QString line)
{
    constexpr int kLongLine = 16;
    if (line.size() < kLongLine) {
        lines.prepend(line);
        return;
    }
    QString first;
    if (Decouper_texte(line, first)) {
        lines.prepend(line);
    }
    lines.prepend(first);
}

// --- Marks -----------------------------------------------------------------------------------

// The word for blocks: the partner's number with "F" on the side that the relation says.
QString blockMark(const CDbPolygon &polygon, short relation, short index)
{
    const QString block = QCoreApplication::tr("Block");
    if (index == 0) {
        const CDbPolygon *partner = polygon.cutDownPolygon;
        const bool isPartnerBlocking = partner != nullptr && CDbPolygon::isBlockingPoly(partner);
        return !CDbPolygon::isBlockingPoly(&polygon) && isPartnerBlocking ? block : QString();
    }
    constexpr short kBehind = 1;
    constexpr short kInFront = 2;
    const QLatin1Char sign('F');
    QString mark = block;
    joinBySeparator(mark, QString::number(index));
    if (relation == kBehind) {
        mark.append(sign);
    } else if (relation == kInFront) {
        mark.prepend(sign);
    }
    return mark;
}

QString markLine(const CDbPolygon &polygon, short relation, short index)
{
    QString line;
    if (polygon.cutDownPolygon != nullptr) {
        line = QCoreApplication::tr("Cut Down");
    }
    const QString mark = blockMark(polygon, relation, index);
    if (!mark.isEmpty()) {
        joinBySeparator(line, mark);
    }
    if (polygon.foldedPiece) {
        joinBySeparator(line, QCoreApplication::tr("Fold"));
    }
    if (polygon.polyIsScale()) {
        joinBySeparator(line, QCoreApplication::tr("Scale"));
    }
    return line;
}

// --- Place and size --------------------------------------------------------------------------

void placeText(CDbTextObject &text, CDbPolygon &polygon)
{
    CDbMarkerPointObject &centre = polygon.infoCentre;
    CDbTextObject::computationTextCenter(&centre,
        polygon.contourList.empty() ? nullptr : polygon.contourList.back(), polygon.polygonRect);
    text.textPosition.x = static_cast<double>(centre.notchDx);
    text.textPosition.y = static_cast<double>(centre.notchDy);

    const double pieceWidth = polygon.polygonRect.right() - polygon.polygonRect.left();
    const double percent = centre.pointType;
    QString longest;
    Mk_TEXT_Avoir_Plus_Longue_String(text, longest);
    text.textLetterSize = Mk_TEXT_Avoir_Letter_Size_Max_String(longest,
        CDbGeneralPlotOptions::mGeneralPlotOptions.pieceInfoLetterSize,
        (percent / 100.0) * pieceWidth);
    short error = 0;
    text.setMinAndMax(&error);
    KIV_CHECK_OPERATION(error == 0);
}

} // namespace

void Ajoute_A_String_Piece_Info(QString &text, bool wanted, const QString &addition)
{
    if (wanted && !addition.isEmpty()) {
        text += QLatin1Char(' ') + addition;
    }
}

void ILLMK_Piece_Info_Mk(QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric,
    CDbPolygon *polygon, double x0, short relation, short index)
{
    KIV_CHECK_OPERATION(drawing != nullptr && fabric != nullptr && polygon != nullptr);
    CDbTextObject text;
    short error = 0;
    const bool isHybrid = polygon->isPolygoneHybrid(&error);
    KIV_CHECK_OPERATION(error == 0);
    QStringList lines;
    if (!isHybrid) {
        prependPieceLine(lines, pieceLine(*drawing, fabric, *polygon));
    }
    if (options().pieceTrait()) {
        const QString marks = markLine(*polygon, relation, index);
        if (!marks.isEmpty()) {
            lines.prepend(marks);
        }
    }
    text.setLines(lines);
    placeText(text, *polygon);
    ILLUST_Texte(out, &text, x0);
}

} // namespace KivIllustrator
} // namespace KivSystem
