// PieceNames: how a placed piece is called in messages and on labels.

#ifndef KIVMARKER_PIECENAMES_H
#define KIVMARKER_PIECENAMES_H

#include <QString>

namespace KivSystem {

class CDbFabricObject;
class CDbMarkerDrawing;
class CDbPieceObject;
class CDbPolygon;
class CDbStyleObject;

/// The names of what lies on one fabric. Drawing and fabric outlive it.
class PieceNames
{
public:
    PieceNames(const CDbMarkerDrawing &drawing, const CDbFabricObject &fabric);

    /// Null for a polygon without a piece, or whose piece has no style.
    const CDbPieceObject *pieceOf(const CDbPolygon &polygon) const;
    const CDbStyleObject *styleOf(const CDbPolygon &polygon) const;

    /// The name of the size, its number when the style does not name it; `special`, when not null,
    /// receives the size's second text.
    QString sizeName(const CDbPolygon &polygon, QString *special = nullptr) const;
    /// "A", "A/A" for a paired one, empty for none.
    static QString ballot(const CDbPolygon &polygon);

    /// For a message: piece "Back", size M
    QString inMessage(const CDbPolygon &polygon) const;
    /// For a label: Back M A Shirt
    QString onLabel(const CDbPolygon &polygon) const;

private:
    const CDbMarkerDrawing &m_drawing;
    const CDbFabricObject &m_fabric;
    short m_fabricNumber;
};

/// The words that are not empty, with a blank between.
QString joinedWords(const QStringList &words);

} // namespace KivSystem

#endif
