#include "KivCore/Locale.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <limits>

namespace KivSystem {
namespace {

constexpr auto kBare = KivLocale::NoOption;
constexpr auto kUnit = KivLocale::WithUnit;

KivLocale localeOf(const char *name, LengthUnit unit = LengthUnit::Centimetre,
    int decimals = KivConventions::kDecimalsByUnit)
{
    KivConventions conventions;
    conventions.length = unit;
    conventions.decimals = decimals;
    return KivLocale(QLocale(name), conventions);
}

TEST(KivLocale, ShowsLengthsInTheUserUnitWithItsDecimals)
{
    const struct
    {
        const char *locale;
        LengthUnit unit;
        int decimals;
        double centimetres;
        const char *bare;
        const char *withUnit;
    } cases[] = {
        {"C", LengthUnit::Centimetre, -1, 12.345, "12.35", "12.35 cm"},
        {"C", LengthUnit::Millimetre, -1, 12.34, "123.4", "123.4 mm"},
        {"C", LengthUnit::Inch, -1, 2.54, "1.000", "1.000 in"},
        {"C", LengthUnit::Centimetre, 0, 0.5, "1", "1 cm"},
        {"C", LengthUnit::Centimetre, 6, 1.0 / 3.0, "0.333333", "0.333333 cm"},
        {"de_DE", LengthUnit::Millimetre, -1, -123456.78, "-1234567,8", "-1234567,8 mm"},
        {"fr_FR", LengthUnit::Centimetre, -1, 1234567.0, "1234567,00", "1234567,00 cm"},
        {"sv_SE", LengthUnit::Centimetre, -1, -1.5, "−1,50", "−1,50 cm"},
        {"C", LengthUnit::Centimetre, -1, -0.0, "0.00", "0.00 cm"},
        {"sv_SE", LengthUnit::Centimetre, -1, -0.0049, "0,00", "0,00 cm"},
        {"C", LengthUnit::Centimetre, -1, -0.0051, "-0.01", "-0.01 cm"},
        {"C", LengthUnit::Centimetre, -1, 1e-300, "0.00", "0.00 cm"},
        {"C", LengthUnit::Centimetre, -1, 1e15, "1000000000000000.00", "1000000000000000.00 cm"},
    };
    for (const auto &c : cases) {
        const KivLocale locale = localeOf(c.locale, c.unit, c.decimals);
        EXPECT_EQ(locale.formatLength(c.centimetres, kBare), c.bare) << c.withUnit;
        EXPECT_EQ(locale.formatLength(c.centimetres, kUnit), c.withUnit);
    }
}

TEST(KivLocale, EachRulerHasAUnitOfItsOwn)
{
    KivConventions conventions;
    conventions.rulerX = LengthUnit::Inch;
    conventions.rulerY = LengthUnit::Millimetre;
    const KivLocale locale(QLocale::c(), conventions);
    EXPECT_EQ(locale.formatLengthX(5.08, kUnit), "2.000 in");
    EXPECT_EQ(locale.formatLengthY(5.08, kBare), "50.8");
    EXPECT_EQ(locale.formatLength(5.08, kUnit), "5.08 cm");
    EXPECT_EQ(locale.precision(), 2);
}

TEST(KivLocale, SignsOfAnglesAndPercentagesStandDirectlyBehindTheNumber)
{
    const KivLocale german = localeOf("de_DE");
    EXPECT_EQ(german.formatAngle(-45.125, kUnit), "-45,13°");
    EXPECT_EQ(german.formatAngle(360, kBare), "360,00");
    EXPECT_EQ(german.formatPercentage(0.985, kUnit), "98,50%");
    EXPECT_EQ(german.formatPercentage(1, kBare), "100,00");
    EXPECT_EQ(german.formatNumber(1234.5, kUnit), "1234,50");
}

TEST(KivLocale, ReadsEveryUnitWhateverTheUserUnit)
{
    const struct
    {
        double centimetres;
        QStringList texts;
    } cases[] = {
        {2.54, {"25.4", "25.4mm", "1 in", "1inch", "1\"", "1 \t″", "2.54 cm", "2.54\u00a0CM"}},
        {10, {"  +10  cm ", "0010 cm", "100.0"}},
        {-0.15, {"-1.5 mm", "−1.5", "-.15 cm"}},
        {0, {"-0 cm"}},
    };
    const KivLocale locale = localeOf("C", LengthUnit::Millimetre);
    for (const auto &c : cases) {
        for (const QString &text : c.texts) {
            const KivParse parsed = locale.parseLength(text);
            EXPECT_TRUE(parsed.valid && parsed.canBecomeValid) << text.toStdString();
            EXPECT_DOUBLE_EQ(parsed.value, c.centimetres) << text.toStdString();
            EXPECT_TRUE(parsed.message.isEmpty()) << text.toStdString();
        }
    }
}

TEST(KivLocale, TellsABeginningFromAnError)
{
    const struct
    {
        const char *locale;
        bool canBecomeValid;
        QStringList texts;
    } cases[] = {
        {"C", true, {"", "  ", "-", "+", "1.", "-.", "10 c", "10 inc"}},
        {"de_DE", true, {"1,", "-,"}},
        {"sv_SE", true, {"−", "−1,"}},
        {"C", false, {"cm", "1. cm", "--1", "1 2", "10 km", "10 cm2", "10 cmm", "1.2.3", "1,5"}},
        {"C", false, {"nan", "inf", "1e5", "1E", "0x10", "10°"}},
        {"en_US", false, {"1,234"}},
        {"de_DE", false, {"1.234", "1.234,5"}},
        {"fr_FR", false, {"1\u202f234,5", "1 234"}},
    };
    for (const auto &c : cases) {
        for (const QString &text : c.texts) {
            const KivParse parsed = localeOf(c.locale).parseLength(text);
            EXPECT_FALSE(parsed.valid) << c.locale << ": " << text.toStdString();
            EXPECT_EQ(parsed.canBecomeValid, c.canBecomeValid) << c.locale << text.toStdString();
            EXPECT_EQ(parsed.value, 0.0) << text.toStdString();
            EXPECT_FALSE(parsed.message.isEmpty()) << text.toStdString();
        }
    }
}

TEST(KivLocale, RefusesNumbersThatNoDoubleHolds)
{
    const KivLocale locale = localeOf("C", LengthUnit::Inch);
    EXPECT_FALSE(locale.parseLength(QString(400, '9')).valid);
    EXPECT_FALSE(locale.parseLength('1' + QString(308, '0')).valid)
        << "finite in inches, infinite in centimetres";
    const KivParse tiny = locale.parseLength("0." + QString(400, '0') + "1");
    EXPECT_TRUE(tiny.valid);
    EXPECT_EQ(tiny.value, 0.0);
    for (const double odd : {std::numeric_limits<double>::infinity(),
             -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(locale.parseLength(locale.formatLength(odd, kUnit)).valid);
    }
}

TEST(KivLocale, ReadsAnglesAndPercentages)
{
    const KivLocale french = localeOf("fr_FR");
    EXPECT_DOUBLE_EQ(french.parseAngle("-12,5°").value, -12.5);
    EXPECT_DOUBLE_EQ(french.parseAngle("90 deg").value, 90);
    EXPECT_TRUE(french.parseAngle("90 de").canBecomeValid);
    EXPECT_FALSE(french.parseAngle("90 %").canBecomeValid);
    EXPECT_EQ(french.parsePercentage("29%").value, 0.29);
    EXPECT_EQ(french.parsePercentage("98,5 %").value, 0.985);
    EXPECT_EQ(french.parsePercentage("100").value, 1);
    EXPECT_FALSE(french.parsePercentage("100 cm").valid);
}

TEST(KivLocale, ReadsBackWhatItWrites)
{
    const double values[] = {0, 0.01, -0.01, 1, -1, 2.54, 12.34, -99.99, 360, 5000, 1234567.89,
        std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    for (const char *name : {"C", "de_DE", "fr_FR", "sv_SE", "en_US", "ar_EG", "fa_IR", "he_IL"}) {
        for (const LengthUnit unit :
            {LengthUnit::Centimetre, LengthUnit::Millimetre, LengthUnit::Inch}) {
            const KivLocale locale = localeOf(name, unit);
            for (const double value : values) {
                for (const auto option : {kBare, kUnit}) {
                    const QString text = locale.formatLength(value, option);
                    const KivParse parsed = locale.parseLength(text);
                    EXPECT_TRUE(parsed.valid) << name << ": " << text.toStdString();
                    EXPECT_NEAR(parsed.value, value, 0.00128) << name << ": " << text.toStdString();
                    EXPECT_EQ(locale.formatLength(parsed.value, option), text) << name;

                    const QString angle = locale.formatAngle(value, option);
                    EXPECT_NEAR(locale.parseAngle(angle).value, value, 1e-9) << angle.toStdString();
                    const QString percent = locale.formatPercentage(value, option);
                    EXPECT_NEAR(locale.parsePercentage(percent).value, value, 1e-6)
                        << percent.toStdString();
                }
            }
        }
    }
}

TEST(KivLocale, TakesTheDefaultLocaleAndTheConventionsOfTheApplication)
{
    KivConventions inches;
    inches.length = LengthUnit::Inch;
    KivLocale::setApplicationConventions(inches);
    QLocale::setDefault(QLocale("de_DE"));
    const KivLocale german;
    const KivLocale american{QLocale("en_US")};
    QLocale::setDefault(QLocale::c());
    KivLocale::setApplicationConventions(KivConventions());

    EXPECT_EQ(german.formatLength(2.54, kUnit), "1,000 in");
    EXPECT_EQ(american.formatLength(2.54, kUnit), "1.000 in");
    EXPECT_EQ(german.precision(), 3);
    EXPECT_EQ(KivLocale().formatLength(2.54, kUnit), "2.54 cm");
}

} // namespace
} // namespace KivSystem
