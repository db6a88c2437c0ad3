// KivDialog: base of the option dialogs. Its line edits are checked through their validators
// before it closes, and the user is told the range a field permits.
#ifndef KIVCORE_DIALOG_H
#define KIVCORE_DIALOG_H

#include "KivCore/Export.h"

#include <QDialog>

class QDoubleSpinBox;
class QLineEdit;

namespace KivSystem {

class KivValidatorBase;

class KIVCORE_EXPORT KivDialog : public QDialog
{
    Q_OBJECT

public:
    explicit KivDialog(QWidget *parent);
    ~KivDialog() override;

    /// Checks the enabled line edits of the visible page that have a KivValidatorBase, and its spin
    /// boxes, in tab order. At the first one that fails it does what validateInput() does and
    /// returns false.
    /// The dialog itself need not be shown.
    bool validateInputs();

    /// Checks the text of one line edit, or its exact value (see ExactValue.h), against
    /// `validator`, which need not be its own. On failure brings the focus to it, tells the user
    /// the permitted range and returns false.
    bool validateInput(QLineEdit *lineEdit, const KivValidatorBase *validator);

    /// Runs the dialog through the application's user interface, so that a command line or a test
    /// can answer it; without a KivApplication as execModal().
    int exec() override;

    /// Shows the dialog and waits for it. This is what a user interface with windows calls.
    int execModal();

    /// Closes the dialog when validateInputs() and then doValidateInputs() pass; otherwise it
    /// stays open.
    void accept() override;

protected:
    /// A subclass's own check. False keeps the dialog open; `message` is then shown unless empty.
    virtual bool doValidateInputs(QString &message);

private:
    bool validateField(QWidget *field);
    bool validateSpinBox(QDoubleSpinBox *spinBox);
    void warnOfRange(const QWidget &field, const QString &lowest, const QString &highest);
    void warn(const QString &message);
};

} // namespace KivSystem

#endif
