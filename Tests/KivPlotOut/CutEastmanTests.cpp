// The formats "Cut File Eastman" and "Cut Labels".

#include "CutSupport.h"
#include "Dialogs/EastmanOptionsWidget.h"
#include "EastmanProcessor.h"
#include "LabelProcessor.h"

#include "KivMarker/SvgOptions.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>

namespace KivSystem {
namespace {

class EastmanCutter : public NC::EastmanProcessor
{
public:
    void set(DrillType type, const char *angle)
    {
        optionsPanel()->findChild<QComboBox *>("comboDrillType")->setCurrentIndex(type);
        optionsPanel()->findChild<QLineEdit *>("editDrillangle")->setText(angle);
    }
    using EastmanProcessor::configFile;
    using EastmanProcessor::documents;
    using EastmanProcessor::getInternalOrder;
    using EastmanProcessor::getNotchOrder;
    using EastmanProcessor::getSvgOpt;
};

class EastmanTest : public CutTest
{
protected:
    EastmanTest()
    {
        CutSettings own = settings.cutSettings();
        own.eastCutOrderCrans = NotchNone;
        own.eastCutInternalOrder = CutLineNone;
        settings.setCutSettings(own);
    }

    std::string written(EastmanCutter &cutter, const QByteArray &config, const QByteArray &svg)
    {
        cutter.configFile = "/X.xml";
        setConfig(config);
        cutter.documents.resize(1);
        EXPECT_TRUE(cutter.documents[0].setContent(svg));
        QBuffer device;
        device.open(QIODevice::WriteOnly);
        EXPECT_TRUE(cutter.buildDocument(document, &device));
        return device.data().toStdString();
    }
};

TEST_F(EastmanTest, NumbersStandInColumnsAndExpressionsAreNotRead)
{
    EastmanCutter cutter;
    settings.setCutPenUpSynchro(true);
    EXPECT_EQ(written(cutter,
                  "<c precision='2' x='* 10' y='* 10' synchro='S'><polygone>"
                  "<begin><item type='No.' out='P%1|'/></begin>"
                  "<outline pathto='U%1%2|' lineto0='D%1%2|' lineto='L%1%2|' LiftPlunge='^'/>"
                  "</polygone></c>",
                  "<svg><object><path t='outline'>M 1,-2.5 L 123456,2 L 3,4</path></object></svg>"),
        "P   1|U     1.00    -2.50|D123456.00     2.00|L     3.00     4.00|");
    // The form that knows of lifting has no columns.
    EXPECT_EQ(
        written(cutter,
            "<c precision='2'><polygone><begin><item type='No.' out='%1|'/></begin>"
            "<outline pathto='U%1 %2|' lineto0='D%1 %2|' LiftPlunge='^'/></polygone></c>",
            "<svg><object><path t='outline' LiftPlunge='1'>M 1,2 L 3,4</path></object></svg>"),
        "   1|U1.00 2.00|^D3.00 4.00|");
}

TEST_F(EastmanTest, HolesAreMadeAsThePanelSays)
{
    const QByteArray config = "<c precision='1'><polygone><drill bWrap='1' pathto='H%1%2' "
                              "laserPathTo='B%1%2' lineto0='a' lineto1='b' lineto2='c' lineto3='' "
                              "lineto4='e'><T out='t%1,%2|'/></drill></polygone></c>";
    const QByteArray svg = "<svg><external outil='T'><circle cx='7' cy='8'/></external>"
                           "<object><path t='none' drill='M 1,2'/><path drill=''/></object></svg>";
    const struct
    {
        DrillType type;
        const char *expected;
    } rows[] = {
        {DrillNone, ""},
        {DrillPunch, "H     1.0     2.0     47.5\r\na\r\n"},
        {DrillDrill, "H     1.0     2.0     47.5\r\nb\r\n"},
        {DrillVNotch, "H     1.0     2.0     47.5\r\nc\r\n"},
        {DrillSlit, "H     1.0     2.0     47.5\r\n"}, // no line behind it without a text
        {DrillLaser, "B     1.0     2.0     47.5\r\ne\r\n"},
    };
    for (const auto &row : rows) {
        EastmanCutter cutter;
        cutter.set(row.type, "47.5");
        EXPECT_EQ(written(cutter, config, svg), std::string("t7.0,8.0|") + row.expected);
    }
    EastmanCutter cutter; // without a drill element the angle alone is left
    cutter.set(DrillSlit, "30");
    EXPECT_EQ(written(cutter, "<c><polygone/></c>", svg), "     30\r\n");
}

TEST_F(EastmanTest, AsksForTheDocumentThatThePanelShows)
{
    EastmanCutter cutter;
    cutter.set(DrillSlit, "47.9");
    const QWidget &panel = *cutter.optionsPanel();
    panel.findChild<QDoubleSpinBox *>("spinScaleX")->setValue(98);
    panel.findChild<QDoubleSpinBox *>("spinScaleY")->setValue(102.5);
    panel.findChild<QLineEdit *>("editNotchLen")->setText("0.75");
    const auto marker = MarkerBuilder().fabric("F").take();
    const SvgOptions &options = cutter.getSvgOpt(*marker);
    EXPECT_EQ(options.exportType(), SvgOptions::ExportEastman);
    EXPECT_EQ(options.caller(), SvgOptions::CallerExport);
    EXPECT_DOUBLE_EQ(options.scaleX(), 0.98);
    EXPECT_DOUBLE_EQ(options.scaleY(), 1.025);
    EXPECT_DOUBLE_EQ(options.notchLength(), 0.75);
    EXPECT_EQ(options.drillSize(), 47); // the angle, cut
    EXPECT_EQ(options.drillType(), DrillSlit);
    EXPECT_FALSE(options.checkRange());
    // The orders come from the settings, into which the panel writes only when it is applied.
    panel.findChild<QComboBox *>("comboNotchCutting")->setCurrentIndex(NotchAfterOutline);
    EXPECT_EQ(cutter.getNotchOrder(), NotchNone);
    EXPECT_TRUE(cutter.applyOptionChanges());
    EXPECT_EQ(cutter.getNotchOrder(), NotchAfterOutline);
    EXPECT_EQ(cutter.getInternalOrder(), CutLineNone);

    marker->drawing()->zentrimActif = true;
    EXPECT_EQ(cutter.getSvgOpt(*marker).caller(), SvgOptions::CallerZentrim);
    marker->drawing()->zentrimActif = false;
    EXPECT_EQ(cutter.getSvgOpt(*marker).caller(), SvgOptions::CallerZentrim); // for good
}

TEST_F(CutTest, LabelsAreALineForEachPieceInOneFileForEachDocument)
{
    MarkerBuilder builder;
    builder.layer("L").fabric("Twill", {100}).fabric("Empty", {100}).style("Shirt", {"S"});
    builder
        .piece(1, 1,
            QString::fromUtf8("R\xC3\xBC"
                              "cken"))
        .piece(1, 1, "100 % *");
    builder.place(1, 1, 1, 1, 0, 0).place(1, 1, 2, 1, 20, 0);
    auto group = std::make_unique<CDbGrPolysObject>();
    for (int i = 0; i < 2; ++i) {
        auto polygon = std::make_unique<CDbPolygon>(short(1), short(1), true);
        polygon->place(builder.fabricAt(1).findPieceAccordingIndex(1, nullptr)->getPieceSize(1),
            {40.0 + 20 * i, 0, 0, false});
        group->addPolygon(std::move(polygon));
    }
    builder.fabricAt(1).addGroup(1, std::move(group));
    const auto marker = builder.take();
    settings.setMiniCutFileBlock(true);

    NC::LabelProcessor labels;
    EXPECT_TRUE(labels.isNeedSelectFabirc());
    EXPECT_EQ(labels.optionsPanel(), nullptr);
    EXPECT_FALSE(labels.prepare(*marker, 2));
    ASSERT_TRUE(labels.prepare(*marker, 1));
    const auto written = [&] {
        QBuffer device;
        device.open(QIODevice::WriteOnly);
        EXPECT_TRUE(labels.buildDocument(*marker, &device));
        return device.data().toStdString();
    };
    EXPECT_EQ(written(), "R\xC3\xBC"
                         "cken S Shirt\r\n100 % * S Shirt\r\n");
    EXPECT_TRUE(labels.exportMoreFiles());
    EXPECT_EQ(written(), "R\xC3\xBC"
                         "cken S Shirt\r\nR\xC3\xBC"
                         "cken S Shirt\r\n");
    EXPECT_EQ(labels.generateFileName(*marker, 1), "Twill");
    EXPECT_FALSE(labels.exportMoreFiles());
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    EXPECT_FALSE(labels.buildDocument(*marker, &device));
    EXPECT_TRUE(labels.prepare(*marker, 1)); // from the first document again
    EXPECT_TRUE(labels.buildDocument(*marker, &device));
}

} // namespace
} // namespace KivSystem
