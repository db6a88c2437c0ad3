// KivIllustrator: the symbol of a drill or punch point, a group with one shape for every size of
// its record that is not zero, all around the point.

#ifndef KIVPLOTOUT_ILLUSTRATORPUNCH_H
#define KIVPLOTOUT_ILLUSTRATORPUNCH_H

class QTextStream;

namespace KivSystem {

struct PunchFeature;

namespace KivIllustrator {

/// The point in cm. Throws AssertionError, with nothing written, for a null record.
void ILLUST_PunchHole(QTextStream &out, double x, double y, const PunchFeature *punch);

} // namespace KivIllustrator
} // namespace KivSystem

#endif
