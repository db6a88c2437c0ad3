#include "CutFields.h"

#include "KivCore/Locale.h"
#include "KivCore/Validator.h"

#include <QDoubleSpinBox>
#include <QLineEdit>

namespace KivSystem {
namespace NC {

void setLengthBounds(QLineEdit *edit, double lowest, double highest)
{
    edit->setValidator(new KivLengthValidator(lowest, highest, false, edit));
}

void showLength(QLineEdit *edit, double centimetres)
{
    edit->setText(KivLocale().formatLength(centimetres, KivLocale::WithUnit));
}

double lengthIn(const QLineEdit *edit)
{
    return KivLocale().parseLength(edit->text()).value;
}

void showScale(QDoubleSpinBox *spin, double percent)
{
    spin->setDecimals(KivLocale().precision());
    spin->setValue(percent);
}

} // namespace NC
} // namespace KivSystem
