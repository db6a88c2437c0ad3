#include "KivCore/Validator.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <limits>

namespace KivSystem {
namespace {

using Flags = std::pair<bool, bool>;

QLocale german()
{
    return QLocale("de_DE");
}

TEST(KivValidator, RefusesNothingWhileTheUserTypes)
{
    KivLengthValidator validator(0, 100);
    validator.setLocale(german());
    const KivLengthValidator optional(0, 100, true);
    const struct
    {
        QValidator::State state;
        QStringList texts;
    } cases[] = {
        {QValidator::Acceptable, {"1,5", " 1,5 mm ", "101", "-7"}},
        {QValidator::Intermediate, {"", "   ", "1,", "1.5", "abc"}},
    };
    int position = 0;
    for (const auto &c : cases) {
        for (const QString &text : c.texts) {
            QString typed = text;
            EXPECT_EQ(validator.validate(typed, position), c.state) << text.toStdString();
            EXPECT_EQ(typed, text) << "blanks can be typed";
        }
    }
    QString blank = " ";
    EXPECT_EQ(optional.validate(blank, position), QValidator::Acceptable);
}

TEST(KivValidator, FixupKeepsTheLongestValueAtTheHead)
{
    KivLengthValidator validator(0, 1);
    validator.setLocale(german());
    const QStringList cases = {"12,5 cmx", "12,50 cm", "12.5", "12,00 cm", " 30 mmm ", "3,00 cm",
        "1,", "1,00 cm", "500", "500,00 cm", "abc", "abc", "  ", "  ", "-", "-"};
    for (int i = 0; i < cases.size(); i += 2) {
        QString text = cases.at(i);
        validator.fixup(text);
        EXPECT_EQ(text, cases.at(i + 1)) << cases.at(i).toStdString();
    }
}

TEST(KivValidator, BoundsAreInclusiveUpToAHair)
{
    const KivPercentageValidator factor(0.1, 1);
    const KivAngleValidator angle(0, 360, true);
    EXPECT_EQ(factor.validAndInRange("10%"), Flags(true, true));
    EXPECT_EQ(factor.validAndInRange(" 100 "), Flags(true, true));
    EXPECT_EQ(factor.validAndInRange("9.9999999999%"), Flags(true, true)) << "1e-12 off";
    EXPECT_EQ(factor.validAndInRange("9.9999999998%"), Flags(true, false));
    EXPECT_EQ(factor.validAndInRange("100.0000000002"), Flags(true, false));
    EXPECT_EQ(factor.validAndInRange("50 cm"), Flags(false, false));
    EXPECT_EQ(factor.validAndInRange("5."), Flags(false, false));
    EXPECT_EQ(factor.validAndInRange("  "), Flags(false, false));
    EXPECT_EQ(angle.validAndInRange("  "), Flags(true, true));
    EXPECT_EQ(angle.validAndInRange("360°"), Flags(true, true));
    EXPECT_EQ(angle.validAndInRange("-0.01"), Flags(true, false));
}

TEST(KivValidator, ShowsItsBoundsClampedToTheWidestOfTheKind)
{
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(KivAngleValidator(-400, 1e9).valueRange(), std::make_pair(-360.0, 360.0));
    EXPECT_EQ(KivAngleValidator(kNaN, kNaN).valueRange(), std::make_pair(-360.0, 360.0));
    EXPECT_EQ(KivPercentageValidator(-1, 0.5).valueRange(), std::make_pair(0.0, 0.5));
    EXPECT_EQ(
        KivLengthValidator(-1e10, 1e10).valueRange(), std::make_pair(-2147483648.0, 2147483647.0));

    KivLengthValidator length(0.25, 5000);
    length.setLocale(german());
    EXPECT_EQ(length.valueRangeStr(), std::make_pair(QString("0,25 cm"), QString("5000,00 cm")));
    EXPECT_EQ(KivLengthValidator(0.004, 1.006).typableRangeStr(),
        std::make_pair(QString("0.01 cm"), QString("1.00 cm")));
    EXPECT_EQ(KivLengthValidator(-1.006, -0.004).typableRangeStr(),
        std::make_pair(QString("-1.00 cm"), QString("-0.01 cm")));
}

} // namespace
} // namespace KivSystem
