// KivIllustrator: notches of an outline and match marks, each a group of its own. A notch is given
// by its point and its vector in cm; the plot options tell how much of the vector is drawn and
// whether there are cross bars.

#ifndef KIVPLOTOUT_ILLUSTRATORNOTCHES_H
#define KIVPLOTOUT_ILLUSTRATORNOTCHES_H

class QTextStream;

namespace KivSystem {
namespace KivIllustrator {

/// A stroke with a cross bar at its end.
void ILLUST_Simple_Notch(QTextStream &out, double x, double y, double dx, double dy);
/// Two such strokes side by side.
void ILLUST_Double_Notch(QTextStream &out, double x, double y, double dx, double dy);
/// An open V with its tip at the end of the vector.
void ILLUST_V_Notch(QTextStream &out, double x, double y, double dx, double dy);
/// A stroke of the vector's own length, with a cross bar of that width whatever the options say.
/// Nothing, not even a group, for a vector without length.
void ILLUST_User_Notch(QTextStream &out, double x, double y, double dx, double dy, double width);
/// A crossed square around the point.
void ILLUST_V_De_Match(QTextStream &out, double x, double y);

} // namespace KivIllustrator
} // namespace KivSystem

#endif
