#include "CutDocument/CutInformation.h"

#include "CutDocument/CutRequest.h"
#include "CutDocument/InteriorPlace.h"
#include "KivMarker/Drawing.h"
#include "KivMarker/GeneralPlotOptions.h"
#include "KivMarker/MarkerOptions.h"
#include "KivMarker/Polygon.h"

#include <QFileInfo>

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

const CutOutline &largest(const std::vector<CutOutline> &outlines)
{
    return *std::max_element(outlines.begin(), outlines.end(),
        [](const CutOutline &a, const CutOutline &b) { return areaOf(a) < areaOf(b); });
}

int velocityFor(double area)
{
    return static_cast<int>(std::count_if(std::begin(kVelocityAreas), std::end(kVelocityAreas),
        [area](double smallest) { return area < smallest; }));
}

QString ballotOf(const CDbPolygon &polygon)
{
    if (polygon.ballotNumber == 0) {
        return QString();
    }
    const QChar ballot = QLatin1Char(static_cast<char>(polygon.ballotNumber));
    return polygon.pairedBallot ? QStringLiteral("%1/%1").arg(ballot) : QString(ballot);
}

QString joined(const QStringList &words)
{
    QStringList filled = words;
    filled.removeAll(QString());
    return filled.join(QLatin1Char(' '));
}

QString onlyIf(bool wanted, const QString &text)
{
    return wanted ? text.simplified() : QString();
}

QString cutterLabel(const QString &text)
{
    return QString(text).replace(QLatin1Char('*'), QLatin1Char('x')).left(kCutterLabelLength);
}

} // namespace

CutInformation::CutInformation(
    const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric, const CutRequest &request)
    : m_drawing(drawing)
    , m_fabric(fabric)
    , m_request(request)
    , m_fabricNumber(
          drawing.getFabricsTable().findFabricIndex(const_cast<CDbFabricObject *>(&fabric)))
{}

void CutInformation::addTo(CutObject &object) const
{
    if (object.outlines.empty()) {
        return;
    }
    const CutOutline &outline = largest(object.outlines);
    object.velocity = velocityFor(areaOf(outline));
    if (m_request.labelsOnly || m_request.settings.cutLabelM31) {
        QStringList labels;
        for (const CDbPolygon *polygon : object.pieces) {
            labels.append(labelOf(*polygon));
        }
        const QString label = labels.join(QStringLiteral(" + "));
        object.label = m_request.labelsOnly ? label : cutterLabel(label);
        object.labelPlace = interiorPlace(placesOf(outline));
    }
    if (m_request.settings.penCutInfos && !m_request.labelsOnly) {
        const bool isRough = object.outlines.size() != object.pieces.size();
        for (std::size_t i = 0; i < object.pieces.size(); ++i) {
            const auto places = placesOf(object.outlines[isRough ? 0 : i]);
            const auto text = fitText(places, interiorPlace(places), linesOf(*object.pieces[i]),
                CDbGeneralPlotOptions::mGeneralPlotOptions.pieceInfoLetterSize);
            if (text) {
                object.texts.push_back(*text);
            }
            if (isRough) {
                break; // one text for the block: that of its first piece
            }
        }
    }
}

QString CutInformation::sizeName(const CDbPolygon &polygon, QString *special) const
{
    const CDbPieceObject *piece = m_fabric.findPieceAccordingIndex(polygon.pieceIndex, nullptr);
    QString name = QString::number(polygon.sizeNumber);
    QString unused;
    if (piece != nullptr) {
        piece->returnsSizeAndNameAccordingTypeSize(
            m_drawing.findSizesList(
                static_cast<short>(piece->getStyleNo() - 1), m_fabricNumber, nullptr),
            polygon.pieceSize(), name, special != nullptr ? *special : unused, nullptr);
    }
    return name;
}

// Piece first: a cutter prints no more than the first characters.
QString CutInformation::labelOf(const CDbPolygon &polygon) const
{
    const CDbPieceObject *piece = m_fabric.findPieceAccordingIndex(polygon.pieceIndex, nullptr);
    const CDbStyleObject *style =
        piece != nullptr ? m_drawing.getStyle(static_cast<short>(piece->getStyleNo() - 1))
                         : nullptr;
    return joined({piece != nullptr ? piece->getName().simplified() : QString(), sizeName(polygon),
        ballotOf(polygon), style != nullptr ? style->getStyleName().simplified() : QString()});
}

QStringList CutInformation::linesOf(const CDbPolygon &polygon) const
{
    const CDbPieceObject *piece = m_fabric.findPieceAccordingIndex(polygon.pieceIndex, nullptr);
    if (piece == nullptr) {
        return QStringList();
    }
    const CDbMarkerOptions &wanted = CDbMarkerOptions::mDefaultOptions;
    const PieceData &data = piece->pieceData;
    const CDbStyleObject *style = m_drawing.getStyle(static_cast<short>(piece->getStyleNo() - 1));
    QString special;
    const QString size = sizeName(polygon, &special);
    const QString file =
        style != nullptr ? QFileInfo(style->getOriginalFileNameLinkInfo()).fileName() : QString();
    const QString lines[] = {
        joined({onlyIf(wanted.taille(), size), onlyIf(wanted.ballot(), ballotOf(polygon)),
            onlyIf(wanted.special(), special), onlyIf(wanted.pieceName(), data.nameText)}),
        joined({onlyIf(wanted.styleName(), file), onlyIf(wanted.pattern(), data.patternText),
            onlyIf(wanted.description(), data.descriptionText)}),
        joined({onlyIf(wanted.pieceCode(), data.codeText),
            onlyIf(wanted.pieceCodeReference(), data.codeReferenceText),
            onlyIf(wanted.pieceIdentification(), data.identificationText)}),
        joined({onlyIf(wanted.tissus(), data.tissusText),
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
