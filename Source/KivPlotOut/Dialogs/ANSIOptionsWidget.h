// ANSIOptionsWidget: the panel of cut files for ANSI cutters. It shows the cut settings as it is
// made and writes them back when it closes.

#ifndef KIVPLOTOUT_ANSIOPTIONSWIDGET_H
#define KIVPLOTOUT_ANSIOPTIONSWIDGET_H

#include "KivCore/Dialog.h"

#include <QScopedPointer>

namespace KivSystem {
namespace NC {

class CutParametersANSIUi;

class ANSIOptionsWidget : public KivDialog
{
    Q_OBJECT

public:
    explicit ANSIOptionsWidget(QWidget *parent);
    ~ANSIOptionsWidget() override;

    /// Writes the controls to the settings. False when the frame advance's threshold is above the
    /// length of the cutter: the field is reported then, and the settings of frames and blocks, but
    /// for the command itself, keep their old values.
    bool applyChanges();

protected:
    /// Closes when the fields of the tabs that are not in front are valid and applyChanges()
    /// passes.
    void closeEvent(QCloseEvent *event) override;

private Q_SLOTS:
    void setCheckSpecialEnabled();

private:
    void setValidators();
    void initData();
    void writeTopArea() const;
    void writeInternalCut() const;
    void writeExternalCut() const;

    QScopedPointer<CutParametersANSIUi> m_ui;
};

} // namespace NC
} // namespace KivSystem

#endif
