#include "CutFields.h"

#include "KivCore/Locale.h"
#include "KivCore/Validator.h"

#include <QDoubleSpinBox>
#include <QLineEdit>

namespace KivSystem {
namespace NC {
namespace {

constexpr char kShown[] = "kivShown"; // as the field shows it
constexpr char kGiven[] = "kivGiven"; // the value itself

double given(const QWidget *field)
{
    return field->property(kGiven).toDouble();
}

bool isUntouched(const QLineEdit *edit)
{
    return edit->text() == edit->property(kShown).toString();
}

void show(QLineEdit *edit, const QString &text, double value)
{
    edit->setText(text);
    edit->setProperty(kShown, text);
    edit->setProperty(kGiven, value);
}

} // namespace

void setLengthBounds(QLineEdit *edit, double lowest, double highest)
{
    edit->setValidator(new KivLengthValidator(lowest, highest, false, edit));
}

void showLength(QLineEdit *edit, double centimetres)
{
    show(edit, KivLocale().formatLength(centimetres, KivLocale::WithUnit), centimetres);
}

double lengthIn(const QLineEdit *edit)
{
    return isUntouched(edit) ? given(edit) : KivLocale().parseLength(edit->text()).value;
}

void showAngle(QLineEdit *edit, double degrees)
{
    show(edit, KivLocale().formatAngle(degrees, KivLocale::WithUnit), degrees);
}

double angleIn(const QLineEdit *edit)
{
    return isUntouched(edit) ? given(edit) : KivLocale().parseAngle(edit->text()).value;
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
    return spin->value() == spin->property(kShown).toDouble() ? given(spin) : spin->value();
}

} // namespace NC
} // namespace KivSystem
