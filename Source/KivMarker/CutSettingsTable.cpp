#include "KivMarker/CutSettingsTable.h"

#include <cmath>

namespace KivSystem {

double CutSettingDescription::valueIn(const CutSettings &settings) const
{
    return std::visit(
        [&settings](auto pointer) { return static_cast<double>(settings.*pointer); }, member);
}

bool CutSettingDescription::setValueIn(CutSettings &settings, double value) const
{
    const bool whole = kind == Kind::Flag || kind == Kind::Choice;
    if (!(value >= lowest && value <= highest) || (whole && value != std::floor(value))) {
        return false;
    }
    std::visit(
        [&settings, value](auto pointer) {
            using Value = std::decay_t<decltype(settings.*pointer)>;
            settings.*pointer = static_cast<Value>(value);
        },
        member);
    return true;
}

QString CutSettingDescription::unit() const
{
    switch (kind) {
    case Kind::Length:
        return QStringLiteral("cm");
    case Kind::Percent:
        return QStringLiteral("%");
    case Kind::Angle:
        return QStringLiteral("degrees");
    case Kind::Flag:
    case Kind::Choice:
        break;
    }
    return QString();
}

const std::vector<CutSettingDescription> &cutSettingDescriptions()
{
    using Kind = CutSettingDescription::Kind;
    using S = CutSettings;
    static const char *const cutLines =
        "internal lines are cut: 0 not at all, 1 before the outline, 2 after it";
    static const char *const notchOrders = "notches are cut: 0 not at all, 1 during the outline, 2 "
                                           "before it, 3 after it";
    static const char *const blocks = "blocks of several pieces: 0 as they are, 1 their internal "
                                      "pieces only, 2 their outline only";
    static const std::vector<CutSettingDescription> table{
        {"CutScaleX", Kind::Percent, &S::cutScaleX, 1, 110, "scale along the fabric"},
        {"CutScaleY", Kind::Percent, &S::cutScaleY, 1, 110, "scale across the fabric"},
        {"ReducePoints", Kind::Flag, &S::reducePoints, 0, 1, "leave out points of outlines"},
        {"ReducePointsTolerance", Kind::Length, &S::reducePointsTolerance, 0, 1,
            "how far an outline may move when points are left out"},
        {"CutInterPoints", Kind::Flag, &S::cutInterPoints, 0, 1, "add points to long segments"},
        {"CutInterPointsFreq", Kind::Length, &S::cutInterPointsFreq, 12.7, 253.9,
            "largest distance of two points when points are added"},
        {"CutCommandM19", Kind::Flag, &S::cutCommandM19, 0, 1, "write the notches command M19"},
        {"CutCommandM20", Kind::Flag, &S::cutCommandM20, 0, 1, "write the console command M20"},
        {"CutLabelM31", Kind::Flag, &S::cutLabelM31, 0, 1, "write the labels command M31"},
        {"PenCutInfos", Kind::Flag, &S::penCutInfos, 0, 1,
            "draw the piece information with the cutter's pen"},
        {"CutPenUpSynchro", Kind::Flag, &S::cutPenUpSynchro, 0, 1,
            "synchronise the pen-up commands with the cutter"},
        {"CutInternalOrder", Kind::Choice, &S::cutInternalOrder, 0, 2, cutLines},
        {"CutOrderCrans", Kind::Choice, &S::cutOrderCrans, 0, 3, notchOrders},
        {"CutCuttingEdge", Kind::Flag, &S::cutCuttingEdge, 0, 1,
            "special notch treatment for cutting edge cutters"},
        {"CutNotchSize", Kind::Length, &S::cutNotchSize, 0, 2, "length of a notch"},
        {"PunchUserTool", Kind::Flag, &S::punchUserTool, 0, 1,
            "cut user punch holes with the tool M44"},
        {"CutFabricEdge", Kind::Flag, &S::cutFabricEdge, 0, 1, "cut the edge of the fabric"},
        {"CutFabricEdgeSpacing", Kind::Length, &S::cutFabricEdgeSpacing, 0.01, 5000,
            "spacing of the cuts at the edge"},
        {"CutFabricEdgeLength", Kind::Length, &S::cutFabricEdgeLength, 0.01, 500,
            "length of a cut at the edge"},
        {"CutExternalPunchHoles", Kind::Flag, &S::cutExternalPunchHoles, 0, 1,
            "cut punch holes outside of the pieces"},
        {"CutExternalPunchHoleTool", Kind::Choice, &S::cutExternalPunchHoleTool, 0, 1,
            "tool for holes outside of the pieces: 0 is M43, 1 is M44"},
        {"CutCommandM69", Kind::Flag, &S::cutCommandM69, 0, 1,
            "write the frame advance command M69"},
        {"CutLength", Kind::Length, &S::cutLength, 0, 5000,
            "length of the cutter along the fabric"},
        {"CutThresholdAdvance", Kind::Length, &S::cutThresholdAdvance, 0, 5000,
            "threshold of the frame advance, no more than the length of the cutter"},
        {"CutBlocking", Kind::Flag, &S::cutBlocking, 0, 1,
            "cut the outline of blocks of a single piece"},
        {"CutFusing", Kind::Choice, &S::cutFusing, 0, 2, blocks},
        {"MiniCutFileBlock", Kind::Flag, &S::miniCutFileBlock, 0, 1,
            "write a cut file of its own for each block of several pieces"},

        {"EastCutScaleX", Kind::Percent, &S::eastCutScaleX, 1, 110,
            "Eastman: scale along the fabric"},
        {"EastCutScaleY", Kind::Percent, &S::eastCutScaleY, 1, 110,
            "Eastman: scale across the fabric"},
        {"EastCutOrderCrans", Kind::Choice, &S::eastCutOrderCrans, 0, 3, notchOrders},
        {"EastCutNotchSize", Kind::Length, &S::eastCutNotchSize, 0, 2,
            "Eastman: length of a notch"},
        {"EastCutTypeDrill", Kind::Choice, &S::eastCutTypeDrill, 0, 5,
            "Eastman: holes are 0 left out, 1 PUNCH, 2 DRILL, 3 VNCH, 4 SLIT, 5 LASER"},
        {"EastCutAnglePunchHole", Kind::Angle, &S::eastCutAnglePunchHole, 0, 360,
            "Eastman: angle of a drill"},
        {"EastCutBlocking", Kind::Flag, &S::eastCutBlocking, 0, 1,
            "Eastman: cut the outline of blocks of a single piece"},
        {"EastCutFusing", Kind::Choice, &S::eastCutFusing, 0, 2, blocks},
        {"EastCutInternalOrder", Kind::Choice, &S::eastCutInternalOrder, 0, 2, cutLines},
        {"EastMiniCutFileBlock", Kind::Flag, &S::eastMiniCutFileBlock, 0, 1,
            "Eastman: write a cut file of its own for each block of several pieces"},
    };
    return table;
}

} // namespace KivSystem
