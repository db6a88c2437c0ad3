#include "ANSIOptionsWidget.h"

#include "CutFields.h"
#include "KivCore/Validator.h"
#include "KivMarker/ShareGlobales.h"

#include "ui_CutParametersANSI.h"

#include <QCloseEvent>
#include <QTabBar>

namespace KivSystem {
namespace NC {
namespace {

constexpr double kLongestCutter = 5000; // cm
constexpr int kFrameAdvanceTab = 2;

CDbMarkerShareGlobales &settings()
{
    return *CDbMarkerShareGlobales::instance();
}

} // namespace

class CutParametersANSIUi : public Ui_CutParametersANSI
{};

ANSIOptionsWidget::ANSIOptionsWidget(QWidget *parent)
    : KivDialog(parent)
    , m_ui(new CutParametersANSIUi)
{
    m_ui->setupUi(this);
    setValidators();
    initData();
    // The form's own width is the least; texts of another language or a large font may need more.
    const QMargins margins = layout()->contentsMargins();
    const int tabs =
        m_ui->tabWidget->tabBar()->sizeHint().width() + margins.left() + margins.right();
    const QSize needed = layout()->sizeHint().expandedTo({tabs, 0});
    setMinimumWidth(qMax(minimumWidth(), needed.width()));
    resize(size().expandedTo(needed));
    connect(m_ui->comboCuttingOrder, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ANSIOptionsWidget::setCheckSpecialEnabled);
}

ANSIOptionsWidget::~ANSIOptionsWidget() = default;

void ANSIOptionsWidget::setValidators()
{
    setLengthBounds(m_ui->editNumberOfPoint, 0, 1);
    setLengthBounds(m_ui->editGeneratePoint, 12.7, 253.9);
    setLengthBounds(m_ui->editNotchLen, 0, 2);
    setLengthBounds(m_ui->editCutSpacing, 0.01, 5000);
    setLengthBounds(m_ui->editCutLen, 0.01, 500);
    setLengthBounds(m_ui->editCutterLengthX, 0, kLongestCutter);
    setLengthBounds(m_ui->editThreshold, 0, kLongestCutter);
}

void ANSIOptionsWidget::initData()
{
    const CDbMarkerShareGlobales &from = settings();
    showScale(m_ui->spinScaleX, from.getCutScaleX());
    showScale(m_ui->spinScaleY, from.getCutScaleY());
    m_ui->checkReduce->setChecked(from.getReducePoints());
    m_ui->editNumberOfPoint->setEnabled(from.getReducePoints());
    showLength(m_ui->editNumberOfPoint, from.getReducePointsTolerance());
    m_ui->checkIntermediate->setChecked(from.getCutInterPoints());
    m_ui->editGeneratePoint->setEnabled(from.getCutInterPoints());
    showLength(m_ui->editGeneratePoint, from.getCutInterPointsFreq());
    m_ui->checkNotches->setChecked(from.getCutCommandM19());
    m_ui->checkConsole->setChecked(from.getCutCommandM20());
    m_ui->checkLabels->setChecked(from.getCutLabelM31());
    m_ui->checkPieceInfo->setChecked(from.getPenCutInfos());
    m_ui->checkSynchronize->setChecked(from.getCutPenUpSynchro());

    m_ui->comboInternalLines_2->setCurrentIndex(from.getCutInternalOrder());
    m_ui->comboCuttingOrder->setCurrentIndex(from.getCutOrderCrans());
    m_ui->checkSpecial->setChecked(from.getCutCuttingEdge());
    setCheckSpecialEnabled();
    showLength(m_ui->editNotchLen, from.getCutNotchSize());
    m_ui->checkCutM44_2->setChecked(from.getPunchUserTool());

    // The labels of the two fields stay enabled until the first click.
    m_ui->checkCutFabric->setChecked(from.getCutFabricEdge());
    m_ui->editCutSpacing->setEnabled(from.getCutFabricEdge());
    m_ui->editCutLen->setEnabled(from.getCutFabricEdge());
    showLength(m_ui->editCutSpacing, from.getCutFabricEdgeSpacing());
    showLength(m_ui->editCutLen, from.getCutFabricEdgeLength());
    m_ui->checkCutExternal->setChecked(from.getCutExternalPunchHoles());
    m_ui->radioM43->setEnabled(from.getCutExternalPunchHoles());
    m_ui->radioM44->setEnabled(from.getCutExternalPunchHoles());
    m_ui->radioM43->setChecked(from.getCutExternalPunchHoleTool() == 0);
    m_ui->radioM44->setChecked(from.getCutExternalPunchHoleTool() != 0);

    m_ui->checkGenerate->setChecked(from.getCutCommandM69());
    showLength(m_ui->editCutterLengthX, from.getCutLength());
    showLength(m_ui->editThreshold, from.getCutThresholdAdvance());

    m_ui->checkSinglePiece->setChecked(from.getCutBlocking());
    m_ui->comboCutBlocks->setCurrentIndex(from.getCutFusing());
    m_ui->checkMutiplePieces->setChecked(from.getMiniCutFileBlock());
}

void ANSIOptionsWidget::setCheckSpecialEnabled()
{
    m_ui->checkSpecial->setEnabled(m_ui->comboCuttingOrder->currentIndex() == NotchBeforeOutline);
}

bool ANSIOptionsWidget::applyChanges()
{
    CDbMarkerShareGlobales &to = settings();
    writeTopArea();
    writeInternalCut();
    writeExternalCut();
    to.setCutCommandM69(m_ui->checkGenerate->isChecked());

    // Two lengths may differ where nobody can see it, and be equal where the user sees them.
    const double length = lengthIn(m_ui->editCutterLengthX);
    const double threshold = lengthIn(m_ui->editThreshold);
    const double shownThreshold = shownLength(m_ui->editThreshold);
    if (threshold > length && shownThreshold > shownLength(m_ui->editCutterLengthX)) {
        m_ui->tabWidget->setCurrentIndex(kFrameAdvanceTab);
        const KivLengthValidator atLeastThreshold(shownThreshold, kLongestCutter);
        validateInput(m_ui->editCutterLengthX, &atLeastThreshold);
        return false;
    }
    to.setCutLength(length);
    to.setCutThresholdAdvance(qMin(threshold, length));
    to.setCutBlocking(m_ui->checkSinglePiece->isChecked());
    to.setCutFusing(static_cast<short>(m_ui->comboCutBlocks->currentIndex()));
    to.setMiniCutFileBlock(m_ui->checkMutiplePieces->isChecked());
    return true;
}

void ANSIOptionsWidget::writeTopArea() const
{
    CDbMarkerShareGlobales &to = settings();
    to.setCutScaleX(scaleIn(m_ui->spinScaleX));
    to.setCutScaleY(scaleIn(m_ui->spinScaleY));
    to.setReducePoints(m_ui->checkReduce->isChecked());
    to.setReducePointsTolerance(lengthIn(m_ui->editNumberOfPoint));
    to.setCutInterPoints(m_ui->checkIntermediate->isChecked());
    to.setCutInterPointsFreq(lengthIn(m_ui->editGeneratePoint));
    to.setCutCommandM19(m_ui->checkNotches->isChecked());
    to.setCutCommandM20(m_ui->checkConsole->isChecked());
    to.setCutLabelM31(m_ui->checkLabels->isChecked());
    to.setPenCutInfos(m_ui->checkPieceInfo->isChecked());
    to.setCutPenUpSynchro(m_ui->checkSynchronize->isChecked());
}

void ANSIOptionsWidget::writeInternalCut() const
{
    CDbMarkerShareGlobales &to = settings();
    to.setCutInternalOrder(static_cast<short>(m_ui->comboInternalLines_2->currentIndex()));
    to.setCutNotchOrder(static_cast<short>(m_ui->comboCuttingOrder->currentIndex()));
    to.setCutCuttingEdge(m_ui->checkSpecial->isChecked());
    to.setCutNotchSize(lengthIn(m_ui->editNotchLen));
    to.setPunchUserTool(m_ui->checkCutM44_2->isChecked());
}

void ANSIOptionsWidget::writeExternalCut() const
{
    CDbMarkerShareGlobales &to = settings();
    to.setCutFabricEdge(m_ui->checkCutFabric->isChecked());
    to.setCutFabricEdgeSpacing(lengthIn(m_ui->editCutSpacing));
    to.setCutFabricEdgeLength(lengthIn(m_ui->editCutLen));
    to.setCutExternalPunchHoles(m_ui->checkCutExternal->isChecked());
    to.setCutExternalPunchHoleTool(m_ui->radioM43->isChecked() ? 0 : 1);
}

void ANSIOptionsWidget::closeEvent(QCloseEvent *event)
{
    QTabWidget *tabs = m_ui->tabWidget;
    const int front = tabs->currentIndex();
    for (int tab = 0; tab < tabs->count(); ++tab) {
        if (tab == front) {
            continue; // checked by accept()
        }
        tabs->setCurrentIndex(tab);
        if (!validateInputs()) {
            event->ignore();
            return;
        }
    }
    tabs->setCurrentIndex(front);
    event->setAccepted(applyChanges());
}

} // namespace NC
} // namespace KivSystem
