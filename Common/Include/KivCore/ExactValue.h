// ExactValue: the number behind the text of a field. A text has the decimals that the user reads;
// as long as nobody changes it, the field stands for the very number that it was given:
//
//     showExactValue(edit, "68.898 in", 175.0);
//     exactValue(edit);                          // 175.0, where the text says 175.00092
//
// All of it is in this header: a plug-in calls nothing in the core library for it, and runs with
// one that knows nothing of it.
#ifndef KIVCORE_EXACTVALUE_H
#define KIVCORE_EXACTVALUE_H

#include <QLineEdit>
#include <QVariant>

#include <boost/optional.hpp>

namespace KivSystem {

constexpr char kExactTextProperty[] = "kivExactText";
constexpr char kExactValueProperty[] = "kivExactValue";

/// Shows `text` for `value`, which has the unit of the field's validator.
inline void showExactValue(QLineEdit *edit, const QString &text, double value)
{
    edit->setText(text);
    edit->setProperty(kExactTextProperty, text);
    edit->setProperty(kExactValueProperty, value);
}

/// The value that the field was given, whatever it shows now; 0 when it was given none.
inline double givenValue(const QLineEdit *edit)
{
    return edit->property(kExactValueProperty).toDouble();
}

/// None when the field was given no value, or shows another text now.
inline boost::optional<double> exactValue(const QLineEdit *edit)
{
    const QVariant text = edit->property(kExactTextProperty);
    return boost::make_optional(
        text.isValid() && text.toString() == edit->text(), givenValue(edit));
}

} // namespace KivSystem

#endif
