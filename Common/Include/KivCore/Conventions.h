// KivConventions: the user's units and decimals, and how they are read from the settings.
//
// Settings keys: "units/length", "units/rulerX", "units/rulerY" with the texts cm, mm and in (the
// rulers default to the length unit), and "units/decimals", 0 to 6.
#ifndef KIVCORE_CONVENTIONS_H
#define KIVCORE_CONVENTIONS_H

#include "KivCore/Export.h"

class QSettings;
class QString;
class QStringList;

namespace KivSystem {

enum class LengthUnit
{
    Centimetre,
    Millimetre,
    Inch
};

/// "cm", "mm" or "in".
KIVCORE_EXPORT QString unitSymbol(LengthUnit unit);

struct KivConventions
{
    static constexpr int kDecimalsByUnit = -1;
    static constexpr int kMaximumDecimals = 6;

    LengthUnit length = LengthUnit::Centimetre;
    LengthUnit rulerX = LengthUnit::Centimetre;
    LengthUnit rulerY = LengthUnit::Centimetre;

    /// Decimals of everything that is shown. By unit: 2 for cm, 1 for mm, 3 for in, and 2 for
    /// numbers, angles and percentages.
    int decimals = kDecimalsByUnit;
};

/// Reads the conventions. A missing key gives its default; so does a bad value, which is also
/// reported by one translated sentence in `problems` when that is not null.
KIVCORE_EXPORT KivConventions conventionsFromSettings(
    const QSettings &settings, QStringList *problems = nullptr);

} // namespace KivSystem

#endif
