/// All settings of the marker library that a host keeps, and what is known of each: its name,
/// range, default and meaning. The host lists, stores and sets them by these descriptions; the
/// panels of the cut formats have the same ranges.

#ifndef KIVMARKER_MARKERSETTINGS_H
#define KIVMARKER_MARKERSETTINGS_H

#include "KivMarker/AutoMarkerOptions.h"
#include "KivMarker/CutSettings.h"
#include "KivMarker/DrawingSettings.h"
#include "KivMarker/GeneralPlotOptions.h"
#include "KivMarker/MarkerOptions.h"

#include <QString>

#include <functional>
#include <vector>

namespace KivSystem {

/// Constructing it gives the defaults.
struct MarkerSettings
{
    CutSettings cut;
    MarkerPlotOptions plot;
    CDbGeneralPlotOptions generalPlot;
    DrawingSettings drawing;
    AutoMarkerSettings autoMarker;

    /// What the library obeys now.
    static MarkerSettings current();
    /// Makes the library obey these from here on; main thread only.
    void apply() const;
};

struct MarkerSettingDescription
{
    enum class Kind
    {
        Flag,
        Length,  ///< cm
        Percent, ///< 100 is the true size
        Angle,   ///< degrees
        Factor,
        Points, ///< a letter size: one of kLetterSizeLadder
        Choice, ///< a whole number; `meaning` tells what each stands for
        Color,  ///< the whole number 0xRRGGBB
    };

    const char *name; ///< on the command line: "CutScaleX", "plot_pieceName"
    Kind kind;
    double lowest;
    double highest;
    const char *meaning;
    /// The value in a record; a flag is 0 or 1.
    std::function<double(const MarkerSettings &)> valueIn;
    std::function<void(MarkerSettings &, double)> write; ///< checks nothing

    /// Puts the value into the record; false when it is out of range, between two whole numbers
    /// where only these count, or no letter size where one is asked for; then nothing changes.
    bool setValueIn(MarkerSettings &settings, double value) const;
    /// "cm", "%", "degrees", "points", or empty.
    QString unit() const;
    /// Whether only whole numbers count.
    bool isWhole() const;
};

/// All settings, those of the ANSI cutters first, in the order of their panels; then those of the
/// Eastman cutters, of plots and of nesting.
const std::vector<MarkerSettingDescription> &markerSettingDescriptions();

} // namespace KivSystem

#endif
