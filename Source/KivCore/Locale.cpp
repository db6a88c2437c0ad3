#include "KivCore/Locale.h"

#include "QuantityParser.h"

#include <cmath>

namespace KivSystem {

namespace {

constexpr double kCentimetresPerInch = 2.54;
constexpr double kMillimetresPerCentimetre = 10.0;
constexpr int kPlainDecimals = 2;
constexpr QChar kDegree(0x00B0);
constexpr QChar kDoublePrime(0x2033);

KivConventions &sharedConventions()
{
    static KivConventions conventions;
    return conventions;
}

double unchanged(double value)
{
    return value;
}

// A division by 10 or 100 gives the double nearest to the decimal that was typed.
double fromMillimetres(double millimetres)
{
    return millimetres / kMillimetresPerCentimetre;
}

double fromInches(double inches)
{
    return inches * kCentimetresPerInch;
}

double fromPercent(double percent)
{
    return percent / 100.0;
}

double (*toCentimetres(LengthUnit unit))(double)
{
    switch (unit) {
    case LengthUnit::Millimetre:
        return fromMillimetres;
    case LengthUnit::Inch:
        return fromInches;
    case LengthUnit::Centimetre:
        break;
    }
    return unchanged;
}

double fromCentimetres(double centimetres, LengthUnit unit)
{
    switch (unit) {
    case LengthUnit::Millimetre:
        return centimetres * kMillimetresPerCentimetre;
    case LengthUnit::Inch:
        return centimetres / kCentimetresPerInch;
    case LengthUnit::Centimetre:
        break;
    }
    return centimetres;
}

} // namespace

KivLocale::KivLocale() : KivLocale(QLocale()) {}

KivLocale::KivLocale(const QLocale &locale) : KivLocale(locale, sharedConventions()) {}

KivLocale::KivLocale(const QLocale &locale, const KivConventions &conventions)
    : QLocale(locale)
    , m_conventions(conventions)
{
    setNumberOptions(QLocale::OmitGroupSeparator);
}

KivConventions KivLocale::applicationConventions()
{
    return sharedConventions();
}

void KivLocale::setApplicationConventions(const KivConventions &conventions)
{
    sharedConventions() = conventions;
}

int KivLocale::precision() const
{
    return decimalsFor(m_conventions.length);
}

QString KivLocale::formatLength(double centimetres, Options options) const
{
    return lengthText(centimetres, m_conventions.length, options);
}

QString KivLocale::formatLengthX(double centimetres, Options options) const
{
    return lengthText(centimetres, m_conventions.rulerX, options);
}

QString KivLocale::formatLengthY(double centimetres, Options options) const
{
    return lengthText(centimetres, m_conventions.rulerY, options);
}

QString KivLocale::formatAngle(double degrees, Options options) const
{
    const QString number = fixed(degrees, decimalsOr(kPlainDecimals));
    return options.testFlag(WithUnit) ? number + kDegree : number;
}

QString KivLocale::formatPercentage(double factor, Options options) const
{
    const QString number = fixed(factor * 100.0, decimalsOr(kPlainDecimals));
    return options.testFlag(WithUnit) ? number + percent() : number;
}

QString KivLocale::formatNumber(double number, Options) const
{
    return fixed(number, decimalsOr(kPlainDecimals));
}

KivParse KivLocale::parseLength(const QString &text) const
{
    static const std::vector<UnitWord> words = {
        {unitSymbol(LengthUnit::Centimetre), unchanged},
        {unitSymbol(LengthUnit::Millimetre), fromMillimetres},
        {unitSymbol(LengthUnit::Inch), fromInches},
        {QStringLiteral("inch"), fromInches},
        {QStringLiteral("\""), fromInches},
        {QString(kDoublePrime), fromInches},
    };
    return parseQuantity(
        text, *this, toCentimetres(m_conventions.length), words, QStringLiteral("cm, mm, in"));
}

KivParse KivLocale::parseAngle(const QString &text) const
{
    static const std::vector<UnitWord> words = {
        {QString(kDegree), unchanged},
        {QStringLiteral("deg"), unchanged},
    };
    return parseQuantity(text, *this, unchanged, words, QString(kDegree));
}

KivParse KivLocale::parsePercentage(const QString &text) const
{
    const std::vector<UnitWord> words = {
        {QStringLiteral("%"), fromPercent},
        {QString(percent()), fromPercent},
    };
    return parseQuantity(text, *this, fromPercent, words, QString(percent()));
}

int KivLocale::decimalsFor(LengthUnit unit) const
{
    switch (unit) {
    case LengthUnit::Millimetre:
        return decimalsOr(1);
    case LengthUnit::Inch:
        return decimalsOr(3);
    case LengthUnit::Centimetre:
        break;
    }
    return decimalsOr(2);
}

int KivLocale::decimalsOr(int byUnit) const
{
    return m_conventions.decimals < 0
               ? byUnit
               : qMin(m_conventions.decimals, KivConventions::kMaximumDecimals);
}

QString KivLocale::fixed(double number, int decimals) const
{
    const QString magnitude = toString(std::fabs(number), 'f', decimals);
    const bool isZero = magnitude == toString(0.0, 'f', decimals);
    const bool isNegative = std::signbit(number) && !std::isnan(number) && !isZero;
    return isNegative ? negativeSign() + magnitude : magnitude;
}

QString KivLocale::lengthText(double centimetres, LengthUnit unit, Options options) const
{
    const QString number = fixed(fromCentimetres(centimetres, unit), decimalsFor(unit));
    return options.testFlag(WithUnit) ? number + QLatin1Char(' ') + unitSymbol(unit) : number;
}

} // namespace KivSystem
