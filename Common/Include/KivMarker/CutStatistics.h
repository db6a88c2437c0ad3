/// What a cutter has to do for a cut document: how far it cuts, how far it moves with the tool up.

#ifndef KIVMARKER_CUTSTATISTICS_H
#define KIVMARKER_CUTSTATISTICS_H

#include "KivGeo/Point2D.h"
#include "KivMarker/CutSettings.h"

#include <functional>

class QDomDocument;

namespace KivSystem {

/// Lengths are centimetres in the document's scale.
struct CutStatistics
{
    int objects = 0;       ///< pieces and blocks, and an empty one in front of a first advance
    int holes = 0;         ///< punched or drilled, those outside of the pieces included
    int plunges = 0;       ///< how often the knife goes down
    int frameAdvances = 0; ///< of the conveyor
    double cutLength = 0;  ///< with the knife down
    double idleLength = 0; ///< with the knife up, from (0, 0) to the end of the last cut

    CutStatistics &operator+=(const CutStatistics &other)
    {
        objects += other.objects;
        holes += other.holes;
        plunges += other.plunges;
        frameAdvances += other.frameAdvances;
        cutLength += other.cutLength;
        idleLength += other.idleLength;
        return *this;
    }
};

/// One thing that the tool does. Centimetres in the document's scale.
struct CutMove
{
    enum Kind
    {
        Idle,   ///< goes with all tools up
        Cut,    ///< goes with the knife down
        Plunge, ///< the knife goes down at `to`, which is `from`
        Punch,  ///< a hole at `to`, likewise
    };

    Kind kind = Idle;
    GeoPoint2D from; ///< where the move before ended
    GeoPoint2D to;
};

using CutVisitor = std::function<void(const CutMove &)>;

/// Follows the tool of an ANSI cutter through the document in the order of its file: holes outside
/// of the pieces, then each object with its label, holes, internal lines, notches and outline as
/// the orders tell, then the waste cuts. The orders are those that the document was made with. As
/// in the file, the notches command and the notch treatment of cutting edge cutters tell whether
/// the knife comes up at the tip of a notch that goes on from there: they are taken from the
/// settings of the moment.
///
/// A visitor gets each move; none is without a length. What the pen writes on the pieces and the
/// ways to its letters are left out. The lengths differ from those of a file by the cutter's
/// scales, which the document does not have, and by the file's rounding: for a file in 1/100 inch
/// less than 0.04 cm to a move, which is next to nothing in sum, but up to about one percent where
/// the outlines consist of very short moves.
CutStatistics measureCuts(const QDomDocument &document, NotchOrder notches, CutLine internalLines,
    const CutVisitor &visitor = {});

} // namespace KivSystem

#endif
