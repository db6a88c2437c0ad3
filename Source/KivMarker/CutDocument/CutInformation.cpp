#include "CutDocument/CutInformation.h"

#include "CutDocument/CutRequest.h"
#include "CutDocument/InteriorPlace.h"
#include "CutDocument/PieceNames.h"
#include "KivMarker/GeneralPlotOptions.h"
#include "KivMarker/MarkerOptions.h"
#include "KivMarker/Polygon.h"
#include "KivMarker/Style.h"

#include <algorithm>
#include <iterator>

namespace KivSystem {
namespace {

double areaOf(const CutOutline &outline)
{
    double twice = 0;
    const CutPoint &origin = outline.points.front();
    for (std::size_t i = 1; i + 1 < outline.points.size(); ++i) {
        const CutPoint &a = outline.points[i];
        const CutPoint &b = outline.points[i + 1];
        twice += (a.x - origin.x) * (b.y - origin.y) - (b.x - origin.x) * (a.y - origin.y);
    }
    return std::abs(twice) / 2;
}

int velocityFor(double area)
{
    return static_cast<int>(std::count_if(std::begin(kVelocityAreas), std::end(kVelocityAreas),
        [area](double smallest) { return area < smallest; }));
}

QString onlyIf(bool wanted, const QString &text)
{
    return wanted ? text : QString();
}

QString cutterLabel(const QString &text)
{
    QString label = QString(text).replace(QLatin1Char('*'), QLatin1Char('x'));
    label.truncate(kCutterLabelLength);
    if (!label.isEmpty() && label.at(label.size() - 1).isHighSurrogate()) {
        label.chop(1); // half of a character
    }
    return label;
}

} // namespace

CutInformation::CutInformation(const PieceNames &names, const CutRequest &request)
    : m_names(names)
    , m_request(request)
{}

void CutInformation::addTo(CutObject &object) const
{
    for (const CutOutline &outline : object.outlines) {
        object.velocity = std::max(object.velocity, velocityFor(areaOf(outline)));
    }
    if (m_request.labelsOnly || m_request.settings.cutLabelM31) {
        addLabel(object);
    }
    if (m_request.settings.penCutInfos && !m_request.labelsOnly) {
        for (const LaidPiece &piece : object.pieces) {
            const std::vector<GeoPoint2D> contour = piece.contour();
            const auto text = fitText(contour, interiorPlace(contour), linesOf(*piece.polygon),
                CDbGeneralPlotOptions::mGeneralPlotOptions.pieceInfoLetterSize);
            if (text) {
                object.texts.push_back(*text);
            }
        }
    }
}

// One label for a block, on its largest piece.
void CutInformation::addLabel(CutObject &object) const
{
    if (object.pieces.empty()) {
        return;
    }
    QStringList labels;
    for (const LaidPiece &piece : object.pieces) {
        labels.append(m_names.onLabel(*piece.polygon));
    }
    const QString label = labels.join(QStringLiteral(" + "));
    object.label = m_request.labelsOnly ? label : cutterLabel(label);
    const auto largest = std::max_element(
        object.pieces.begin(), object.pieces.end(), [](const LaidPiece &a, const LaidPiece &b) {
            return a.polygon->area() < b.polygon->area();
        });
    object.labelPlace = interiorPlace(largest->contour());
}

QStringList CutInformation::linesOf(const CDbPolygon &polygon) const
{
    const CDbPieceObject *piece = m_names.pieceOf(polygon);
    if (piece == nullptr) {
        return QStringList();
    }
    const CDbMarkerOptions &wanted = CDbMarkerOptions::mDefaultOptions;
    const PieceData &data = piece->pieceData;
    const CDbStyleObject *style = m_names.styleOf(polygon);
    QString special;
    const QString size = m_names.sizeName(polygon, &special);
    const QString styleName = style != nullptr ? style->getStyleName() : QString();
    const QString lines[] = {
        joinedWords(
            {onlyIf(wanted.taille(), size), onlyIf(wanted.ballot(), PieceNames::ballot(polygon)),
                onlyIf(wanted.special(), special), onlyIf(wanted.pieceName(), data.nameText)}),
        joinedWords(
            {onlyIf(wanted.styleName(), styleName), onlyIf(wanted.pattern(), data.patternText),
                onlyIf(wanted.description(), data.descriptionText)}),
        joinedWords({onlyIf(wanted.pieceCode(), data.codeText),
            onlyIf(wanted.pieceCodeReference(), data.codeReferenceText),
            onlyIf(wanted.pieceIdentification(), data.identificationText)}),
        joinedWords({onlyIf(wanted.tissus(), data.tissusText),
            onlyIf(wanted.quantite(), QString::number(piece->getKIVPieceQuantity()))}),
    };
    QStringList filled;
    for (const QString &line : lines) {
        if (!line.isEmpty()) {
            filled.append(line);
        }
    }
    return filled;
}

} // namespace KivSystem
