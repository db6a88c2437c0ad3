#include "CutDocument/PieceNames.h"

#include "KivMarker/Drawing.h"
#include "KivMarker/Polygon.h"

#include <QStringList>

namespace KivSystem {

PieceNames::PieceNames(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric)
    : m_drawing(drawing)
    , m_fabric(fabric)
    , m_fabricNumber(drawing.getFabricsTable().findFabricIndex(&fabric))
{}

const CDbPieceObject *PieceNames::pieceOf(const CDbPolygon &polygon) const
{
    return m_fabric.findPieceAccordingIndex(polygon.pieceIndex, nullptr);
}

const CDbStyleObject *PieceNames::styleOf(const CDbPolygon &polygon) const
{
    const CDbPieceObject *piece = pieceOf(polygon);
    return piece != nullptr ? m_drawing.getStyle(static_cast<short>(piece->getStyleNo() - 1))
                            : nullptr;
}

QString PieceNames::sizeName(const CDbPolygon &polygon, QString *special) const
{
    QString name = QString::number(polygon.sizeNumber);
    QString secondText;
    if (const CDbPieceObject *piece = pieceOf(polygon)) {
        const CDbStyleSizeObjectTable *sizes = m_drawing.findSizesList(
            static_cast<short>(piece->getStyleNo() - 1), m_fabricNumber, nullptr);
        piece->returnsSizeAndNameAccordingTypeSize(
            sizes, polygon.pieceSize(), name, secondText, nullptr);
    }
    if (special != nullptr) {
        *special = secondText;
    }
    return name;
}

QString PieceNames::ballot(const CDbPolygon &polygon)
{
    if (polygon.ballotNumber == 0) {
        return QString();
    }
    const QChar letter = QLatin1Char(static_cast<char>(polygon.ballotNumber));
    return polygon.pairedBallot ? QStringLiteral("%1/%1").arg(letter) : QString(letter);
}

QString PieceNames::inMessage(const CDbPolygon &polygon) const
{
    const CDbPieceObject *piece = pieceOf(polygon);
    return QStringLiteral("piece \"%1\", size %2")
        .arg(piece != nullptr ? piece->getName() : QString(), sizeName(polygon));
}

// The piece first: a cutter prints no more than the first characters.
QString PieceNames::onLabel(const CDbPolygon &polygon) const
{
    const CDbPieceObject *piece = pieceOf(polygon);
    const CDbStyleObject *style = styleOf(polygon);
    return joinedWords({piece != nullptr ? piece->getName() : QString(), sizeName(polygon),
        ballot(polygon), style != nullptr ? style->getStyleName() : QString()});
}

QString joinedWords(const QStringList &words)
{
    return words.join(QLatin1Char(' ')).simplified();
}

} // namespace KivSystem
