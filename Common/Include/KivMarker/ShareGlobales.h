/// Settings that the host, the marker library and the exporters share.

#ifndef KIVMARKER_SHAREGLOBALES_H
#define KIVMARKER_SHAREGLOBALES_H

#include "KivGeo/Point2D.h"
#include "KivMarker/CutSettings.h"
#include "KivMarker/DrawingSettings.h"

namespace KivSystem {

/// One instance for the whole process, used on the main thread. A setter takes what it is given:
/// ranges are those of the panels and of the settings' descriptions (MarkerSettings.h).
class CDbMarkerShareGlobales
{
public:
    static CDbMarkerShareGlobales *instance();

    CDbMarkerShareGlobales(const CDbMarkerShareGlobales &) = delete;
    CDbMarkerShareGlobales &operator=(const CDbMarkerShareGlobales &) = delete;

    /// The host's Zentrim view, which shows the fabric as it will be cut, is active.
    bool getZentrimActif() const { return m_zentrimActif; }
    void setZentrimActif(bool active) { m_zentrimActif = active; }

    /// All settings of drawings at once: what the host stores.
    const DrawingSettings &drawingSettings() const { return m_drawing; }
    void setDrawingSettings(const DrawingSettings &settings) { m_drawing = settings; }

    const ColorTable &getColorTable() const { return m_drawing.colors; }
    double getSpaceNoOverlap() const { return m_drawing.spaceNoOverlap; }     ///< cm
    double getStepDigitalCurve() const { return m_drawing.stepDigitalCurve; } ///< cm

    /// The origin of the drawing.
    const GeoPoint2D &getOriginePoint() const { return m_origin; }
    void setOriginePoint(const GeoPoint2D &origin) { m_origin = origin; }

    /// All cut settings at once: what the host stores, and what a document is made by.
    const CutSettings &cutSettings() const { return m_cut; }
    void setCutSettings(const CutSettings &settings) { m_cut = settings; }

    // ANSI cutters; the members of CutSettings tell the units.
    double getCutScaleX() const { return m_cut.cutScaleX; }
    void setCutScaleX(double value) { m_cut.cutScaleX = value; }
    double getCutScaleY() const { return m_cut.cutScaleY; }
    void setCutScaleY(double value) { m_cut.cutScaleY = value; }
    bool getReducePoints() const { return m_cut.reducePoints; }
    void setReducePoints(bool value) { m_cut.reducePoints = value; }
    double getReducePointsTolerance() const { return m_cut.reducePointsTolerance; }
    void setReducePointsTolerance(double value) { m_cut.reducePointsTolerance = value; }
    bool getCutInterPoints() const { return m_cut.cutInterPoints; }
    void setCutInterPoints(bool value) { m_cut.cutInterPoints = value; }
    double getCutInterPointsFreq() const { return m_cut.cutInterPointsFreq; }
    void setCutInterPointsFreq(double value) { m_cut.cutInterPointsFreq = value; }
    bool getCutCommandM19() const { return m_cut.cutCommandM19; }
    void setCutCommandM19(bool value) { m_cut.cutCommandM19 = value; }
    bool getCutCommandM20() const { return m_cut.cutCommandM20; }
    void setCutCommandM20(bool value) { m_cut.cutCommandM20 = value; }
    bool getCutLabelM31() const { return m_cut.cutLabelM31; }
    void setCutLabelM31(bool value) { m_cut.cutLabelM31 = value; }
    bool getPenCutInfos() const { return m_cut.penCutInfos; }
    void setPenCutInfos(bool value) { m_cut.penCutInfos = value; }
    bool getCutPenUpSynchro() const { return m_cut.cutPenUpSynchro; }
    void setCutPenUpSynchro(bool value) { m_cut.cutPenUpSynchro = value; }
    short getCutInternalOrder() const { return m_cut.cutInternalOrder; }
    void setCutInternalOrder(short value) { m_cut.cutInternalOrder = value; }
    short getCutOrderCrans() const { return m_cut.cutOrderCrans; }
    void setCutNotchOrder(short value) { m_cut.cutOrderCrans = value; }
    bool getCutCuttingEdge() const { return m_cut.cutCuttingEdge; }
    void setCutCuttingEdge(bool value) { m_cut.cutCuttingEdge = value; }
    double getCutNotchSize() const { return m_cut.cutNotchSize; }
    void setCutNotchSize(double value) { m_cut.cutNotchSize = value; }
    bool getPunchUserTool() const { return m_cut.punchUserTool; }
    void setPunchUserTool(bool value) { m_cut.punchUserTool = value; }
    bool getCutFabricEdge() const { return m_cut.cutFabricEdge; }
    void setCutFabricEdge(bool value) { m_cut.cutFabricEdge = value; }
    double getCutFabricEdgeSpacing() const { return m_cut.cutFabricEdgeSpacing; }
    void setCutFabricEdgeSpacing(double value) { m_cut.cutFabricEdgeSpacing = value; }
    double getCutFabricEdgeLength() const { return m_cut.cutFabricEdgeLength; }
    void setCutFabricEdgeLength(double value) { m_cut.cutFabricEdgeLength = value; }
    bool getCutExternalPunchHoles() const { return m_cut.cutExternalPunchHoles; }
    void setCutExternalPunchHoles(bool value) { m_cut.cutExternalPunchHoles = value; }
    short getCutExternalPunchHoleTool() const { return m_cut.cutExternalPunchHoleTool; }
    void setCutExternalPunchHoleTool(short value) { m_cut.cutExternalPunchHoleTool = value; }
    bool getCutCommandM69() const { return m_cut.cutCommandM69; }
    void setCutCommandM69(bool value) { m_cut.cutCommandM69 = value; }
    double getCutLength() const { return m_cut.cutLength; }
    void setCutLength(double value) { m_cut.cutLength = value; }
    double getCutThresholdAdvance() const { return m_cut.cutThresholdAdvance; }
    void setCutThresholdAdvance(double value) { m_cut.cutThresholdAdvance = value; }
    bool getCutBlocking() const { return m_cut.cutBlocking; }
    void setCutBlocking(bool value) { m_cut.cutBlocking = value; }
    short getCutFusing() const { return m_cut.cutFusing; }
    void setCutFusing(short value) { m_cut.cutFusing = value; }
    bool getMiniCutFileBlock() const { return m_cut.miniCutFileBlock; }
    void setMiniCutFileBlock(bool value) { m_cut.miniCutFileBlock = value; }

    // Eastman cutters; the members of CutSettings tell the units.
    double getEastCutScaleX() const { return m_cut.eastCutScaleX; }
    void setEastCutScaleX(double value) { m_cut.eastCutScaleX = value; }
    double getEastCutScaleY() const { return m_cut.eastCutScaleY; }
    void setEastCutScaleY(double value) { m_cut.eastCutScaleY = value; }
    double getEastCutNotchSize() const { return m_cut.eastCutNotchSize; }
    void setEastCutNotchSize(double value) { m_cut.eastCutNotchSize = value; }
    short getEastCutOrderCrans() const { return m_cut.eastCutOrderCrans; }
    void setEastCutNotchOrder(short value) { m_cut.eastCutOrderCrans = value; }
    short getEastCutTypeDrill() const { return m_cut.eastCutTypeDrill; }
    void setEastCutTypeDrill(short value) { m_cut.eastCutTypeDrill = value; }
    double getEastCutAnglePunchHole() const { return m_cut.eastCutAnglePunchHole; }
    void setEastCutAnglePunchHole(double value) { m_cut.eastCutAnglePunchHole = value; }
    bool getEastCutBlocking() const { return m_cut.eastCutBlocking; }
    void setEastCutBlocking(bool value) { m_cut.eastCutBlocking = value; }
    short getEastCutFusing() const { return m_cut.eastCutFusing; }
    void setEastCutFusing(short value) { m_cut.eastCutFusing = value; }
    short getEastCutInternalOrder() const { return m_cut.eastCutInternalOrder; }
    void setEastCutInternalOrder(short value) { m_cut.eastCutInternalOrder = value; }
    bool getEastMiniCutFileBlock() const { return m_cut.eastMiniCutFileBlock; }
    void setEastMiniCutFileBlock(bool value) { m_cut.eastMiniCutFileBlock = value; }

private:
    CDbMarkerShareGlobales() = default;

    CutSettings m_cut;
    DrawingSettings m_drawing;
    GeoPoint2D m_origin;
    bool m_zentrimActif = false;
};

} // namespace KivSystem

#endif
