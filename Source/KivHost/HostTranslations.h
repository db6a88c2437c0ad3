// HostTranslations: the texts of the plug-ins and of Qt in the user's language.
//
// The .qm files lie below the plug-ins directory: translations/kiv_de.qm, translations/kiv_fr.qm.
#ifndef KIVHOST_HOSTTRANSLATIONS_H
#define KIVHOST_HOSTTRANSLATIONS_H

#include "HostSettings.h"

#include <QLocale>

class QDir;

namespace KivSystem {

/// Installs the first translation that there is among the languages of the locale; English,
/// the language of the texts themselves, needs none and ends the search. Without any the texts stay
/// English, which is no fault. The translators belong to the application object, which must exist.
/// Plug-ins keep some texts as they first need them: this comes before one is loaded.
void installTranslations(const QDir &pluginsDirectory, const QLocale &locale = QLocale());

/// The language that the source of a run or the user's settings choose, or the locale of the
/// system. Bad values, which are told elsewhere, choose nothing.
QLocale chosenLanguage(const SettingsSource &source = {});

} // namespace KivSystem

#endif
