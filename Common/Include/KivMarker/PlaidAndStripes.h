/// Plaid and stripes of a fabric: the pattern that pieces are matched to.

#ifndef KIVMARKER_PLAIDANDSTRIPES_H
#define KIVMARKER_PLAIDANDSTRIPES_H

#include "KivConjoin/LineObject.h"

namespace KivSystem {

/// Periods and offsets are centimetres. A pattern that is active has positive periods in each
/// direction in which it has lines.
class CDbPlaidAndStripesInfo
{
public:
    bool plaidActive = false;
    double xRepetition = 0; ///< distance between sets of vertical lines
    double yRepetition = 0; ///< distance between sets of horizontal lines
    double xRepOffset = 0;
    double yRepOffset = 0;
    CDbLineObjectList sampleHorLines;
    CDbLineObjectList sampleVerLines;

    bool atLeastOneHorLine() const { return !sampleHorLines.isEmpty(); }
    bool atLeastOneVerLine() const { return !sampleVerLines.isEmpty(); }
};

} // namespace KivSystem

#endif
