// Reads a number with an optional unit behind it, as KivLocale writes them.
//
//     quantity = [sign] digits [decimal sign digits] [blanks] [unit]
//
// The digits before the decimal sign may be missing when some stand behind it. Direction marks,
// which text pasted from a right-to-left program holds, are passed over.
#ifndef KIVCORE_QUANTITYPARSER_H
#define KIVCORE_QUANTITYPARSER_H

#include "KivCore/Locale.h"

#include <QString>

#include <vector>

namespace KivSystem {

/// A word that may stand behind the number, and what it makes of it.
struct UnitWord
{
    QString text;               ///< compared without regard to case
    double (*toInside)(double); ///< from this unit to that of the program
};

/// Reads `text` with the signs and digits of `locale`. `bare` converts a number without a unit.
/// `units` is what a message names as the permitted units.
KivParse parseQuantity(const QString &text, const QLocale &locale, double (*bare)(double),
    const std::vector<UnitWord> &words, const QString &units);

} // namespace KivSystem

#endif
