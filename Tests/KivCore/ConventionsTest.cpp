#include "KivCore/Conventions.h"

#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace KivSystem {
namespace {

TEST(Conventions, BadSettingsFallBackAndAreReportedByKeyAndValue)
{
    constexpr auto cm = LengthUnit::Centimetre;
    constexpr auto mm = LengthUnit::Millimetre;
    constexpr auto in = LengthUnit::Inch;
    const struct
    {
        QStringList settings; ///< length, rulerX, rulerY, decimals; "-" is not there
        LengthUnit length, rulerX, rulerY;
        int decimals;
        QStringList reported; ///< part of each problem
    } cases[] = {
        {{"-", "-", "-", "-"}, cm, cm, cm, -1, {}},
        {{"mm", "-", "in", "0"}, mm, mm, in, 0, {}},
        {{" IN ", "cm", "-", "6"}, in, cm, in, 6, {}},
        {{"yard", "", "-", "7"}, cm, cm, cm, -1, {"length has the value \"yard\"", "X", "\"7\""}},
        {{"mm", "km", "-", "-1"}, mm, mm, mm, -1, {"units/rulerX", "units/decimals"}},
        {{"-", "-", "-", "2.5"}, cm, cm, cm, -1, {"2.5"}},
    };
    const QStringList keys = {"units/length", "units/rulerX", "units/rulerY", "units/decimals"};
    const QTemporaryDir directory;
    for (const auto &c : cases) {
        QSettings settings(directory.filePath("a.ini"), QSettings::IniFormat);
        settings.clear();
        for (int i = 0; i < keys.size(); ++i) {
            if (c.settings.at(i) != "-") {
                settings.setValue(keys.at(i), c.settings.at(i));
            }
        }
        QStringList problems;
        const KivConventions read = conventionsFromSettings(settings, &problems);
        const std::string name = c.settings.join(' ').toStdString();
        EXPECT_EQ(read.length, c.length) << name;
        EXPECT_EQ(read.rulerX, c.rulerX) << name;
        EXPECT_EQ(read.rulerY, c.rulerY) << name;
        EXPECT_EQ(read.decimals, c.decimals) << name;
        ASSERT_EQ(problems.size(), c.reported.size()) << name;
        for (int i = 0; i < problems.size(); ++i) {
            EXPECT_TRUE(problems.at(i).contains(c.reported.at(i))) << problems.at(i).toStdString();
        }
    }
}

TEST(Conventions, ANumberThatWasStoredAsSuchIsReadBeforeItComesBackFromTheDisk)
{
    const QTemporaryDir directory;
    QSettings settings(directory.filePath("a.ini"), QSettings::IniFormat);
    settings.setValue("units/decimals", 3);
    EXPECT_EQ(conventionsFromSettings(settings).decimals, 3);
}

} // namespace
} // namespace KivSystem
