// CutFields: what the panels of the cut formats have in common: fields with a length, an angle or a
// scale.

#ifndef KIVPLOTOUT_CUTFIELDS_H
#define KIVPLOTOUT_CUTFIELDS_H

class QDoubleSpinBox;
class QLineEdit;

namespace KivSystem {
namespace NC {

/// Bounds of the length in a line edit, in cm.
void setLengthBounds(QLineEdit *edit, double lowest, double highest);

// A field shows its value with the decimals that the user reads. As long as nobody types into it,
// it gives back the very value that it was given: a cut does not change because a panel was looked
// at.

/// A length in cm, in the user's unit; for a text that is none the one that was shown.
void showLength(QLineEdit *edit, double centimetres);
double lengthIn(const QLineEdit *edit);
/// As the user reads it, with the decimals of the text; 0 for a text that is none.
double shownLength(const QLineEdit *edit);

/// An angle in degrees; for a text that is none the one that was shown.
void showAngle(QLineEdit *edit, double degrees);
double angleIn(const QLineEdit *edit);

/// A scale in percent.
void showScale(QDoubleSpinBox *spin, double percent);
double scaleIn(const QDoubleSpinBox *spin);

} // namespace NC
} // namespace KivSystem

#endif
