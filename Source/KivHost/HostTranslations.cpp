#include "HostTranslations.h"

#include "HostSettings.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QSettings>
#include <QTranslator>

#include <memory>

namespace KivSystem {

namespace {

bool installTranslator(const QLocale &language, const QString &name, const QString &directory)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(language, name, QStringLiteral("_"), directory)) {
        return false;
    }
    translator->setParent(QCoreApplication::instance());
    return QCoreApplication::installTranslator(translator.release());
}

} // namespace

void installTranslations(const QDir &pluginsDirectory, const QLocale &locale)
{
    if (locale.language() == QLocale::C) {
        return; // LANGUAGE names languages all the same, but does not count then
    }
    const QString directory = pluginsDirectory.absoluteFilePath(QStringLiteral("translations"));
    for (const QString &name : locale.uiLanguages()) {
        const QLocale language(name);
        if (language.language() == QLocale::English) {
            return;
        }
        if (installTranslator(language, QStringLiteral("kiv"), directory)) {
            // The standard buttons of dialogs follow the plug-ins' texts, where Qt has them.
            installTranslator(language, QStringLiteral("qtbase"),
                QLibraryInfo::location(QLibraryInfo::TranslationsPath));
            return;
        }
    }
}

QLocale windowLanguage()
{
    const Setting &setting = windowLanguageSetting();
    const QSettings store;
    const QString language = currentText(setting, store);
    return language == setting.defaultText || !findStoredFault(setting, store).isEmpty()
               ? QLocale()
               : QLocale(language);
}

} // namespace KivSystem
