// What the formats for ANSI and for Drastem cutters do otherwise than their base.

#include "ANSIProcessor.h"
#include "CutSupport.h"
#include "Dialogs/ANSIOptionsWidget.h"
#include "DrastemProcessor.h"

namespace KivSystem {
namespace {

template <class Processor>
class Variant : public Processor
{
public:
    using Processor::configFile;
    using Processor::getNotchLineTo0;
    using Processor::getSvgOpt;
};

TEST_F(CutTest, NotchesOfAnsiCuttersTakeTheirFirstLineFromTheSettings)
{
    QDomDocument config;
    config.setContent(QByteArray("<n lineto0='line' linetopenup='up' linetonopenup='down'/>"));
    const QDomElement notch = config.documentElement();
    const struct
    {
        bool hasNotchCommand;
        short order;
        bool isCuttingEdge;
        const char *expected;
    } rows[] = {
        {false, NotchNone, false, "up"},
        {false, NotchDuringOutline, true, "up"},
        {false, NotchBeforeOutline, true, "up"},
        {false, NotchAfterOutline, false, "up"},
        {true, NotchNone, true, "line"},
        {true, NotchDuringOutline, false, "down"},
        {true, NotchDuringOutline, true, "down"},
        {true, NotchBeforeOutline, false, "line"},
        {true, NotchBeforeOutline, true, "down"},
        {true, NotchAfterOutline, true, "line"},
    };
    Variant<NC::ANSIProcessor> ansi;
    Variant<NC::DrastemProcessor> drastem;
    for (const auto &row : rows) {
        settings.setCutCommandM19(row.hasNotchCommand);
        settings.setCutNotchOrder(row.order);
        settings.setCutCuttingEdge(row.isCuttingEdge);
        EXPECT_EQ(ansi.getNotchLineTo0(notch), row.expected) << row.order << row.isCuttingEdge;
        EXPECT_EQ(drastem.getNotchLineTo0(notch), "line");
    }
}

TEST_F(CutTest, AnsiAndDrastemCuttersAskForTheirOwnKindOfDocument)
{
    const auto marker = MarkerBuilder().fabric("F").take();
    settings.setCutNotchSize(0.25);
    const auto describe = [&marker](auto &cutter) {
        const SvgOptions &options = cutter.getSvgOpt(*marker);
        EXPECT_EQ(options.caller(), SvgOptions::CallerExport);
        EXPECT_EQ(options.notchLength(), 0.25);
        EXPECT_EQ(cutter.configFile, "/ANSI.xml");
        EXPECT_TRUE(cutter.applyOptionChanges());
        EXPECT_NE(qobject_cast<NC::ANSIOptionsWidget *>(cutter.optionsPanel()), nullptr);
        return std::make_pair(options.exportType(), options.checkRange());
    };
    Variant<NC::ANSIProcessor> ansi;
    Variant<NC::DrastemProcessor> drastem;
    EXPECT_EQ(describe(ansi), std::make_pair(int(SvgOptions::ExportAnsi), true));
    EXPECT_EQ(describe(drastem), std::make_pair(int(SvgOptions::ExportDrastem), false));
}

} // namespace
} // namespace KivSystem
