#include "EastmanOptionsWidget.h"

#include "CutFields.h"
#include "KivCore/Validator.h"
#include "KivMarker/ShareGlobales.h"

#include "ui_CutParametersEastman.h"

#include <QCloseEvent>
#include <QMap>

namespace KivSystem {
namespace NC {
namespace {

constexpr double kFullCircle = 360; // degrees

// Entries in the order of the values, which they carry as their data.
template <class Value>
void fill(QComboBox *combo, const QMap<Value, QString> &texts)
{
    for (auto text = texts.cbegin(); text != texts.cend(); ++text) {
        combo->addItem(text.value(), static_cast<int>(text.key()));
    }
}

template <class Value>
Value chosen(const QComboBox *combo)
{
    return static_cast<Value>(combo->currentData().toInt());
}

} // namespace

class CutParametersEastmanUi : public Ui_CutParametersEastman
{};

EastmanOptionsWidget::EastmanOptionsWidget(QWidget *parent)
    : KivDialog(parent)
    , m_ui(new CutParametersEastmanUi)
{
    m_ui->setupUi(this);
    setLengthBounds(m_ui->editNotchLen, 0, 2);
    m_ui->editDrillangle->setValidator(
        new KivAngleValidator(0, kFullCircle, false, m_ui->editDrillangle));
    fillChoices();
    initData();
}

EastmanOptionsWidget::~EastmanOptionsWidget() = default;

void EastmanOptionsWidget::fillChoices()
{
    fill<NotchOrder>(m_ui->comboNotchCutting,
        {{NotchNone, tr("None")}, {NotchDuringOutline, tr("During Outline")},
            {NotchBeforeOutline, tr("Before Outline")}, {NotchAfterOutline, tr("After Outline")}});
    fill<DrillType>(m_ui->comboDrillType,
        {{DrillNone, tr("None")}, {DrillPunch, tr("PUNCH")}, {DrillDrill, tr("DRILL")},
            {DrillVNotch, tr("VNCH")}, {DrillSlit, tr("SLIT")}, {DrillLaser, tr("LASER")}});
    fill<eCutBlock>(m_ui->comboCutBlocks,
        {{CutBlockNone, tr("None")}, {CutBlockInternalPiecesOnly, tr("Internal Pieces Only")},
            {CutBlockOutlineOnly, tr("Outline Only")}});
    fill<CutLine>(m_ui->comboCutInternal,
        {{CutLineNone, tr("None")}, {CutLineBeforeOutline, tr("Before Outline")},
            {CutLineAfterOutline, tr("After Outline")}});
}

void EastmanOptionsWidget::initData()
{
    const CDbMarkerShareGlobales &from = *CDbMarkerShareGlobales::instance();
    showScale(m_ui->spinScaleX, from.getEastCutScaleX());
    showScale(m_ui->spinScaleY, from.getEastCutScaleY());
    m_ui->comboNotchCutting->setCurrentIndex(from.getEastCutOrderCrans());
    showLength(m_ui->editNotchLen, from.getEastCutNotchSize());
    m_ui->comboDrillType->setCurrentIndex(from.getEastCutTypeDrill());
    showAngle(m_ui->editDrillangle, from.getEastCutAnglePunchHole());
    m_ui->checkCutBlocks->setChecked(from.getEastCutBlocking());
    m_ui->comboCutBlocks->setCurrentIndex(from.getEastCutFusing());
    m_ui->comboCutInternal->setCurrentIndex(from.getEastCutInternalOrder());
    m_ui->checkGenerate->setChecked(from.getEastMiniCutFileBlock());
}

bool EastmanOptionsWidget::applyChanges()
{
    CDbMarkerShareGlobales &to = *CDbMarkerShareGlobales::instance();
    to.setEastCutScaleX(getScaleX());
    to.setEastCutScaleY(getScaleY());
    to.setEastCutNotchSize(getNotchLength());
    to.setEastCutNotchOrder(getNotchOrder());
    to.setEastCutBlocking(isCutSinglePieceBlocksOutline());
    to.setEastCutTypeDrill(getDrillType());
    to.setEastCutAnglePunchHole(getDrillAngle());
    to.setEastCutFusing(getCutMultiBlockType());
    to.setEastCutInternalOrder(getCutInterLineType());
    to.setEastMiniCutFileBlock(isGenerateIndividualCutFiles());
    return true;
}

double EastmanOptionsWidget::getScaleX() const
{
    return scaleIn(m_ui->spinScaleX);
}

double EastmanOptionsWidget::getScaleY() const
{
    return scaleIn(m_ui->spinScaleY);
}

double EastmanOptionsWidget::getNotchLength() const
{
    return lengthIn(m_ui->editNotchLen);
}

NotchOrder EastmanOptionsWidget::getNotchOrder() const
{
    return chosen<NotchOrder>(m_ui->comboNotchCutting);
}

// A third state of the box, which it has in no form of ours, counts as off.
bool EastmanOptionsWidget::isCutSinglePieceBlocksOutline() const
{
    return m_ui->checkCutBlocks->checkState() == Qt::Checked;
}

DrillType EastmanOptionsWidget::getDrillType() const
{
    return chosen<DrillType>(m_ui->comboDrillType);
}

double EastmanOptionsWidget::getDrillAngle() const
{
    return angleIn(m_ui->editDrillangle);
}

eCutBlock EastmanOptionsWidget::getCutMultiBlockType() const
{
    return chosen<eCutBlock>(m_ui->comboCutBlocks);
}

CutLine EastmanOptionsWidget::getCutInterLineType() const
{
    return chosen<CutLine>(m_ui->comboCutInternal);
}

bool EastmanOptionsWidget::isGenerateIndividualCutFiles() const
{
    return m_ui->checkGenerate->isChecked();
}

void EastmanOptionsWidget::closeEvent(QCloseEvent *event)
{
    applyChanges();
    event->accept();
}

} // namespace NC
} // namespace KivSystem
