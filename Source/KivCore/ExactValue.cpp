#include "KivCore/ExactValue.h"

#include <QLineEdit>
#include <QVariant>

namespace KivSystem {

namespace {

const char *const kText = "kivExactText";
const char *const kValue = "kivExactValue";

} // namespace

void showExactValue(QLineEdit *edit, const QString &text, double value)
{
    edit->setText(text);
    edit->setProperty(kText, text);
    edit->setProperty(kValue, value);
}

boost::optional<double> exactValue(const QLineEdit *edit)
{
    const QVariant text = edit->property(kText);
    return boost::make_optional(
        text.isValid() && text.toString() == edit->text(), givenValue(edit));
}

double givenValue(const QLineEdit *edit)
{
    return edit->property(kValue).toDouble();
}

} // namespace KivSystem
