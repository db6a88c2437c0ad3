// The settings of the marker library and their descriptions.

#include "KivMarker/MarkerSettings.h"
#include "KivMarker/ShareGlobales.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>

namespace KivSystem {
namespace {

TEST(MarkerSettings, EachDescriptionChangesItsOwnSettingAloneWithinItsRange)
{
    std::set<std::string> names;
    const auto &table = markerSettingDescriptions();
    for (const MarkerSettingDescription &setting : table) {
        SCOPED_TRACE(setting.name);
        EXPECT_TRUE(names.insert(setting.name).second);
        MarkerSettings settings;
        const double standard = setting.valueIn(settings);
        EXPECT_GE(standard, setting.lowest);
        EXPECT_LE(standard, setting.highest);
        const double other = standard == setting.highest ? setting.lowest : setting.highest;
        EXPECT_TRUE(setting.setValueIn(settings, other));
        for (const MarkerSettingDescription &entry : table) {
            const double expected = &entry == &setting ? other : entry.valueIn(MarkerSettings());
            EXPECT_EQ(entry.valueIn(settings), expected) << entry.name;
        }
        for (const double wrong :
            {setting.lowest - 0.001, setting.highest + 0.001, std::nan(""), HUGE_VAL}) {
            EXPECT_FALSE(setting.setValueIn(settings, wrong));
        }
        EXPECT_EQ(setting.setValueIn(settings, setting.lowest + 0.5), !setting.isWhole());
    }
}

TEST(MarkerSettings, LetterSizesAreThoseThatTextsAreFittedWith)
{
    for (const MarkerSettingDescription &setting : markerSettingDescriptions()) {
        MarkerSettings settings;
        for (int size = 0; size <= 400 && setting.kind == MarkerSettingDescription::Kind::Points;
             ++size) {
            const bool isOne =
                size == 10 || size == 18 || size == 24 || size == 27 || size == 30 || size == 36;
            EXPECT_EQ(setting.setValueIn(settings, size), isOne) << setting.name << ' ' << size;
        }
    }
}

TEST(MarkerSettings, WhatIsAppliedIsWhatTheReadersGet)
{
    MarkerSettings settings;
    settings.cut.cutNotchSize = 0.75;
    settings.plot.sewingLine = true;
    settings.plot.spaceLayers = 2.5F;
    settings.generalPlot.pieceInfoLetterSize = 9;
    settings.drawing.colors[7] = QColor(1, 2, 3);
    settings.drawing.stepDigitalCurve = 0.1;
    settings.autoMarker.piecesInStandby = false;
    settings.apply();
    const CDbMarkerShareGlobales *shared = CDbMarkerShareGlobales::instance();
    EXPECT_EQ(shared->getCutNotchSize(), 0.75);
    EXPECT_TRUE(CDbMarkerOptions::mDefaultOptions.sewingLine());
    EXPECT_EQ(CDbMarkerOptions::mDefaultOptions.spaceLayers(), 2.5F);
    EXPECT_EQ(CDbGeneralPlotOptions::mGeneralPlotOptions.pieceInfoLetterSize, 9);
    EXPECT_EQ(shared->getColorTable()[7], QColor(1, 2, 3));
    EXPECT_EQ(shared->getStepDigitalCurve(), 0.1);
    EXPECT_TRUE(CAutoMarkerOptions::instance()->markerPiecesInCharte());
    EXPECT_FALSE(CAutoMarkerOptions::instance()->markerPiecesInStandby());
    for (const MarkerSettingDescription &setting : markerSettingDescriptions()) {
        EXPECT_EQ(setting.valueIn(MarkerSettings::current()), setting.valueIn(settings))
            << setting.name;
    }
    MarkerSettings().apply();
}

TEST(MarkerSettings, EachPlotOptionIsReadByTheGetterOfItsName)
{
    using Options = CDbMarkerOptions;
    const std::pair<std::string, bool (Options::*)() const> getters[] = {
        {"pieceTrait", &Options::pieceTrait},
        {"pieceName", &Options::pieceName},
        {"pieceCode", &Options::pieceCode},
        {"pieceCodeReference", &Options::pieceCodeReference},
        {"pieceIdentification", &Options::pieceIdentification},
        {"description", &Options::description},
        {"styleName", &Options::styleName},
        {"pattern", &Options::pattern},
        {"ballot", &Options::ballot},
        {"taille", &Options::taille},
        {"tissus", &Options::tissus},
        {"quantite", &Options::quantite},
        {"special", &Options::special},
        {"sewingLine", &Options::sewingLine},
        {"textInBottom", &Options::textInBottom},
    };
    for (const MarkerSettingDescription &setting : markerSettingDescriptions()) {
        MarkerSettings settings;
        const double standard = setting.valueIn(settings);
        ASSERT_TRUE(setting.setValueIn(
            settings, standard == setting.highest ? setting.lowest : setting.highest));
        Options options;
        options.setValues(settings.plot);
        for (const auto &[name, getter] : getters) {
            const bool isChanged = (options.*getter)() != (Options().*getter)();
            EXPECT_EQ(isChanged, setting.name == "plot_" + name) << setting.name << ' ' << name;
        }
    }
}

TEST(MarkerSettings, TheColoursOfPiecesCanBeToldFromPaperAndFromEachOther)
{
    std::vector<QColor> seen{Qt::white, Qt::black};
    for (const QColor &color : MarkerSettings().drawing.colors) {
        for (const QColor &other : seen) {
            const int red = color.red() - other.red();
            const int green = color.green() - other.green();
            const int blue = color.blue() - other.blue();
            EXPECT_GT(red * red + green * green + blue * blue, 70 * 70)
                << color.name().toStdString() << ' ' << other.name().toStdString();
        }
        seen.push_back(color);
    }
}

TEST(MarkerSettings, TheSetterOfTheNotchOrderBelongsToTheGetterWithTheFrenchName)
{
    CDbMarkerShareGlobales *shared = CDbMarkerShareGlobales::instance();
    shared->setCutNotchOrder(NotchAfterOutline);
    shared->setEastCutNotchOrder(NotchDuringOutline);
    EXPECT_EQ(shared->getCutOrderCrans(), NotchAfterOutline);
    EXPECT_EQ(shared->getEastCutOrderCrans(), NotchDuringOutline);
    shared->setCutSettings(CutSettings());
    EXPECT_EQ(shared->getCutOrderCrans(), NotchBeforeOutline);
}

} // namespace
} // namespace KivSystem
