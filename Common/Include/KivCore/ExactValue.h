// ExactValue: the number behind the text of a field. A text has the decimals that the user reads;
// as long as nobody changes it, the field stands for the very number that it was given:
//
//     showExactValue(edit, "68.898 in", 175.0);
//     exactValue(edit);                          // 175.0, where the text says 175.00092
#ifndef KIVCORE_EXACTVALUE_H
#define KIVCORE_EXACTVALUE_H

#include "KivCore/Export.h"

#include <boost/optional.hpp>

class QLineEdit;
class QString;

namespace KivSystem {

/// Shows `text` for `value`, which has the unit of the field's validator.
KIVCORE_EXPORT void showExactValue(QLineEdit *edit, const QString &text, double value);

/// None when the field was given no value, or shows another text now.
KIVCORE_EXPORT boost::optional<double> exactValue(const QLineEdit *edit);

/// The value that the field was given, whatever it shows now; 0 when it was given none.
KIVCORE_EXPORT double givenValue(const QLineEdit *edit);

} // namespace KivSystem

#endif
