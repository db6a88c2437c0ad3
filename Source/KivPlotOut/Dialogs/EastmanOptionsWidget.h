// EastmanOptionsWidget: the panel of cut files for Eastman cutters. It shows the settings of these
// cutters as it is made and writes them back when it closes; an export reads the controls.

#ifndef KIVPLOTOUT_EASTMANOPTIONSWIDGET_H
#define KIVPLOTOUT_EASTMANOPTIONSWIDGET_H

#include "KivCore/Dialog.h"
#include "KivMarker/CutSettings.h"

#include <QScopedPointer>

namespace KivSystem {
namespace NC {

class CutParametersEastmanUi;

class EastmanOptionsWidget : public KivDialog
{
    Q_OBJECT

public:
    explicit EastmanOptionsWidget(QWidget *parent);
    ~EastmanOptionsWidget() override;

    /// Writes the controls to the settings; always true.
    bool applyChanges();

    // What the controls say now.
    double getScaleX() const;      ///< percent
    double getScaleY() const;      ///< percent
    double getNotchLength() const; ///< cm
    NotchOrder getNotchOrder() const;
    bool isCutSinglePieceBlocksOutline() const;
    DrillType getDrillType() const;
    double getDrillAngle() const; ///< degrees
    eCutBlock getCutMultiBlockType() const;
    CutLine getCutInterLineType() const;
    bool isGenerateIndividualCutFiles() const;

protected:
    /// Applies the changes and closes, without a check.
    void closeEvent(QCloseEvent *event) override;

private:
    void fillChoices();
    void initData();

    QScopedPointer<CutParametersEastmanUi> m_ui;
};

} // namespace NC
} // namespace KivSystem

#endif
