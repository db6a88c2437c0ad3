// ExportTools: values as the user reads them, shared by the formats.

#ifndef KIVPLOTOUT_EXPORTTOOLS_H
#define KIVPLOTOUT_EXPORTTOOLS_H

class QString;

namespace KivSystem {
namespace ExportTools {

/// A length in centimetres as the user's ruler shows it, without its unit: the ruler in X when
/// `isX`, otherwise the one in Y.
QString Nombre_A_String_Regle_Affichage(double value, bool isX);

} // namespace ExportTools
} // namespace KivSystem

#endif
