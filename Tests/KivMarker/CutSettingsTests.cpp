// The table of the cut settings.

#include "KivMarker/CutSettingsTable.h"
#include "KivMarker/ShareGlobales.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>

namespace KivSystem {
namespace {

TEST(CutSettings, EachEntryOfTheTableChangesItsOwnSettingAlone)
{
    std::set<std::string> names;
    const auto &table = cutSettingDescriptions();
    for (const CutSettingDescription &cut : table) {
        SCOPED_TRACE(cut.name);
        EXPECT_TRUE(names.insert(cut.name).second);
        CutSettings settings;
        const double standard = cut.valueIn(settings);
        EXPECT_GE(standard, cut.lowest);
        EXPECT_LE(standard, cut.highest);
        const double other = standard == cut.highest ? cut.lowest : cut.highest;
        EXPECT_TRUE(cut.setValueIn(settings, other));
        for (const CutSettingDescription &entry : table) {
            const double expected = &entry == &cut ? other : entry.valueIn(CutSettings());
            EXPECT_EQ(entry.valueIn(settings), expected) << entry.name;
        }
        for (const double wrong : {cut.lowest - 0.001, cut.highest + 0.001, std::nan("")}) {
            EXPECT_FALSE(cut.setValueIn(settings, wrong));
        }
        EXPECT_EQ(cut.valueIn(settings), other);
    }
    CutSettings settings;
    EXPECT_EQ(table[11].name, std::string("CutInternalOrder"));
    EXPECT_FALSE(table[11].setValueIn(settings, 0.5)) << "no choice lies between two";
}

TEST(CutSettings, TheSetterOfTheNotchOrderBelongsToTheGetterWithTheFrenchName)
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
