/// The cut settings: what the panels of the cut formats show, the marker library obeys when it
/// makes the document to be cut, and the host keeps.
///
/// CutSettings is the plain record; CDbMarkerShareGlobales hands it out setting by setting.

#ifndef KIVMARKER_CUTSETTINGS_H
#define KIVMARKER_CUTSETTINGS_H

namespace KivSystem {

/// When notches are cut.
enum NotchOrder : short
{
    NotchNone = 0,
    NotchDuringOutline = 1,
    NotchBeforeOutline = 2,
    NotchAfterOutline = 3,
};

/// When internal lines are cut.
enum CutLine : short
{
    CutLineNone = 0,
    CutLineBeforeOutline = 1,
    CutLineAfterOutline = 2,
};

/// How an Eastman cutter makes a hole.
enum DrillType : short
{
    DrillNone = 0,
    DrillPunch = 1,
    DrillDrill = 2,
    DrillVNotch = 3,
    DrillSlit = 4,
    DrillLaser = 5,
};

namespace NC {

/// How blocks of several pieces are cut.
enum eCutBlock : short
{
    CutBlockNone = 0,
    CutBlockInternalPiecesOnly = 1,
    CutBlockOutlineOnly = 2,
};

} // namespace NC

/// Lengths are centimetres, scales percent, angles degrees.
struct CutSettings
{
    // ANSI cutters.
    double cutScaleX = 100; ///< percent
    double cutScaleY = 100; ///< percent
    bool reducePoints = false;
    double reducePointsTolerance = 0.05; ///< cm
    bool cutInterPoints = false;
    double cutInterPointsFreq = 50; ///< cm between intermediate points
    bool cutCommandM19 = true;      ///< notches command
    bool cutCommandM20 = true;      ///< console command
    bool cutLabelM31 = false;       ///< labels command
    bool penCutInfos = false;       ///< pen commands for piece information
    bool cutPenUpSynchro = false;
    short cutInternalOrder = CutLineBeforeOutline; ///< a CutLine
    short cutOrderCrans = NotchBeforeOutline;      ///< a NotchOrder
    bool cutCuttingEdge = false;                   ///< special notch treatment
    double cutNotchSize = 0.5;                     ///< cm
    bool punchUserTool = false;                    ///< user punches with the tool M44
    bool cutFabricEdge = false;
    double cutFabricEdgeSpacing = 50; ///< cm
    double cutFabricEdgeLength = 10;  ///< cm
    bool cutExternalPunchHoles = false;
    short cutExternalPunchHoleTool = 0; ///< 0 for M43, 1 for M44
    bool cutCommandM69 = false;         ///< frame advance command
    double cutLength = 180;             ///< cm that the cutter reaches in X
    double cutThresholdAdvance = 120;   ///< cm from a frame's start to the last start of a piece
    bool cutBlocking = false;           ///< outline of blocks of a single piece
    short cutFusing = NC::CutBlockNone; ///< an NC::eCutBlock
    bool miniCutFileBlock = false;      ///< files of their own for blocks

    // Eastman cutters.
    double eastCutScaleX = 100;                   ///< percent
    double eastCutScaleY = 100;                   ///< percent
    double eastCutNotchSize = 0.5;                ///< cm
    short eastCutOrderCrans = NotchBeforeOutline; ///< a NotchOrder
    short eastCutTypeDrill = DrillDrill;          ///< a DrillType
    double eastCutAnglePunchHole = 0;             ///< degrees
    bool eastCutBlocking = false;
    short eastCutFusing = NC::CutBlockNone;            ///< an NC::eCutBlock
    short eastCutInternalOrder = CutLineBeforeOutline; ///< a CutLine
    bool eastMiniCutFileBlock = false;
};

} // namespace KivSystem

#endif
