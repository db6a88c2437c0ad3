/// What a cutter has to do for a cut document: how far it cuts, how far it moves with the tool up.

#ifndef KIVMARKER_CUTSTATISTICS_H
#define KIVMARKER_CUTSTATISTICS_H

#include "KivMarker/CutSettings.h"

class QDomDocument;

namespace KivSystem {

/// Lengths are centimetres in the document's scale.
struct CutStatistics
{
    int objects = 0;       ///< pieces and blocks
    int holes = 0;         ///< punched or drilled, those outside of the pieces included
    int plunges = 0;       ///< how often the knife goes down
    int frameAdvances = 0; ///< of the conveyor
    double cutLength = 0;  ///< with the knife down
    double idleLength = 0; ///< with the knife up, from (0, 0) to the end of the last cut
};

/// Follows the tool through the document in the order of a cut file: holes outside of the pieces,
/// then each object with its holes, internal lines, notches and outline as the orders tell, then
/// the waste cuts.
CutStatistics measureCuts(const QDomDocument &document, NotchOrder notches, CutLine internalLines);

} // namespace KivSystem

#endif
