#include "KivMarker/MarkerSettings.h"

#include "KivMarker/ShareGlobales.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace KivSystem {

namespace {

using Descriptions = std::vector<MarkerSettingDescription>;
using Kind = MarkerSettingDescription::Kind;

constexpr auto cut = &MarkerSettings::cut;
constexpr auto plot = &MarkerSettings::plot;
constexpr auto generalPlot = &MarkerSettings::generalPlot;
constexpr auto drawing = &MarkerSettings::drawing;
constexpr auto autoMarker = &MarkerSettings::autoMarker;

constexpr char kCutLines[] =
    "internal lines are cut: 0 not at all, 1 before the outline, 2 after it";
constexpr char kNotchOrders[] =
    "notches are cut: 0 not at all, 1 during the outline, 2 before it, 3 after it";
constexpr char kBlocks[] =
    "blocks of several pieces: 0 as they are, 1 their internal pieces only, 2 their outline only";

template <typename Record, typename Value>
MarkerSettingDescription number(const char *name, Kind kind, Record MarkerSettings::*record,
    Value Record::*member, double lowest, double highest, const char *meaning)
{
    return {name, kind, lowest, highest, meaning,
        [=](const MarkerSettings &settings) {
            return static_cast<double>(settings.*record.*member);
        },
        [=](MarkerSettings &settings, double value) {
            settings.*record.*member = static_cast<Value>(value);
        }};
}

template <typename Record>
MarkerSettingDescription flag(
    const char *name, Record MarkerSettings::*record, bool Record::*member, const char *meaning)
{
    return number(name, Kind::Flag, record, member, 0, 1, meaning);
}

MarkerSettingDescription color(const char *name, std::size_t index)
{
    return {name, Kind::Color, 0, 0xffffff, "a colour of pieces",
        [index](const MarkerSettings &settings) {
            return static_cast<double>(settings.drawing.colors[index].rgb() & RGB_MASK);
        },
        [index](MarkerSettings &settings, double value) {
            settings.drawing.colors[index] = QColor(static_cast<QRgb>(value));
        }};
}

Descriptions ansiOutlineSettings()
{
    using S = CutSettings;
    return {
        number("CutScaleX", Kind::Percent, cut, &S::cutScaleX, 1, 110, "scale along the fabric"),
        number("CutScaleY", Kind::Percent, cut, &S::cutScaleY, 1, 110, "scale across the fabric"),
        flag("ReducePoints", cut, &S::reducePoints, "leave out points of outlines"),
        number("ReducePointsTolerance", Kind::Length, cut, &S::reducePointsTolerance, 0, 1,
            "how far an outline may move when points are left out"),
        flag("CutInterPoints", cut, &S::cutInterPoints, "add points to long segments"),
        number("CutInterPointsFreq", Kind::Length, cut, &S::cutInterPointsFreq, 12.7, 253.9,
            "largest distance of two points when points are added"),
        flag("CutCommandM19", cut, &S::cutCommandM19, "write the notches command M19"),
        flag("CutCommandM20", cut, &S::cutCommandM20, "write the console command M20"),
        flag("CutLabelM31", cut, &S::cutLabelM31, "write the labels command M31"),
        flag("PenCutInfos", cut, &S::penCutInfos,
            "draw the piece information with the cutter's pen"),
        flag("CutPenUpSynchro", cut, &S::cutPenUpSynchro,
            "synchronise the pen-up commands with the cutter"),
        number("CutInternalOrder", Kind::Choice, cut, &S::cutInternalOrder, 0, 2, kCutLines),
        number("CutOrderCrans", Kind::Choice, cut, &S::cutOrderCrans, 0, 3, kNotchOrders),
        flag("CutCuttingEdge", cut, &S::cutCuttingEdge,
            "special notch treatment for cutting edge cutters"),
        number("CutNotchSize", Kind::Length, cut, &S::cutNotchSize, 0, 2, "length of a notch"),
    };
}

Descriptions ansiCutterSettings()
{
    using S = CutSettings;
    return {
        flag("PunchUserTool", cut, &S::punchUserTool, "cut user punch holes with the tool M44"),
        flag("CutFabricEdge", cut, &S::cutFabricEdge, "cut the edge of the fabric"),
        number("CutFabricEdgeSpacing", Kind::Length, cut, &S::cutFabricEdgeSpacing, 0.01, 5000,
            "spacing of the cuts at the edge"),
        number("CutFabricEdgeLength", Kind::Length, cut, &S::cutFabricEdgeLength, 0.01, 500,
            "length of a cut at the edge"),
        flag("CutExternalPunchHoles", cut, &S::cutExternalPunchHoles,
            "cut punch holes outside of the pieces"),
        number("CutExternalPunchHoleTool", Kind::Choice, cut, &S::cutExternalPunchHoleTool, 0, 1,
            "tool for holes outside of the pieces: 0 is M43, 1 is M44"),
        flag("CutCommandM69", cut, &S::cutCommandM69, "write the frame advance command M69"),
        number("CutLength", Kind::Length, cut, &S::cutLength, 0, 5000,
            "length of the cutter along the fabric"),
        number("CutThresholdAdvance", Kind::Length, cut, &S::cutThresholdAdvance, 0, 5000,
            "pieces that begin further than this from the start of a frame wait for the next one"),
        flag("CutBlocking", cut, &S::cutBlocking, "cut the outline of blocks of a single piece"),
        number("CutFusing", Kind::Choice, cut, &S::cutFusing, 0, 2, kBlocks),
        flag("MiniCutFileBlock", cut, &S::miniCutFileBlock,
            "write a cut file of its own for each block of several pieces"),
    };
}

Descriptions eastmanSettings()
{
    using S = CutSettings;
    return {
        number("EastCutScaleX", Kind::Percent, cut, &S::eastCutScaleX, 1, 110,
            "Eastman: scale along the fabric"),
        number("EastCutScaleY", Kind::Percent, cut, &S::eastCutScaleY, 1, 110,
            "Eastman: scale across the fabric"),
        number("EastCutOrderCrans", Kind::Choice, cut, &S::eastCutOrderCrans, 0, 3, kNotchOrders),
        number("EastCutNotchSize", Kind::Length, cut, &S::eastCutNotchSize, 0, 2,
            "Eastman: length of a notch"),
        number("EastCutTypeDrill", Kind::Choice, cut, &S::eastCutTypeDrill, 0, 5,
            "Eastman: holes are 0 left out, 1 PUNCH, 2 DRILL, 3 VNCH, 4 SLIT, 5 LASER"),
        number("EastCutAnglePunchHole", Kind::Angle, cut, &S::eastCutAnglePunchHole, 0, 360,
            "Eastman: angle of a drill"),
        flag("EastCutBlocking", cut, &S::eastCutBlocking,
            "Eastman: cut the outline of blocks of a single piece"),
        number("EastCutFusing", Kind::Choice, cut, &S::eastCutFusing, 0, 2, kBlocks),
        number(
            "EastCutInternalOrder", Kind::Choice, cut, &S::eastCutInternalOrder, 0, 2, kCutLines),
        flag("EastMiniCutFileBlock", cut, &S::eastMiniCutFileBlock,
            "Eastman: write a cut file of its own for each block of several pieces"),
    };
}

Descriptions plotSettings()
{
    using S = MarkerPlotOptions;
    using G = CDbGeneralPlotOptions;
    return {
        flag("plot_pieceTrait", plot, &S::pieceTrait,
            "piece information has the line of marks, as \"Fold\" and \"Block\""),
        flag("plot_pieceName", plot, &S::pieceName, "piece information has the name of the piece"),
        flag("plot_pieceCode", plot, &S::pieceCode, "piece information has the code"),
        flag("plot_pieceCodeReference", plot, &S::pieceCodeReference,
            "piece information has the code reference"),
        flag("plot_pieceIdentification", plot, &S::pieceIdentification,
            "piece information has the identification"),
        flag("plot_description", plot, &S::description, "piece information has the description"),
        flag("plot_styleName", plot, &S::styleName, "piece information has the name of the style"),
        flag("plot_pattern", plot, &S::pattern, "piece information has the pattern"),
        flag("plot_ballot", plot, &S::ballot, "piece information has the ballot"),
        flag("plot_taille", plot, &S::taille, "piece information has the size"),
        flag("plot_tissus", plot, &S::tissus, "piece information has the fabric"),
        flag("plot_quantite", plot, &S::quantite, "piece information has the quantity"),
        flag("plot_special", plot, &S::special,
            "piece information has the special name of the piece"),
        flag("plot_sewingLine", plot, &S::sewingLine, "draw sewing lines"),
        flag("plot_textInBottom", plot, &S::textInBottom,
            "layer labels stand below the fabric, not above it"),
        number("plot_spaceLayers", Kind::Length, plot, &S::spaceLayers, 0, 1000,
            "gap between the layers of a fabric, laid side by side"),
        flag("plot_noNotchCrossBar", generalPlot, &G::noNotchCrossBar,
            "draw notches without their cross bar"),
        number("plot_notchFactor", Kind::Factor, generalPlot, &G::notchFactor, 0.1, 10,
            "notches are drawn this many times as long as they are"),
        number("plot_pieceInfoLetterSize", Kind::Points, generalPlot, &G::pieceInfoLetterSize,
            kLetterSizeLadder.front(), kLetterSizeLadder.back(),
            "letter size of the piece information where there is room for it"),
        color("plot_color1", 0),
        color("plot_color2", 1),
        color("plot_color3", 2),
        color("plot_color4", 3),
        color("plot_color5", 4),
        color("plot_color6", 5),
        color("plot_color7", 6),
        color("plot_color8", 7),
    };
}

Descriptions nestSettings()
{
    using S = AutoMarkerSettings;
    using D = DrawingSettings;
    return {
        flag("nest_piecesInChart", autoMarker, &S::piecesInChart,
            "nest the pieces that the chart still asks for"),
        flag("nest_piecesInStandby", autoMarker, &S::piecesInStandby,
            "nest the groups that stand by"),
        number("nest_spaceNoOverlap", Kind::Length, drawing, &D::spaceNoOverlap, 0, 100,
            "space that is kept around a piece"),
        number("nest_curveStep", Kind::Length, drawing, &D::stepDigitalCurve, 0.01, 100,
            "distance of the points that a curve becomes"),
    };
}

} // namespace

MarkerSettings MarkerSettings::current()
{
    const CDbMarkerShareGlobales &shared = *CDbMarkerShareGlobales::instance();
    return {shared.cutSettings(), CDbMarkerOptions::mDefaultOptions.values(),
        CDbGeneralPlotOptions::mGeneralPlotOptions, shared.drawingSettings(),
        CAutoMarkerOptions::instance()->settings()};
}

void MarkerSettings::apply() const
{
    CDbMarkerShareGlobales::instance()->setCutSettings(cut);
    CDbMarkerShareGlobales::instance()->setDrawingSettings(drawing);
    CDbMarkerOptions::mDefaultOptions.setValues(plot);
    CDbGeneralPlotOptions::mGeneralPlotOptions = generalPlot;
    CAutoMarkerOptions::instance()->setSettings(autoMarker);
}

bool MarkerSettingDescription::setValueIn(MarkerSettings &settings, double value) const
{
    if (!(value >= lowest && value <= highest) || (isWhole() && value != std::floor(value))) {
        return false;
    }
    // A search for a smaller size goes from one to the next and would never end beside them.
    if (kind == Kind::Points && std::find(kLetterSizeLadder.begin(), kLetterSizeLadder.end(),
                                    value) == kLetterSizeLadder.end()) {
        return false;
    }
    write(settings, value);
    return true;
}

bool MarkerSettingDescription::isWhole() const
{
    return kind == Kind::Flag || kind == Kind::Points || kind == Kind::Choice ||
           kind == Kind::Color;
}

QString MarkerSettingDescription::unit() const
{
    switch (kind) {
    case Kind::Length:
        return QStringLiteral("cm");
    case Kind::Percent:
        return QStringLiteral("%");
    case Kind::Angle:
        return QStringLiteral("degrees");
    case Kind::Points:
        return QStringLiteral("points");
    case Kind::Flag:
    case Kind::Factor:
    case Kind::Choice:
    case Kind::Color:
        break;
    }
    return QString();
}

const Descriptions &markerSettingDescriptions()
{
    static const Descriptions all = [] {
        Descriptions joined;
        for (const Descriptions &group : {ansiOutlineSettings(), ansiCutterSettings(),
                 eastmanSettings(), plotSettings(), nestSettings()}) {
            joined.insert(joined.end(), group.begin(), group.end());
        }
        return joined;
    }();
    return all;
}

} // namespace KivSystem
