/// Free texts of a fabric's layer, of a group, of a polygon and of a piece.

#ifndef KIVMARKER_TEXT_H
#define KIVMARKER_TEXT_H

#include "KivGeo/Rectangle.h"
#include "KivMarker/Point.h"

#include <QFlags>
#include <QStringList>
#include <Qt>

#include <vector>

namespace KivSystem {

/// Values of CDbTextObject::textWorkSection: the part of a marker's sheet that a text stands in.
enum TextWorkSection : short
{
    WorkAreaSection = 1, ///< on the marker itself, drawn with what lies there
    HeaderSection = 2,   ///< in the header before the marker, which only a printout has
    MarginSection = 3,   ///< in the margin beside the marker, likewise
};

/// Which rectangle of a text is asked for.
enum DisplayRect : int
{
    /// From the top of the first line to the top of the last, or to the base of the only one: its
    /// height divides into the steps from line to line.
    PlacingRect = 0,
    /// All that the lines cover.
    TextRect = 1,
};

/// A text at a place of the marker. Lengths are centimetres, the letter size is points.
class CDbTextObject
{
public:
    static constexpr short DefaultLetterSize = 18;

    // The letters are those of a plotter's pen, all of one width.
    static constexpr double LetterHeight = 0.07;              ///< cm for each point
    static constexpr double LetterWidth = 0.8571428571428571; ///< share of the height, 6/7
    static constexpr double LetterSpacing = 1.2; ///< from letter to letter and from line to line

    CDbTextObject();
    CDbTextObject(const CDbTextObject &);
    CDbTextObject &operator=(const CDbTextObject &);
    virtual ~CDbTextObject();

    QStringList textLines;
    /// Which point of the first line's base line stands at textPosition: its start, middle or end.
    QFlags<Qt::AlignmentFlag> textAlignment = Qt::AlignHCenter;
    short textLetterSize = DefaultLetterSize;
    CDbMarkerPointObject textPosition;
    short textWorkSection = WorkAreaSection; ///< a TextWorkSection

    /// The way that the text follows, an open line in marker coordinates; without it, or with fewer
    /// than three points, the text stands at textPosition.
    CDbVectorsObjectTable textPath;
    /// Stands for the middle of the path: the text's box is shifted from that middle as
    /// textPosition is from this point.
    CDbMarkerPointObject textPathOrigin;
    /// Size of the placing rectangle; with both at 0 the rectangle goes by the lines themselves.
    double textBoxWidth = 0;
    double textBoxHeight = 0;

    void setLines(const QStringList &lines) { textLines = lines; }
    /// Brings the box up to date with the lines and the letter size. k_error_index for a letter
    /// size below 1: the box is then left alone.
    void setMinAndMax(short *error);

    /// The rectangle of the lines beside textPosition, whether there is a path or not.
    GeoRectangle boundingRect(DisplayRect kind) const;
    const CDbVectorsObjectTable &getPath() const { return textPath; }
    /// The places of the path, in its order.
    std::vector<GeoPoint2D> pathPoints() const;

    /// The section that the text stands in. k_error_index for one that there is not.
    static TextWorkSection getWorkSection(const CDbTextObject &text, short *error);

    /// Finds where a centred text stands well in an outline that has the bounding rectangle `rect`:
    /// the place for its textPosition goes into notchDx and notchDy, and the width that it may use
    /// there, in whole percent of the rectangle's, into pointType. Without an outline the middle of
    /// the rectangle and all of its width. A null centre is passed over.
    static void computationTextCenter(CDbMarkerPointObject *centre,
        const CDbVectorsObjectTable *outline, const GeoRectangle &rect);
};

} // namespace KivSystem

#endif
