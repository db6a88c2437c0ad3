#include "HostTranslations.h"

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

QLocale chosenLanguage(const SettingsSource &source)
{
    const Setting &setting = *findSetting(QStringLiteral("language"));
    const auto store = source.file.isEmpty()
                           ? std::make_unique<QSettings>()
                           : std::make_unique<QSettings>(source.file, QSettings::IniFormat);
    QString language = currentText(setting, *store);
    for (const QString &assignment : source.assignments) {
        if (assignment.startsWith(setting.name + QLatin1Char('='))) {
            language = assignment.mid(setting.name.size() + 1);
        }
    }
    const bool isOne = language != setting.defaultText && setting.type.parse(language).isValid();
    return isOne ? QLocale(language) : QLocale();
}

} // namespace KivSystem
