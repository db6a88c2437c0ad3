/// Free texts of a fabric's layer, of a group, of a polygon and of a piece.

#ifndef KIVMARKER_TEXT_H
#define KIVMARKER_TEXT_H

#include "KivMarker/Point.h"

#include <QFlags>
#include <QStringList>
#include <Qt>

namespace KivSystem {

/// A text at a place of the marker. Lengths are centimetres, the letter size is points.
class CDbTextObject
{
public:
    static constexpr short DefaultLetterSize = 18;

    QStringList textLines;
    QFlags<Qt::AlignmentFlag> textAlignment = Qt::AlignLeft;
    short textLetterSize = DefaultLetterSize;
    CDbMarkerPointObject textPosition; ///< start of the first line's base line
};

} // namespace KivSystem

#endif
