#include "ExportTools.h"

#include "KivCore/Locale.h"

namespace KivSystem {
namespace ExportTools {

QString Nombre_A_String_Regle_Affichage(double value, bool isX)
{
    const KivLocale locale;
    return isX ? locale.formatLengthX(value, KivLocale::NoOption)
               : locale.formatLengthY(value, KivLocale::NoOption);
}

} // namespace ExportTools
} // namespace KivSystem
