// KivLocale: lengths, angles, percentages and numbers as the user reads and types them.
//
// Inside the program a length is in centimetres, an angle in degrees, a percentage a factor (1 is
// 100 percent). In a German locale with millimetres:
//
//     formatLength(12.34, NoOption)      "123,4"
//     formatLength(12.34, WithUnit)      "123,4 mm"
//     formatAngle(45, WithUnit)          "45,00°"
//     formatPercentage(0.985, WithUnit)  "98,50%"
//     parseLength("2 in").value          5.08
#ifndef KIVCORE_LOCALE_H
#define KIVCORE_LOCALE_H

#include "KivCore/Conventions.h"
#include "KivCore/Export.h"

#include <QFlags>
#include <QLocale>
#include <QString>

namespace KivSystem {

/// What a parser found in a text.
struct KivParse
{
    bool canBecomeValid = false; ///< the text is valid, or becomes so by going on typing
    bool valid = false;          ///< the text is a value now
    double value = 0.0;          ///< the value, 0 when there is none
    QString message;             ///< translated reason, empty when the text is valid
};

class KIVCORE_EXPORT KivLocale : public QLocale
{
public:
    enum Option
    {
        NoOption = 0, ///< the bare number
        WithUnit = 2, ///< the number with its unit: what a text field shows
    };
    Q_DECLARE_FLAGS(Options, Option)

    /// The default locale with the application's conventions.
    KivLocale();
    /// `locale` with the application's conventions.
    explicit KivLocale(const QLocale &locale);
    KivLocale(const QLocale &locale, const KivConventions &conventions);

    /// Conventions of the process, cm by default. Locales made before a change keep theirs.
    static KivConventions applicationConventions();
    static void setApplicationConventions(const KivConventions &conventions);

    /// Decimals of a length in the user's unit.
    int precision() const;

    /// The number with the decimals in use, rounded to nearest, with the sign and the decimal sign
    /// of the locale and without group separators; zero never has a sign. Infinity and NaN give
    /// the texts of QLocale, which do not parse.
    QString formatLength(double centimetres, Options options = NoOption) const;
    QString formatLengthX(double centimetres, Options options = NoOption) const;
    QString formatLengthY(double centimetres, Options options = NoOption) const;
    QString formatAngle(double degrees, Options options = NoOption) const;
    QString formatPercentage(double factor, Options options = NoOption) const;
    QString formatNumber(double number, Options options = NoOption) const;

    /// The reverse of the formatters, with or without a unit. A length may bear any unit: cm, mm,
    /// in, inch or a double quote; without one it is in the user's unit. An angle may bear a degree
    /// sign or "deg". Only the decimal sign of the locale is taken. Group separators and exponents
    /// are refused: a German "1.234" is an error, neither 1.234 nor 1234.
    KivParse parseLength(const QString &text) const;
    KivParse parseAngle(const QString &text) const;
    KivParse parsePercentage(const QString &text) const;

private:
    int decimalsFor(LengthUnit unit) const;
    int decimalsOr(int byUnit) const;
    QString fixed(double number, int decimals) const;
    QString lengthText(double centimetres, LengthUnit unit, Options options) const;

    KivConventions m_conventions;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(KivLocale::Options)

} // namespace KivSystem

#endif
