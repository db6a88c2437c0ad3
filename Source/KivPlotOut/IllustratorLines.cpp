#include "IllustratorLines.h"

#include "Failures.h"
#include "IllustratorLayers.h"
#include "IllustratorPrimitives.h"
#include "IllustratorText.h"

#include "KivGeo/Rectangle.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/MarkerOptions.h"

#include <QTextStream>

#include <algorithm>
#include <cmath>

namespace KivSystem {
namespace KivIllustrator {
namespace {

constexpr double kBand = 1.5; // cm beside the fabric for samples and flags
constexpr double kHalfFlag = 1;

void writeLine(QTextStream &out, const GeoPoint2D &from, const GeoPoint2D &to)
{
    ILLUST_Move_To(out, from.x, from.y);
    ILLUST_Line_To(out, to.x, to.y);
    strokePath(out);
}

// A triangle that points at its tip.
void writeFlag(
    QTextStream &out, const GeoPoint2D &tip, const GeoPoint2D &first, const GeoPoint2D &second)
{
    ILLUST_Move_To(out, tip.x, tip.y);
    ILLUST_Line_To(out, first.x, first.y);
    ILLUST_Line_To(out, second.x, second.y);
    ILLUST_Line_To(out, tip.x, tip.y);
    closePath(out);
}

// --- Samples of the stripes ------------------------------------------------------------------

bool isWithin(double value, double low, double high)
{
    return low <= value && value <= high;
}

// Where the repeats of a pattern begin: at 0, or below it with an offset.
double firstRepeat(double offset, double repetition)
{
    constexpr double kNothing = 1e-12;
    if (std::abs(offset) <= kNothing) {
        return 0;
    }
    return offset - (std::trunc(offset / repetition) + 1) * repetition;
}

void writeHorizontalSamples(QTextStream &out, const CDbPlaidAndStripesInfo &plaid,
    const GeoRectangle &band, double xStart, double xEnd)
{
    if (plaid.sampleHorLines.isEmpty()) {
        return; // the period may be 0 then
    }
    double v = firstRepeat(plaid.yRepOffset, plaid.yRepetition);
    for (; v <= band.top(); v += plaid.yRepetition) {
        for (const CDbLineObject &line : plaid.sampleHorLines) {
            const double y = line.linePosition + v;
            if (isWithin(y, band.bottom(), band.top())) {
                writeLine(out, {std::max(xStart - kBand, band.left()), y},
                    {std::min(xEnd, band.right()), y});
            }
        }
    }
}

// The repeats run up to xEnd itself and not up to the layer's length: a later layer has more of
// them than it needs, and those beside it are left out.
void writeVerticalSamples(QTextStream &out, const CDbPlaidAndStripesInfo &plaid,
    const GeoRectangle &band, double xStart, double xEnd)
{
    if (plaid.sampleVerLines.isEmpty()) {
        return;
    }
    double v = firstRepeat(plaid.xRepOffset, plaid.xRepetition);
    for (; v <= xEnd; v += plaid.xRepetition) {
        for (const CDbLineObject &line : plaid.sampleVerLines) {
            const double x = line.linePosition + (xStart - kBand) + kBand + v;
            if (isWithin(x, band.left(), band.right())) {
                writeLine(out, {x, band.bottom()}, {x, band.top()});
            }
        }
    }
}

// Short pieces of the stripes: to the left of the layer and under it.
void ILLMK_Et_Propage_Echantillon(QTextStream &out, CDbMarkerDrawing * /*drawing*/,
    CDbFabricObject *fabric, short layer, short /*unused*/, double xStart, double xEnd)
{
    const double width = fabric->getFabricLayerWidth(layer);
    ILLUST_First_Fin_Groupe(out, true);
    writeHorizontalSamples(
        out, fabric->plaidInfo, GeoRectangle(xStart - kBand, xStart, 0, width), xStart, xEnd);
    writeVerticalSamples(
        out, fabric->plaidInfo, GeoRectangle(xStart, xEnd, -kBand, 0), xStart, xEnd);
    ILLUST_First_Fin_Groupe(out, false);
}

// --- Guide lines -----------------------------------------------------------------------------

/// A layer in the row of layers, in cm.
struct GuidedLayer
{
    double start;
    double end;
    double width;
    double labelY;
    double totalLength; // of all layers
};

double labelHeight(double width)
{
    return CDbMarkerOptions::mDefaultOptions.textInBottom() ? -kBand : width + 0.5;
}

void writeHorizontalGuides(
    QTextStream &out, const CDbLineObjectList &lines, const GuidedLayer &layer)
{
    for (const CDbLineObject &line : lines) {
        const double p = line.linePosition;
        if (!(0 < p && p <= layer.width)) {
            continue;
        }
        const double low = p - kHalfFlag;
        const double high = low + 2 * kHalfFlag;
        const double left = layer.start - kBand;
        const double right = layer.end + kBand;
        writeFlag(out, {layer.start, p}, {left, low}, {left, high});
        writeFlag(out, {layer.end, p}, {right, low}, {right, high});
    }
}

void writeFlagUnder(QTextStream &out, double x)
{
    writeFlag(out, {x, 0}, {x - kHalfFlag, -kBand}, {x + kHalfFlag, -kBand});
}

// A flag away from the fabric: downward at its bottom, upward everywhere else.
void ILLMK_Marque_y(QTextStream &out, double x, double y)
{
    const double end = y == 0 ? -kBand : y + kBand;
    writeFlag(out, {x, y}, {x - kHalfFlag, end}, {x + kHalfFlag, end});
}

// Up to the next label or, if there is none, to the end of the last layer.
double labelRoom(
    const CDbLineObjectList &lines, const CDbLineObject &line, const GuidedLayer &layer)
{
    const double x = line.linePosition + layer.start;
    if (lines.hasNextLine(&line)) {
        const double next = lines.getNextLinePosition(&line) + layer.start;
        if (next <= layer.totalLength) {
            return next - x - 2.0;
        }
    }
    return layer.totalLength - x - 1.0;
}

// The layer's start counts twice in the label's place, on purpose.
void writeLabel(
    QTextStream &out, const QString &text, double position, double room, const GuidedLayer &layer)
{
    const short size = Mk_TEXT_Avoir_Letter_Size_Max_String(text, lettersOfFile(), room);
    ILLUST_Set_Fonte_Et_Alignement(out, size, Qt::AlignLeft);
    GeoRectangle box;
    const double right = room + box.left();
    box.setRect(position + layer.start + 1, right, layer.labelY, layer.labelY);
    ILLUST_Place_Point_Depart_Texte(out, box, layer.start, 1, Qt::AlignLeft);
    writeTextLine(out, text);
    endTextBlock(out);
}

void writeVerticalGuides(QTextStream &out, const CDbLineObjectList &lines, const GuidedLayer &layer)
{
    for (const CDbLineObject &line : lines) {
        const double x = line.linePosition + layer.start;
        if (!(0 < x && x <= layer.end)) {
            continue;
        }
        if (layer.labelY < 0) {
            ILLMK_Marque_y(out, x, layer.width);
            writeFlagUnder(out, x);
        } else {
            writeFlagUnder(out, x);
            ILLMK_Marque_y(out, x, layer.width);
        }
        const QString text = line.getText();
        if (!text.isEmpty()) {
            writeLabel(out, text, line.linePosition, labelRoom(lines, line, layer), layer);
        }
    }
}

void writeGuides(
    QTextStream &out, const CDbFabricObject &fabric, short layer, const GuidedLayer &guided)
{
    const CDbLineObjectList *horizontal = fabric.getHorLines(t_1_Based(layer));
    if (horizontal != nullptr) {
        writeHorizontalGuides(out, *horizontal, guided);
    }
    const CDbLineObjectList *vertical = fabric.getVerLines(t_1_Based(layer));
    if (vertical != nullptr) {
        writeVerticalGuides(out, *vertical, guided);
    }
}

} // namespace

void ILLMK_Plaid_Stripes(QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric)
{
    checkLayers(*drawing, *fabric);
    short error = 0;
    short single = 0;
    const bool isSingle = drawing->isSetToSingleLayer(&error, &single);
    KIV_CHECK_OPERATION(error == 0);
    if (isSingle) {
        ILLMK_Et_Propage_Echantillon(
            out, drawing, fabric, single, 0, 0, fabric->getLengthOccupiedLayer(single));
        return;
    }
    double x0 = 0;
    for (const short layer : layersByRank(*drawing, true)) {
        if (fabric->getPlaceGroupList(t_1_Based(layer)) != nullptr) {
            const double end = x0 + fabric->getLengthOccupiedLayer(layer);
            ILLMK_Et_Propage_Echantillon(out, drawing, fabric, layer, 0, x0, end);
            x0 = end + spaceOfLayers();
        }
    }
}

void ILLMK_Lignes_Guides(
    QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric, double totalLength)
{
    ILLUST_First_Fin_Groupe(out, true);
    checkLayers(*drawing, *fabric);
    double x0 = 0;
    for (const short layer : layersByRank(*drawing, false)) {
        const double length = fabric->getLengthOccupiedLayer(layer);
        if (!counts(length)) {
            continue;
        }
        const double width = fabric->getFabricLayerWidth(layer);
        const double x1 = x0 + length;
        writeGuides(out, *fabric, layer, {x0, x1, width, labelHeight(width), totalLength});
        x0 = x1 + spaceOfLayers();
    }
    ILLUST_First_Fin_Groupe(out, false);
}

void ILLMK_Lignes_Separation_Layers(
    QTextStream &out, CDbMarkerDrawing *drawing, CDbFabricObject *fabric)
{
    ILLUST_First_Fin_Groupe(out, true);
    checkLayers(*drawing, *fabric);
    const short last = drawing->getLayerObjectTable().lastDefinesLayerIndex(false);
    const double space = spaceOfLayers();
    double x = 0;
    for (const short layer : layersByRank(*drawing, false)) {
        const double length = fabric->getLengthOccupiedLayer(layer);
        if (!counts(length)) {
            continue;
        }
        const double width = fabric->getFabricLayerWidth(layer);
        x += length + space;
        if (counts(x) && layer != last) {
            writeLine(out, {x, width}, {x, 0});
        }
        // By the last layer on purpose, and not by this one.
        const double end = x - space;
        if (counts(space) && layer != last && counts(end) &&
            counts(fabric->getLengthOccupiedLayer(last))) {
            writeLine(out, {end, width}, {end, 0});
        }
    }
    ILLUST_First_Fin_Groupe(out, false);
}

} // namespace KivIllustrator
} // namespace KivSystem
