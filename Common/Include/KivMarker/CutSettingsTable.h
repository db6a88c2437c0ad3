/// What is known of each cut setting: its name, range, default and meaning. The host lists, stores
/// and sets them by this table; the panels of the cut formats have the same ranges.

#ifndef KIVMARKER_CUTSETTINGSTABLE_H
#define KIVMARKER_CUTSETTINGSTABLE_H

#include "KivMarker/CutSettings.h"

#include <QString>

#include <variant>
#include <vector>

namespace KivSystem {

struct CutSettingDescription
{
    enum class Kind
    {
        Flag,
        Length,  ///< cm
        Percent, ///< 100 is the true size
        Angle,   ///< degrees
        Choice,  ///< a whole number; `meaning` tells what each stands for
    };

    const char *name; ///< "CutScaleX", the same in the store and on the command line
    Kind kind;
    std::variant<bool CutSettings::*, short CutSettings::*, double CutSettings::*> member;
    double lowest;
    double highest;
    const char *meaning;

    /// The value in a record; a flag is 0 or 1.
    double valueIn(const CutSettings &settings) const;
    /// Puts the value into the record; false when it is out of range or, for a choice or a flag, no
    /// whole number, and then nothing changes.
    bool setValueIn(CutSettings &settings, double value) const;
    /// "cm", "%", "degrees", or empty.
    QString unit() const;
};

/// All cut settings, those of the ANSI cutters first, in the order of their panels.
const std::vector<CutSettingDescription> &cutSettingDescriptions();

} // namespace KivSystem

#endif
