// The run of a cut format: from the marker to its files.

#include "CutSupport.h"

#include "KivMarker/Drawing.h"

namespace KivSystem {
namespace {

using CutRun = CutTest;

TEST_F(CutRun, WritesTheExampleByteForByte)
{
    setConfig("<config precision='1' x='* 10' y='* 10'>"
              "<header><item out='EXAMPLE-PATHTO %1' type='text' v='name' bWrap='1'/></header>"
              "<polygone><begin><item out='P%1' type='No.' bWrap='1'/></begin>"
              "<outline pathto='U%1,%2' lineto0='D%1,%2' lineto='L%1,%2' bWrap='1'/></polygone>"
              "<root><item out='END' bWrap='1'/></root></config>");
    TestCutter cutter;
    cutter.setDocument("<svg><object><path t='outline'>M 1 2 L 3 2 L 3 4</path></object></svg>");
    QFile file(plugins.filePath("a.cut"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_TRUE(cutter.buildDocument(document, &file));
    EXPECT_EQ(cutter.stream.device(), &file);
    file.seek(0);
    EXPECT_EQ(file.readAll(), QByteArray("EXAMPLE-PATHTO a\r\nP1\r\nU10.0,20.0\r\nD30.0,20.0\r\n"
                                         "L30.0,40.0\r\nEND\r\n"));
}

TEST_F(CutRun, WritesItsSectionsInOrder)
{
    settings.setCutNotchOrder(NotchBeforeOutline);
    settings.setCutInternalOrder(CutLineBeforeOutline);
    settings.setCutPenUpSynchro(true);
    // The order of the elements in the configuration does not matter; the first of a tag counts.
    const QByteArray config =
        "<c synchro='S '><root><item out='T%1 ' type='No.'/></root><root><item out='no'/></root>"
        "<scrap><begin><item out='w%1 ' type='No.'/></begin></scrap>"
        "<header><item out='H%1 ' type='No.'/></header>"
        "<polygone><outline pathto='O ' lineto0='o '/><internal pathto='I ' lineto0='i '/>"
        "<notch pathto='N ' lineto0='n '/><drill><t out='D '/></drill>"
        "<begin><item out='b%1 ' type='No.'/></begin><end><item out='e%1 ' type='No.'/></end>"
        "<Outline pathto='no'/></polygone><polygone><begin><item out='no'/></begin></polygone></c>";
    const QByteArray object = "<object><path t='notch'>M1 1L2 2</path><path t='outline'>M1 1L2 2"
                              "</path><path t='internal'>M1 1L2 2</path><path drill='M1 1'/>"
                              "</object>";
    EXPECT_EQ(cut(config, "<svg>" + object + "<M69/>" + object +
                              "<scrap/><external outil='t'><circle/></external></svg>"),
        "H1 b1 D b2 D S I i N n O o e2 b3 D S I i N n O o e3 w4 T1 ");
    EXPECT_EQ(cut(config, "<svg/>"), "H1 T1 ");
    EXPECT_EQ(cut(config, "<svg><object/></svg>"), "H1 b1 S e1 T1 ");
    EXPECT_EQ(cut("<c><header><item out='H '/></header></c>", "<svg>" + object + "</svg>"), "H ");
}

TEST_F(CutRun, WritesWholeNumbersWithoutAPrecisionAndFollowsEachConfigurationAnew)
{
    TestCutter cutter;
    cutter.setDocument("<svg><object><path t='outline'>M1.25 2L3 4</path></object></svg>");
    const struct
    {
        QByteArray attributes;
        QByteArray outline;
        QByteArray expected;
    } rows[] = {
        {"precision='2' x='* 2' y='+ 1'", "pathto='%1,%2;'", "2.50,3.00;"},
        {"", "pathto='%1,%2;'", "1,2;"},
        {"precision='1'", "pathto='%2,%1!'", "2.0,1.3!"},
        {"precision='x' y='- 2'", "pathto='%1,%2;'", "1,0;"},
    };
    for (const auto &row : rows) {
        setConfig(
            "<c " + row.attributes + "><polygone><outline " + row.outline + "/></polygone></c>");
        QBuffer device; // gone before the next one comes
        device.open(QIODevice::WriteOnly);
        EXPECT_TRUE(cutter.buildDocument(document, &device));
        EXPECT_EQ(device.data(), row.expected) << row.attributes.toStdString();
    }
}

TEST_F(CutRun, WritesNothingWithoutAConfigurationThatCanBeRead)
{
    TestCutter cutter;
    cutter.setDocument("<svg><object/></svg>");
    const auto writesNothing = [&] {
        QBuffer device;
        device.open(QIODevice::WriteOnly);
        return !cutter.buildDocument(document, &device) && device.data().isEmpty();
    };
    EXPECT_TRUE(writesNothing()) << "no file";
    for (const QByteArray text : {"", "<c><header><item out='H'/></header>", "H"}) {
        setConfig(text);
        EXPECT_TRUE(writesNothing()) << text.toStdString();
    }
    setConfig("<c><header><item out='H'/></header></c>");
    EXPECT_FALSE(writesNothing());
    cutter.currentDocument = -1;
    EXPECT_TRUE(writesNothing()) << "no document";
    cutter.currentDocument = 0;
    QDir(plugins.filePath("io")).removeRecursively();
    EXPECT_TRUE(writesNothing()) << "no directory";
}

TEST_F(CutRun, GoesThroughTheDocumentsOfAFabricAndNamesThem)
{
    const auto marker = MarkerBuilder()
                            .layer("L")
                            .fabric("Denim.1", {150})
                            .fabric("Lining", {150})
                            .style("S", {"M"})
                            .piece(1, 1, "Back", 40, 60)
                            .order(1, 1, 1, 1, 1)
                            .place(1, 1, 1, 1, 5, 5)
                            .take();
    setConfig("<c><polygone><outline pathto='%1,%2;'/></polygone></c>");
    TestCutter cutter;
    EXPECT_EQ(cutter.optionsPanel(), nullptr);
    EXPECT_TRUE(cutter.applyOptionChanges());
    EXPECT_TRUE(cutter.checkPolygonOptimization());
    EXPECT_TRUE(cutter.isNeedSelectFabirc());
    EXPECT_FALSE(cutter.prepare(*marker, 2)) << "nothing lies on the fabric";
    ASSERT_TRUE(cutter.prepare(*marker, 1));
    ASSERT_EQ(cutter.documents.size(), 1);
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    EXPECT_TRUE(cutter.buildDocument(*marker, &device));
    EXPECT_EQ(device.data().count(';'), 1) << device.data().toStdString();

    cutter.documents.resize(3);
    cutter.documents[1].setContent(QByteArray("<svg block_index='12'/>"));
    EXPECT_EQ(cutter.generateFileName(*marker, 1), "Denim.1");
    EXPECT_TRUE(cutter.exportMoreFiles());
    EXPECT_EQ(cutter.generateFileName(*marker, 1), "Denim.1Blk12");
    marker->drawing()->zentrimActif = true;
    EXPECT_EQ(cutter.generateFileName(*marker, 1), "ZentDenim.1");
    marker->drawing()->zentrimActif = false;
    EXPECT_TRUE(cutter.exportMoreFiles());
    EXPECT_EQ(cutter.generateFileName(*marker, 1), "Denim.1Blk0");
    EXPECT_FALSE(cutter.exportMoreFiles());
    EXPECT_FALSE(cutter.buildDocument(*marker, &device));
    EXPECT_TRUE(cutter.prepare(*marker, 1));
    EXPECT_EQ(cutter.currentDocument, 0);
}

TEST_F(CutRun, AsksForTheTrueSizeAndRemembersAZentrimDrawing)
{
    const auto marker = MarkerBuilder().fabric("F").take();
    settings.setCutNotchSize(0.75);
    settings.setCutScaleX(50);
    TestCutter cutter;
    EXPECT_EQ(cutter.getSvgOpt(*marker).caller(), SvgOptions::CallerExport);
    marker->drawing()->zentrimActif = true;
    EXPECT_EQ(cutter.getSvgOpt(*marker).caller(), SvgOptions::CallerZentrim);
    marker->drawing()->zentrimActif = false;
    const SvgOptions &options = cutter.getSvgOpt(*marker);
    EXPECT_EQ(options.caller(), SvgOptions::CallerZentrim);
    EXPECT_EQ(options.exportType(), SvgOptions::ExportNone);
    EXPECT_EQ(options.scaleX(), 1);
    EXPECT_EQ(options.scaleY(), 1);
    EXPECT_EQ(options.notchLength(), 0.75);
    EXPECT_FALSE(options.checkRange());
}

} // namespace
} // namespace KivSystem
