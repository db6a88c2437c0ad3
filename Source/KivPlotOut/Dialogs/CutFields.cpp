#include "CutFields.h"

#include "KivCore/ExactValue.h"
#include "KivCore/Locale.h"
#include "KivCore/Validator.h"

#include <QDoubleSpinBox>
#include <QLineEdit>

namespace KivSystem {
namespace NC {
namespace {

constexpr char kShown[] = "kivShown"; // as the field shows it
constexpr char kGiven[] = "kivGiven"; // the value itself

// A field that nobody checks, as it is disabled, may show anything.
double valueOf(const QLineEdit *edit, const KivParse &text)
{
    return exactValue(edit).value_or(text.valid ? text.value : givenValue(edit));
}

} // namespace

void setLengthBounds(QLineEdit *edit, double lowest, double highest)
{
    edit->setValidator(new KivLengthValidator(lowest, highest, false, edit));
}

void showLength(QLineEdit *edit, double centimetres)
{
    showExactValue(edit, KivLocale().formatLength(centimetres, KivLocale::WithUnit), centimetres);
}

double shownLength(const QLineEdit *edit)
{
    return KivLocale().parseLength(edit->text()).value;
}

double lengthIn(const QLineEdit *edit)
{
    return valueOf(edit, KivLocale().parseLength(edit->text()));
}

void showAngle(QLineEdit *edit, double degrees)
{
    showExactValue(edit, KivLocale().formatAngle(degrees, KivLocale::WithUnit), degrees);
}

double angleIn(const QLineEdit *edit)
{
    return valueOf(edit, KivLocale().parseAngle(edit->text()));
}

void showScale(QDoubleSpinBox *spin, double percent)
{
    spin->setDecimals(KivLocale().precision());
    spin->setValue(percent);
    spin->setProperty(kShown, spin->value()); // rounded
    spin->setProperty(kGiven, qBound(spin->minimum(), percent, spin->maximum()));
}

double scaleIn(const QDoubleSpinBox *spin)
{
    return spin->value() == spin->property(kShown).toDouble() ? spin->property(kGiven).toDouble()
                                                              : spin->value();
}

} // namespace NC
} // namespace KivSystem
