#include "KivCore/Conventions.h"

#include <QCoreApplication>
#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace KivSystem {

namespace {

constexpr LengthUnit kUnits[] = {LengthUnit::Centimetre, LengthUnit::Millimetre, LengthUnit::Inch};

QString translated(const char *text)
{
    return QCoreApplication::translate("KivSystem::KivLocale", text);
}

/// The settings of one run, and where their faults go.
class Reader
{
public:
    Reader(const QSettings &settings, QStringList *problems)
        : m_settings(settings)
        , m_problems(problems)
    {}

    LengthUnit unit(const QString &key, LengthUnit fallback) const
    {
        const std::optional<QString> text = value(key);
        if (!text) {
            return fallback;
        }
        for (const LengthUnit candidate : kUnits) {
            if (text->compare(unitSymbol(candidate), Qt::CaseInsensitive) == 0) {
                return candidate;
            }
        }
        report(key, *text, translated(QT_TRANSLATE_NOOP("KivSystem::KivLocale", "cm, mm or in")));
        return fallback;
    }

    int decimals(const QString &key) const
    {
        const std::optional<QString> text = value(key);
        if (!text) {
            return KivConventions::kDecimalsByUnit;
        }
        bool ok = false;
        const int number = text->toInt(&ok);
        if (ok && number >= 0 && number <= KivConventions::kMaximumDecimals) {
            return number;
        }
        report(key, *text,
            translated(QT_TRANSLATE_NOOP("KivSystem::KivLocale", "a whole number from 0 to %1"))
                .arg(KivConventions::kMaximumDecimals));
        return KivConventions::kDecimalsByUnit;
    }

private:
    /// Nothing when the key is not there. An ini file gives a list where a value has a comma.
    std::optional<QString> value(const QString &key) const
    {
        if (!m_settings.contains(key)) {
            return std::nullopt;
        }
        const QVariant value = m_settings.value(key);
        const bool isList = value.type() == QVariant::StringList;
        return (isList ? value.toStringList().join(QLatin1Char(',')) : value.toString()).trimmed();
    }

    void report(const QString &key, const QString &text, const QString &expected) const
    {
        if (m_problems) {
            m_problems->append(
                translated(QT_TRANSLATE_NOOP("KivSystem::KivLocale",
                               "The setting %1 has the value \"%2\"; expected is %3."))
                    .arg(key, text, expected));
        }
    }

    const QSettings &m_settings;
    QStringList *const m_problems;
};

} // namespace

QString unitSymbol(LengthUnit unit)
{
    switch (unit) {
    case LengthUnit::Millimetre:
        return QStringLiteral("mm");
    case LengthUnit::Inch:
        return QStringLiteral("in");
    case LengthUnit::Centimetre:
        break;
    }
    return QStringLiteral("cm");
}

KivConventions conventionsFromSettings(const QSettings &settings, QStringList *problems)
{
    const Reader reader(settings, problems);
    KivConventions conventions;
    conventions.length = reader.unit(QStringLiteral("units/length"), conventions.length);
    conventions.rulerX = reader.unit(QStringLiteral("units/rulerX"), conventions.length);
    conventions.rulerY = reader.unit(QStringLiteral("units/rulerY"), conventions.length);
    conventions.decimals = reader.decimals(QStringLiteral("units/decimals"));
    return conventions;
}

} // namespace KivSystem
