#include "KivCore/Dialog.h"

#include "KivCore/Application.h"
#include "KivCore/ExactValue.h"
#include "KivCore/Validator.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>

namespace KivSystem {

namespace {

/// What the dialog calls the field: the text of its label, empty when it has none.
QString fieldName(const QWidget &dialog, const QWidget &field)
{
    for (const QLabel *const label : dialog.findChildren<QLabel *>()) {
        if (label->buddy() == &field) {
            QString name = label->text().remove(QLatin1Char('&')).trimmed();
            while (name.endsWith(QLatin1Char(':'))) {
                name.chop(1);
            }
            return name.trimmed();
        }
    }
    return field.accessibleName();
}

/// A value that came with the field may be in range where its text, which is rounded, is not.
bool isExactlyInRange(const QLineEdit &lineEdit, const KivValidatorBase &validator)
{
    const boost::optional<double> value = exactValue(&lineEdit);
    const auto [lowest, highest] = validator.valueRange();
    return value && *value >= lowest && *value <= highest;
}

} // namespace

KivDialog::KivDialog(QWidget *parent) : QDialog(parent) {}

KivDialog::~KivDialog() = default;

bool KivDialog::validateInputs()
{
    // The focus chain is the tab order, and the order of creation where no other is set. It goes
    // round the whole window, of which this dialog may be an embedded part.
    for (QWidget *widget = nextInFocusChain(); widget != this;
         widget = widget->nextInFocusChain()) {
        if (isAncestorOf(widget) && widget->isVisibleTo(this) && widget->isEnabledTo(this) &&
            !validateField(widget)) {
            return false;
        }
    }
    return true;
}

bool KivDialog::validateField(QWidget *field)
{
    if (auto *const spinBox = qobject_cast<QDoubleSpinBox *>(field)) {
        return validateSpinBox(spinBox);
    }
    auto *const lineEdit = qobject_cast<QLineEdit *>(field);
    const auto *const validator =
        lineEdit ? qobject_cast<const KivValidatorBase *>(lineEdit->validator()) : nullptr;
    return !validator || validateInput(lineEdit, validator);
}

bool KivDialog::validateInput(QLineEdit *lineEdit, const KivValidatorBase *validator)
{
    const auto [valid, inRange] = validator->validAndInRange(lineEdit->text());
    if (valid && (inRange || isExactlyInRange(*lineEdit, *validator))) {
        return true;
    }
    lineEdit->setFocus(Qt::OtherFocusReason);
    lineEdit->selectAll();
    const auto [lowest, highest] = validator->typableRangeStr();
    warnOfRange(*lineEdit, lowest, highest);
    return false;
}

/// Left alone it would go back to its last value, as if nothing had been typed.
bool KivDialog::validateSpinBox(QDoubleSpinBox *spinBox)
{
    if (spinBox->hasAcceptableInput()) {
        return true;
    }
    const auto shown = [spinBox](double value) {
        return spinBox->prefix() + spinBox->textFromValue(value) + spinBox->suffix();
    };
    spinBox->setFocus(Qt::OtherFocusReason);
    spinBox->selectAll();
    warnOfRange(*spinBox, shown(spinBox->minimum()), shown(spinBox->maximum()));
    return false;
}

void KivDialog::warnOfRange(const QWidget &field, const QString &lowest, const QString &highest)
{
    const QString name = fieldName(*this, field);
    warn(name.isEmpty() ? tr("Enter a value from %1 to %2.").arg(lowest, highest)
                        : tr("%1: enter a value from %2 to %3.").arg(name, lowest, highest));
}

int KivDialog::exec()
{
    KivApplication *const application = KivApplication::instance();
    return application ? application->execDialog(*this) : execModal();
}

int KivDialog::execModal()
{
    return QDialog::exec();
}

void KivDialog::accept()
{
    if (!validateInputs()) {
        return;
    }
    QString message;
    if (doValidateInputs(message)) {
        QDialog::accept();
    } else if (!message.isEmpty()) {
        warn(message);
    }
}

bool KivDialog::doValidateInputs(QString &)
{
    return true;
}

void KivDialog::warn(const QString &message)
{
    if (const KivApplication *const application = KivApplication::instance()) {
        application->displayWarning(message, windowTitle(), this);
    } else {
        QMessageBox::warning(this, windowTitle(), message);
    }
}

} // namespace KivSystem
