// Where the text of a piece is written by a pen: the largest letters that stay on the piece.
//
//     QStringList{"FRONT", "38"} on a piece 20 cm wide:
//
//         FRONT       the lines stand below each other, 1.4 letter heights apart,
//          38         each centred by itself
//
// The letters are those of a stroke font: a cell is 1.2 times as high as the text size says; a
// character up to U+00FF takes half of that to the right, any other all of it. Each letter is
// centred in its cell.

#ifndef KIVMARKER_CUTDOCUMENT_PIECETEXTFIT_H
#define KIVMARKER_CUTDOCUMENT_PIECETEXTFIT_H

#include "KivGeo/Point2D.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace KivSystem {

/// A line of text and the middle of its first letter's cell, in cm: where a pen starts it.
struct FittedLine
{
    QString text;
    double x = 0;
    double y = 0;
};

struct FittedText
{
    double fontSize = 0; ///< in points
    double angle = 0;    ///< 0 or 90 degrees, counter-clockwise about the place of each line
    std::vector<FittedLine> lines;
};

/// Centres lines of text on a place of a piece whose outline (cm, closed, not repeated last point)
/// must neither cross the letters nor come nearer to them than a fifth of the letter height.
///
/// Sizes are tried from the largest (in points) down in whole points to 6, at each size level first
/// and upright then; a largest size below 6 is the only one tried. Lines that consist of blanks are
/// left out. If 6 points are too large, lines are dropped from the end. Nothing is returned when
/// not even the first line fits, when there is none, or when the centre is not inside.
std::optional<FittedText> fitText(const std::vector<GeoPoint2D> &outline, const GeoPoint2D &centre,
    const QStringList &lines, double largestSize);

} // namespace KivSystem

#endif
