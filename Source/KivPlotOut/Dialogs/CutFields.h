// CutFields: what the panels of the cut formats have in common: fields with a length or an angle.

#ifndef KIVPLOTOUT_CUTFIELDS_H
#define KIVPLOTOUT_CUTFIELDS_H

class QDoubleSpinBox;
class QLineEdit;

namespace KivSystem {
namespace NC {

/// Bounds of the length in a line edit, in cm.
void setLengthBounds(QLineEdit *edit, double lowest, double highest);
/// A length in cm, in the user's unit; a text that is none reads as 0.
void showLength(QLineEdit *edit, double centimetres);
double lengthIn(const QLineEdit *edit);

/// A scale in percent, with as many decimals as the user reads.
void showScale(QDoubleSpinBox *spin, double percent);

} // namespace NC
} // namespace KivSystem

#endif
